// SPDX-License-Identifier: MIT
#include "ui/window/SetDownload.h"

#include "core/device/DeviceSession.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/SleepBlocker.h"
#include "ui/kit/TopicOf.h"
#include "ui/sound/DownloadFrame.h"
#include "ui/window/Surroundings.h"

namespace kestrin::ui::window {

SetDownload::SetDownload(core::sound::LSU_Configuration& configuration, core::device::DeviceSession& session,
                         const Surroundings& around, QObject* parent)
    : QObject(parent),
      m_session(session),
      m_gate(around.gate),
      m_dialogs(around.dialogs),
      m_sleep(around.sleep),
      m_frame(new sound::DownloadFrame(around.dialogs, around.clock)),
      m_download(configuration, *m_frame, around.kept, around.clock, around.gate.Pump()) {
  kit::SetHelpContext(*m_frame, kit::HelpContext::DownloadFrame);
  connect(m_frame, &sound::DownloadFrame::buttonPressed, this, [this] { m_download.CancelButton(); });
}

void SetDownload::Send() {
  core::device::TLS* const board = m_session.Board();
  if (board == nullptr) return;
  const kit::CommandGate::Passage passage(m_gate);
  emit running(true);
  m_sleep.Block(tr("Sounds are being written into the board.").toStdString());
  const bool identified = static_cast<bool>(m_session.EnsureIdentified());
  const core::device::SessionState& state = m_session.State();
  const std::int32_t flash = core::device::FlashSize(state.memoryCapacity);
  m_frame->ShowOutcome(m_download.Send({*board, state.serialNumber, flash, identified}));
  if (m_download.LeftErasing()) m_session.LetBoardFinish();
  m_sleep.Unblock();
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
