// SPDX-License-Identifier: MIT
#include "platform/speaker/PulseStream.h"

#include <algorithm>
#include <span>
#include <string>

namespace kestrin::platform::speaker {

namespace {

constexpr std::uint32_t kSamplesPerSecond = 48000;
constexpr std::size_t kBytesOfASample = sizeof(std::int16_t);
/// Patience is counted in slices. Whoever was asleep for long, as a program that was stopped, has lost one of them.
constexpr int kSlices = 20;

core::base::Failure PulseFailure(std::string text) { return {core::base::FailureKind::Failed, std::move(text)}; }

core::base::Failure NoPulseLibrary() {
  return PulseFailure(
      "Nothing can be heard: the library libpulse is not on this computer. Install it (on Debian: apt install "
      "libpulse0) and try again.");
}

core::base::Failure NoPulseService() {
  return PulseFailure(
      "No sound service answers on this computer, so nothing can be heard. Start PipeWire or PulseAudio and try "
      "again.");
}

core::base::Failure SilentPulseService() {
  return PulseFailure("The sound service does not answer any more. Start PipeWire or PulseAudio anew and try again.");
}

}  // namespace

/// The loop and the connection, for as long as it lives.
class PulseStream::Connection {
 public:
  Connection(PulseStream& stream, const PulseLibrary& pulse)
      : m_stream(stream), m_pulse(pulse), m_loop(pulse.newLoop()) {
    if (m_loop == nullptr) return;
    m_stream.m_pulse = &pulse;
    m_stream.m_context = pulse.newContext(pulse.getApi(m_loop), "Kestrin Launcher");
    if (m_stream.m_context == nullptr) return;
    pulse.setContextCallback(m_stream.m_context, OnContextState, &m_stream);
    // Nobody wants a service that comes to life by a click, for another user or without a desktop.
    m_isUnderWay = pulse.connect(m_stream.m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0 &&
                   pulse.startLoop(m_loop) >= 0;
  }
  ~Connection() {
    if (m_loop == nullptr) return;
    m_pulse.lockLoop(m_loop);
    if (pa_stream* const stream = m_stream.m_stream; stream != nullptr) {
      m_pulse.setStreamCallback(stream, nullptr, nullptr);
      m_pulse.setWriteCallback(stream, nullptr, nullptr);
      m_pulse.disconnectStream(stream);
      m_pulse.releaseStream(stream);
    }
    if (m_stream.m_context != nullptr) {
      m_pulse.setContextCallback(m_stream.m_context, nullptr, nullptr);
      m_pulse.disconnect(m_stream.m_context);
      m_pulse.releaseContext(m_stream.m_context);
    }
    m_pulse.unlockLoop(m_loop);
    m_pulse.stopLoop(m_loop);
    m_pulse.freeLoop(m_loop);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] bool IsUnderWay() const { return m_isUnderWay; }

 private:
  PulseStream& m_stream;
  const PulseLibrary& m_pulse;
  pa_threaded_mainloop* m_loop;
  bool m_isUnderWay = false;
};

void PulseStream::Run() {
  const PulseLibrary* const pulse = PulseLibrary::Find();
  if (pulse == nullptr)
    m_state.End(NoPulseLibrary());
  else if (!m_state.IsStopped())
    Play(*pulse);
  m_state.TellGone();
}

void PulseStream::Play(const PulseLibrary& pulse) {
  const Connection connection(*this, pulse);
  if (connection.IsUnderWay())
    Watch();
  else
    m_state.End(NoPulseService());
}

void PulseStream::Watch() {
  int silent = 0;
  std::uint32_t words = 0;
  bool isReady = false;
  while (silent < kSlices) {
    if (m_state.WaitUntilOver((isReady ? m_patience.playing : m_patience.connecting) / kSlices)) return;
    ++silent;
    if (m_isReady && (!isReady || m_words != words)) silent = 0;
    isReady = m_isReady;
    words = m_words;
  }
  m_state.End(isReady ? SilentPulseService() : NoPulseService());
}

void PulseStream::OnContextState(pa_context* context, void* self) {
  PulseStream& stream = *static_cast<PulseStream*>(self);
  const pa_context_state_t state = stream.m_pulse->getContextState(context);
  if (state == PA_CONTEXT_READY) {
    stream.OpenStream(context);
  } else if (!PA_CONTEXT_IS_GOOD(state)) {
    if (stream.m_isReady)
      stream.Fail("The sound service stopped playing", "Try again.");
    else
      stream.m_state.End(NoPulseService());
  }
}

void PulseStream::OpenStream(pa_context* context) {
  constexpr pa_sample_spec kFormat{PA_SAMPLE_S16NE, kSamplesPerSecond, 1};
  constexpr auto kByDefault = static_cast<std::uint32_t>(-1);
  const auto bytes = static_cast<std::uint32_t>(m_buffer.count()) * kSamplesPerSecond / 1000 * kBytesOfASample;
  const pa_buffer_attr buffers{kByDefault, static_cast<std::uint32_t>(bytes), kByDefault, kByDefault, kByDefault};
  pa_stream* const stream = m_pulse->newStream(context, "Sound", &kFormat, nullptr);
  m_stream = stream;
  if (stream != nullptr) {
    m_pulse->setStreamCallback(stream, OnStreamState, this);
    m_pulse->setWriteCallback(stream, OnWanted, this);
    if (m_pulse->connectPlayback(stream, nullptr, &buffers, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) >= 0) return;
  }
  Fail("The sound service does not play", "Look at the computer's sound settings and try again.");
}

void PulseStream::OnStreamState(pa_stream* stream, void* self) {
  PulseStream& one = *static_cast<PulseStream*>(self);
  switch (one.m_pulse->getStreamState(stream)) {
    case PA_STREAM_READY:
      one.m_isReady = true;
      break;
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
      if (one.m_isReady)
        one.Fail("The sound service stopped playing", "Try again.");
      else
        one.Fail("The sound service has nothing to play on", "Connect a loudspeaker and try again.");
      break;
    default:
      break;
  }
}

void PulseStream::OnWanted(pa_stream* stream, std::size_t bytes, void* self) {
  static_cast<PulseStream*>(self)->Write(stream, bytes);
}

void PulseStream::OnDrained(pa_stream*, int isDone, void* self) {
  PulseStream& stream = *static_cast<PulseStream*>(self);
  if (isDone != 0)
    stream.m_state.End({});
  else
    stream.Fail("The sound service stopped playing", "Try again.");
}

void PulseStream::Write(pa_stream* stream, std::size_t bytes) {
  ++m_words;
  while (bytes >= kBytesOfASample && !m_isExhausted) {
    void* room = nullptr;
    std::size_t roomBytes = bytes;
    if (m_pulse->beginWrite(stream, &room, &roomBytes) < 0 || room == nullptr || roomBytes < kBytesOfASample)
      return Fail("The sound service stopped playing", "Try again.");
    const std::span<std::int16_t> samples(static_cast<std::int16_t*>(room),
                                          std::min(bytes, roomBytes) / kBytesOfASample);
    const std::size_t made = m_state.Fill(samples);
    m_isExhausted = made < samples.size();
    if (made == 0) {
      m_pulse->cancelWrite(stream);
    } else {
      m_hasWritten = true;
      if (m_pulse->write(stream, room, made * kBytesOfASample, nullptr, 0, PA_SEEK_RELATIVE) < 0)
        return Fail("The sound service stopped playing", "Try again.");
      bytes -= made * kBytesOfASample;
    }
    if (m_isExhausted) Drain(stream);
  }
}

void PulseStream::Drain(pa_stream* stream) {
  // There is no last sample to wait for.
  if (!m_hasWritten) return m_state.End({});
  pa_operation* const operation = m_pulse->drain(stream, OnDrained, this);
  if (operation == nullptr) return Fail("The sound service stopped playing", "Try again.");
  m_pulse->releaseOperation(operation);
}

void PulseStream::Fail(const char* text, const char* next) {
  m_state.End(PulseFailure(std::string(text) + " (" + m_pulse->textOf(m_pulse->getError(m_context)) + "). " + next));
}

}  // namespace kestrin::platform::speaker
