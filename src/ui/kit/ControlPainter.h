// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QRectF>

class QPainter;
class QStyleOption;
class QStyleOptionProgressBar;

namespace kestrin::ui::kit {

/// Paints the pieces that controls are made of, in the colours and for the state of one style option.
class ControlPainter {
 public:
  ControlPainter(QPainter* painter, const QStyleOption* option);

  /// A ground with round corners and a line of that width inside its edge; a width of 0 draws no line.
  void Box(const QRectF& rect, qreal radius, const QColor& fill, const QColor& edge, qreal width) const;

  /// The ground of a push or tool button. A quiet one shows itself only under the pointer, pressed, checked or focused.
  void ButtonPanel(bool isPrimary, bool isQuiet) const;
  /// The tab of a page: the one that is shown is underlined.
  void Tab() const;
  /// The ground of an input field or a closed combo box.
  void Field(bool hasFocus) const;
  /// The frame of a list: a line, or the ring of the focus.
  void ListFrame() const;
  void RadioButton() const;
  void CheckBox() const;
  /// The ground of a row: selected, under the pointer, or nothing.
  void Row() const;
  /// The knob of a slider in the middle of the rectangle.
  void Knob(const QRectF& rect) const;
  /// An arrow head that points down, or up.
  void Chevron(const QRectF& rect, bool isUp, bool isEnabled) const;
  void ProgressGroove() const;
  void ProgressContents(const QStyleOptionProgressBar& bar) const;
  void ProgressText(const QStyleOptionProgressBar& bar) const;

 private:
  [[nodiscard]] bool Has(int state) const;

  QPainter* m_painter;
  const QStyleOption* m_option;
};

}  // namespace kestrin::ui::kit
