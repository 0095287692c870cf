// SPDX-License-Identifier: MIT
#pragma once

#include <ebur128.h>

#include <cstdint>
#include <memory>

#include "core/sound/import/LoudnessMeter.h"
#include "core/sound/import/TruePeak.h"

namespace kestrin::platform::audio {

/// Measures loudness by libebur128.
class Ebur128Meter final : public core::sound::LoudnessMeter {
 public:
  Ebur128Meter();

  void Add(std::span<const double> samples) override;
  [[nodiscard]] core::sound::Loudness Finish() override;

 private:
  struct Deleter {
    void operator()(ebur128_state* meter) const;
  };

  std::unique_ptr<ebur128_state, Deleter> m_meter;
  core::sound::TruePeak m_truePeak;
  std::uint64_t m_samples = 0;
};

}  // namespace kestrin::platform::audio
