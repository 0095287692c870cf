// SPDX-License-Identifier: MIT
#include "ui/board/DiffersSign.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::board {

using core::sound::Differs;

namespace {

constexpr int kSide = 14;
constexpr double kPen = 1.6;

QString Text(const char* text) { return QCoreApplication::translate("kestrin::ui::board::DiffersSign", text); }

}  // namespace

QString DiffersText(std::optional<Differs> differs, const QString& there) {
  if (!differs) return Text(QT_TRANSLATE_NOOP("kestrin::ui::board::DiffersSign", "Same"));
  switch (*differs) {
    case Differs::Volume:
      return Text(QT_TRANSLATE_NOOP("kestrin::ui::board::DiffersSign", "Other volume"));
    case Differs::Sound:
      break;
    case Differs::OnlyInFirst:
      return Text(QT_TRANSLATE_NOOP("kestrin::ui::board::DiffersSign", "Only here"));
    case Differs::OnlyInSecond:
      return Text(QT_TRANSLATE_NOOP("kestrin::ui::board::DiffersSign", "Only %1")).arg(there);
  }
  return Text(QT_TRANSLATE_NOOP("kestrin::ui::board::DiffersSign", "Other sound"));
}

DiffersSign::DiffersSign(std::optional<Differs> differs, QWidget* parent) : QWidget(parent), m_differs(differs) {
  setFixedSize(kSide, kSide);
}

void DiffersSign::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(foregroundRole()), kPen));
  const auto line = [&painter](double x1, double y1, double x2, double y2) {
    painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
  };
  const bool isOnly = m_differs == Differs::OnlyInFirst || m_differs == Differs::OnlyInSecond;
  if (isOnly) {
    line(1, 7, 13, 7);
    if (m_differs == Differs::OnlyInFirst) line(7, 1, 7, 13);
  } else if (m_differs == Differs::Volume) {
    QPainterPath speaker(QPointF(1, 5));
    for (const QPointF corner : {QPointF(3.5, 5), QPointF(7, 2), QPointF(7, 12), QPointF(3.5, 9), QPointF(1, 9)})
      speaker.lineTo(corner);
    speaker.closeSubpath();
    painter.drawPath(speaker);
    painter.drawArc(QRectF(6, 4, 5, 6), -60 * 16, 120 * 16);
    painter.drawArc(QRectF(5, 1.5, 8.5, 11), -60 * 16, 120 * 16);
  } else {
    line(1, 5, 13, 5);
    line(1, 9, 13, 9);
    if (m_differs) line(4, 13, 10, 1);
  }
}

}  // namespace kestrin::ui::board
