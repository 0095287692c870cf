// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace kestrin::core::sound {

/// A piece of a coded stream that goes to the board with one command.
struct FlashBlock {
  /// From the start of the stream.
  std::int32_t offset;
  std::int32_t size;
  /// `Write1k` for 1,024 bytes of a longer stream, else `WriteLess`.
  bool whole;

  friend bool operator==(const FlashBlock&, const FlashBlock&) = default;
};

/// How a stream of `length` bytes goes: whole blocks of 1,024 bytes when it is longer than one, then the rest. A report
/// carries at most 1,021 bytes behind `WriteLess`, so a longer rest goes as two.
[[nodiscard]] std::vector<FlashBlock> FlashBlocks(std::int32_t length);

}  // namespace kestrin::core::sound
