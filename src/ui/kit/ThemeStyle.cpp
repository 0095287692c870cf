// SPDX-License-Identifier: MIT
#include "ui/kit/ThemeStyle.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QToolButton>
#include <algorithm>

#include "ui/kit/ControlPainter.h"
#include "ui/kit/Grid.h"
#include "ui/kit/MessageIcon.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {
namespace {

constexpr int kControlHeight = 32;
constexpr int kRowHeight = 26;
constexpr int kIndicator = 22;
constexpr int kScrollBarExtent = 12;
constexpr int kShortestScrollHandle = 32;
constexpr int kGrooveThickness = 4;
constexpr int kFieldPadding = kHalf;
constexpr int kMessageIcon = 40;

/// The option with the text in the colour that can be read on the main button's ground.
template <typename Option>
Option OnAccent(const Option& option) {
  Option copy(option);
  copy.palette.setColor(QPalette::Active, QPalette::ButtonText, ColorOf(ColorRole::AccentText, option.palette));
  copy.palette.setColor(QPalette::Inactive, QPalette::ButtonText, ColorOf(ColorRole::AccentText, option.palette));
  return copy;
}

/// The height that Fusion leaves for the title above a group box's frame.
int TitleHeight(const QWidget* widget) {
  const auto* box = qobject_cast<const QGroupBox*>(widget);
  if (box == nullptr || box->title().isEmpty()) return 0;
  return box->fontMetrics().height() + 3;
}

bool IsMainPushButton(const QStyleOptionButton* button, const QWidget* widget) {
  return Theme::IsPrimary(widget) ||
         (button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton));
}

}  // namespace

ThemeStyle::ThemeStyle() : QProxyStyle("Fusion") {}

void ThemeStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (auto* view = qobject_cast<QAbstractItemView*>(widget)) view->viewport()->setAttribute(Qt::WA_Hover);
}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  const ControlPainter controls(painter, option);
  switch (element) {
    case PE_IndicatorRadioButton:
      return controls.RadioButton();
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
      return controls.CheckBox();
    case PE_PanelButtonCommand:
      return controls.ButtonPanel(IsMainPushButton(qstyleoption_cast<const QStyleOptionButton*>(option), widget),
                                  false);
    case PE_PanelButtonTool:
      // A tool button's ground is drawn with the whole button.
      if (qobject_cast<const QToolButton*>(widget) == nullptr) controls.ButtonPanel(false, true);
      return;
    case PE_PanelLineEdit: {
      // An editor inside a spin box or combo box has no width of line: its owner draws the field.
      const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
      if (frame != nullptr && frame->lineWidth > 0) controls.Field(option->state.testFlag(State_HasFocus));
      return;
    }
    case PE_Frame:
      return controls.ListFrame();
    case PE_FrameGroupBox:
      return controls.Box(option->rect.adjusted(0, TitleHeight(widget), 0, 0), 8,
                          ColorOf(ColorRole::Card, option->palette), ColorOf(ColorRole::Line, option->palette), 1);
    case PE_FrameTabWidget:
      return controls.Box(option->rect, 8, ColorOf(ColorRole::Card, option->palette),
                          ColorOf(ColorRole::Line, option->palette), 1);
    case PE_FrameTabBarBase:
      return;
    case PE_PanelItemViewItem:
      if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
        if (item->backgroundBrush.style() != Qt::NoBrush) painter->fillRect(item->rect, item->backgroundBrush);
      }
      return controls.Row();
    case PE_FrameFocusRect:
      // Buttons carry their ring themselves.
      if (qobject_cast<const QAbstractButton*>(widget) != nullptr) return;
      return controls.Box(option->rect, 3, Qt::transparent, ColorOf(ColorRole::Accent, option->palette), 1);
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void ThemeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
  const bool enabled = option->state.testFlag(State_Enabled);
  if (element == CE_PushButtonLabel) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (button != nullptr && enabled && IsMainPushButton(button, widget)) {
      const QStyleOptionButton main = OnAccent(*button);
      return QProxyStyle::drawControl(element, &main, painter, widget);
    }
  }
  if (element == CE_ToolButtonLabel) {
    const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    if (button != nullptr && enabled && Theme::IsPrimary(widget)) {
      const QStyleOptionToolButton main = OnAccent(*button);
      return QProxyStyle::drawControl(element, &main, painter, widget);
    }
  }
  if (element == CE_TabBarTabShape) return ControlPainter(painter, option).Tab();
  const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
  if (bar != nullptr && bar->state.testFlag(State_Horizontal)) {
    const ControlPainter controls(painter, option);
    if (element == CE_ProgressBarGroove) return controls.ProgressGroove();
    if (element == CE_ProgressBarLabel) return controls.ProgressText(*bar);
    if (element == CE_ProgressBarContents) {
      if (bar->maximum > bar->minimum) return controls.ProgressContents(*bar);
      // Without an end in sight Fusion's moving stripes tell that work goes on.
      QStyleOptionProgressBar busy(*bar);
      busy.palette.setColor(QPalette::Highlight, ColorOf(ColorRole::Accent, bar->palette));
      QPainterPath shape;
      shape.addRoundedRect(bar->rect, bar->rect.height() / 2.0, bar->rect.height() / 2.0);
      painter->save();
      painter->setClipPath(shape, Qt::IntersectClip);
      QProxyStyle::drawControl(element, &busy, painter, widget);
      painter->restore();
      return;
    }
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
  switch (control) {
    case CC_Slider:
      return DrawSlider(option, painter, widget);
    case CC_ComboBox:
      return DrawComboBox(option, painter, widget);
    case CC_SpinBox:
      return DrawSpinBox(option, painter, widget);
    case CC_ScrollBar:
      return DrawScrollBar(option, painter, widget);
    case CC_ToolButton:
      ControlPainter(painter, option).ButtonPanel(Theme::IsPrimary(widget), option->state.testFlag(State_AutoRaise));
      break;
    default:
      break;
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void ThemeStyle::DrawSlider(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const {
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (slider == nullptr) return;
  if (slider->subControls.testFlag(SC_SliderTickmarks)) {
    QStyleOptionSlider ticks(*slider);
    ticks.subControls = SC_SliderTickmarks;
    // Fusion takes the colour of the marks from the window's ground, which is too dark in the dark scheme.
    ticks.palette.setColor(QPalette::Window, ColorOf(ColorRole::Soft, option->palette));
    QProxyStyle::drawComplexControl(CC_Slider, &ticks, painter, widget);
  }
  const QRect groove = subControlRect(CC_Slider, option, SC_SliderGroove, widget);
  const QRectF handle = subControlRect(CC_Slider, option, SC_SliderHandle, widget);
  const bool isHorizontal = slider->orientation == Qt::Horizontal;
  QRectF line(groove);
  if (isHorizontal) {
    line = {line.left(), handle.center().y() - kGrooveThickness / 2.0, line.width(), kGrooveThickness};
  } else {
    line = {handle.center().x() - kGrooveThickness / 2.0, line.top(), kGrooveThickness, line.height()};
  }
  // From the end where the value is least up to the knob; sliders that stand upside down begin at the other end.
  QRectF filled(line);
  if (isHorizontal && slider->upsideDown) filled.setLeft(handle.center().x());
  if (isHorizontal && !slider->upsideDown) filled.setRight(handle.center().x());
  if (!isHorizontal && slider->upsideDown) filled.setTop(handle.center().y());
  if (!isHorizontal && !slider->upsideDown) filled.setBottom(handle.center().y());

  const ControlPainter controls(painter, option);
  const bool enabled = option->state.testFlag(State_Enabled);
  controls.Box(line, kGrooveThickness / 2.0, ColorOf(ColorRole::Line, option->palette), Qt::transparent, 0);
  controls.Box(filled, kGrooveThickness / 2.0,
               ColorOf(enabled ? ColorRole::Accent : ColorRole::Outline, option->palette), Qt::transparent, 0);
  controls.Knob(handle);
}

void ThemeStyle::DrawComboBox(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const {
  const ControlPainter controls(painter, option);
  controls.Field(option->state.testFlag(State_HasFocus) || option->state.testFlag(State_On));
  controls.Chevron(subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget), false,
                   option->state.testFlag(State_Enabled));
}

void ThemeStyle::DrawSpinBox(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const {
  const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
  if (spin == nullptr) return;
  const ControlPainter controls(painter, option);
  controls.Field(option->state.testFlag(State_HasFocus));
  if (spin->buttonSymbols == QAbstractSpinBox::NoButtons) return;
  const bool enabled = option->state.testFlag(State_Enabled);
  controls.Chevron(subControlRect(CC_SpinBox, option, SC_SpinBoxUp, widget), true,
                   enabled && spin->stepEnabled.testFlag(QAbstractSpinBox::StepUpEnabled));
  controls.Chevron(subControlRect(CC_SpinBox, option, SC_SpinBoxDown, widget), false,
                   enabled && spin->stepEnabled.testFlag(QAbstractSpinBox::StepDownEnabled));
}

void ThemeStyle::DrawScrollBar(const QStyleOptionComplex* option, QPainter* painter, const QWidget* widget) const {
  painter->fillRect(option->rect, ColorOf(ColorRole::Card, option->palette));
  const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (bar == nullptr || bar->minimum == bar->maximum) return;
  const QRectF handle = QRectF(subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget)).adjusted(3, 3, -3, -3);
  const bool hot = option->state.testFlag(State_MouseOver) || option->state.testFlag(State_Sunken);
  ControlPainter(painter, option)
      .Box(handle, std::min(handle.width(), handle.height()) / 2,
           ColorOf(hot ? ColorRole::Soft : ColorRole::Outline, option->palette), Qt::transparent, 0);
}

QRect ThemeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                 const QWidget* widget) const {
  const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control != CC_ScrollBar || bar == nullptr) {
    const QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    // Half a knob of an even size above the middle begins a pixel outside: its ring would be cut off there.
    if (control == CC_Slider && part == SC_SliderHandle)
      return rect.translated(std::max(option->rect.left() - rect.left(), 0),
                             std::max(option->rect.top() - rect.top(), 0));
    const int inward = option->direction == Qt::LeftToRight ? kFieldPadding : -kFieldPadding;
    // Fields keep their text and their arrows off their round corners.
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
      return rect.translated(inward, 0).adjusted(0, 0, -kFieldPadding, 0);
    if (control == CC_ComboBox && part == SC_ComboBoxArrow) return rect.translated(-inward, 0);
    if (control == CC_SpinBox && (part == SC_SpinBoxUp || part == SC_SpinBoxDown)) return rect.translated(-inward, 0);
    if (control == CC_SpinBox && part == SC_SpinBoxEditField) return rect.adjusted(kFieldPadding, 0, -kFieldPadding, 0);
    return rect;
  }

  // Without arrow buttons the groove is the whole bar.
  const bool isHorizontal = bar->orientation == Qt::Horizontal;
  const int length = isHorizontal ? bar->rect.width() : bar->rect.height();
  const qint64 range = static_cast<qint64>(bar->maximum) - bar->minimum;
  const int share =
      range > 0 ? static_cast<int>(static_cast<qint64>(length) * bar->pageStep / (range + bar->pageStep)) : length;
  const int handle = std::min(length, std::max(share, kShortestScrollHandle));
  const int start =
      sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - handle, bar->upsideDown);
  const auto stretch = [&](int from, int size) {
    const QRect rect =
        isHorizontal ? QRect(from, 0, size, bar->rect.height()) : QRect(0, from, bar->rect.width(), size);
    return visualRect(bar->direction, bar->rect, rect.translated(bar->rect.topLeft()));
  };
  switch (part) {
    case SC_ScrollBarSlider:
      return stretch(start, handle);
    case SC_ScrollBarSubPage:
      return stretch(0, start);
    case SC_ScrollBarAddPage:
      return stretch(start + handle, length - start - handle);
    case SC_ScrollBarGroove:
      return bar->rect;
    default:
      return {};
  }
}

