// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace kestrin::ui::kit {

/// The shapes of the controls: Fusion's behaviour and layout under flat, rounded controls whose edges, states and focus
/// are visible in light and in dark. All colours come from the palette's scheme (ColorOf); a focused control carries a
/// ring in the accent's colour.
class ThemeStyle : public QProxyStyle {
  Q_OBJECT

 public:
  ThemeStyle();

  void polish(QWidget* widget) override;
  using QProxyStyle::polish;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;

 private:
  void DrawSlider(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const;
  void DrawComboBox(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const;
  void DrawSpinBox(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const;
  void DrawScrollBar(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const;
};

}  // namespace kestrin::ui::kit
