// SPDX-License-Identifier: MIT
#include "ui/motion/SensorChart.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "core/sound/SlotKind.h"
#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::motion {

namespace {

using core::motion::kStrongest;
using core::motion::Movement;
using core::motion::SensorChange;
using core::motion::SensorRecord;
using kit::ColorOf;
using kit::ColorRole;

constexpr QSize kUsual{560, 350};
constexpr QSize kSmallest{280, 170};
constexpr int kTiltHeight = 22;
/// The least that the tilt's strip is high for.
constexpr std::int32_t kUsualTilt = 31;
constexpr int kHandleWidth = 44;
constexpr int kHandleHeight = 18;
/// How far from the line the pointer still takes hold of it.
constexpr int kReach = kHandleHeight / 2;
constexpr std::chrono::seconds kGridStep{2};
/// How often a screen reader is told something else of what changes all the time.
constexpr qint64 kDescribedMilliseconds = 1000;

struct Axis {
  const char* name;
  std::int32_t SensorChange::*change;
  ColorRole color;
  /// Where there are hardly any colours.
  Qt::PenStyle style;
};
constexpr std::array<Axis, 3> kAxes{{{"X", &SensorChange::x, ColorRole::Accent, Qt::SolidLine},
                                     {"Y", &SensorChange::y, ColorRole::Ok, Qt::DashLine},
                                     {"Z", &SensorChange::z, ColorRole::Soft, Qt::DotLine}}};

/// A colour as a ground of that share, or none where nothing translucent can be made out.
QColor Tint(QColor color, double share, const QPalette& palette) {
  color.setAlphaF(kit::IsHighContrast(palette) ? 0.0F : static_cast<float>(share));
  return color;
}

/// The runs of samples between which nothing is unknown, each as the line of one of their values.
template <class Place>
std::vector<QPolygonF> Lines(const std::deque<SensorRecord::Sample>& samples, const Place& place) {
  std::vector<QPolygonF> lines;
  for (const SensorRecord::Sample& sample : samples) {
    if (lines.empty() || sample.isAfterPause) lines.emplace_back();
    lines.back().append(place(sample));
  }
  return lines;
}

}  // namespace

SensorChart::SensorChart(QWidget* parent) : QWidget(parent) {
  setObjectName("SensorChart");
  setAccessibleName(tr("What the board feels"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMouseTracking(true);
  Describe();
}

QSize SensorChart::sizeHint() const { return kUsual; }
QSize SensorChart::minimumSizeHint() const { return kSmallest; }

void SensorChart::Show(const SensorRecord& record) {
  m_record = record;
  if (!m_described.isValid() || m_described.elapsed() >= kDescribedMilliseconds || m_record.Samples().size() <= 1 ||
      m_describedMarks != m_record.Marks().size())
    Describe();
  update();
}

void SensorChart::SetThreshold(std::int32_t threshold) {
  threshold = std::clamp(threshold, 0, kStrongest);
  if (m_threshold == threshold) return;
  m_threshold = threshold;
  Describe();
  update();
}

void SensorChart::SetSuggestion(std::optional<std::int32_t> threshold) {
  if (m_suggestion == threshold) return;
  m_suggestion = threshold;
  update();
}

int SensorChart::LineY() const { return qRound(YOf(m_threshold)); }

void SensorChart::Describe() {
  QString text = tr("Impact threshold %1.").arg(m_threshold);
  if (!m_record.Samples().empty()) {
    const core::motion::SensorReading& last = m_record.Samples().back().reading;
    text.prepend(tr("X %1, Y %2, Z %3, tilt %4.").arg(last.x).arg(last.y).arg(last.z).arg(last.tilt) + ' ');
  }
  m_describedMarks = m_record.Marks().size();
  m_described.start();
  setAccessibleDescription(text);
}

QRect SensorChart::Plot() const {
  const int line = fontMetrics().height();
  const int left = fontMetrics().horizontalAdvance("−31") + kit::kGrid;
  const int right = fontMetrics().horizontalAdvance("X") + kit::kGrid;
  // Below: the tilt, the seconds, the marks.
  const int below = kit::kHalf + kTiltHeight + kit::kHair + line + kit::kHalf + line + kit::kHalf;
  return rect().adjusted(left, line / 2, -right, -below);
}

QRect SensorChart::TiltStrip() const {
  const QRect plot = Plot();
  return {plot.left(), plot.bottom() + 1 + kit::kHalf, plot.width(), kTiltHeight};
}

qreal SensorChart::YOf(std::int32_t value) const {
  const QRect plot = Plot();
  return plot.top() +
         (plot.height() - 1) * (kStrongest - std::clamp<qreal>(value, -kStrongest, kStrongest)) / (2.0 * kStrongest);
}

qreal SensorChart::XOf(std::chrono::milliseconds at) const {
  const QRect plot = Plot();
  const auto before = static_cast<qreal>((m_record.Samples().back().reading.at - at).count());
  return plot.right() - plot.width() * before / static_cast<qreal>(SensorRecord::kKept.count());
}

int SensorChart::ThresholdAt(int y) const {
  const QRect plot = Plot();
  const qreal value = kStrongest - 2.0 * kStrongest * (y - plot.top()) / std::max(plot.height() - 1, 1);
  return std::clamp(qRound(std::abs(value)), 0, kStrongest);
}

bool SensorChart::IsAtLine(const QPoint& place) const {
  const QRect plot = Plot();
  if (place.x() < plot.left() || place.x() > plot.right()) return false;
  return std::abs(place.y() - YOf(m_threshold)) <= kReach || std::abs(place.y() - YOf(-m_threshold)) <= kReach;
}

void SensorChart::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && IsAtLine(event->pos()))
    m_isDragged = true;
  else
    QWidget::mousePressEvent(event);
}

