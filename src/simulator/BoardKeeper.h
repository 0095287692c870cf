// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "simulator/BoardState.h"

namespace kestrin::simulator {

/// Keeps what a board holds, as its commands change it, for a board that outlives its process. Once something could not
/// be kept, nothing is any more.
class BoardKeeper {
 public:
  virtual ~BoardKeeper() = default;

  /// Everything but the flash is now as `state` says.
  virtual void KeepState(const BoardState& state) = 0;
  /// `count` bytes of the flash from `address` on are new.
  virtual void KeepFlash(std::span<const std::uint8_t> flash, std::size_t address, std::size_t count) = 0;
  /// All of the flash is erased.
  virtual void KeepErased() = 0;

  /// "" while everything could be kept, else a text for the person that says what could not and what to do.
  [[nodiscard]] virtual const std::string& Problem() const = 0;
};

}  // namespace kestrin::simulator
