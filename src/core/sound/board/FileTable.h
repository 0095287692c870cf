// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sound/board/FlashSound.h"

namespace kestrin::core::sound {

/// The reader of a board's file table, which tells where each sound lies; LSU_Configuration::GetFileTable() makes it.
/// Most significant byte first:
///
///     byte 0-2       how many motion, impact and lock-up sounds there are, 0 .. 12 each
///     byte 3         0
///     byte 4-27      boot, power on, power off, idle: start address (3 bytes) and length in bytes (3) of each
///     byte 28 ...    the same of the motion, impact and lock-up sounds
///     last 2 bytes   the sum of all bytes before them, modulo 65536
class FileTable {
 public:
  /// Bytes that tell how long the table is.
  static constexpr std::size_t kHeadBytes = 4;
  static constexpr std::size_t kChecksumBytes = 2;

  /// Bytes of a table that begins with these; nothing when no table does.
  [[nodiscard]] static std::optional<std::size_t> BytesOf(std::span<const std::uint8_t, kHeadBytes> head);

  /// The table of these sounds, which stand in flash order and of which there is one at least in every slot.
  [[nodiscard]] static std::vector<std::uint8_t> Of(std::span<const FlashSound> sounds);

  /// The sounds that the table names, in flash order, their own checksums unknown: 0. Nothing when it is no table of a
  /// complete set: its length or its checksum is wrong, a sound of no length, or one that does not lie behind the one
  /// before, inside a flash of so many bytes.
  [[nodiscard]] static std::optional<std::vector<FlashSound>> Read(std::span<const std::uint8_t> table,
                                                                   std::int32_t flash);
};

}  // namespace kestrin::core::sound
