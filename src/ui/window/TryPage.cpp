// SPDX-License-Identifier: MIT
#include "ui/window/TryPage.h"

#include <QAction>
#include <QSettings>
#include <QToolButton>
#include <optional>

#include "core/ledsetup/LedSetupState.h"
#include "core/motion/DetectionParameter.h"
#include "ui/sound/SoundPage.h"
#include "ui/stage/TryControl.h"
#include "ui/stage/TryFrame.h"
#include "ui/window/LedPage.h"
#include "ui/window/Pages.h"
#include "ui/window/Preview.h"
#include "ui/window/SensorSetup.h"
#include "ui/window/Surroundings.h"
#include "ui/window/ToolRow.h"

namespace kestrin::ui::window {

namespace {

constexpr const char* kFewerKey = "fewerFlashes";

/// How the board that is online detects motion, or any board as it leaves the factory.
stage::TryControl::Detection DetectionOf(const SensorSetup& sensor) {
  const core::device::AccParam held = sensor.Held().value_or(core::motion::FactoryDefaults());
  return {{held.MotionTh, held.MotionDeb}, static_cast<double>(core::motion::FlashPeriodMilliseconds(held.FOCTime))};
}

/// The LED settings that are open.
std::optional<stage::LedLook> LookOf(const LedPage* led) {
  const core::ledsetup::LedSetupState* const state = led == nullptr ? nullptr : led->State();
  if (state == nullptr || state->Channels() == 0) return std::nullopt;
  return stage::LedLook{state->CurrentDriver, state->Shown()};
}

}  // namespace

TryPage::TryPage(core::sound::SoundSet& set, const Surroundings& around, const SensorSetup& sensor, QObject* parent)
    : QObject(parent),
      m_control(new stage::TryControl({set, around.output, around.clock, [&sensor] { return DetectionOf(sensor); },
                                       [this] { return LookOf(m_led); }},
                                      this)) {
  connect(m_control, &stage::TryControl::news, this, &TryPage::news);
  if (around.moveBoard) connect(m_control, &stage::TryControl::moved, this, around.moveBoard);
  m_control->SetFewer(around.settings.value(kFewerKey, true).toBool());
  connect(&m_control->Frame(), &stage::TryFrame::fewerChosen, this, [this, &settings = around.settings](bool isFewer) {
    settings.setValue(kFewerKey, isFewer);
    m_control->SetFewer(isFewer);
  });
}

void TryPage::Attach(Pages& pages, ToolRow& tools, sound::SoundPage& page, Preview& preview, LedPage& led) {
  m_pages = &pages;
  m_led = &led;
  stage::TryFrame& frame = m_control->Frame();
  pages.SetTry(frame);
  connect(&pages, &Pages::changed, this,
          [&pages, &tools] { tools.Button(ToolRow::Tool::Try).setChecked(pages.Shown() == Pages::Page::Try); });
  connect(&frame, &stage::TryFrame::backRequested, &pages, [&pages] { pages.Show(Pages::Page::Sounds); });
  connect(&led, &LedPage::pulsesShown, m_control, &stage::TryControl::FollowLed);
  // One switch in two places.
  m_control->SetAsOnBoard(page.IsAsOnBoard());
  connect(&page, &sound::SoundPage::asOnBoardChanged, m_control, &stage::TryControl::SetAsOnBoard);
  connect(&frame, &stage::TryFrame::asOnBoardChosen, &page, &sound::SoundPage::SetAsOnBoard);
  connect(m_control, &stage::TryControl::soundChosen, this,
          [&page, &preview](const core::sound::SoundPlace& place, const core::sound::HeardSound& sound) {
            page.Select(place);
            preview.Play(sound);
          });
  // Only what is heard from here ends with the page.
  connect(&frame, &stage::TryFrame::shown, &preview, [&preview](bool isShown) {
    if (!isShown) preview.Stop();
  });
  // What is seen here too can be taken back and saved here too.
  for (QAction* const action : page.actions())
    if (action == page.UndoAction() || action == page.RedoAction() || action->objectName() == "SaveAction")
      frame.addAction(action);
}

void TryPage::Toggle() { m_pages->Show(m_pages->Shown() == Pages::Page::Try ? Pages::Page::Sounds : Pages::Page::Try); }

void TryPage::SetBusy(bool isBusy) { m_control->SetBusy(isBusy); }

}  // namespace kestrin::ui::window
