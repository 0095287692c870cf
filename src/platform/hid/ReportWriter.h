// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>

namespace kestrin::platform::hid {

/// Writes reports to an open device where a write that the device holds up holds up nobody else. One at a time; at its
/// end it leaves one that goes on to itself.
class ReportWriter {
 public:
  ReportWriter() = default;
  virtual ~ReportWriter() = default;
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;

  /// Begins to write a report, with the byte of its id in front. False when that cannot be, and at once while the
  /// device holds up an earlier one; the outcome of one that has ended meanwhile is forgotten.
  [[nodiscard]] virtual bool Start(std::span<const std::uint8_t> report) = 0;
  /// Waits at most `timeout` for the end of the write. Returns the bytes taken, negative on failure and when nothing
  /// was begun; nothing while it goes on. A signal may end the wait early.
  [[nodiscard]] virtual std::optional<int> Outcome(std::chrono::milliseconds timeout) = 0;
};

}  // namespace kestrin::platform::hid
