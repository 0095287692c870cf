// SPDX-License-Identifier: MIT
#include "ui/window/SetLevelling.h"

#include <QSettings>
#include <QStringList>
#include <cmath>
#include <utility>

#include "core/sound/import/AudioTools.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/LatestJob.h"
#include "ui/kit/Translated.h"
#include "ui/sound/LevelFrame.h"
#include "ui/sound/SoundPage.h"
#include "ui/window/Surroundings.h"

namespace kestrin::ui::window {

using core::sound::Levelling;
using core::sound::LevelPlan;

namespace {

/// "balance/idle": what the person has chosen for a slot.
QString BalanceKey(const core::sound::Slot& slot) {
  return QStringLiteral("balance/") + QString::fromUtf8(slot.name.data(), static_cast<qsizetype>(slot.name.size()));
}

}  // namespace

SetLevelling::SetLevelling(core::sound::SoundSet& set, const Surroundings& around, QObject* parent)
    : QObject(parent),
      m_set(set),
      m_audio(around.audio),
      m_dialogs(around.dialogs),
      m_settings(around.settings),
      m_frame(new sound::LevelFrame),
      m_job(new kit::LatestJob(this)) {
  connect(m_frame, &sound::LevelFrame::levelRequested, this, &SetLevelling::Start);
  connect(m_frame, &sound::LevelFrame::stopRequested, this, &SetLevelling::Stop);
}

void SetLevelling::Attach(sound::SoundPage& page, kit::CommandGate& gate) {
  if (!IsThere()) return;
  page.OfferLevelling();
  connect(&page, &sound::SoundPage::levelRequested, this, [this, &gate] { gate.WhenFree([this] { Open(); }); });
}

void SetLevelling::Open() {
  if (Levelling::SoundsOf(m_set).empty()) {
    emit news(kit::Translated(LevelPlan().Headline()));
    return;
  }
  m_frame->SetBalance(Kept());
  m_frame->Open();
}

void SetLevelling::Start() {
  Keep(m_frame->Balance());
  SetRunning(true);
  m_job->Start([this, sounds = Levelling::SoundsOf(m_set), audio = m_audio](const kit::LatestJob::GoOn& goOn,
                                                                            const kit::LatestJob::Deliver& deliver) {
    int shown = 0;
    Measured measured = Levelling::Measure(
        sounds, [audio] { return audio->MakeMeter(); },
        [&](int percent) {
          if (percent != std::exchange(shown, percent)) deliver([this, percent] { m_frame->ShowPercent(percent); });
          return goOn();
        });
    deliver([this, measured = std::move(measured)] { Finish(measured); });
  });
}

void SetLevelling::Finish(const Measured& measured) {
  // Ahead of the end: nothing else can change the set in between.
  const LevelPlan plan = measured ? LevelPlan::Of(*measured, m_frame->Balance()) : LevelPlan();
  const core::base::Result<> applied = Levelling::Apply(plan, m_set);
  SetRunning(false);
  m_frame->hide();
  if (!applied) {
    emit news(kit::Translated(applied.Text()));
    return;
  }
  const QString headline = kit::Translated(plan.Headline());
  emit news(headline);
  QStringList lines;
  for (const std::string& text : plan.OutOfReach()) lines.append(kit::Translated(text));
  if (!lines.isEmpty()) static_cast<void>(m_dialogs.ShowList(headline, lines, QString(), kit::HelpContext::Level));
}

void SetLevelling::Stop() {
  if (!m_isRunning) return;
  m_job->Cancel();
  SetRunning(false);
  emit news(tr("Levelling was stopped. No volume was changed."));
}

core::sound::Balance SetLevelling::Kept() const {
  core::sound::Balance balance;
  for (const core::sound::Slot& slot : core::sound::kSlots) {
    bool isNumber = false;
    const double units = m_settings.value(BalanceKey(slot)).toDouble(&isNumber);
    if (isNumber && std::isfinite(units)) balance.Set(slot.kind, units);
  }
  return balance;
}

void SetLevelling::Keep(const core::sound::Balance& balance) {
  for (const core::sound::Slot& slot : core::sound::kSlots) {
    // What is usual may become better with another version.
    if (balance.Of(slot.kind) == core::sound::Balance().Of(slot.kind))
      m_settings.remove(BalanceKey(slot));
    else
      m_settings.setValue(BalanceKey(slot), balance.Of(slot.kind));
  }
}

void SetLevelling::SetRunning(bool isRunning) {
  m_isRunning = isRunning;
  m_frame->SetRunning(isRunning);
  emit running(isRunning);
}

}  // namespace kestrin::ui::window
