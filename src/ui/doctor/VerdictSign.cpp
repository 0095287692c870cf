// SPDX-License-Identifier: MIT
#include "ui/doctor/VerdictSign.h"

#include <QPainter>
#include <QPolygonF>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::doctor {

using core::doctor::Verdict;

namespace {

constexpr qreal kMarkLine = 2.2;
constexpr qreal kRingLine = 2;
/// A dash and a gap of the ring, in widths of its line: the ring is 11 of them long, to which they add up.
constexpr qreal kPeriods = 11;
constexpr qreal kDashShare = 0.6;

}  // namespace

VerdictSign::VerdictSign(int number, QWidget* parent) : QWidget(parent), m_number(number) {
  setFixedSize(kSide, kSide);
}

void VerdictSign::Show(Verdict verdict) {
  m_verdict = verdict;
  update();
}

void VerdictSign::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto color = [this](kit::ColorRole role) { return kit::ColorOf(role, palette()); };
  if (m_verdict == Verdict::Unknown) {
    const QRectF ring = QRectF(rect()).adjusted(kRingLine / 2, kRingLine / 2, -kRingLine / 2, -kRingLine / 2);
    constexpr qreal kTurn = 3.14159265358979;
    const qreal period = kTurn * ring.width() / kRingLine / kPeriods;
    QPen pen(color(kit::ColorRole::Outline), kRingLine, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({period * kDashShare, period * (1 - kDashShare)});
    painter.setPen(pen);
    painter.drawEllipse(ring);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(color(kit::ColorRole::Soft));
    painter.drawText(rect(), Qt::AlignCenter, QString::number(m_number));
    return;
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(color(m_verdict == Verdict::Ok ? kit::ColorRole::Ok : kit::ColorRole::Error));
  painter.drawEllipse(QRectF(rect()));
  painter.setPen(QPen(color(kit::ColorRole::Card), kMarkLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  if (m_verdict == Verdict::Ok) {
    painter.drawPolyline(QPolygonF({QPointF(7.5, 12.5), QPointF(10.5, 15.5), QPointF(16.5, 8.5)}));
  } else {
    painter.drawLine(QPointF(8.5, 8.5), QPointF(15.5, 15.5));
    painter.drawLine(QPointF(15.5, 8.5), QPointF(8.5, 15.5));
  }
}

}  // namespace kestrin::ui::doctor
