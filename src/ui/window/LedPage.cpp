// SPDX-License-Identifier: MIT
#include "ui/window/LedPage.h"

#include <QTimer>
#include <utility>

#include "core/device/SessionState.h"
#include "ui/window/Pages.h"

namespace kestrin::ui::window {

LedPage::LedPage(Pages& pages, led::LedPanel::Surroundings around, QObject* parent)
    : QObject(parent), m_pages(pages), m_around(std::move(around)) {}

led::LedPanel& LedPage::Panel() {
  if (m_panel != nullptr) return *m_panel;
  m_panel = new led::LedPanel(m_around);
  connect(m_panel, &led::LedPanel::boardFailed, this, &LedPage::boardFailed);
  connect(m_panel, &led::LedPanel::news, this, &LedPage::news);
  connect(m_panel, &led::LedPanel::pulsesShown, this, &LedPage::pulsesShown);
  m_pages.SetLedDriver(*m_panel);
  m_panel->SetOnline(m_isOnline);
  emit made(*m_panel);
  return *m_panel;
}

void LedPage::MakeSoon() {
  if (m_panel == nullptr) QTimer::singleShot(0, this, [this] { Panel(); });
}

void LedPage::Follow(const core::device::SessionState& state) {
  m_isOnline = state.HasLedDriver();
  if (m_isOnline) {
    ShowFor(state.board);
  } else if (state.HasSoundBoard()) {
    m_board = 0;
    m_pages.ShowTabs(false);
    if (m_pages.Shown() == Pages::Page::LedDriver) m_pages.Show(Pages::Page::Sounds);
  }
  if (m_panel != nullptr) m_panel->SetOnline(m_isOnline);
}

void LedPage::ShowFor(std::int32_t board) {
  Panel();
  m_pages.ShowTabs(true);
  // Whoever tries a set goes on doing so, in the driver's colours.
  if (std::exchange(m_board, board) != board && m_pages.Shown() != Pages::Page::Try)
    m_pages.Show(Pages::Page::LedDriver);
}

void LedPage::OpenPath(const std::filesystem::path& path) {
  led::LedPanel& panel = Panel();
  m_pages.Show(Pages::Page::LedDriver);
  panel.OpenPath(path);
}

const core::ledsetup::LedSetupState* LedPage::State() const { return m_panel == nullptr ? nullptr : &m_panel->State(); }

core::base::Result<> LedPage::InitLedDrivers() { return Panel().InitLedDrivers(); }

}  // namespace kestrin::ui::window