void SensorChart::mouseMoveEvent(QMouseEvent* event) {
  if (m_isDragged) {
    if (const int threshold = ThresholdAt(event->pos().y()); threshold != m_threshold) emit thresholdDragged(threshold);
    return;
  }
  if (IsAtLine(event->pos()))
    setCursor(Qt::SizeVerCursor);
  else
    unsetCursor();
}

void SensorChart::mouseReleaseEvent(QMouseEvent* event) {
  if (!std::exchange(m_isDragged, false)) QWidget::mouseReleaseEvent(event);
}

void SensorChart::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintGround(painter);
  PaintScale(painter);
  PaintSuggestion(painter);
  if (!m_record.Samples().empty()) {
    PaintCurves(painter);
    PaintTilt(painter);
    PaintMarks(painter);
  }
  PaintThreshold(painter);
}

void SensorChart::PaintGround(QPainter& painter) const {
  const QRect plot = Plot();
  painter.fillRect(plot, ColorOf(ColorRole::Background, palette()));
  painter.fillRect(TiltStrip(), ColorOf(ColorRole::Background, palette()));
  const QColor beyond = Tint(ColorOf(ColorRole::Error, palette()), 0.1, palette());
  painter.fillRect(QRectF(QPointF(plot.left(), plot.top()), QPointF(plot.right() + 1, YOf(m_threshold))), beyond);
  painter.fillRect(QRectF(QPointF(plot.left(), YOf(-m_threshold)), QPointF(plot.right() + 1, plot.bottom() + 1)),
                   beyond);
}

void SensorChart::PaintScale(QPainter& painter) const {
  const QRect plot = Plot();
  const QRect strip = TiltStrip();
  const int line = fontMetrics().height();
  const auto at = [&](std::int32_t value, const QString& text) {
    painter.drawText(QRectF(0, YOf(value) - line / 2.0, plot.left() - kit::kHalf, line),
                     static_cast<int>(Qt::AlignRight) | static_cast<int>(Qt::AlignVCenter), text);
  };
  painter.setPen(ColorOf(ColorRole::Soft, palette()));
  for (const std::int32_t value : {31, 20, 0, -20, -31})
    // The threshold's own number stands there in its place.
    if (std::abs(YOf(value) - YOf(m_threshold)) >= line)
      at(value, (value < 0 ? QStringLiteral("−") : QString()) + QString::number(std::abs(value)));
  painter.drawText(QRect(0, strip.top(), plot.left() - kit::kHalf, strip.height()),
                   static_cast<int>(Qt::AlignRight) | static_cast<int>(Qt::AlignVCenter), tr("tilt"));

  constexpr int kSeconds = SensorRecord::kKept / std::chrono::seconds(1);
  constexpr int kStep = kGridStep.count();
  for (int seconds = kSeconds; seconds >= 0; seconds -= kStep) {
    const int x = plot.right() - plot.width() * seconds / kSeconds;
    painter.setPen(ColorOf(ColorRole::Line, palette()));
    if (seconds > 0 && seconds < kSeconds) painter.drawLine(x, plot.top(), x, strip.bottom());
    painter.setPen(ColorOf(ColorRole::Soft, palette()));
    const QString text = seconds == 0 ? tr("now") : tr("−%1 s").arg(seconds);
    const int width = fontMetrics().horizontalAdvance(text);
    const int left = std::clamp(x - width / 2, plot.left(), plot.right() - width);
    painter.drawText(QRect(left, strip.bottom() + 1 + kit::kHair, width, line), Qt::AlignLeft, text);
  }
  painter.setPen(ColorOf(ColorRole::Line, palette()));
  painter.drawLine(QPointF(plot.left(), YOf(0)), QPointF(plot.right(), YOf(0)));

  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(ColorOf(ColorRole::Text, palette()));
  at(m_threshold, QString::number(m_threshold));
  painter.setFont(font());
}

