// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "core/sound/import/RateConverter.h"

struct soxr;

namespace kestrin::platform::audio {

/// Converts by libsoxr at its "very high quality". What is outside of the sound counts as silence.
class SoxrConverter final : public core::sound::RateConverter {
 public:
  /// `rate`: 1,000 .. 768,000; 48,000 goes through unchanged.
  explicit SoxrConverter(int rate);

  void Convert(std::span<const double> in, std::vector<double>& out) override;
  void Finish(std::vector<double>& out) override;

 private:
  struct Deleter {
    void operator()(soxr* converter) const;
  };

  /// Gives `in`, or the end when it is empty, and appends what comes out.
  void Process(std::span<const double> in, std::vector<double>& out);

  std::unique_ptr<soxr, Deleter> m_soxr;
  std::vector<double> m_block;
};

}  // namespace kestrin::platform::audio
