// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "core/base/Clock.h"
#include "core/base/Result.h"
#include "simulator/BoardState.h"
#include "simulator/FaultPlan.h"
#include "simulator/SensorSource.h"

namespace kestrin::simulator {

/// What kind of board to simulate.
struct BoardOptions {
  /// What reports cost.
  enum class Wire {
    /// Nothing.
    None,
    /// The time that they take on full-speed USB.
    Usb,
  };

  /// Reads "KEY=VALUE,KEY=VALUE", what stands behind "sim:" on the command line; "" means that all is as it comes.
  /// Every key may stand once, `fault` as often as wanted. A failure says which key or value is wrong and what is
  /// allowed.
  static core::base::Result<BoardOptions> Parse(std::string_view text);

  /// Empty: what the state folder holds, or the factory's.
  std::optional<std::uint16_t> id;
  std::optional<std::uint32_t> serial;
  /// The folder that keeps the board's state between runs; empty: the state lives in memory.
  std::filesystem::path dir;
  /// How long erasing the flash takes.
  core::base::Clock::Duration erase{};
  Wire wire = Wire::None;
  std::vector<Fault> faults;
  /// The file that says how the board is moved, see MotionScript; empty: `sensor` does.
  std::filesystem::path motion;
  /// What moves the board, for programs that do so themselves; empty: it lies still. No text behind "sim:" sets it.
  SensorSource sensor;

  /// A board's state with the id and serial that are wanted, where they are given.
  [[nodiscard]] BoardState Applied(BoardState state) const;
};

}  // namespace kestrin::simulator