QRect ThemeStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  if (element == SE_LineEditContents && frame != nullptr && frame->lineWidth > 0) {
    return rect.adjusted(kFieldPadding, 0, -kFieldPadding, 0);
  }
  return rect;
}

QSize ThemeStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
  const QSize content = QProxyStyle::sizeFromContents(type, option, size, widget);
  switch (type) {
    case CT_PushButton:
      return content.grownBy({kHalf, 0, kHalf, 0}).expandedTo({0, kControlHeight});
    case CT_ComboBox:
    case CT_LineEdit:
    case CT_SpinBox:
      return content.grownBy({kFieldPadding, 0, kFieldPadding, 0}).expandedTo({0, kControlHeight});
    case CT_ItemViewItem:
      return content.expandedTo({0, kRowHeight});
    case CT_ToolButton:
      return content.grownBy({kHalf, kHalf, kHalf, kHalf});
    default:
      return content;
  }
}

int ThemeStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_DefaultFrameWidth:
      return 2;
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
    case PM_SliderLength:
      return kIndicator;
    case PM_FocusFrameHMargin:
      // The room beside the text of a row.
      return 6;
    case PM_TabBarTabShiftVertical:
      // The line below tells which tab is chosen; none jumps.
      return 0;
    case PM_MessageBoxIconSize:
      return kMessageIcon;
    case PM_ScrollBarExtent:
      return kScrollBarExtent;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
      return kGrid;
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
      return 16;
    case PM_ToolBarIconSize:
      return 24;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

QIcon ThemeStyle::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const {
  QIcon icon = MessageIcon(picture, widget != nullptr ? widget->palette() : QApplication::palette());
  return icon.isNull() ? QProxyStyle::standardIcon(picture, option, widget) : icon;
}

int ThemeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_Slider_AbsoluteSetButtons:
      // A click beside the knob takes it there at once.
      return Qt::LeftButton;
    case SH_EtchDisabledText:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, answer);
  }
}

}  // namespace kestrin::ui::kit
