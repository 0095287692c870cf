// SPDX-License-Identifier: MIT
#include "ui/kit/CommandGate.h"

#include <QCoreApplication>
#include <utility>

namespace kestrin::ui::kit {

CommandGate::CommandGate(std::chrono::milliseconds interval) : m_interval(interval) {}

void CommandGate::WhenFree(std::function<void()> action) {
  if (m_shut) return;
  if (IsBusy())
    m_waiting.push_back(std::move(action));
  else
    action();
}

void CommandGate::Shut(std::function<void()> last) {
  m_waiting.clear();
  WhenFree(std::move(last));
  m_shut = true;
}

core::base::EventPump CommandGate::Pump() {
  return [this] { HandleEvents(); };
}

void CommandGate::Leave() {
  if (--m_passages > 0 || m_waiting.empty()) return;
  // Not from here: whoever holds the passage may be in the middle of its own good-bye.
  QMetaObject::invokeMethod(
      this, [this] { RunWaiting(); }, Qt::QueuedConnection);
}

void CommandGate::RunWaiting() {
  while (!IsBusy() && !m_waiting.empty()) {
    const std::function<void()> action = std::move(m_waiting.front());
    m_waiting.pop_front();
    action();
  }
}

void CommandGate::HandleEvents() {
  const auto now = std::chrono::steady_clock::now();
  if (m_pumping || now - m_lastTurn < m_interval) return;
  m_pumping = true;
  QCoreApplication::processEvents();
  m_lastTurn = std::chrono::steady_clock::now();
  m_pumping = false;
}

}  // namespace kestrin::ui::kit
