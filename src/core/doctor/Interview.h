// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "device/TLS.h"

namespace kestrin::core::doctor {

/// One harmless question and what came back.
struct Exchange {
  /// The command's name, "GetID".
  std::string command;
  /// The bytes of the answer reports, one after another; empty when none came.
  std::vector<std::uint8_t> answer;
  /// The answer bytes that the protocol says.
  std::size_t expected = 0;
  std::chrono::microseconds took{0};

  [[nodiscard]] bool IsAsExpected() const { return answer.size() == expected; }
};

/// What a board has told about itself.
struct Answers {
  /// How many round trips are timed.
  static constexpr int kRoundTrips = 20;

  /// Whether the first question could be sent, and whether it was answered.
  bool written = false;
  bool answered = false;
  std::optional<std::int32_t> id;
  /// As GetSN gave it; "" when it did not come whole.
  std::string serialNumber;
  /// One for each round trip that was answered.
  std::vector<std::chrono::microseconds> roundTrips;
  /// Harmless commands, each once, in the order in which they were asked.
  std::vector<Exchange> exchanges;
};

/// Asks a board everything that changes nothing in it. Stops at the first question that is not answered at all, and
/// when `goOn` says no; what `goOn` runs must leave the board where it is. Takes as long as the board does; the agent's
/// event pump has its turn meanwhile.
[[nodiscard]] Answers Interview(device::TLS& board, const base::Clock& clock, const std::function<bool()>& goOn);

}  // namespace kestrin::core::doctor
