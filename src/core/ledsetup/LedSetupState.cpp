// SPDX-License-Identifier: MIT
#include "ledsetup/LedSetupState.h"

#include <algorithm>

namespace kestrin::core::ledsetup {

using led::TimeBox;

int LedSetupState::Channels() const {
  return std::clamp<int>(CurrentDriver.NrOfChannels, 0, led::LED_Driver::kChannels);
}

bool LedSetupState::CanPickColor() const {
  const auto has = [this](led::Color color) { return CurrentDriver.FindColor(color) != 0; };
  return has(led::kRed) && has(led::kGreen) && has(led::kBlue);
}

led::Pulses LedSetupState::Shown() const {
  const auto time = [this](TimeBox box) { return led::MillisecondsOf(Time(box).value_or(0)); };
  led::Pulses pulses;
  led::PulseContent& idle = pulses[led::kIdlePulse];
  led::PulseContent& foc = pulses[led::kFocPulse];
  for (std::size_t i = 0; i < idle.low.size(); ++i) {
    const int channel = static_cast<int>(i) + 1;
    idle.low[i] = IdlePulse.GetLow(channel);
    idle.high[i] = IdlePulse.GetHigh(channel);
    foc.high[i] = FocPulse.GetHigh(channel);
  }
  idle.Ton = time(TimeBox::IdleTON);
  idle.Toff = time(TimeBox::IdleTOFF);
  idle.Trise = time(TimeBox::IdleTRISE);
  idle.Tfall = time(TimeBox::IdleTFALL);
  foc.Ton = time(TimeBox::FocTON);
  foc.Toff = time(TimeBox::FocTOFF);
  foc.NRep = led::RepetitionsOf(repetitions.value_or(0));
  return pulses;
}

void LedSetupState::Take(const led::Pulses& pulses) {
  const auto fill = [](const led::PulseContent& content, led::LED_Pulse& pulse) {
    for (std::size_t i = 0; i < content.high.size(); ++i) {
      const int channel = static_cast<int>(i) + 1;
      pulse.SetLow(channel, content.low[i]);
      pulse.SetHigh(channel, content.high[i]);
    }
    pulse.Ton = content.Ton;
    pulse.Toff = content.Toff;
    pulse.Trise = content.Trise;
    pulse.Tfall = content.Tfall;
    pulse.NRep = content.NRep;
  };
  fill(pulses[led::kIdlePulse], IdlePulse);
  fill(pulses[led::kFocPulse], FocPulse);
  FillIdleBoxes();
  FillFocBoxes();
}

void LedSetupState::FillIdleBoxes() {
  Time(TimeBox::IdleTON) = led::SecondsOf(IdlePulse.Ton);
  Time(TimeBox::IdleTOFF) = led::SecondsOf(IdlePulse.Toff);
  Time(TimeBox::IdleTRISE) = led::SecondsOf(IdlePulse.Trise);
  Time(TimeBox::IdleTFALL) = led::SecondsOf(IdlePulse.Tfall);
}

void LedSetupState::FillFocBoxes() {
  Time(TimeBox::FocTON) = led::SecondsOf(FocPulse.Ton);
  Time(TimeBox::FocTOFF) = led::SecondsOf(FocPulse.Toff);
  repetitions = FocPulse.NRep;
}

void LedSetupState::BuildIdlePulse() {
  const led::PulseContent shown = Shown()[led::kIdlePulse];
  IdlePulse.Ton = shown.Ton;
  IdlePulse.Toff = shown.Toff;
  IdlePulse.Trise = shown.Trise;
  IdlePulse.Tfall = shown.Tfall;
  IdlePulse.NRep = 0;
  IdlePulse.CalculateTimes(CurrentDriver);
}

void LedSetupState::BuildFocPulse() {
  const led::PulseContent shown = Shown()[led::kFocPulse];
  FocPulse.Ton = shown.Ton;
  FocPulse.Toff = shown.Toff;
  FocPulse.Trise = 0;
  FocPulse.Tfall = 0;
  FocPulse.NRep = shown.NRep;
  // The flash starts from the idle colour.
  for (int channel = 1; channel <= led::LED_Pulse::kChannels; ++channel)
    FocPulse.SetLow(channel, IdlePulse.GetHigh(channel));
  FocPulse.CalculateTimes(CurrentDriver);
}

}  // namespace kestrin::core::ledsetup
