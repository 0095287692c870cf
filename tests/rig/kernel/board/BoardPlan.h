// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "simulator/BoardOptions.h"

namespace kestrin::rig {

/// What the daemon shows to the kernel, and when it misbehaves.
struct BoardPlan {
  /// What the device describes. Only the first two are boards.
  enum class Kind { Plain, Numbered, Mouse, OtherReports };

  /// Reads "KEY=VALUE" words. A failure says which word is wrong.
  static core::base::Result<BoardPlan> Parse(std::span<const std::string_view> words);

  /// `board`: the firmware and what it holds, as behind "sim:" of --board.
  simulator::BoardOptions firmware;
  /// `kind`: plain, numbered (with report ids), mouse, other.
  Kind kind = Kind::Plain;
  /// `vid`, `pid`: hexadecimal.
  std::uint16_t vendorId = 0x04D8;
  std::uint16_t productId = 0xFA37;
  /// `name` and `serial`: texts of the device, not the number that the firmware answers.
  std::string name = "Kestrin Board";
  std::string serial = "SN0001";

  /// `unplugat`: numbers with "," between. After the first plugging the board is gone at the first number's report,
  /// after the second one at the second's, and so on; reports are counted from 1 at each plugging. Gone with the
  /// report: it is neither worked off nor answered.
  std::vector<std::uint64_t> unplugAt;
  /// `silentat`: from that report on, counted from 1 at the start, nothing is worked off any more.
  std::uint64_t silentAt = 0;
  /// `holdat`: what that report asks for is done, but the answer waits for SIGHUP.
  std::uint64_t holdAt = 0;
  /// `hangat`: at that report the daemon stops (SIGSTOP) and takes nothing until it gets SIGCONT.
  std::uint64_t hangAt = 0;
  /// `delay`: milliseconds that the board takes for each answer.
  std::chrono::milliseconds delay{0};
  /// `flap=1`: comes and goes all the time, until SIGUSR2 lets it stay.
  bool flaps = false;
  /// `out=0`: no interrupt OUT endpoint, reports come over the control pipe (USB only).
  bool outEndpoint = true;
  /// `late=1`: not plugged in before SIGUSR2 says so.
  bool late = false;
};

}  // namespace kestrin::rig
