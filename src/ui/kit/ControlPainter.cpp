// SPDX-License-Identifier: MIT
#include "ui/kit/ControlPainter.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {
namespace {

constexpr qreal kControlRadius = 5;
constexpr qreal kRing = 2;
constexpr qreal kMark = 16;

/// Keeps the painter's pen, brush and hints for the caller.
class Saved {
 public:
  explicit Saved(QPainter* painter) : m_painter(painter) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
  }
  ~Saved() { m_painter->restore(); }
  Saved(const Saved&) = delete;
  Saved& operator=(const Saved&) = delete;

 private:
  QPainter* m_painter;
};

QRectF Centered(const QRectF& rect, qreal side) {
  return {rect.center().x() - side / 2, rect.center().y() - side / 2, side, side};
}

/// The part of the bar that is done.
QRectF Done(const QStyleOptionProgressBar& bar) {
  QRectF rect(bar.rect);
  const double span = static_cast<double>(bar.maximum) - bar.minimum;
  const double share = span > 0 ? std::clamp((bar.progress - bar.minimum) / span, 0.0, 1.0) : 0.0;
  const double width = rect.width() * share;
  const bool fromRight = (bar.direction == Qt::RightToLeft) != bar.invertedAppearance;
  if (fromRight) rect.setLeft(rect.right() - width);
  rect.setWidth(width);
  return rect;
}

}  // namespace

ControlPainter::ControlPainter(QPainter* painter, const QStyleOption* option) : m_painter(painter), m_option(option) {}

bool ControlPainter::Has(int state) const { return (m_option->state & QStyle::State(state)) != 0; }

void ControlPainter::Box(const QRectF& rect, qreal radius, const QColor& fill, const QColor& edge, qreal width) const {
  const Saved saved(m_painter);
  m_painter->setBrush(fill);
  m_painter->setPen(width > 0 ? QPen(edge, width) : QPen(Qt::NoPen));
  const qreal half = width / 2;
  m_painter->drawRoundedRect(rect.adjusted(half, half, -half, -half), radius - half, radius - half);
}

void ControlPainter::ButtonPanel(bool isPrimary, bool isQuiet) const {
  const auto color = [this](ColorRole role) { return ColorOf(role, m_option->palette); };
  const bool enabled = Has(QStyle::State_Enabled);
  const bool focused = enabled && Has(QStyle::State_HasFocus);
  const bool down = Has(QStyle::State_Sunken | QStyle::State_On);
  const bool hot = enabled && Has(QStyle::State_MouseOver);
  const QRectF rect(m_option->rect);

  if (isPrimary && enabled) {
    const QColor accent = color(ColorRole::Accent);
    // Towards the text's opposite, so that the text gains contrast rather than loses it.
    const bool dark = IsDark(m_option->palette);
    const QColor fill =
        !down && !hot ? accent : (dark ? accent.lighter(down ? 116 : 108) : accent.darker(down ? 124 : 112));
    Box(rect, kControlRadius, fill, fill, 0);
    if (focused)
      Box(rect.adjusted(2, 2, -2, -2), kControlRadius - 2, Qt::transparent, color(ColorRole::AccentText), kRing);
    return;
  }
  if (isPrimary || !isQuiet) {
    const QColor fill =
        !enabled ? color(ColorRole::Background)
                 : (down ? color(ColorRole::Selection) : color(hot ? ColorRole::AccentSoft : ColorRole::Card));
    const QColor edge = !enabled ? color(ColorRole::Line) : color(focused ? ColorRole::Accent : ColorRole::Outline);
    Box(rect, kControlRadius, fill, edge, focused ? kRing : 1);
    return;
  }
  if (enabled && (down || hot)) {
    Box(rect, kControlRadius, color(down ? ColorRole::Selection : ColorRole::AccentSoft), Qt::transparent, 0);
  }
  if (focused) Box(rect, kControlRadius, Qt::transparent, color(ColorRole::Accent), kRing);
}

