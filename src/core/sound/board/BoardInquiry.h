// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "base/Result.h"
#include "device/TLS.h"
#include "sound/LSU_Configuration.h"
#include "sound/LSU_SoundFile.h"
#include "sound/board/FlashSound.h"
#include "sound/board/SetImage.h"
#include "sound/board/StreamSums.h"

namespace kestrin::core::sound {

/// Finds out what a sound board holds. Its flash cannot be read, but it gives the sum of any range of it: the sum of
/// one byte is the byte. So the file table can be read byte by byte, in up to five seconds over full-speed USB, and
/// what is known already can be told by a few sums. Nothing is written, and no question is asked twice.
///
/// Every method fails with Cancelled when it was stopped, with NoAnswer when the board does not answer, and with
/// NotValid when it answers such questions otherwise: then nothing is known.
class BoardInquiry {
 public:
  /// Whether to go on; asked before every question.
  using GoOn = std::function<bool()>;

  /// What a board has told: sums by address and count.
  using Told = std::map<std::pair<std::int32_t, std::int32_t>, std::uint16_t>;

  /// The board must outlive the inquiry, and nobody else may write to it meanwhile. `told` is what it has told an
  /// earlier inquiry, while nothing was written to it since.
  explicit BoardInquiry(device::TLS& board, GoOn goOn = {}, Told told = {})
      : m_board(board), m_goOn(std::move(goOn)), m_sums(std::move(told)) {}

  /// All that the board has told so far, for the next inquiry.
  [[nodiscard]] const Told& WhatWasTold() const { return m_sums; }

  /// Whether the board holds exactly this set: the same table, and of every sound the same sum. One question a sound,
  /// and five.
  base::Result<bool> Holds(const SetImage& set);
  /// The sounds that the board's own table names, with their sums, in flash order; none when the flash is erased. A
  /// table that names bytes beyond a flash of so many is not believed, nor is one that is another at the end.
  base::Result<std::vector<FlashSound>> Read(std::int32_t flash = LSU_Configuration::kAddressSpace);
  /// The volume in percent, 1 .. 102, at which this file codes into what the board holds there; nothing when it is
  /// another sound. It is told by the sums of four parts, so that no other sound is taken for it.
  base::Result<std::optional<std::int16_t>> VolumeOf(const LSU_SoundFile& file, const FlashSound& onBoard);
  /// Whether each quarter of what the board holds there has these sums.
  base::Result<bool> Matches(const FlashSound& onBoard, const StreamSums& sums);

 private:
  /// The board's sum of that range.
  base::Result<std::uint16_t> Sum(std::int32_t address, std::int32_t count);
  /// The table's bytes; none when the flash is erased there.
  base::Result<std::vector<std::uint8_t>> ReadTable();
  /// Appends bytes until there are `size`.
  base::Result<> ReadUpTo(std::vector<std::uint8_t>& table, std::size_t size);

  device::TLS& m_board;
  GoOn m_goOn;
  Told m_sums;
};

}  // namespace kestrin::core::sound
