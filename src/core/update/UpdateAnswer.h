// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrin::core::update {

/// A text answer of the update server, line by line: what its first two lines say, and what comes behind them.
struct UpdateAnswer {
  using Lines = std::vector<std::string>;

  /// The first line that is neither status nor verdict.
  static constexpr std::size_t kFirstPayloadLine = 2;
  /// The most lines of an answer that is taken.
  static constexpr std::size_t kMostLines = 10000;

  /// The lines of an answer; nothing when there are more than are taken.
  [[nodiscard]] static std::optional<Lines> Read(std::string_view text);
  /// Why the answer cannot be used, for the person; "" when it can.
  [[nodiscard]] static std::string Warning(std::span<const std::string> lines);
  /// The lines behind status and verdict; none when there are none.
  [[nodiscard]] static std::span<const std::string> Payload(std::span<const std::string> lines);
  /// The items of a catalogue. A single one without a line break behind it counts as none.
  [[nodiscard]] static std::span<const std::string> Items(std::span<const std::string> lines);
};

}  // namespace kestrin::core::update
