// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <array>

#include "core/led/PulseTimes.h"
#include "ui/led/PulseFrame.h"

namespace kestrin::ui::led {

/// What stands in `FrameIdle` and in `FrameFoc`.
class PulseFacts {
  Q_DECLARE_TR_FUNCTIONS(PulseFacts)

 public:
  [[nodiscard]] static PulseFrame::Facts Idle();
  [[nodiscard]] static PulseFrame::Facts Foc();
};

/// The level buttons of the idle pulse, in the order of its facts.
inline constexpr std::size_t kHighButton = 0;
inline constexpr std::size_t kLowButton = 1;

/// The time boxes of each frame, in the order of its facts. Behind those of the flash stands the repeat box.
inline constexpr std::array<core::led::TimeBox, 4> kIdleBoxes{core::led::TimeBox::IdleTON, core::led::TimeBox::IdleTOFF,
                                                              core::led::TimeBox::IdleTRISE,
                                                              core::led::TimeBox::IdleTFALL};
inline constexpr std::array<core::led::TimeBox, 2> kFocBoxes{core::led::TimeBox::FocTON, core::led::TimeBox::FocTOFF};
inline constexpr std::size_t kRepeatBox = kFocBoxes.size();

}  // namespace kestrin::ui::led
