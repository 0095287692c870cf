// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <algorithm>

namespace kestrin::benchmarks {

/// Measures the longest pause of the event loop while it lives: the longest time between two turns of a timer that
/// wants one all the time.
class EventLoopWatch {
 public:
  EventLoopWatch() {
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Turn(); });
    m_timer.setInterval(0);
    m_timer.start();
    m_sinceTurn.start();
  }

  /// Milliseconds; the time since the last turn counts.
  [[nodiscard]] double LongestPause() {
    Turn();
    return m_longest;
  }

 private:
  void Turn() {
    m_longest = std::max(m_longest, static_cast<double>(m_sinceTurn.nsecsElapsed()) / 1e6);
    m_sinceTurn.restart();
  }

  QTimer m_timer;
  QElapsedTimer m_sinceTurn;
  double m_longest = 0;
};

}  // namespace kestrin::benchmarks
