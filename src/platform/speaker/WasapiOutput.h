// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include "core/sound/SoundOutput.h"

namespace kestrin::platform::speaker {

/// Plays beside all other programs through the loudspeaker that Windows uses by default when the stream starts, and
/// through the next one when that is unplugged. Each stream has threads of its own.
class WasapiOutput final : public core::sound::SoundOutput {
 public:
  /// `buffer`: how much of a stream the system may hold.
  explicit WasapiOutput(std::chrono::milliseconds buffer) : m_buffer(buffer) {}
  /// Stops, and waits a moment for the stream's thread.
  ~WasapiOutput() override;
  WasapiOutput(const WasapiOutput&) = delete;
  WasapiOutput& operator=(const WasapiOutput&) = delete;

  void Start(Source source) override;
  void Stop() override;
  [[nodiscard]] Status Look() override;

 private:
  std::chrono::milliseconds m_buffer;
  /// Shared with its thread, which may outlive the output when the system does not answer.
  std::shared_ptr<class WasapiStream> m_stream;
};

}  // namespace kestrin::platform::speaker
