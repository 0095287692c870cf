// SPDX-License-Identifier: MIT
#include "sound/import/ChangeTexts.h"

#include <cmath>

#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

namespace {

/// A number with at most that many digits behind the point, zeros at the end left out. No locale has a say.
std::string Digits(double number, int most) {
  std::int64_t scale = 1;
  for (int digit = 0; digit < most; ++digit) scale *= 10;
  const auto scaled = static_cast<std::int64_t>(std::llround(number * static_cast<double>(scale)));
  std::string text = std::to_string(scaled / scale);
  if (scaled % scale == 0) return text;
  const std::string behind = std::to_string(scaled % scale + scale).substr(1);
  return text + "." + behind.substr(0, behind.find_last_not_of('0') + 1);
}

}  // namespace

std::string UnpackedText(const SoundShape& shape) { return shape.isLossy ? shape.format + " unpacked" : ""; }

std::string RateText(int rate) {
  if (rate == LSU_SoundFile::kSamplesPerSecond) return "";
  return Digits(rate / 1000.0, 3) + " to " + Digits(LSU_SoundFile::kSamplesPerSecond / 1000.0, 3) + " kHz";
}

std::string DepthText(const SoundShape& shape) {
  if (shape.isLossy || shape.bits == 16) return "";
  return (shape.bits == 0 ? "float" : std::to_string(shape.bits)) + " to 16 bit";
}

std::string GainText(const Gain& gain) {
  const double size = std::fabs(gain.decibels);
  const std::string limit = gain.isLimited ? ", no more is possible" : "";
  if (size == 0) return gain.isLimited ? "not levelled: no more is possible" : "";
  const std::string amount = size < 0.05 ? "0.1" : Digits(size, size < 0.95 ? 1 : 0);
  return amount + " dB " + (gain.decibels < 0 ? "quieter" : "louder") + limit;
}

std::string TrimText(std::uint64_t samples) {
  if (samples == 0) return "";
  const double seconds = static_cast<double>(samples) / LSU_SoundFile::kSamplesPerSecond;
  return Digits(seconds, seconds < 0.095 ? 2 : 1) + " s silence off";
}

std::string MendedText(std::uint64_t samples) {
  if (samples == 0) return "";
  return std::to_string(samples) + (samples == 1 ? " damaged sample" : " damaged samples") + " silenced";
}

}  // namespace kestrin::core::sound
