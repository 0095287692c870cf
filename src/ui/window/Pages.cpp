// SPDX-License-Identifier: MIT
#include "ui/window/Pages.h"

#include <QScrollArea>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "ui/kit/Grid.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::ui::window {

Pages::Pages(QWidget& sounds, QWidget* parent) : QWidget(parent) {
  m_tabs = new QTabBar(this);
  m_tabs->setObjectName("PageTabs");
  m_tabs->setAccessibleName(tr("Page"));
  m_tabs->setDrawBase(false);
  m_tabs->setExpanding(false);
  m_tabs->addTab(tr("&Sounds"));
  m_tabs->addTab(tr("LED &driver"));
  m_tabs->setTabToolTip(0, tr("The sound set; it can be edited without a sound board"));
  m_tabs->setTabToolTip(1, tr("Type, overdrive and pulses of the LED driver"));
  kit::SetHelpContext(*m_tabs, kit::HelpContext::LedFrame);
  m_led = new QScrollArea(this);
  m_led->setObjectName("LedPage");
  m_led->setFrameShape(QFrame::NoFrame);
  m_led->setWidgetResizable(true);
  m_led->setFocusPolicy(Qt::NoFocus);
  // The ground of the window, not that of a field.
  m_led->viewport()->setAutoFillBackground(false);
  m_stack = new QStackedWidget(this);
  m_stack->addWidget(&sounds);
  m_stack->addWidget(m_led);

  auto* const head = new QHBoxLayout;
  head->setContentsMargins(kit::kWide, 0, kit::kWide, 0);
  head->addWidget(m_tabs);
  head->addStretch(1);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(head);
  column->addWidget(m_stack, 1);
  m_tabs->hide();
  connect(m_tabs, &QTabBar::currentChanged, this, [this](int index) { Turn(static_cast<Page>(index)); });
}

void Pages::SetLedDriver(QWidget& page) {
  m_led->setWidget(&page);
  page.setAutoFillBackground(false);
}

void Pages::SetTry(QWidget& page) { m_stack->addWidget(&page); }

void Pages::ShowTabs(bool shown) {
  m_hasTabs = shown;
  m_tabs->setVisible(shown && m_shown != Page::Try);
}

void Pages::Show(Page page) {
  // It turns to the page by itself when that has another tab.
  if (page != Page::Try) m_tabs->setCurrentIndex(static_cast<int>(page));
  Turn(page);
}

void Pages::Turn(Page page) {
  if (page == m_shown) return;
  m_shown = page;
  m_tabs->setVisible(m_hasTabs && page != Page::Try);
  m_stack->setCurrentIndex(static_cast<int>(page));
  emit changed();
}

Pages::Page Pages::Shown() const { return m_shown; }

QString Pages::NameOf(Page page) {
  const QString names[] = {tr("Sounds"), tr("LED driver"), tr("Try")};
  return names[static_cast<std::size_t>(page)];
}

}  // namespace kestrin::ui::window
