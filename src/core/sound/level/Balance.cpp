// SPDX-License-Identifier: MIT
#include "sound/level/Balance.h"

#include <algorithm>
#include <utility>

namespace kestrin::core::sound {

namespace {

/// The one table. What is measured of a hit is its mean, most of which is fading: a wider spread would pull a whole set
/// down to where a board is noisy.
constexpr std::array<std::pair<SlotKind, double>, kSlots.size()> kUsual{{
    {SlotKind::Boot, -2},
    {SlotKind::PwrOn, -2},
    {SlotKind::PwrOff, -2},
    {SlotKind::Idle, -6},
    {SlotKind::Motion, -3},
    {SlotKind::Impact, 0},
    {SlotKind::Lockup, -2},
}};

}  // namespace

Balance::Balance() {
  for (const auto& [kind, units] : kUsual) Set(kind, units);
}

void Balance::Set(SlotKind kind, double units) { m_units[PlaceOf(kind)] = std::clamp(units, kLowest, kHighest); }

}  // namespace kestrin::core::sound
