// SPDX-License-Identifier: MIT
#include "platform/speaker/StreamState.h"

#include <utility>

namespace kestrin::platform::speaker {

std::size_t StreamState::Fill(std::span<std::int16_t> out) {
  const std::lock_guard lock(m_sourceMutex);
  return m_source ? m_source(out) : 0;
}

void StreamState::Stop() {
  {
    const std::lock_guard lock(m_mutex);
    m_isStopped = true;
    m_changed.notify_all();
  }
  const std::lock_guard lock(m_sourceMutex);
  m_source = nullptr;
}

bool StreamState::IsStopped() const {
  const std::lock_guard lock(m_mutex);
  return m_isStopped;
}

void StreamState::End(core::base::Result<> how) {
  {
    const std::lock_guard lock(m_mutex);
    if (!m_isStopped && !m_isOver) m_ended = std::move(how);
    m_isOver = true;
    m_changed.notify_all();
  }
  const std::lock_guard lock(m_sourceMutex);
  m_source = nullptr;
}

StreamState::Status StreamState::Look() const {
  const std::lock_guard lock(m_mutex);
  return {!m_isStopped && !m_isOver, m_ended};
}

bool StreamState::WaitUntilOver(std::chrono::milliseconds longest) const {
  std::unique_lock lock(m_mutex);
  return m_changed.wait_for(lock, longest, [this] { return m_isStopped || m_isOver; });
}

void StreamState::TellGone() {
  const std::lock_guard lock(m_mutex);
  m_isGone = true;
  m_changed.notify_all();
}

bool StreamState::WaitUntilGone(std::chrono::milliseconds longest) const {
  std::unique_lock lock(m_mutex);
  return m_changed.wait_for(lock, longest, [this] { return m_isGone; });
}

}  // namespace kestrin::platform::speaker
