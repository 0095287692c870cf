// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

#include "rig/MockBoard.h"
#include "simulator/VirtualBoard.h"

namespace kestrin::rig {

/// A board's firmware behind a mocked device in the computer's own time: while it erases it takes reports and keeps
/// silent, then it answers all of them in order, also when the program that asked is gone.
class TimedFirmware {
 public:
  /// Both must outlive the firmware.
  TimedFirmware(MockBoard& mock, simulator::VirtualBoard& board)
      : m_mock(mock), m_board(board), m_worker([this] { Work(); }) {
    mock.onReport = [this](const MockBoard::Bytes& report) {
      const std::lock_guard lock(m_mutex);
      const bool erasing = m_board.BusyUntil().has_value();
      m_board.Receive(report, Now());
      Deliver();
      if (!erasing && m_board.BusyUntil()) m_erasing.set_value();
      m_wake.notify_one();
      return std::vector<MockBoard::Bytes>{};
    };
  }
  ~TimedFirmware() {
    m_mock.onReport = nullptr;
    {
      const std::lock_guard lock(m_mutex);
      m_end = true;
    }
    m_wake.notify_one();
    m_worker.join();
  }
  TimedFirmware(const TimedFirmware&) = delete;
  TimedFirmware& operator=(const TimedFirmware&) = delete;

  /// Returns once the board has begun to erase; once for each erase.
  void WaitForErase() {
    m_erasing.get_future().wait();
    const std::lock_guard lock(m_mutex);
    m_erasing = {};
  }
  [[nodiscard]] bool IsErasing() {
    const std::lock_guard lock(m_mutex);
    return m_board.BusyUntil().has_value();
  }

 private:
  [[nodiscard]] static simulator::VirtualBoard::Time Now() {
    return std::chrono::steady_clock::now().time_since_epoch();
  }

  /// Sends what is ready.
  void Deliver() {
    while (const auto answer = m_board.NextAnswer(Now())) m_mock.Send({answer->begin(), answer->end()});
  }
  void Work() {
    std::unique_lock lock(m_mutex);
    while (!m_end) {
      if (const auto busy = m_board.BusyUntil())
        m_wake.wait_until(lock, std::chrono::steady_clock::time_point(*busy));
      else
        m_wake.wait(lock);
      if (!m_end) Deliver();
    }
  }

  MockBoard& m_mock;
  simulator::VirtualBoard& m_board;
  std::mutex m_mutex;
  std::condition_variable m_wake;
  std::promise<void> m_erasing;
  bool m_end = false;
  std::thread m_worker;
};

}  // namespace kestrin::rig
