// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <utility>

namespace kestrin::support {

/// Counts the turns of the event loop while it lives and looks on in each of them. How long a turn takes depends on
/// what else the computer does; how much work lies between two turns does not.
class EventLoopTurns {
 public:
  explicit EventLoopTurns(std::function<void()> onTurn = {}) : m_onTurn(std::move(onTurn)) {
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
      ++m_count;
      if (m_onTurn) m_onTurn();
    });
    m_timer.start(0);
  }

  [[nodiscard]] int Count() const { return m_count; }

 private:
  std::function<void()> m_onTurn;
  QTimer m_timer;
  int m_count = 0;
};

}  // namespace kestrin::support
