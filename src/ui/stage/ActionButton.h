// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

namespace kestrin::ui::stage {

/// A button for something that happens to the saber, with a picture and the key that does the same.
class ActionButton : public QPushButton {
  Q_OBJECT

 public:
  enum class Sign { Power, Swing, Hit, Lockup };

  /// `name` is its object name, `key` the key as people read it.
  ActionButton(const QString& name, Sign sign, const QString& text, const QString& key, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintSign(QPainter& painter, const QRectF& box) const;
  [[nodiscard]] int KeyWidth() const;

  Sign m_sign;
  QString m_key;
};

}  // namespace kestrin::ui::stage
