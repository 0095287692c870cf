// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <chrono>
#include <filesystem>
#include <memory>

#include "core/base/Disk.h"

class QLocalServer;
class QLocalSocket;

namespace kestrin::platform::desktop {

/// The one window of a person in their session. The first start of the program becomes it; a later one hands over what
/// it was to open and can end. A lock decides which start is the first, so that several at the same instant agree and
/// one that was killed is in nobody's way.
class RunningWindow : public QObject {
  Q_OBJECT

 public:
  /// Where the starts of one person in one session meet.
  struct Place {
    /// A file in a folder that nobody else can write to; empty where there is none: then nobody meets.
    std::filesystem::path lock;
    /// The name of the local socket.
    QString socket;
  };

  /// What a start is to do.
  struct Request {
    /// A whole path; empty: the window is only to be shown.
    std::filesystem::path path;
    /// What lets the window come to the front in the name of the start that asks, as the desktop gave it; may be empty.
    QByteArray activation;
  };

  /// What became of a start.
  enum class Outcome {
    First,       ///< there was no window: this one is it from now on, and hears of later starts
    Alone,       ///< the starts cannot meet on this system: this one has a window of its own
    HandedOver,  ///< the window that is there has taken the request
    Unanswered,  ///< there is a window, but it does not answer
  };

  /// How long a window may take to answer: one that has just begun on a busy computer needs a while.
  static constexpr std::chrono::milliseconds kPatience{8000};
  /// The most bytes of one request. Windows has the longest paths, 32,767 characters of up to 3 bytes.
  static constexpr std::uint32_t kMostBytes = 131072;
  /// How many may be talked to at a time; more are turned away.
  static constexpr int kMostPeers = 64;

  /// The place of this person in this session. Sessions on different displays have places of their own, and so has
  /// every value of the environment variable `kEnvironment`. The application must be there.
  [[nodiscard]] static Place PlaceOfSession();
  static constexpr const char* kEnvironment = "KESTRIN_WINDOW";

  /// The disk must outlive the object.
  RunningWindow(Place place, core::base::Disk& disk, QObject* parent = nullptr);
  ~RunningWindow() override;

  /// Becomes the window or hands the request to the one that is there; returns after `patience` at the latest. Once.
  [[nodiscard]] Outcome Start(const Request& request, std::chrono::milliseconds patience = kPatience);
  /// The window is about to end: a start that comes now waits until this object is gone, and becomes the window.
  void TakeNoMore();

 signals:
  /// Another start asks this window to come to the front and to open this path, unless it is empty. Comes from the
  /// event loop.
  void asked(const std::filesystem::path& path, const QByteArray& activation);

 private:
  [[nodiscard]] bool Listen();
  void Greet();
  void Read(QLocalSocket& peer);

  Place m_place;
  core::base::Disk& m_disk;
  std::unique_ptr<core::base::Disk::Lock> m_lock;
  std::unique_ptr<QLocalServer> m_server;
  int m_peers = 0;
};

}  // namespace kestrin::platform::desktop
