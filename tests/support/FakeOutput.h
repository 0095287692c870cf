// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/sound/SoundOutput.h"

namespace kestrin::support {

/// A loudspeaker that takes samples when the test says so.
class FakeOutput final : public core::sound::SoundOutput {
 public:
  int starts = 0;
  int stops = 0;

  void Start(Source source) override {
    ++starts;
    m_source = std::move(source);
    m_status = {true, {}};
    if (!m_failure.empty()) Fail(m_failure);
  }
  void Stop() override {
    ++stops;
    m_source = nullptr;
    m_status.isPlaying = false;
  }
  [[nodiscard]] Status Look() override { return m_status; }

  /// The next samples; fewer when the sound ends with them.
  std::vector<std::int16_t> Pull(std::size_t count) {
    std::vector<std::int16_t> samples(count);
    samples.resize(m_source ? m_source(samples) : 0);
    if (samples.size() < count) m_status = {false, {}}, m_source = nullptr;
    return samples;
  }
  /// The stream breaks off, as do all that are started until it works again.
  void Fail(const std::string& text) {
    m_failure = text;
    m_source = nullptr;
    m_status = {false, core::base::Failure{core::base::FailureKind::Failed, text}};
  }
  void Mend() { m_failure.clear(); }
  [[nodiscard]] bool IsPlaying() const { return m_status.isPlaying; }

 private:
  Source m_source;
  Status m_status;
  std::string m_failure;
};

}  // namespace kestrin::support
