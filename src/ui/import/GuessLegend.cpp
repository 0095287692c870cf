// SPDX-License-Identifier: MIT
#include "ui/import/GuessLegend.h"

#include <QPainter>

#include "core/sound/SlotKind.h"
#include "ui/import/ImportRowDelegate.h"
#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::imports {

namespace {

constexpr int kChipWidth = 38;

}  // namespace

GuessLegend::GuessLegend(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("ImportLegend"));
  setAccessibleName(tr("a guess: please look at this one"));
}

void GuessLegend::Show(bool isAnyGuess) {
  m_isAnyGuess = isAnyGuess;
  update();
}

QSize GuessLegend::sizeHint() const {
  return {kChipWidth + kit::kGrid + fontMetrics().horizontalAdvance(accessibleName()), ImportRowDelegate::kRowHeight};
}

void GuessLegend::paintEvent(QPaintEvent* /*event*/) {
  if (!m_isAnyGuess) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  ImportRowDelegate::PaintChip(painter, QRect(0, 0, kChipWidth, height()), QStringLiteral("?"),
                               static_cast<int>(core::sound::SlotKind::Impact), false, false, palette());
  painter.setPen(kit::ColorOf(kit::ColorRole::Soft, palette()));
  painter.drawText(rect().adjusted(kChipWidth + kit::kGrid, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                   accessibleName());
}

}  // namespace kestrin::ui::imports
