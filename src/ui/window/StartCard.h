// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QIcon>

class QLabel;
class QPushButton;

namespace kestrin::ui::window {

/// One way to start: a picture, what it is, what comes of it, and its button. It can do with less room: without the
/// picture, without the text, and as nothing but its button.
class StartCard : public QFrame {
  Q_OBJECT

 public:
  /// How much of it is shown.
  enum class Detail { All, NoPicture, NoText, ButtonOnly };
  struct Texts {
    /// The object name of the button.
    const char* name;
    QString title;
    QString text;
    QString button;
    QString help;
  };

  /// `takesDrops`: this is where sounds are to be dropped, which its ground tells.
  StartCard(const Texts& texts, const QIcon& icon, bool takesDrops, QWidget* parent = nullptr);

  [[nodiscard]] QPushButton& Button() const { return *m_button; }
  /// The height that it needs in that width.
  [[nodiscard]] int HeightFor(int width, Detail detail) const;
  void Show(Detail detail);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] bool HasGround() const { return m_detail != Detail::ButtonOnly; }

  QIcon m_icon;
  bool m_takesDrops;
  Detail m_detail = Detail::All;
  /// Keeps the picture's room.
  QWidget* m_picture;
  QLabel* m_title;
  QLabel* m_text;
  QPushButton* m_button;
};

}  // namespace kestrin::ui::window
