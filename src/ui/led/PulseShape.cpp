// SPDX-License-Identifier: MIT
#include "ui/led/PulseShape.h"

#include <algorithm>

#include "core/led/PulseTimes.h"

namespace kestrin::ui::led {

PulseShape PulseShape::Idle(const core::led::PulseContent& pulse) {
  PulseShape shape;
  shape.Add(QT_TR_NOOP("RISE"), pulse.Trise, 0, 1);
  shape.Add(QT_TR_NOOP("ON"), pulse.Ton, 1, 1);
  shape.Add(QT_TR_NOOP("FALL"), pulse.Tfall, 1, 0);
  shape.Add(QT_TR_NOOP("OFF"), pulse.Toff, 0, 0);
  return shape;
}

PulseShape PulseShape::FlashOnClash(const core::led::PulseContent& pulse) {
  PulseShape shape;
  for (int flash = 0; flash < std::clamp<int>(pulse.NRep, 1, core::led::kMostRepetitions); ++flash) {
    shape.Add(QT_TR_NOOP("ON"), pulse.Ton, 1, 1);
    shape.Add(QT_TR_NOOP("OFF"), pulse.Toff, 0, 0);
  }
  return shape;
}

void PulseShape::Add(const char* name, double length, double from, double to) {
  // A file may hold any number.
  constexpr double kLongest = 1e9;
  if (!(length > 0)) return;
  m_phases.push_back({tr(name), std::min(length, kLongest), from, to});
  m_length += m_phases.back().length;
}

double PulseShape::ShareAt(double moment) const {
  double start = 0;
  for (const Phase& phase : m_phases) {
    if (moment < start + phase.length)
      return phase.from + (phase.to - phase.from) * std::max(0.0, moment - start) / phase.length;
    start += phase.length;
  }
  return m_phases.empty() ? 0 : m_phases.back().to;
}

}  // namespace kestrin::ui::led
