// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QStringList>
#include <QStyle>

class QLabel;
class QListWidget;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace kestrin::platform::desktop {

/// A message or question of the program: a sign, a text with some advice below it, perhaps a list, and buttons. It is
/// never taller than two thirds of the screen: longer texts and lists are scrolled, the buttons stay in sight. Ctrl+C
/// copies all that it says.
class MessageWindow : public QDialog {
  Q_OBJECT

 public:
  /// The texts are shown as they stand; `detail` is "" for none. A window without a parent has a place of its own.
  MessageWindow(QStyle::StandardPixmap sign, const QString& text, const QString& detail, QWidget* parent = nullptr);

  /// One line for each thing that the text is about, with a button that copies them.
  void SetList(const QStringList& lines);
  /// A button that ends the message; the platform decides where it stands.
  QPushButton& AddButton(QDialogButtonBox::StandardButton button);
  QPushButton& AddButton(const QString& caption, QDialogButtonBox::ButtonRole role);
  /// Makes the window ready to be shown: in the size that its contents need, Enter presses `enter`.
  void Prepare(QPushButton& enter);
  /// The button that ended it, nullptr when it was closed otherwise.
  [[nodiscard]] const QAbstractButton* Pressed() const { return m_pressed; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QLabel* AddText(const char* name, const QString& text);
  /// Copies text and list, or the list alone.
  void CopyAll() const;
  void CopyList() const;
  [[nodiscard]] int WidthOfTexts(int widest) const;

  QWidget* m_texts = nullptr;
  QScrollArea* m_scroll = nullptr;
  QListWidget* m_list = nullptr;
  QVBoxLayout* m_column = nullptr;
  QDialogButtonBox* m_buttons = nullptr;
  QStringList m_said;
  QStringList m_lines;
  const QAbstractButton* m_pressed = nullptr;
};

}  // namespace kestrin::platform::desktop
