// SPDX-License-Identifier: MIT
#include "ui/window/SetDownload.h"

#include <chrono>

#include "core/device/DeviceSession.h"
#include "core/sound/MemoryUse.h"
#include "core/sound/board/BoardInquiry.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/SleepBlocker.h"
#include "ui/kit/TopicOf.h"
#include "ui/kit/Translated.h"
#include "ui/sound/DownloadFrame.h"
#include "ui/window/Surroundings.h"

namespace kestrin::ui::window {

SetDownload::SetDownload(core::sound::LSU_Configuration& configuration, const core::sound::SoundSet& set,
                         core::device::DeviceSession& session, const Surroundings& around, QObject* parent)
    : QObject(parent),
      m_configuration(configuration),
      m_set(set),
      m_session(session),
      m_gate(around.gate),
      m_dialogs(around.dialogs),
      m_sleep(around.sleep),
      m_frame(new sound::DownloadFrame(around.dialogs, around.clock)),
      m_download(configuration, *m_frame, around.kept, around.clock, around.gate.Pump()),
      m_isKnowing(!around.dataFolder.empty()),
      m_history(m_isKnowing ? around.dataFolder / core::sound::BoardHistory::kFolderName : around.dataFolder,
                around.disk) {
  kit::SetHelpContext(*m_frame, kit::HelpContext::DownloadFrame);
  connect(m_frame, &sound::DownloadFrame::buttonPressed, this, [this] { m_download.CancelButton(); });
  connect(m_frame, &sound::DownloadFrame::sendAgain, this, [this] { m_gate.WhenFree([this] { SendAgain(); }); });
}

void SetDownload::Send() { Run(false); }

void SetDownload::SendAgain() { Run(true); }

bool SetDownload::IsHeld() {
  core::device::TLS* const board = m_session.Board();
  if (!m_isKnowing || board == nullptr || m_configuration.CheckIntegrity() != 0) return false;
  core::sound::LSU_Configuration set = m_configuration.WithoutStreams();
  if (!set.MakeMemoryMap({}, m_gate.Pump())) return false;
  // What has been told before may have been written over by another program since.
  core::sound::BoardInquiry inquiry(*board, [this, pump = m_gate.Pump()] {
    pump();
    return !m_isStopped;
  });
  const core::base::Result<bool> holds = inquiry.Holds(core::sound::SetImage::Of(set, m_set.Path()));
  if (!holds) m_session.ExpectLateAnswer();
  return holds && *holds;
}

void SetDownload::Cancel() {
  m_isStopped = true;
  m_download.Cancel();
}

void SetDownload::Remember() {
  const core::base::Result<> kept =
      m_history.Add(m_configuration, m_set.Path(), m_session.State().serialNumber, m_download.Parameters(),
                    std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
  if (!kept) emit news(kit::Translated(kept.Text()));
}

void SetDownload::Run(bool always) {
  core::device::TLS* const board = m_session.Board();
  if (board == nullptr) return;
  const kit::CommandGate::Passage passage(m_gate);
  m_isStopped = false;
  emit running(true);
  m_sleep.Block(tr("Sounds are being written into the board.").toStdString());
  bool identified = static_cast<bool>(m_session.EnsureIdentified());
  const bool isHeld = !always && identified && IsHeld();
  if (isHeld || m_isStopped) {
    if (isHeld) m_frame->ShowHeld(core::sound::MemoryUse::Of(m_configuration).downloadSeconds);
    m_sleep.Unblock();
    return emit running(false);
  }
  // A board that kept silent on that question may still answer it.
  identified = identified && m_session.EnsureIdentified();
  const core::device::SessionState& state = m_session.State();
  const std::int32_t flash = core::device::FlashSize(state.memoryCapacity);
  emit writing(true);
  const core::sound::DownloadOutcome outcome = m_download.Send({*board, state.serialNumber, flash, identified});
  m_frame->ShowOutcome(outcome);
  if (outcome == core::sound::DownloadOutcome::Success) Remember();
  if (m_download.LeftErasing()) m_session.LetBoardFinish();
  m_sleep.Unblock();
  emit writing(false);
  emit running(false);
}

bool SetDownload::MayClose() {
  return !IsRunning() || m_dialogs.AskOkCancel(tr("The download is not done yet. Stop it and close the window?\n"
                                                  "Without a complete download the board has no sounds."),
                                               "", kit::Dialogs::Harmless::Cancel, kit::HelpContext::CancelQuestion);
}

void SetDownload::ClickBeside() {
  if (m_frame->isVisible() && !IsRunning()) m_frame->ClickBeside();
}

}  // namespace kestrin::ui::window