void ControlPainter::Tab() const {
  const auto color = [this](ColorRole role) { return ColorOf(role, m_option->palette); };
  const QRectF rect(m_option->rect);
  const bool enabled = Has(QStyle::State_Enabled);
  if (enabled && Has(QStyle::State_MouseOver)) {
    Box(rect.adjusted(0, 0, 0, -3), kControlRadius, color(ColorRole::AccentSoft), Qt::transparent, 0);
  }
  if (Has(QStyle::State_Selected)) {
    const QColor mark = color(enabled ? ColorRole::Accent : ColorRole::Line);
    Box({rect.left() + 4, rect.bottom() - 3, rect.width() - 8, 3}, 1.5, mark, Qt::transparent, 0);
  }
  if (enabled && Has(QStyle::State_HasFocus))
    Box(rect, kControlRadius, Qt::transparent, color(ColorRole::Accent), kRing);
}

void ControlPainter::Field(bool hasFocus) const {
  const auto color = [this](ColorRole role) { return ColorOf(role, m_option->palette); };
  const bool enabled = Has(QStyle::State_Enabled);
  const QColor fill = color(enabled ? ColorRole::Card : ColorRole::Background);
  const QColor edge = !enabled ? color(ColorRole::Line) : color(hasFocus ? ColorRole::Accent : ColorRole::Outline);
  Box(m_option->rect, kControlRadius, fill, edge, enabled && hasFocus ? kRing : 1);
}

void ControlPainter::ListFrame() const {
  const bool focused = Has(QStyle::State_HasFocus) && Has(QStyle::State_Enabled);
  const QColor edge = ColorOf(focused ? ColorRole::Accent : ColorRole::Line, m_option->palette);
  Box(m_option->rect, kControlRadius, Qt::transparent, edge, focused ? kRing : 1);
}

void ControlPainter::RadioButton() const {
  const auto color = [this](ColorRole role) { return ColorOf(role, m_option->palette); };
  const bool enabled = Has(QStyle::State_Enabled);
  const bool on = Has(QStyle::State_On);
  const QRectF mark = Centered(m_option->rect, kMark);
  const QColor edge = !enabled ? color(ColorRole::Line)
                               : color(on || Has(QStyle::State_MouseOver) ? ColorRole::Accent : ColorRole::Outline);
  Box(mark, kMark / 2, enabled ? color(ColorRole::Card) : color(ColorRole::Background), edge, on ? 5 : 1.6);
  if (enabled && Has(QStyle::State_HasFocus)) {
    const QRectF ring = Centered(m_option->rect, kMark + 2 * kRing + 2);
    Box(ring, ring.width() / 2, Qt::transparent, color(ColorRole::Accent), kRing);
  }
}

void ControlPainter::CheckBox() const {
  const auto color = [this](ColorRole role) { return ColorOf(role, m_option->palette); };
  const bool enabled = Has(QStyle::State_Enabled);
  const bool marked = Has(QStyle::State_On | QStyle::State_NoChange);
  const QRectF box = Centered(m_option->rect, kMark);
  if (marked) {
    const QColor fill = enabled ? color(ColorRole::Accent) : color(ColorRole::Line);
    Box(box, 3.5, fill, fill, 0);
    const Saved saved(m_painter);
    const QColor ink = enabled ? color(ColorRole::AccentText) : color(ColorRole::Soft);
    m_painter->setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    m_painter->setBrush(Qt::NoBrush);
    m_painter->translate(box.topLeft());
    if (Has(QStyle::State_NoChange)) {
      m_painter->drawLine(QPointF(4.5, 8), QPointF(11.5, 8));
    } else {
      m_painter->drawPolyline(QPolygonF({QPointF(4, 8.4), QPointF(6.9, 11.2), QPointF(12, 5.2)}));
    }
  } else {
    const QColor edge = !enabled ? color(ColorRole::Line)
                                 : color(Has(QStyle::State_MouseOver) ? ColorRole::Accent : ColorRole::Outline);
    Box(box, 3.5, enabled ? color(ColorRole::Card) : color(ColorRole::Background), edge, 1.6);
  }
  if (enabled && Has(QStyle::State_HasFocus)) {
    Box(Centered(m_option->rect, kMark + 2 * kRing + 2), 5.5, Qt::transparent, color(ColorRole::Accent), kRing);
  }
}

