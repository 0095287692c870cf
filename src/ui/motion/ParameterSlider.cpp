// SPDX-License-Identifier: MIT
#include "ui/motion/ParameterSlider.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOptionSlider>
#include <algorithm>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::motion {

namespace {

/// From tick to tick, at least.
constexpr int kPitch = 2;
/// Sliders of few values are as wide as those of a byte's.
constexpr int kWidestSteps = 254;
constexpr int kUnitTick = 3;
constexpr int kFifthTick = 5;
constexpr int kRoundTick = 8;
/// The mark is a triangle that points up to its tick.
constexpr int kMarkWidth = 12;
constexpr int kMarkHeight = 9;
constexpr int kTickRoom = kRoundTick + 2;
constexpr int kNarrow = 150;
/// The suggestion is a smaller one that points down.
constexpr int kHintWidth = 8;
constexpr int kHintHeight = 5;

}  // namespace

ParameterSlider::ParameterSlider(int minimum, int maximum, int unit, int round, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), m_round(round) {
  setRange(minimum, maximum);
  setSingleStep(unit);
  setTickInterval(unit);
  setTickPosition(QSlider::TicksBelow);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ParameterSlider::SetMark(std::optional<int> value) {
  if (value) value = std::clamp(*value, minimum(), maximum());
  if (m_mark == value) return;
  m_mark = value;
  update();
}

void ParameterSlider::SetSuggestion(std::optional<int> value) {
  if (value) value = std::clamp(*value, minimum(), maximum());
  if (m_suggestion == value) return;
  m_suggestion = value;
  update();
}

void ParameterSlider::SetNarrow(bool isNarrow) {
  m_isNarrow = isNarrow;
  setSizePolicy(isNarrow ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
  updateGeometry();
}

QSize ParameterSlider::sizeHint() const {
  if (m_isNarrow) return {kNarrow, KnobExtent() + kTickRoom};
  const int steps = (maximum() - minimum()) / tickInterval();
  // With so few pixels between ticks, one more or less somewhere would be seen.
  const int room = kPitch * (steps > kWidestSteps / 2 ? steps : kWidestSteps);
  return {room + style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this), KnobExtent() + kTickRoom};
}

int ParameterSlider::KnobExtent() const { return style()->pixelMetric(QStyle::PM_SliderThickness, nullptr, this); }

void ParameterSlider::initStyleOption(QStyleOptionSlider* option) const {
  QSlider::initStyleOption(option);
  // The style sees the upper part only, where the knob is.
  option->rect.setHeight(KnobExtent());
  option->tickPosition = QSlider::NoTicks;
}

int ParameterSlider::PlaceOf(int value) const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  option.sliderPosition = value;
  const QRect knob = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
  return knob.left() + knob.width() / 2;
}

void ParameterSlider::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  PaintTicks(painter);
  QStyleOptionSlider option;
  initStyleOption(&option);
  option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
  style()->drawComplexControl(QStyle::CC_Slider, &option, &painter, this);
  if (m_mark && isEnabled()) PaintMark(painter);
  if (m_suggestion && isEnabled()) PaintSuggestion(painter);
}

void ParameterSlider::PaintTicks(QPainter& painter) const {
  const int first = PlaceOf(minimum());
  const int room = PlaceOf(maximum()) - first;
  const QColor strong = kit::ColorOf(kit::ColorRole::Soft, palette());
  const QColor faint = kit::ColorOf(kit::ColorRole::Outline, palette());
  const int steps = (maximum() - minimum()) / tickInterval();
  const bool hasAll = room >= kPitch * steps;
  const bool hasFifths = room >= 2 * kPitch * steps / 5;
  for (int value = minimum(); value <= maximum(); value += tickInterval()) {
    const bool isRound = value % m_round == 0;
    const bool isFifth = value % (5 * tickInterval()) == 0;
    if (!isRound && (!isFifth || !hasFifths) && !hasAll) continue;
    const int x = first + QStyle::sliderPositionFromValue(minimum(), maximum(), value, room);
    painter.fillRect(x, KnobExtent(), 1,
                     isRound   ? kRoundTick
                     : isFifth ? kFifthTick
                               : kUnitTick,
                     isRound && isEnabled() ? strong : faint);
  }
}

void ParameterSlider::PaintMark(QPainter& painter) const {
  const qreal middle = PlaceOf(*m_mark) + 0.5;
  const qreal bottom = KnobExtent() + kTickRoom - 0.5;
  QPainterPath triangle;
  triangle.moveTo(middle, bottom - kMarkHeight);
  triangle.lineTo(middle + kMarkWidth / 2.0, bottom);
  triangle.lineTo(middle - kMarkWidth / 2.0, bottom);
  triangle.closeSubpath();
  painter.setRenderHint(QPainter::Antialiasing);
  // A rim in the ground's colour keeps it apart from the ticks.
  painter.setPen(QPen(kit::ColorOf(kit::ColorRole::Card, palette()), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(kit::ColorOf(kit::ColorRole::Text, palette()));
  painter.drawPath(triangle);
}

void ParameterSlider::PaintSuggestion(QPainter& painter) const {
  const qreal middle = PlaceOf(*m_suggestion) + 0.5;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kit::ColorOf(kit::ColorRole::Accent, palette()));
  painter.drawPolygon(QPolygonF(
      {QPointF(middle - kHintWidth / 2.0, 0), QPointF(middle + kHintWidth / 2.0, 0), QPointF(middle, kHintHeight)}));
}

}  // namespace kestrin::ui::motion
