// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>

#include "platform/speaker/PulseLibrary.h"
#include "platform/speaker/StreamState.h"

namespace kestrin::platform::speaker {

/// How long a sound service is waited for.
struct PulsePatience {
  /// Until it has a stream ready.
  std::chrono::milliseconds connecting{3000};
  /// For its next word while it plays: it asks for samples every few milliseconds, and tells the last one's end.
  std::chrono::milliseconds playing{2000};
};

/// One stream of a sound service, and its connection. The service may fall silent at any moment: the thread that plays
/// waits for it no longer than `PulsePatience` says, and nobody waits for that thread.
class PulseStream {
 public:
  PulseStream(StreamState::Source source, std::chrono::milliseconds buffer, const PulsePatience& patience)
      : m_state(std::move(source)), m_buffer(buffer), m_patience(patience) {}
  PulseStream(const PulseStream&) = delete;
  PulseStream& operator=(const PulseStream&) = delete;

  /// Connects, plays, and takes everything down again: the work of a thread of its own.
  void Run();
  [[nodiscard]] StreamState& State() { return m_state; }

 private:
  class Connection;

  void Play(const PulseLibrary& pulse);
  /// Until it is over, or the service was silent for too long.
  void Watch();

  // What the service tells, on libpulse's thread.
  static void OnContextState(pa_context* context, void* self);
  static void OnStreamState(pa_stream* stream, void* self);
  static void OnWanted(pa_stream* stream, std::size_t bytes, void* self);
  static void OnDrained(pa_stream* stream, int isDone, void* self);
  void OpenStream(pa_context* context);
  void Write(pa_stream* stream, std::size_t bytes);
  void Drain(pa_stream* stream);
  /// Ends it with the text and the service's own word for the reason.
  void Fail(const char* text, const char* next);

  StreamState m_state;
  std::chrono::milliseconds m_buffer;
  PulsePatience m_patience;
  std::atomic<bool> m_isReady = false;
  /// Goes up with each word of the service.
  std::atomic<std::uint32_t> m_words = 0;

  // Of libpulse's thread, and of the one that runs while it holds the loop's lock.
  const PulseLibrary* m_pulse = nullptr;
  pa_context* m_context = nullptr;
  /// Atomic for the thread sanitizer alone, which does not see the library's lock.
  std::atomic<pa_stream*> m_stream = nullptr;
  bool m_hasWritten = false;
  bool m_isExhausted = false;
};

}  // namespace kestrin::platform::speaker
