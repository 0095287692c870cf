// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrin::core::device {

/// What a board can do.
enum class DeviceType : std::uint16_t {
  SoundBoard = 0,
  LedDriver = 1,
  /// While the board is being identified.
  Unknown = 65535,
};

/// Memory of the smaller sound boards, in samples; what the program reckons with before it has seen a board.
inline constexpr std::int32_t kDefaultMemoryCapacity = 2793120;

/// What follows from a board's identity number.
struct BoardIdentity {
  /// "USB", "USB 64", "USB2" or "LED Driver".
  std::string_view model;
  DeviceType type;
  /// Sound memory in samples; empty for boards without: the capacity stays what it was.
  std::optional<std::int32_t> memoryCapacity;
  /// The serial label's text in front of the serial number.
  std::string_view caption;
  /// `DeviceRevision`: 0 .. 4095 for a USB2 board, 0 for all others.
  std::uint16_t revision;
};

/// Recognises a board by its `GetID` answer. Every number that belongs to no sound board is an LED driver.
[[nodiscard]] BoardIdentity Identify(std::int32_t id);

/// What a person is told of a device at `path` that has a board's ids but not its reports.
[[nodiscard]] std::string PassedOver(const std::string& path);

/// The flash of a sound board in bytes: 8 MiB for the USB 64 model, 4 MiB for the others.
[[nodiscard]] std::int32_t FlashSize(std::int32_t memoryCapacity);

}  // namespace kestrin::core::device
