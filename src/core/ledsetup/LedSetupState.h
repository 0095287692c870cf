// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Result.h"
#include "led/Color.h"
#include "led/LED_Driver.h"
#include "led/LED_Pulse.h"
#include "led/PulseContent.h"
#include "led/PulseTimes.h"

namespace kestrin::core::ledsetup {

/// All that is set on the LED setup panel. LedSetup alone changes it; who shows it only reads it.
struct LedSetupState {
  /// In percent: the normal overdrive, and the least that can be set. A board may hold 0 all the same.
  static constexpr std::int32_t kNominalOverdrive = 100;
  static constexpr std::int32_t kLeastOverdrive = 1;

  /// The colour picker.
  struct Picker {
    bool isShown = false;
    /// The number of the pulse that it is for, none before it was first opened, and whether for its high level.
    std::optional<std::int32_t> EditedPulse;
    bool EditHigh = false;
    bool ColorFidelity = false;
    /// 0 .. 255 by channel, also of channels that the LED type does not have.
    led::PulseContent::Levels levels{};
  };

  // --- Driver configuration ---

  /// How reading what the board is set to has ended last, with the text for the person.
  base::Result<> reading;
  /// The names of the catalogue's LED types, and the place of the chosen one.
  std::vector<std::string> types;
  std::optional<std::size_t> type;
  led::LED_Driver CurrentDriver;
  /// By output channel; 0 (black) for one that is not used.
  std::array<led::Color, led::LED_Driver::kChannels> channelColors{};
  /// In percent, and the most that the LED type bears. `CurrentDriver` has what the board was told.
  std::int32_t overdrive = kNominalOverdrive;
  std::int32_t overdriveMaximum = kNominalOverdrive;

  // --- Pulses ---

  /// Their levels, and their times as they were read or built last.
  led::LED_Pulse IdlePulse;
  led::LED_Pulse FocPulse;
  /// The numbers in the time boxes, in seconds, by led::TimeBox, and in the repeat box; nothing as long as none was
  /// read or typed.
  std::array<std::optional<double>, led::kTimeBoxes.size()> times;
  std::optional<double> repetitions;

  Picker picker;

  [[nodiscard]] std::optional<double>& Time(led::TimeBox box) { return times[static_cast<std::size_t>(box)]; }
  [[nodiscard]] const std::optional<double>& Time(led::TimeBox box) const {
    return times[static_cast<std::size_t>(box)];
  }
  /// Channels that the current LED type has, 0 .. 4.
  [[nodiscard]] int Channels() const;
  /// Whether a colour can be picked: that needs a red, a green and a blue channel.
  [[nodiscard]] bool CanPickColor() const;
  /// The pulses as the panel shows them: levels of the pulses, times and repetitions of the boxes.
  [[nodiscard]] led::Pulses Shown() const;
  /// Makes pulses and boxes what the pulses given are.
  void Take(const led::Pulses& pulses);

  /// Puts the times of a pulse into its boxes.
  void FillIdleBoxes();
  void FillFocBoxes();
  /// Makes the pulse what its boxes say, with its counts for the current LED type.
  void BuildIdlePulse();
  void BuildFocPulse();
};

}  // namespace kestrin::core::ledsetup
