// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/sound/SoundOutput.h"
#include "platform/speaker/PulseStream.h"

namespace kestrin::platform::speaker {

/// Plays through PulseAudio, and through PipeWire where that stands in for it. Each stream has a connection and threads
/// of its own, so that whoever starts and stops them never waits for the service.
class PulseOutput final : public core::sound::SoundOutput {
 public:
  /// `buffer`: how much of a stream the service may hold.
  explicit PulseOutput(std::chrono::milliseconds buffer, const PulsePatience& patience = {})
      : m_buffer(buffer), m_patience(patience) {}
  /// Stops, and waits a moment for the stream's thread.
  ~PulseOutput() override;
  PulseOutput(const PulseOutput&) = delete;
  PulseOutput& operator=(const PulseOutput&) = delete;

  void Start(Source source) override;
  void Stop() override;
  [[nodiscard]] Status Look() override;

 private:
  std::chrono::milliseconds m_buffer;
  PulsePatience m_patience;
  /// Shared with its thread, which may outlive the output when the service does not answer.
  std::shared_ptr<PulseStream> m_stream;
};

}  // namespace kestrin::platform::speaker
