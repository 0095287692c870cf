// SPDX-License-Identifier: MIT
#include "ui/kit/Overlay.h"

#include <QApplication>
#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/Grid.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {

namespace {

/// How much of the window behind is left to see, as the black's opacity.
constexpr int kDimming = 140;

}  // namespace

Overlay::Overlay(QWidget& panel, QWidget& window, QWidget* middle)
    : QWidget(&window), m_panel(panel), m_middle(middle) {
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(kWide, kWide, kWide, kWide);
  const bool open = !panel.isHidden();
  layout->addWidget(&panel, 0, Qt::AlignCenter);
  panel.setVisible(open);
  setVisible(open);
  panel.installEventFilter(this);
  window.installEventFilter(this);
  if (middle != nullptr) middle->installEventFilter(this);
}

int Overlay::NeededHeight() const {
  const QLayout* const inside = m_panel.layout();
  const bool scrolls = (m_panel.sizePolicy().verticalPolicy() & QSizePolicy::ExpandFlag) != 0;
  const QSize wanted = m_panel.sizeHint();
  const int needed = (scrolls ? m_panel.minimumSizeHint() : wanted).expandedTo(m_panel.minimumSize()).height();
  if (inside == nullptr || !inside->hasHeightForWidth()) return needed;
  return std::max(needed, inside->totalMinimumHeightForWidth(std::min(wanted.width(), width() - 2 * kWide)));
}

void Overlay::Place() {
  setGeometry(parentWidget()->rect());
  if (m_middle == nullptr) return;
  const QRect middle(m_middle->mapTo(parentWidget(), QPoint()), m_middle->size());
  int top = middle.top() + kGrid;
  int bottom = height() - middle.bottom() - 1 + kGrid;
  // The line of help says what the panel's controls are for, so the row of tools is covered first.
  int over = std::max(0, NeededHeight() - (height() - top - bottom));
  const int upwards = std::min(over, top - kGrid);
  top -= upwards;
  over -= upwards;
  bottom -= std::min(over, bottom - kGrid);
  layout()->setContentsMargins(kWide, top, kWide, bottom);
}

bool Overlay::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) Place();
  return QWidget::event(event);
}

bool Overlay::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &m_panel && event->type() == QEvent::ShowToParent) {
    Place();
    show();
    raise();
    emit shown();
  } else if (watched == &m_panel && event->type() == QEvent::HideToParent) {
    hide();
    emit hidden();
  } else if ((watched == parentWidget() || watched == m_middle) && event->type() == QEvent::Resize) {
    Place();
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
