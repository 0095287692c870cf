// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "rig/MockBoard.h"
#include "rig/MockHost.h"
#include "simulator/VirtualBoard.h"

namespace kestrin::rig {

/// Another board on another port, with a serial number of its own. Not plugged yet.
class SecondBoard {
 public:
  static constexpr const char* kSerial = "00C0FFEE";

  explicit SecondBoard(MockHost& host, std::uint16_t id = 0) : m_board(State(id)), m_mock(host, Port()) {
    m_mock.AnswerWith(m_board);
  }
  [[nodiscard]] MockBoard& Mock() { return m_mock; }
  /// What the board itself holds and has done.
  [[nodiscard]] simulator::VirtualBoard& Firmware() { return m_board; }

 private:
  [[nodiscard]] static simulator::BoardState State(std::uint16_t id) {
    simulator::BoardState state;
    state.id = id;
    state.serial = 0x00C0FFEE;
    return state;
  }
  [[nodiscard]] static MockBoard::Description Port() {
    MockBoard::Description description;
    description.port = 2;
    return description;
  }

  simulator::VirtualBoard m_board;
  MockBoard m_mock;
};

}  // namespace kestrin::rig
