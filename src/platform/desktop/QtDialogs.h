// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "ui/kit/Dialogs.h"

class QDialog;
class QFileDialog;

namespace kestrin::platform::desktop {

class MessageWindow;

/// The desktop's own dialogs for files and colours, and the program's own messages, over the program's window.
class QtDialogs final : public ui::kit::Dialogs {
 public:
  /// The window that dialogs belong to from now on; before, and after its end, they stand alone.
  void SetWindow(QWidget* window) { m_window = window; }
  /// Nobody is there any more to answer: what is open closes unanswered, and nothing is shown from now on. Questions
  /// get the answer of whoever closes them.
  void Dismiss();

  [[nodiscard]] QString OpenFile(const QString& title, const QString& start, const QString& filter,
                                 ui::kit::HelpContext topic) override;
  [[nodiscard]] QStringList OpenFiles(const QString& title, const QString& start, const QString& filter,
                                      ui::kit::HelpContext topic) override;
  [[nodiscard]] QString SaveFile(const QString& title, const QString& start, const QString& filter,
                                 const QString& suffix, ui::kit::HelpContext topic) override;
  [[nodiscard]] QString ChooseFolder(const QString& title, const QString& start, ui::kit::HelpContext topic) override;
  [[nodiscard]] std::optional<QColor> AskColor(const QColor& preset, ui::kit::HelpContext topic) override;
  void ShowMessage(const QString& text, const QString& detail) override;
  void ShowError(const QString& text, const QString& detail) override;
  [[nodiscard]] bool ShowList(const QString& headline, const QStringList& lines, const QString& action,
                              ui::kit::HelpContext topic) override;
  [[nodiscard]] bool AskOkCancel(const QString& question, const QString& advice, Harmless harmless,
                                 ui::kit::HelpContext topic) override;
  [[nodiscard]] Unsaved AskUnsaved(const QString& question) override;
  [[nodiscard]] LeftSet AskLeftSet(const QString& question, const QString& advice) override;
  [[nodiscard]] MissingSounds AskMissing(const QString& question, const QString& advice) override;

 private:
  /// The window when it can be seen: a dialog over a hidden one might not be found.
  [[nodiscard]] QWidget* Parent() const {
    return m_window != nullptr && m_window->isVisible() ? m_window.data() : nullptr;
  }
  /// Shows it and waits until it is closed; true when it was accepted.
  bool Run(QDialog& dialog, ui::kit::HelpContext topic);
  /// Asks for files, beginning at the folder or file `start`; none when the person thought better of it.
  [[nodiscard]] QStringList Choose(QFileDialog& dialog, const QString& start, ui::kit::HelpContext topic);
  /// A message with OK.
  void Tell(MessageWindow& message);

  QPointer<QWidget> m_window;
  /// The ones that wait for the person, the latest last.
  std::vector<QDialog*> m_open;
  bool m_dismissed = false;
};

}  // namespace kestrin::platform::desktop
