// SPDX-License-Identifier: MIT
#include "ui/led/PulseFacts.h"

namespace kestrin::ui::led {

PulseFrame::Facts PulseFacts::Idle() {
  const QString seconds = tr("s");
  return {"FrameIdle",
          tr("Idle Pulse"),
          kit::HelpContext::IdlePulse,
          {{"btnPulseHigh", tr("High level"), tr("Idle pulse: choose the high level")},
           {"btnPulseLow", tr("Low level"), tr("Idle pulse: choose the low level")}},
          {{"IdleTON", tr("ON"), seconds, tr("Seconds at the high level, up to 10000")},
           {"IdleTOFF", tr("OFF"), seconds, tr("Seconds at the low level, up to 10000")},
           {"IdleTRISE", tr("RISE"), seconds, tr("Seconds from low to high, up to 10")},
           {"IdleTFALL", tr("FALL"), seconds, tr("Seconds from high to low, up to 10000")}},
          {"btnSendPulse", tr("Send and start"), tr("Send the idle pulse to the board and start it")}};
}

PulseFrame::Facts PulseFacts::Foc() {
  const QString seconds = tr("s");
  return {"FrameFoc",
          tr("Flash on Clash"),
          kit::HelpContext::FlashOnClash,
          {{"btnFocHigh", tr("Flash level"), tr("Flash on clash: choose the level of the flash")}},
          {{"FocTON", tr("ON"), seconds, tr("Seconds that a flash lasts, up to 10000")},
           {"FocTOFF", tr("OFF"), seconds, tr("Seconds between two flashes, up to 10000")},
           {"focNREP", tr("Repeat"), tr("times"), tr("Number of flashes, 1 to 10")}},
          {"btnSendFoc", tr("Send and start"), tr("Send the flash to the board and start it")}};
}

}  // namespace kestrin::ui::led