void SensorChart::PaintCurves(QPainter& painter) const {
  const auto& samples = m_record.Samples();
  const bool isContrast = kit::IsHighContrast(palette());
  struct End {
    const Axis* axis;
    qreal y;
  };
  std::vector<End> ends;
  for (const Axis& axis : kAxes) {
    painter.setPen(QPen(ColorOf(axis.color, palette()), 1.5, isContrast ? axis.style : Qt::SolidLine));
    for (const QPolygonF& curve : Lines(samples, [&](const SensorRecord::Sample& sample) {
           return QPointF(XOf(sample.reading.at), YOf(sample.change.*axis.change));
         }))
      painter.drawPolyline(curve);
    ends.push_back({&axis, YOf(samples.back().change.*axis.change)});
  }
  // Each name at the end of its curve, as far as there is room for all three.
  std::ranges::stable_sort(ends, {}, &End::y);
  const int line = fontMetrics().height();
  qreal top = ends[1].y - 1.5 * line;
  top = std::min(top, ends[0].y - 0.5 * line);
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  for (const End& end : ends) {
    top = std::max(top, end.y - 0.5 * line);
    painter.setPen(ColorOf(end.axis->color, palette()));
    painter.drawText(QRectF(Plot().right() + kit::kHalf, top, width(), line), Qt::AlignLeft, end.axis->name);
    top += line - kit::kHair;
  }
  painter.setFont(font());
}

void SensorChart::PaintTilt(QPainter& painter) const {
  const auto& samples = m_record.Samples();
  const auto tilt = [](const SensorRecord::Sample& sample) { return sample.reading.tilt; };
  const std::int32_t most = std::max(kUsualTilt, tilt(*std::ranges::max_element(samples, {}, tilt)));
  const QRectF strip = QRectF(TiltStrip()).adjusted(0, 2, 0, -2);
  painter.setPen(QPen(ColorOf(ColorRole::Text, palette()), 1.5));
  for (const QPolygonF& curve : Lines(samples, [&](const SensorRecord::Sample& sample) {
         return QPointF(XOf(sample.reading.at), strip.bottom() - strip.height() * tilt(sample) / most);
       }))
    painter.drawPolyline(curve);
}

void SensorChart::PaintThreshold(QPainter& painter) const {
  const QRect plot = Plot();
  const QColor red = ColorOf(ColorRole::Error, palette());
  painter.setPen(QPen(red, 1, Qt::DashLine));
  painter.drawLine(QPointF(plot.left(), YOf(-m_threshold)), QPointF(plot.right(), YOf(-m_threshold)));
  painter.setPen(QPen(red, 2));
  const qreal y = YOf(m_threshold);
  painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
  const QRectF handle(plot.right() - 1.5 * kHandleWidth, y - kHandleHeight / 2.0, kHandleWidth, kHandleHeight);
  painter.setBrush(ColorOf(ColorRole::Card, palette()));
  painter.drawRoundedRect(handle, kHandleHeight / 2.0, kHandleHeight / 2.0);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(red, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (const qreal side : {-1.0, 1.0}) {
    const QPointF tip(handle.center().x(), y + side * 5.5);
    painter.drawPolyline(QPolygonF({tip - QPointF(4, side * 3.5), tip, tip - QPointF(-4, side * 3.5)}));
  }
}

void SensorChart::PaintSuggestion(QPainter& painter) const {
  if (!m_suggestion) return;
  const QRect plot = Plot();
  const qreal y = YOf(*m_suggestion);
  painter.setPen(QPen(ColorOf(ColorRole::Accent, palette()), 1, Qt::DashLine));
  painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
  // On the side of its line where the red one is not.
  const int line = fontMetrics().height();
  const qreal top = *m_suggestion < m_threshold ? y + kit::kHair : y - line - kit::kHair;
  painter.drawText(QRectF(plot.left() + kit::kGrid, top, plot.width(), line), Qt::AlignLeft,
                   tr("suggested: %1").arg(*m_suggestion));
}

void SensorChart::PaintMarks(QPainter& painter) const {
  const QRect plot = Plot();
  const int height = fontMetrics().height() + kit::kHair;
  const int top = rect().bottom() - height;
  // From the last one back: those for which there is no room are the oldest.
  qreal free = rect().right();
  for (auto mark = m_record.Marks().rbegin(); mark != m_record.Marks().rend(); ++mark) {
    const bool isTap = mark->movement.kind == Movement::Kind::Tap;
    const QString text = (isTap ? tr("tap %1") : tr("swing %1")).arg(mark->number);
    const int width = height + fontMetrics().horizontalAdvance(text) + kit::kGrid;
    const qreal left = std::min(std::max<qreal>(XOf(mark->movement.at) - width / 2.0, plot.left()), free - width);
    if (left < plot.left()) return;
    free = left - kit::kHalf;
    const QColor color =
        kit::SlotColor(isTap ? core::sound::SlotKind::Impact : core::sound::SlotKind::Motion, palette());
    const QRectF chip(left + 0.5, top + 0.5, width, height - 1);
    painter.setPen(QPen(color, 1));
    painter.setBrush(Tint(color, 0.14, palette()));
    painter.drawRoundedRect(chip, chip.height() / 2, chip.height() / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(left + height / 2.0 + 1, chip.center().y()), 3.5, 3.5);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(ColorOf(ColorRole::Text, palette()));
    painter.drawText(chip.adjusted(height, 0, 0, 0), Qt::AlignVCenter, text);
  }
}

}  // namespace kestrin::ui::motion
