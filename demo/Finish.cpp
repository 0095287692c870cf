// SPDX-License-Identifier: MIT
#include "demo/Finish.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kestrin::demo {

namespace {

std::vector<std::int16_t> Samples(const Sound& sound) {
  double peak = 0.0;
  for (const double value : sound) peak = std::max(peak, std::abs(value));
  std::vector<std::int16_t> samples(sound.size());
  std::transform(sound.begin(), sound.end(), samples.begin(),
                 [peak](double value) { return FinishedSample(value / peak); });
  return samples;
}

}  // namespace

std::int16_t FinishedSample(double value) {
  constexpr double kSteps = 1023.0;
  return static_cast<std::int16_t>(std::lround(std::round(value * kSteps) / kSteps * kFinishedPeak));
}

std::vector<std::int16_t> Finish(Sound sound, double fadeIn, double fadeOut) {
  // Nothing below 30 Hz comes out of a hilt, but it would take room from what does.
  constexpr double kLowest = 30.0;
  constexpr double kFlat = 0.7071;
  StateVariableFilter filter;
  const double length = static_cast<double>(sound.size()) / kSampleRate;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kSampleRate;
    sound[i] = filter.Process(sound[i], kLowest, kFlat).high * SoftStep(0.0, fadeIn, time) *
               (1.0 - SoftStep(length - fadeOut, length, time));
  }
  return Samples(sound);
}

std::vector<std::int16_t> FinishLoop(Sound sound) {
  const double mean = std::accumulate(sound.begin(), sound.end(), 0.0) / static_cast<double>(sound.size());
  for (double& value : sound) value -= mean;
  std::size_t seam = 0;
  double least = std::abs(sound.back()) + std::abs(sound.front());
  for (std::size_t i = 1; i < sound.size(); ++i) {
    const double size = std::abs(sound[i - 1]) + std::abs(sound[i]);
    if (size >= least) continue;
    least = size;
    seam = i;
  }
  std::rotate(sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(seam), sound.end());
  return Samples(sound);
}

}  // namespace kestrin::demo
