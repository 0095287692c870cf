// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace kestrin::simulator {

/// What goes wrong, and at which report (from 1).
struct Fault {
  enum class Kind {
    /// The report does not reach the board.
    WriteFails,
    /// The answer comes too late for that read: the next one gets it, unless a report is written before.
    ReadFails,
    /// The board is gone; written and read reports are counted together.
    Unplug,
    /// One bit of the flash data that the written report carries, if any, arrives wrong.
    FlipBit,
  };

  Kind kind = Kind::WriteFails;
  std::uint64_t number = 1;

  friend bool operator==(const Fault&, const Fault&) = default;
};

/// Counts the reports that are tried and says what goes wrong with each.
class FaultPlan {
 public:
  /// What goes wrong with one report.
  struct Verdict {
    bool unplug = false;
    bool fails = false;
    bool flip = false;
  };

  explicit FaultPlan(std::vector<Fault> faults = {}) : m_faults(std::move(faults)) {}

  /// The next written / read report; one that is tried counts, whether or not it gets through.
  [[nodiscard]] Verdict NextWrite();
  [[nodiscard]] Verdict NextRead();
  /// How many written reports were tried so far.
  [[nodiscard]] std::uint64_t Written() const { return m_written; }

 private:
  [[nodiscard]] bool Has(Fault::Kind kind, std::uint64_t number) const;

  std::vector<Fault> m_faults;
  std::uint64_t m_written = 0;
  std::uint64_t m_read = 0;
};

}  // namespace kestrin::simulator
