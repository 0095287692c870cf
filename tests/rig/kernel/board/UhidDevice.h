// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "rig/kernel/board/ServedBoard.h"

struct uhid_event;

namespace kestrin::rig {

/// Serves a board through /dev/uhid: the kernel's HID layer takes it for a device on USB, without any USB.
///
/// Signals: SIGUSR1 pulls it out, SIGUSR2 plugs it in, SIGHUP lets the answer go that is held back, SIGTERM ends it.
/// The log says PLUGGED, UNPLUGGED, STAYS when a board that flaps no longer does, and OPENED and CLOSED when the first
/// program opens the node and the last one closes it.
class UhidDevice {
 public:
  explicit UhidDevice(ServedBoard board);
  ~UhidDevice();
  UhidDevice(const UhidDevice&) = delete;
  UhidDevice& operator=(const UhidDevice&) = delete;

  /// Returns the exit status of the program at SIGTERM, or when there is no uhid.
  int Serve();

 private:
  using Clock = std::chrono::steady_clock;

  void Plug();
  void Unplug();
  /// What a signal asks for. False for the end.
  bool Obey(int signal);
  void ReadEvent();
  void SendAnswers();
  void Put(const uhid_event& event, std::size_t size) const;
  /// Comes or goes when it is time for that.
  void Flap();
  /// For poll(): milliseconds until something is to be done unasked, -1 for never.
  [[nodiscard]] int Patience() const;

  ServedBoard m_board;
  std::vector<std::uint8_t> m_descriptor;
  int m_uhid = -1;
  int m_signals = -1;
  bool m_plugged = false;
  bool m_flaps;
  Clock::time_point m_nextFlap;
  /// The same moments in every run.
  std::minstd_rand m_random{1};
};

}  // namespace kestrin::rig
