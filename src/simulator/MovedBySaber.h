// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>

#include "simulator/MotionScript.h"
#include "simulator/SensorSource.h"

namespace kestrin::simulator {

/// Moves a simulated board with the saber on the screen. Each swing and hit waits until the board is asked what it
/// feels, and is felt then as a script's movement, with a rest before it: what was done before anybody watched the
/// sensor is felt as well, in order.
class MovedBySaber {
 public:
  /// How hard a swing and a hit are felt.
  static constexpr int kSwingForce = 8;
  static constexpr int kHitForce = 20;
  /// So many movements wait at most; of more the oldest are forgotten.
  static constexpr std::size_t kMost = 20;

  void Swing() { Add(Movement::Swing); }
  void Hit() { Add(Movement::Hit); }

  /// What is felt next; lying still when nothing waits.
  [[nodiscard]] SensorValues Next();

 private:
  enum class Movement { Swing, Hit };
  void Add(Movement movement);

  std::deque<Movement> m_waiting;
  /// What is being felt.
  MotionScript m_script;
};

}  // namespace kestrin::simulator
