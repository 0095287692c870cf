// SPDX-License-Identifier: MIT
#include "ui/kit/Overlay.h"

#include <QApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {

namespace {

/// How much of the window behind is left to see, as the black's opacity.
constexpr int kDimming = 140;

}  // namespace

Overlay::Overlay(QWidget& panel, QWidget& window) : QWidget(&window), m_panel(panel) {
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(kWide, kWide, kWide, kWide);
  const bool open = !panel.isHidden();
  layout->addWidget(&panel, 0, Qt::AlignCenter);
  panel.setVisible(open);
  setVisible(open);
  panel.installEventFilter(this);
  window.installEventFilter(this);
}

bool Overlay::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &m_panel && event->type() == QEvent::ShowToParent) {
    setGeometry(parentWidget()->rect());
    show();
    raise();
    emit shown();
  } else if (watched == &m_panel && event->type() == QEvent::HideToParent) {
    hide();
    emit hidden();
  } else if (watched == parentWidget() && event->type() == QEvent::Resize) {
    setGeometry(parentWidget()->rect());
  }
  return QWidget::eventFilter(watched, event);
}

void Overlay::paintEvent(QPaintEvent* /*event*/) {
  // Whoever needs high contrast could make out nothing of what is dimmed.
  const bool isOpaque = IsHighContrast(palette());
  QPainter(this).fillRect(rect(), isOpaque ? ColorOf(ColorRole::Background, palette()) : QColor(0, 0, 0, kDimming));
}

void Overlay::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (!m_panel.geometry().contains(event->pos())) emit clickedBeside();
}

bool Overlay::focusNextPrevChild(bool next) {
  QWidget* const from = QApplication::focusWidget();
  if (from == nullptr || !isAncestorOf(from)) return false;
  QWidget* to = from;
  do {
    to = next ? to->nextInFocusChain() : to->previousInFocusChain();
    const bool takesTab = (to->focusPolicy() & Qt::TabFocus) != 0 && to->isEnabled() && to->isVisible();
    if (isAncestorOf(to) && takesTab) {
      to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
      return true;
    }
  } while (to != from);
  return true;
}

}  // namespace kestrin::ui::kit
