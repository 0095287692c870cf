// SPDX-License-Identifier: MIT
#include "ui/led/PulsePlot.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "core/led/PulseTimes.h"
#include "ui/led/BladeView.h"

namespace kestrin::ui::led {

namespace {

constexpr int kFrameMilliseconds = 33;
constexpr qreal kGroundRadius = 6;
constexpr qreal kSide = 12;
constexpr qreal kTop = 10;
// Colours for the dark ground, which is the same in every scheme.
constexpr QRgb kInk = 0xffe8eaee;
constexpr QRgb kSoftInk = 0xffaab2c0;
constexpr QRgb kGridLine = 0xff2a303a;

QString Seconds(double milliseconds) {
  return PulsePlot::tr("%1 s").arg(QString::fromStdString(core::led::SecondsText(milliseconds)));
}

}  // namespace

PulsePlot::PulsePlot(QWidget* parent) : QWidget(parent), m_timer(this) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  m_timer.setInterval(kFrameMilliseconds);
  connect(&m_timer, &QTimer::timeout, this, &PulsePlot::Move);
  m_played.start();
}

QSize PulsePlot::minimumSizeHint() const { return {160, 44 + 2 * fontMetrics().height()}; }

void PulsePlot::Show(const PulseShape& shape, int rest) {
  m_shape = shape;
  m_rest = rest;
  QStringList texts;
  for (const PulseShape::Phase& phase : m_shape.Phases())
    texts.append(phase.name + QLatin1Char(' ') + Seconds(phase.length));
  setAccessibleDescription(texts.join(QStringLiteral(", ")));
  Move();
  update();
}

void PulsePlot::SetColors(const QColor& low, const QColor& high) {
  m_low = low;
  m_high = high;
  update();
}

void PulsePlot::Restart() {
  m_played.restart();
  Move();
}

void PulsePlot::Move() {
  // Nobody sees it while something lies over it or the window is away.
  if (m_timer.isActive() && (visibleRegion().isEmpty() || window()->isMinimized())) return;
  const double turn = m_shape.Length() + m_rest;
  double moment = turn > 0 ? std::fmod(static_cast<double>(m_played.elapsed()), turn) : 0;
  // At rest the marker waits at the start, in the low level.
  const bool isPlaying = moment < m_shape.Length();
  const double share = isPlaying ? m_shape.ShareAt(moment) : 0;
  if (!isPlaying) moment = 0;
  // A pulse may take hours: what would look the same is not painted again.
  if (std::abs(XOf(moment) - XOf(m_moment)) >= 0.5 || share != m_share) update();
  m_moment = moment;
  if (share == m_share) return;
  m_share = share;
  emit shareChanged(share);
}

void PulsePlot::showEvent(QShowEvent* event) {
  m_timer.start();
  QWidget::showEvent(event);
}

void PulsePlot::hideEvent(QHideEvent* event) {
  m_timer.stop();
  QWidget::hideEvent(event);
}

QRectF PulsePlot::Room() const {
  return QRectF(rect()).adjusted(kSide, kTop + fontMetrics().height(), -kSide, -kTop - fontMetrics().height());
}

double PulsePlot::XOf(double moment) const {
  const QRectF room = Room();
  return m_shape.Length() > 0 ? room.left() + room.width() * moment / m_shape.Length() : room.left();
}

double PulsePlot::YOf(double share) const {
  const QRectF room = Room();
  // The low level is not the ground: it may well shine.
  constexpr double kLow = 0.18;
  return room.bottom() - room.height() * (kLow + (1 - kLow) * share);
}

QColor PulsePlot::ColorAt(double share) const {
  const auto part = static_cast<float>(share);
  const auto mix = [part](float low, float high) { return low + (high - low) * part; };
  return QColor::fromRgbF(mix(m_low.redF(), m_high.redF()), mix(m_low.greenF(), m_high.greenF()),
                          mix(m_low.blueF(), m_high.blueF()));
}

void PulsePlot::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath ground;
  ground.addRoundedRect(rect(), kGroundRadius, kGroundRadius);
  painter.fillPath(ground, QColor(BladeView::kGround));
  if (m_shape.Phases().empty()) {
    painter.setPen(QColor(kSoftInk));
    painter.drawText(rect().adjusted(8, 0, -8, 0), Qt::AlignCenter | Qt::TextWordWrap, tr("All times are 0"));
    return;
  }
  painter.setPen(QColor(kGridLine));
  for (const double share : {0.0, 1.0})
    painter.drawLine(QPointF(Room().left(), YOf(share)), QPointF(Room().right(), YOf(share)));
  painter.drawLine(Room().bottomLeft(), Room().bottomRight());
  PaintPhases(painter);
  PaintNames(painter);
  PaintMarker(painter);
}

void PulsePlot::PaintPhases(QPainter& painter) const {
  const QRectF room = Room();
  // Two colours at one place would be one: where the light jumps, the second comes a trifle later.
  constexpr double kTrifle = 1e-6;
  QPolygonF line;
  QGradientStops stops;
  double start = 0;
  for (const PulseShape::Phase& phase : m_shape.Phases()) {
    line << QPointF(XOf(start), YOf(phase.from));
    stops.append({std::min(1.0, start / m_shape.Length() + kTrifle), ColorAt(phase.from)});
    start += phase.length;
    line << QPointF(XOf(start), YOf(phase.to));
    stops.append({std::min(1.0, start / m_shape.Length()), ColorAt(phase.to)});
  }
  QLinearGradient light(room.left(), 0, room.right(), 0);
  light.setStops(stops);
  painter.setPen(Qt::NoPen);
  painter.setBrush(light);
  painter.drawPolygon(QPolygonF(line) << room.bottomRight() << room.bottomLeft());
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(kInk), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(line);
}

void PulsePlot::PaintNames(QPainter& painter) const {
  const QRectF room = Room();
  const QFontMetricsF metrics(painter.font());
  painter.setPen(QColor(kSoftInk));
  double start = 0;
  for (const PulseShape::Phase& phase : m_shape.Phases()) {
    const QRectF place(XOf(start), room.bottom() + 3, XOf(start + phase.length) - XOf(start), metrics.height());
    start += phase.length;
    const QString full = phase.name + QLatin1Char(' ') + Seconds(phase.length);
    for (const QString& text : {full, phase.name}) {
      if (metrics.horizontalAdvance(text) + 4 > place.width()) continue;
      painter.drawText(place, Qt::AlignCenter, text);
      break;
    }
  }
  painter.drawText(QRectF(kSide, 4, room.width(), metrics.height()), Qt::AlignRight,
                   tr("one turn: %1").arg(Seconds(m_shape.Length())));
}

void PulsePlot::PaintMarker(QPainter& painter) const {
  const double x = XOf(m_moment);
  const QLineF line(x, Room().top() - 2, x, Room().bottom());
  // Dark round light: it is seen on every colour.
  constexpr int kFaint = 120;
  for (const auto& [color, width] : {std::pair{BladeView::kGround, 3.0}, std::pair{kInk, 1.0}}) {
    QColor ink(color);
    ink.setAlpha(kFaint);
    painter.setPen(QPen(ink, width));
    painter.drawLine(line);
  }
  painter.setPen(QPen(QColor(BladeView::kGround), 1.5));
  painter.setBrush(QColor(kInk));
  constexpr qreal kDot = 4.5;
  painter.drawEllipse(QPointF(x, YOf(m_share)), kDot, kDot);
}

}  // namespace kestrin::ui::led
