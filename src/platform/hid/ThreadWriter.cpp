// SPDX-License-Identifier: MIT
#include "platform/hid/ThreadWriter.h"

#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace kestrin::platform::hid {

namespace {

constexpr int kNothingWritten = -1;

}  // namespace

struct ThreadWriter::Desk {
  enum class State { Idle, Writing, Ended };

  explicit Desk(Write function) : write(std::move(function)) {}

  /// Of the thread alone.
  Write write;
  std::mutex mutex;
  std::condition_variable changed;
  State state = State::Idle;
  /// Left alone by the program while the state is Writing.
  std::vector<std::uint8_t> report;
  int outcome = kNothingWritten;
  bool closing = false;
};

ThreadWriter::ThreadWriter(Write write)
    : m_desk(std::make_shared<Desk>(std::move(write))), m_thread([desk = m_desk] { Work(*desk); }) {}

ThreadWriter::~ThreadWriter() {
  bool writing = false;
  {
    const std::lock_guard lock(m_desk->mutex);
    m_desk->closing = true;
    writing = m_desk->state == Desk::State::Writing;
  }
  m_desk->changed.notify_all();
  // One that has only now ended its write is not waited for either.
  if (writing)
    m_thread.detach();
  else
    m_thread.join();
}

void ThreadWriter::Work(Desk& desk) {
  std::unique_lock lock(desk.mutex);
  for (;;) {
    desk.changed.wait(lock, [&] { return desk.closing || desk.state == Desk::State::Writing; });
    if (desk.state != Desk::State::Writing) return;
    lock.unlock();
    const int outcome = desk.write(desk.report);
    lock.lock();
    desk.outcome = outcome;
    desk.state = Desk::State::Ended;
    desk.changed.notify_all();
  }
}

bool ThreadWriter::Start(std::span<const std::uint8_t> report) {
  {
    const std::lock_guard lock(m_desk->mutex);
    if (m_desk->state == Desk::State::Writing) return false;
    m_desk->report.assign(report.begin(), report.end());
    m_desk->state = Desk::State::Writing;
  }
  m_desk->changed.notify_all();
  return true;
}

std::optional<int> ThreadWriter::Outcome(std::chrono::milliseconds timeout) {
  std::unique_lock lock(m_desk->mutex);
  if (m_desk->state == Desk::State::Idle) return kNothingWritten;
  if (!m_desk->changed.wait_for(lock, timeout, [&] { return m_desk->state == Desk::State::Ended; }))
    return std::nullopt;
  m_desk->state = Desk::State::Idle;
  return m_desk->outcome;
}

}  // namespace kestrin::platform::hid
