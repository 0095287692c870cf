// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <filesystem>
#include <functional>

class QMimeData;
class QWidget;

namespace kestrin::ui::window {

/// Lets a set of sounds be dropped onto the window. Everything else that is dragged over it is left alone.
class SetDrop : public QObject {
  Q_OBJECT

 public:
  /// `isWelcome` says whether a set may be dropped now. The window, which owns the object, takes drops from now on.
  SetDrop(QWidget& window, std::function<bool()> isWelcome);

 signals:
  /// A set was dropped. Comes from the event loop: the program that it comes from does not wait for what follows.
  void dropped(const std::filesystem::path& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] static std::filesystem::path SetIn(const QMimeData& data);

  std::function<bool()> m_isWelcome;
};

}  // namespace kestrin::ui::window
