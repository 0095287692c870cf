#pragma once

#include <QFrame>

namespace kestrin::sound::ui {

/// A rounded area of the card's colour with a thin line round it.
class Card : public QFrame {
  Q_OBJECT

 public:
  explicit Card(QWidget* parent = nullptr);

  /// A stripe of that colour along the left edge; an invalid colour: none.
  virtual QColor Stripe() const;
  /// Draws the line in the accent's colour, twice as thick.
  void SetHighlighted(bool highlighted);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool m_highlighted = false;
};

}  // namespace kestrin::sound::ui
