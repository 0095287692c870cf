// SPDX-License-Identifier: MIT
#include "ui/window/WhyNot.h"

#include "ui/kit/Translated.h"
#include "ui/window/Pages.h"

namespace kestrin::ui::window {

QString WhyNot::Of(ToolRow::Tool tool) const {
  switch (tool) {
    case ToolRow::Tool::Load:
    case ToolRow::Tool::Save:
    case ToolRow::Tool::Import:
      return Set();
    case ToolRow::Tool::Try:
      return isRunning ? tr("Please wait until this is done.") : QString();
    case ToolRow::Tool::Config:
      return Board();
    case ToolRow::Tool::Update:
      return hasUpdate ? Board() : tr("This version does not fetch sounds from the Internet.");
    case ToolRow::Tool::Send: {
      QString noBoard = Board();
      if (!noBoard.isEmpty() || setFits) return noBoard;
      return tr("The sounds do not fit into the board's memory. Remove some or choose shorter ones.");
    }
  }
  return {};
}

QString WhyNot::Doctor() const { return isRunning ? tr("Please wait until this is done.") : QString(); }

QString WhyNot::Set() const {
  if (isRunning) return tr("Please wait until this is done.");
  return isSetSeen ? QString() : tr("The sound set is on the page \"%1\".").arg(Pages::NameOf(Pages::Page::Sounds));
}

QString WhyNot::Board() const {
  using core::device::DeviceType;
  if (isRunning) return tr("Please wait until this is done.");
  if (session.HasSoundBoard()) return {};
  if (session.boards == 0)
    return session.accessProblem.empty() ? tr("No sound board is connected.") : kit::Translated(session.accessProblem);
  if (session.deviceType == DeviceType::LedDriver)
    return tr("The board is an LED driver: it has neither sounds nor an acceleration sensor.");
  if (session.isFinishing) return tr("The board is still erasing its memory. It comes back by itself, please wait.");
  if (session.IsOnline()) return tr("The board is being read, please wait.");
  return tr("The board does not answer. Unplug it and plug it in again.");
}

}  // namespace kestrin::ui::window
