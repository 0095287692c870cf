// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <filesystem>
#include <functional>
#include <vector>

class QMimeData;
class QWidget;

namespace kestrin::ui::window {

/// Lets a set of sounds, or what sounds can be made of, be dropped onto the window. Everything else that is dragged
/// over it is left alone.
class SetDrop : public QObject {
  Q_OBJECT

 public:
  using Paths = std::vector<std::filesystem::path>;

  /// `isWelcome` says whether a set may be dropped now, `takesSounds` whether these can be imported now. The window,
  /// which owns the object, takes drops from now on.
  SetDrop(QWidget& window, std::function<bool()> isWelcome, std::function<bool(const Paths&)> takesSounds);

 signals:
  /// A set was dropped. Comes from the event loop: the program that it comes from does not wait for what follows.
  void dropped(const std::filesystem::path& path);
  /// What can be imported was dropped; the same.
  void soundsDropped(const std::vector<std::filesystem::path>& paths);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] static Paths PathsIn(const QMimeData& data);
  [[nodiscard]] static std::filesystem::path SetIn(const Paths& paths);

  std::function<bool()> m_isWelcome;
  std::function<bool(const Paths&)> m_takesSounds;
};

}  // namespace kestrin::ui::window
