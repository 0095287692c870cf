// SPDX-License-Identifier: MIT
#include "ui/led/ChannelLabel.h"

#include <QPainter>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/led/BladeLight.h"
#include "ui/led/BladeView.h"

namespace kestrin::ui::led {

namespace {

constexpr QRgb kUnusedGround = 0xff8a93a2;

}  // namespace

ChannelLabel::ChannelLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setContentsMargins(kit::kGrid, kit::kHalf, kit::kGrid, kit::kHalf);
  setAlignment(Qt::AlignCenter);
  kit::SetTextStyle(*this, kit::TextStyle::Title);
  ShowColor(0);
}

void ChannelLabel::ShowColor(core::led::Color color) {
  m_color = color;
  QPalette colored;
  colored.setColor(QPalette::WindowText, ToQColor(color));
  setPalette(colored);
  setToolTip(NameOf(color));
  setAccessibleName(tr("%1: %2").arg(text(), NameOf(color)));
}

QColor ChannelLabel::Ground() const { return m_color == 0 ? QColor(kUnusedGround) : QColor(BladeView::kGround); }

void ChannelLabel::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Ground());
    // On a dark window the dark ground needs an edge.
    painter.setPen(m_color == 0 ? Qt::NoPen : QPen(ToQColor(m_color), 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
  }
  QLabel::paintEvent(event);
}

}  // namespace kestrin::ui::led
