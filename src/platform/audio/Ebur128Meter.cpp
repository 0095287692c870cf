// SPDX-License-Identifier: MIT
#include "platform/audio/Ebur128Meter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "core/sound/LSU_SoundFile.h"

namespace kestrin::platform::audio {

namespace {

/// The library only counts whole blocks of 400 ms, and begins one every 100 ms.
constexpr std::uint64_t kBlock = 19200;
constexpr std::uint64_t kStep = 4800;

}  // namespace

void Ebur128Meter::Deleter::operator()(ebur128_state* meter) const { ebur128_destroy(&meter); }

// Its own true peak takes five times as long as all the rest of an import.
Ebur128Meter::Ebur128Meter() : m_meter(ebur128_init(1, core::sound::LSU_SoundFile::kSamplesPerSecond, EBUR128_MODE_I)) {
  if (!m_meter) throw std::bad_alloc();
  // One loudspeaker is heard with both ears.
  (void)ebur128_set_channel(m_meter.get(), 0, EBUR128_DUAL_MONO);
}

void Ebur128Meter::Add(std::span<const double> samples) {
  if (ebur128_add_frames_double(m_meter.get(), samples.data(), samples.size()) != EBUR128_SUCCESS)
    throw std::bad_alloc();
  m_truePeak.Add(samples);
  m_samples += samples.size();
}

core::sound::Loudness Ebur128Meter::Finish() {
  core::sound::Loudness loudness;
  if (m_samples == 0) return loudness;
  // Without silence behind it a short sound has no loudness, and the end of any sound does not count.
  const std::uint64_t whole = std::max(kBlock, (m_samples + kStep - 1) / kStep * kStep);
  static constexpr std::array<double, kBlock> kSilence{};
  if (ebur128_add_frames_double(m_meter.get(), kSilence.data(), static_cast<std::size_t>(whole - m_samples)) !=
      EBUR128_SUCCESS)
    throw std::bad_alloc();
  double lufs = 0;
  // Silence has a loudness of minus infinity, and that counts as a success.
  if (ebur128_loudness_global(m_meter.get(), &lufs) == EBUR128_SUCCESS && std::isfinite(lufs)) loudness.lufs = lufs;
  if (const double peak = 20 * std::log10(m_truePeak.Finish()); std::isfinite(peak)) loudness.truePeak = peak;
  return loudness;
}

}  // namespace kestrin::platform::audio
