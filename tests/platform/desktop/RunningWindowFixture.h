// SPDX-License-Identifier: MIT
#pragma once

#include <QThread>
#include <QtEndian>
#include <memory>
#include <vector>

#include "platform/desktop/RunningWindow.h"
#include "platform/files/SystemDisk.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {

using platform::desktop::RunningWindow;
using Outcome = RunningWindow::Outcome;

/// Longer than anything here takes.
inline constexpr std::chrono::milliseconds kLong{60000};
inline constexpr std::chrono::milliseconds kShort{50};

/// A window that may be the first, in a place of its own, and what it hears.
class RunningWindows : public testing::Test {
 protected:
  struct Asked {
    std::filesystem::path path;
    QByteArray activation;
    friend bool operator==(const Asked&, const Asked&) = default;
  };

  [[nodiscard]] RunningWindow::Place Place() const { return {folder / "w.lock", Socket("w.socket")}; }
  [[nodiscard]] QString Socket(const std::string& name) const {
#ifdef _WIN32
    // A pipe, in no folder; the folder's name is nobody else's.
    return Text(folder.Path().filename()) + ' ' + QString::fromStdString(name);
#else
    return Text(folder / name);
#endif
  }

  void Hear(RunningWindow& window) {
    QObject::connect(&window, &RunningWindow::asked,
                     [this](const std::filesystem::path& path, const QByteArray& activation) {
                       asked.push_back({path, activation});
                     });
  }
  void Begin() {
    Hear(first);
    ASSERT_EQ(first.Start({}, kLong), Outcome::First);
  }
  /// A start as in another program: on a thread of its own, while the first window's events are handled.
  Outcome StartAnother(const RunningWindow::Request& request, std::chrono::milliseconds patience = kLong) {
    Outcome outcome{};
    const std::unique_ptr<QThread> thread(QThread::create([&] {
      platform::files::SystemDisk ownDisk;
      outcome = RunningWindow(Place(), ownDisk).Start(request, patience);
    }));
    thread->start();
    EXPECT_TRUE(Until([&] { return thread->isFinished(); }, 60000));
    QApplication::processEvents();
    return outcome;
  }
  /// What a peer sends: the length, then the bytes.
  [[nodiscard]] static QByteArray Frame(quint32 length, const QByteArray& bytes) {
    QByteArray frame(4, '\0');
    qToBigEndian(length, frame.data());
    return frame + bytes;
  }

  TemporaryFolder folder;
  platform::files::SystemDisk disk;
  RunningWindow first{Place(), disk};
  std::vector<Asked> asked;
};

}  // namespace kestrin::support
