// SPDX-License-Identifier: MIT
#include "ui/motion/ConfigControl.h"

#include <utility>

#include "ui/kit/Dialogs.h"
#include "ui/motion/ConfigFrame.h"

namespace kestrin::ui::motion {

ConfigControl::ConfigControl(ConfigFrame& frame, Surroundings surroundings)
    : m_frame(frame), m_around(std::move(surroundings)) {
  connect(&m_frame, &ConfigFrame::sendRequested, this, [this] { m_around.run([this] { Send(); }); });
  connect(&m_frame, &ConfigFrame::readRequested, this, [this] { m_around.run([this] { ReadAgain(); }); });
  connect(&m_frame, &ConfigFrame::putBackRequested, this, [this] { m_around.run([this] { PutBack(); }); });
}

void ConfigControl::ReadAccData() {
  const auto board = m_around.board();
  if (!board) return;
  const bool replacesUnsent = m_known.From() != core::motion::KnownValues::Source::Unread && m_frame.HasUnsent();
  const auto held = Read(*board);
  if (held) m_frame.ShowValues(*held, board->revision);
  m_frame.ShowKnown(m_known, board->revision);
  if (m_known.Kept())
    emit news(tr("This board's settings from before an interrupted download are kept. Put them back under Setup."));
  else if (!held)
    emit news(
        tr("The board did not tell its motion and impact parameters. \"Read again\" under Setup asks once more."));
  else if (replacesUnsent)
    emit news(tr("Setup shows what the board holds; values that were not sent are gone."));
}

std::optional<core::device::AccParam> ConfigControl::Held() const {
  const std::optional<Board> board = m_around.board();
  if (!board || board->serialNumber != m_serialNumber || !m_known.Held()) return std::nullopt;
  return core::motion::InRange(*m_known.Held(), board->revision);
}

void ConfigControl::Open() {
  const auto board = m_around.board();
  if (!board) return;
  FollowKept(*board);
  m_frame.Open(board->revision);
  if (m_known.Kept())
    emit news(tr("This board's settings from before an interrupted download are kept. Put them back here."));
}

bool ConfigControl::MayClose() {
  const QStringList lost = m_frame.Unsaved();
  return lost.isEmpty() ||
         m_around.dialogs.AskOkCancel(
             tr("Motion and impact parameters were changed and not sent.\nClose the window and lose them?"),
             tr("Not sent: %1.\nCancel goes back to the window. Setup sends them to the board.").arg(lost.join("; ")),
             kit::Dialogs::Harmless::Cancel, kit::HelpContext::ConfigFrame);
}

void ConfigControl::ReadAgain() {
  const auto board = m_around.board();
  if (!board) {
    emit news(tr("No sound board is connected: nothing was read."));
    return;
  }
  const auto held = Read(*board);
  if (held) m_frame.ShowValues(*held, board->revision, ConfigFrame::Moved::Stay);
  m_frame.ShowKnown(m_known, board->revision);
  emit news(held ? tr("The board has told its values.")
                 : tr("The board did not tell its values. Check its plug and read again."));
}

void ConfigControl::PutBack() {
  const auto board = m_around.board();
  if (!board) {
    emit news(tr("No sound board is connected: plug it in again to put its settings back."));
    return;
  }
  FollowKept(*board);
  if (!m_known.Kept()) return;
  m_frame.Offer(*m_known.Kept(), board->revision);
  emit news(tr("The sliders show the settings from before the download. Send them to put them on the board."));
}

void ConfigControl::Send() {
  const auto board = m_around.board();
  if (!board) {
    emit news(tr("No sound board is connected: nothing was sent."));
    return;
  }
  FollowKept(*board);
  const core::device::AccParam wanted = m_frame.Values();
  if (!MaySend(*board, wanted)) return;
  core::motion::AccelerometerSetup setup(board->tls, board->serialNumber, board->revision, m_around.kept);
  const core::motion::AccelerometerSetup::Sent sent = setup.Send(wanted);
  if (!sent.accepted) {
    emit news(tr("The board did not confirm the new values. Check its plug and send them again."));
    return;
  }
  if (sent.held) {
    m_known.SetTold(*sent.held, setup.Kept());
    m_frame.ShowValues(*sent.held, board->revision);
  } else {
    m_known.SetAccepted(wanted, setup.Kept());
  }
  m_frame.ShowKnown(m_known, board->revision);
  if (!sent.held)
    emit news(tr("The board has taken the new values, but did not tell what it holds now. Read it again."));
  else if (!core::motion::IsFormOf(*sent.held, wanted, board->revision))
    emit news(tr("The board has made other values of some of them: the sliders show what it holds."));
  else
    emit news(tr("The board has taken the new values."));
}

bool ConfigControl::MaySend(const Board& board, const core::device::AccParam& wanted) {
  if (!board.identified) {
    emit news(tr("The board did not say what it is: nothing was sent. Unplug it and plug it in again."));
    return false;
  }
  const auto ask = [this](const QString& question, const QString& advice) {
    const bool agreed =
        m_around.dialogs.AskOkCancel(question, advice, kit::Dialogs::Harmless::Cancel, kit::HelpContext::ConfigFrame);
    if (!agreed) emit news(tr("Nothing was sent."));
    return agreed;
  };
  switch (m_known.BeforeSending(wanted, board.revision)) {
    case core::motion::KnownValues::Question::OverKept:
      return ask(tr("The settings from before the interrupted download are kept for this board.\n"
                    "Send other values and forget the kept ones?"),
                 tr("\"Put back the settings from before the download\" brings them back to the sliders."));
    case core::motion::KnownValues::Question::OverUnread:
      return ask(tr("The board's own values could not be read.\nReplace all six by what the sliders show?"),
                 tr("\"Read again\" asks the board once more."));
    case core::motion::KnownValues::Question::None:
      break;
  }
  return true;
}

std::optional<core::device::AccParam> ConfigControl::Read(const Board& board) {
  core::motion::AccelerometerSetup setup(board.tls, board.serialNumber, board.revision, m_around.kept);
  const bool awaitsWord =
      m_known.From() == core::motion::KnownValues::Source::Accepted && m_serialNumber == board.serialNumber;
  const auto held = awaitsWord ? setup.ReadBack(*m_known.Held()) : setup.Read();
  m_serialNumber = board.serialNumber;
  if (held)
    m_known.SetTold(*held, setup.Kept());
  else if (!awaitsWord)
    m_known.SetUnread(setup.Kept());
  return held;
}

void ConfigControl::FollowKept(const Board& board) {
  if (m_known.Follow(KeptFor(board)) && m_known.Held())
    m_frame.ShowValues(*m_known.Held(), board.revision, ConfigFrame::Moved::Stay);
  m_frame.ShowKnown(m_known, board.revision);
}

std::optional<core::device::AccParam> ConfigControl::KeptFor(const Board& board) const {
  return m_around.kept.Find(board.serialNumber);
}

}  // namespace kestrin::ui::motion
