// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>

#include "core/sound/SoundOutput.h"

namespace kestrin::platform::speaker {

/// What the owner of a stream and the threads that play it tell one another. All of it may be called on any thread.
class StreamState {
 public:
  using Source = core::sound::SoundOutput::Source;
  using Status = core::sound::SoundOutput::Status;

  explicit StreamState(Source source) : m_source(std::move(source)) {}
  StreamState(const StreamState&) = delete;
  StreamState& operator=(const StreamState&) = delete;

  /// The source's next samples, and how many; 0 once it was stopped.
  [[nodiscard]] std::size_t Fill(std::span<std::int16_t> out);
  /// The source is not called any more when this returns.
  void Stop();
  [[nodiscard]] bool IsStopped() const;
  /// It is over: the first word counts, and none after a stop.
  void End(core::base::Result<> how);
  [[nodiscard]] Status Look() const;

  /// Waits until it was stopped or is over; false when that takes longer.
  bool WaitUntilOver(std::chrono::milliseconds longest) const;
  /// The stream's thread needs nothing any more and is about to end.
  void TellGone();
  /// Waits until that was told; false when it takes longer.
  bool WaitUntilGone(std::chrono::milliseconds longest) const;

 private:
  /// Held while the source is called.
  std::mutex m_sourceMutex;
  Source m_source;

  mutable std::mutex m_mutex;
  mutable std::condition_variable m_changed;
  bool m_isStopped = false;
  bool m_isOver = false;
  bool m_isGone = false;
  core::base::Result<> m_ended;
};

}  // namespace kestrin::platform::speaker