void ControlPainter::Row() const {
  if (Has(QStyle::State_Selected)) {
    m_painter->fillRect(m_option->rect, m_option->palette.brush(QPalette::Highlight));
  } else if (Has(QStyle::State_MouseOver) && Has(QStyle::State_Enabled)) {
    m_painter->fillRect(m_option->rect, ColorOf(ColorRole::AccentSoft, m_option->palette));
  }
}

void ControlPainter::Knob(const QRectF& rect) const {
  const auto color = [this](ColorRole role) { return ColorOf(role, m_option->palette); };
  const bool enabled = Has(QStyle::State_Enabled);
  const bool hot = enabled && Has(QStyle::State_MouseOver | QStyle::State_Sunken);
  const QColor edge = color(enabled ? ColorRole::Accent : ColorRole::Outline);
  Box(Centered(rect, kMark), kMark / 2, color(hot ? ColorRole::AccentSoft : ColorRole::Card), edge, 2);
  if (enabled && Has(QStyle::State_HasFocus)) {
    const QRectF ring = Centered(rect, kMark + 2 * kRing + 2);
    Box(ring, ring.width() / 2, Qt::transparent, edge, kRing);
  }
}

void ControlPainter::Chevron(const QRectF& rect, bool isUp, bool isEnabled) const {
  const Saved saved(m_painter);
  const QColor ink = ColorOf(isEnabled ? ColorRole::Soft : ColorRole::Line, m_option->palette);
  m_painter->setPen(QPen(ink, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  m_painter->setBrush(Qt::NoBrush);
  const qreal reach = std::min<qreal>(4, rect.height() / 3);
  const qreal rise = (isUp ? -reach : reach) / 2;
  const QPointF center = rect.center();
  m_painter->drawPolyline(
      QPolygonF({center + QPointF(-reach, -rise), center + QPointF(0, rise), center + QPointF(reach, -rise)}));
}

void ControlPainter::ProgressGroove() const {
  const QRectF rect(m_option->rect);
  Box(rect, std::min<qreal>(rect.height() / 2, 8), ColorOf(ColorRole::Line, m_option->palette), Qt::transparent, 0);
}

void ControlPainter::ProgressContents(const QStyleOptionProgressBar& bar) const {
  const Saved saved(m_painter);
  const QRectF rect(bar.rect);
  const qreal radius = std::min<qreal>(rect.height() / 2, 8);
  QPainterPath shape;
  shape.addRoundedRect(rect, radius, radius);
  m_painter->setClipPath(shape, Qt::IntersectClip);
  const bool enabled = Has(QStyle::State_Enabled);
  m_painter->fillRect(Done(bar), ColorOf(enabled ? ColorRole::Accent : ColorRole::Outline, bar.palette));
}

void ControlPainter::ProgressText(const QStyleOptionProgressBar& bar) const {
  if (!bar.textVisible || bar.text.isEmpty()) return;
  const Saved saved(m_painter);
  const QRectF done = Done(bar);
  const auto draw = [this, &bar](ColorRole role) {
    m_painter->setPen(ColorOf(role, bar.palette));
    m_painter->drawText(bar.rect, Qt::AlignCenter | Qt::TextSingleLine, bar.text);
  };
  // The text lies partly on the done and partly on the open side: each side in the colour that can be read there.
  m_painter->save();
  m_painter->setClipRect(done, Qt::IntersectClip);
  draw(ColorRole::AccentText);
  m_painter->restore();
  QPainterPath open;
  open.addRect(bar.rect);
  QPainterPath covered;
  covered.addRect(done);
  m_painter->setClipPath(open.subtracted(covered), Qt::IntersectClip);
  draw(ColorRole::Text);
}

}  // namespace kestrin::ui::kit
