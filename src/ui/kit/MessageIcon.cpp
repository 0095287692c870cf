// SPDX-License-Identifier: MIT
#include "ui/kit/MessageIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <optional>
#include <utility>

#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {
namespace {

/// The signs are drawn on a square of this side, like the pictures of the buttons.
constexpr qreal kGridSide = 24;
constexpr qreal kLine = 1.7;
constexpr qreal kDot = 1.1;

struct Sign {
  ColorRole role;
  QPainterPath lines;
  /// The middle of the dot that belongs to the sign.
  std::optional<QPointF> dot;
};

QPainterPath Ring() {
  QPainterPath path;
  path.addEllipse(QPointF(12, 12), 9.5, 9.5);
  return path;
}

QPainterPath WithLine(QPainterPath path, const QPointF& from, const QPointF& to) {
  path.moveTo(from);
  path.lineTo(to);
  return path;
}

QPainterPath WithHook(QPainterPath path) {
  path.moveTo(9.2, 9.4);
  path.cubicTo(9.4, 6.4, 14.8, 6.2, 14.8, 9.6);
  path.cubicTo(14.8, 11.8, 12, 11.6, 12, 13.8);
  return path;
}

QPainterPath Triangle() {
  QPainterPath path;
  path.moveTo(12, 3.2);
  path.lineTo(22, 20.4);
  path.lineTo(2, 20.4);
  path.closeSubpath();
  return path;
}

std::optional<Sign> SignOf(QStyle::StandardPixmap picture) {
  switch (picture) {
    case QStyle::SP_MessageBoxInformation:
      return Sign{ColorRole::Accent, WithLine(Ring(), {12, 11}, {12, 16.6}), QPointF(12, 7.6)};
    case QStyle::SP_MessageBoxQuestion:
      return Sign{ColorRole::Accent, WithHook(Ring()), QPointF(12, 17)};
    case QStyle::SP_MessageBoxWarning:
      return Sign{ColorRole::Warning, WithLine(Triangle(), {12, 9}, {12, 14}), QPointF(12, 17.2)};
    case QStyle::SP_MessageBoxCritical:
      return Sign{ColorRole::Error, WithLine(WithLine(Ring(), {8.8, 8.8}, {15.2, 15.2}), {15.2, 8.8}, {8.8, 15.2}), {}};
    case QStyle::SP_DialogApplyButton:
      return Sign{ColorRole::Ok, WithLine(WithLine(Ring(), {7.6, 12.4}, {10.8, 15.6}), {10.8, 15.6}, {16.4, 9}), {}};
    default:
      return std::nullopt;
  }
}

/// Paints the sign when it is shown, in any size.
class SignEngine final : public QIconEngine {
 public:
  SignEngine(Sign sign, const QColor& color) : m_sign(std::move(sign)), m_color(color) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / kGridSide, rect.height() / kGridSide);
    painter->setPen(QPen(m_color, kLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(m_sign.lines);
    if (m_sign.dot) {
      painter->setPen(Qt::NoPen);
      painter->setBrush(m_color);
      painter->drawEllipse(*m_sign.dot, kDot, kDot);
    }
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, pixmap.rect(), mode, state);
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new SignEngine(*this); }

 private:
  Sign m_sign;
  QColor m_color;
};

}  // namespace

QIcon MessageIcon(QStyle::StandardPixmap picture, const QPalette& palette) {
  std::optional<Sign> sign = SignOf(picture);
  if (!sign) return {};
  const QColor color = ColorOf(sign->role, palette);
  return QIcon(new SignEngine(std::move(*sign), color));
}

}  // namespace kestrin::ui::kit
