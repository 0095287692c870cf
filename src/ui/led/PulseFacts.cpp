#include "ui/led/PulseFacts.h"

#include <QCoreApplication>

namespace kestrin::ui::led {

namespace {

QString Tr(const char* text) { return QCoreApplication::translate("PulseFacts", text); }

}  // namespace

PulseFrame::Facts IdleFacts() {
  const QString seconds = Tr("s");
  return {"FrameIdle",
          Tr("Idle Pulse"),
          kit::HelpContext::IdlePulse,
          {{"btnPulseHigh", Tr("High level"), Tr("Idle pulse: choose the high level")},
           {"btnPulseLow", Tr("Low level"), Tr("Idle pulse: choose the low level")}},
          {{"IdleTON", Tr("ON"), seconds, Tr("Seconds at the high level, up to 10000")},
           {"IdleTOFF", Tr("OFF"), seconds, Tr("Seconds at the low level, up to 10000")},
           {"IdleTRISE", Tr("RISE"), seconds, Tr("Seconds from low to high, up to 10")},
           {"IdleTFALL", Tr("FALL"), seconds, Tr("Seconds from high to low, up to 10000")}},
          {"btnSendPulse", Tr("Send and start"), Tr("Send the idle pulse to the board and start it")}};
}

PulseFrame::Facts FocFacts() {
  const QString seconds = Tr("s");
  return {"FrameFoc",
          Tr("Flash on Clash"),
          kit::HelpContext::FlashOnClash,
          {{"btnFocHigh", Tr("Flash level"), Tr("Flash on clash: choose the level of the flash")}},
          {{"FocTON", Tr("ON"), seconds, Tr("Seconds that a flash lasts, up to 10000")},
           {"FocTOFF", Tr("OFF"), seconds, Tr("Seconds between two flashes, up to 10000")},
           {"focNREP", Tr("Repeat"), Tr("times"), Tr("Number of flashes, 1 to 10")}},
          {"btnSendFoc", Tr("Send and start"), Tr("Send the flash to the board and start it")}};
}

}  // namespace kestrin::ui::led
