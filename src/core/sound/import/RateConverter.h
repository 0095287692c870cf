// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

namespace kestrin::core::sound {

/// Converts one channel to 48,000 samples a second, block by block, without shifting it in time. Of n samples at the
/// rate r it makes floor(n * 48,000 / r + 0.5).
class RateConverter {
 public:
  virtual ~RateConverter() = default;
  /// Takes the next samples and appends to `out` what they make.
  virtual void Convert(std::span<const double> in, std::vector<double>& out) = 0;
  /// The sound has ended: appends what is still missing. Nothing may follow.
  virtual void Finish(std::vector<double>& out) = 0;
};

}  // namespace kestrin::core::sound
