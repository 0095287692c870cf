// SPDX-License-Identifier: MIT
#include "ui/window/OpenRequests.h"

#include <QScopeGuard>
#include <utility>

#include "ui/kit/CommandGate.h"

namespace kestrin::ui::window {

OpenRequests::OpenRequests(kit::CommandGate& gate, Steps steps, QObject* parent)
    : QObject(parent), m_gate(gate), m_steps(std::move(steps)) {}

void OpenRequests::Add(const std::filesystem::path& path) {
  if (m_waiting.size() >= kMost) m_waiting.pop_front();
  m_waiting.push_back(path);
  const bool waits = m_waiting.size() > 1 || m_isOpening || m_gate.IsBusy() || !m_steps.isFree();
  Next();
  if (waits) m_steps.tellWaiting(path);
}

void OpenRequests::Look() {
  // Whoever tells of an end may be in the middle of it.
  QMetaObject::invokeMethod(this, &OpenRequests::Next, Qt::QueuedConnection);
}

std::vector<std::filesystem::path> OpenRequests::TakeWaiting() {
  const std::deque<std::filesystem::path> waiting = std::exchange(m_waiting, {});
  return {waiting.begin(), waiting.end()};
}

void OpenRequests::Next() {
  if (m_waiting.empty() || std::exchange(m_isAtGate, true)) return;
  m_gate.WhenFree([this] {
    m_isAtGate = false;
    if (m_waiting.empty() || m_isOpening || !m_steps.isFree()) return;
    m_isOpening = true;
    const auto opened = qScopeGuard([this] {
      m_isOpening = false;
      Look();
    });
    const std::filesystem::path path = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_steps.open(path);
  });
}

}  // namespace kestrin::ui::window
