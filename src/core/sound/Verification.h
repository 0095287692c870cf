// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "device/TLS.h"
#include "sound/LSU_Configuration.h"

namespace kestrin::core::sound {

/// A checksum that was expected in a range of the board's flash, beside the one that the board gave.
struct ChecksumComparison {
  std::uint16_t expected = 0;
  /// Empty when the board did not answer.
  std::optional<std::uint16_t> board;

  [[nodiscard]] bool Ok() const { return board == expected; }
};

/// Compares what the board's flash holds with a configuration, by checksums and without writing anything.
class Verification {
 public:
  /// Shown when the board does not answer a checksum question.
  static constexpr const char* kNotReceived = "CRC not received";

  /// Asks the board for the checksum of the file's flash range. Needs MakeMemoryMap() before.
  [[nodiscard]] static ChecksumComparison CheckFile(device::TLS& board, const LSU_SoundFile& file);
  /// Asks for the checksum of the file table, its own checksum bytes left out. Needs MakeMemoryMap() before.
  [[nodiscard]] static ChecksumComparison CheckTable(device::TLS& board, const LSU_Configuration& configuration);
};

}  // namespace kestrin::core::sound
