// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "base/Result.h"
#include "device/BoardIdentity.h"
#include "device/TLS.h"

namespace kestrin::core::device {

/// All that the device session knows: how far it has come with its board, and what that board is.
struct SessionState {
  enum class Stage {
    Offline,      ///< no board is used; the timer looks for one
    Identifying,  ///< a board is being asked what it is
    Reading,      ///< the board is known; what it holds is being read
    Ready,        ///< the board can be used
  };

  Stage stage = Stage::Offline;
  /// The text of the serial label; "" offline.
  std::string serialLabel;

  // --- Of the board that is online, or else of the one that was online last ---

  device::DeviceType deviceType = device::DeviceType::SoundBoard;
  /// `DeviceRevision`.
  std::uint16_t deviceRevision = 0;
  /// The identity number, and whether the board told it itself.
  std::int32_t id = 0;
  bool knowsId = false;
  /// As GetSN gave it; "" before any.
  std::string serialNumber;
  /// Samples that the last sound board holds; that of the smaller model before any.
  std::int32_t memoryCapacity = kDefaultMemoryCapacity;

  // --- Of the boards that are there, online or not ---

  /// Those that have all of a board's reports.
  std::size_t boards = 0;
  /// The number of the first one, TLS::ClassDebugID(); 0 when there is none.
  std::int32_t board = 0;
  /// A run has left that one in the middle of an erase, and it has not come back since.
  bool isFinishing = false;
  /// Why no board could be opened although one is there, and how to permit it; "" when that is not so.
  std::string accessProblem;
  /// Of a device that has a board's ids but not its reports, and is left alone; "" when there is none.
  std::string passedOver;

  [[nodiscard]] bool IsOnline() const { return stage != Stage::Offline; }
  /// A sound board is online and everything can be done with it.
  [[nodiscard]] bool HasSoundBoard() const {
    return stage == Stage::Ready && deviceType == device::DeviceType::SoundBoard;
  }
  /// The bytes of flash that a sound board has at most: of one that has not said what it is, those of the largest.
  [[nodiscard]] std::int32_t MostFlash() const {
    return FlashSize(knowsId ? memoryCapacity : std::numeric_limits<std::int32_t>::max());
  }
  /// An LED driver is online, perhaps still being read.
  [[nodiscard]] bool HasLedDriver() const { return IsOnline() && deviceType == device::DeviceType::LedDriver; }
  /// Whether the board said what it is and which one: its whole serial number came. Nothing may be written to a sound
  /// board that did not.
  [[nodiscard]] bool IsIdentified() const { return knowsId && serialNumber.size() == TLS::kSerialDigits; }
  /// The same, with the reason and the next step for one that did not.
  [[nodiscard]] base::Result<> Identified() const;

  friend bool operator==(const SessionState&, const SessionState&) = default;
};

}  // namespace kestrin::core::device
