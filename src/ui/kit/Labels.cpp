// SPDX-License-Identifier: MIT
#include "ui/kit/Labels.h"

#include <QLabel>
#include <array>

namespace kestrin::ui::kit {

namespace {

struct Look {
  /// Of the ordinary text's size.
  qreal size;
  bool isBold;
  QPalette::ColorRole color;
};

/// In the order of TextStyle. The theme keeps the colour of soft text under PlaceholderText.
constexpr std::array<Look, 5> kLooks{{
    {1.0, false, QPalette::WindowText},
    {1.0, false, QPalette::PlaceholderText},
    {1.0, true, QPalette::WindowText},
    {1.2, true, QPalette::WindowText},
    {1.4, true, QPalette::WindowText},
}};

}  // namespace

void SetTextStyle(QWidget& control, TextStyle style) {
  const Look& look = kLooks.at(static_cast<std::size_t>(style));
  control.setForegroundRole(look.color);
  if (!look.isBold) return;
  QFont font = control.font();
  // A font has one of the two sizes, whichever the desktop has set.
  if (font.pixelSize() > 0)
    font.setPixelSize(qRound(font.pixelSize() * look.size));
  else
    font.setPointSizeF(font.pointSizeF() * look.size);
  font.setBold(true);
  control.setFont(font);
}

QLabel* MakeLabel(const QString& name, TextStyle style, const QString& text, QWidget* parent) {
  auto* const label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  SetTextStyle(*label, style);
  return label;
}

}  // namespace kestrin::ui::kit
