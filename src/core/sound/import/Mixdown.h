// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrin::core::sound {

/// Makes one channel of several: their mean, which is never louder than the loudest of them; or one of them alone,
/// where they cancel each other out.
class Mixdown {
 public:
  /// `only`: the channel to take alone, from 0.
  explicit Mixdown(std::size_t channels, std::optional<std::size_t> only = {});

  /// Appends a sample to `out` for each of the frames, which hold one sample for each channel.
  void Add(std::span<const double> frames, std::vector<double>& out);

  /// The channel with the highest sample so far, from 0.
  [[nodiscard]] std::size_t LoudestChannel() const;
  /// Whether the channels so far are sound and what was made of them is next to silence.
  [[nodiscard]] bool IsCancelledOut() const;

  /// What was done, in a few words: "stereo to mono"; "" for one channel.
  [[nodiscard]] std::string Text() const;

 private:
  std::optional<std::size_t> m_only;
  /// By channel.
  std::vector<double> m_peaks;
  double m_peak = 0;
};

}  // namespace kestrin::core::sound
