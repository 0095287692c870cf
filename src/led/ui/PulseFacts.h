#pragma once

#include <array>

#include "led/PulseTimes.h"
#include "led/ui/PulseFrame.h"

namespace kestrin::led::ui {

/// What stands in `FrameIdle` and in `FrameFoc`.
[[nodiscard]] PulseFrame::Facts IdleFacts();
[[nodiscard]] PulseFrame::Facts FocFacts();

/// The level buttons of the idle pulse, in the order of its facts.
inline constexpr std::size_t kHighButton = 0;
inline constexpr std::size_t kLowButton = 1;

/// The time boxes of each frame, in the order of its facts. Behind those of the flash stands the repeat box.
inline constexpr std::array<TimeBox, 4> kIdleBoxes{TimeBox::IdleTON, TimeBox::IdleTOFF, TimeBox::IdleTRISE,
                                                   TimeBox::IdleTFALL};
inline constexpr std::array<TimeBox, 2> kFocBoxes{TimeBox::FocTON, TimeBox::FocTOFF};
inline constexpr std::size_t kRepeatBox = kFocBoxes.size();

}  // namespace kestrin::led::ui
