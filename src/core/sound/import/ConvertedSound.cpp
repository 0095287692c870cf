// SPDX-License-Identifier: MIT
#include "sound/import/ConvertedSound.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <utility>

#include "sound/import/Mixdown.h"

namespace kestrin::core::sound {

namespace {

constexpr std::size_t kFramesAtOnce = 4096;
/// What a ".lsu" file may hold.
constexpr auto kMostSamples = static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());

base::Failure Stopped() { return {base::FailureKind::Cancelled, "Stopped."}; }

std::uint64_t Sum(std::uint64_t sum, std::span<const double> samples) {
  constexpr std::uint64_t kPrime = 0x100000001B3;
  for (const double sample : samples) sum = (sum ^ std::bit_cast<std::uint64_t>(sample)) * kPrime;
  return sum;
}

}  // namespace

ConvertedSound::ConvertedSound(AudioTools& tools, std::filesystem::path path, GoOn goOn)
    : m_tools(tools), m_path(std::move(path)), m_goOn(std::move(goOn)) {}

void ConvertedSound::Keep(std::span<const double> samples) {
  if (m_bounds.Count() > kMostKept)
    m_kept = std::vector<double>();
  else
    m_kept.insert(m_kept.end(), samples.begin(), samples.end());
}

base::Result<> ConvertedSound::Decode() {
  for (;;) {
    m_bounds = SoundBounds();
    m_kept.clear();
    base::Result<Mark> read = Read([this](std::span<const double> samples) {
      m_bounds.Add(samples);
      Keep(samples);
      return m_bounds.Count() <= kMostSamples;
    });
    if (!read) return read.Why();
    if (m_bounds.Count() > kMostSamples)
      return base::Failure{base::FailureKind::NotValid,
                           "The sound is longer than can be imported. Cut it shorter and import that."};
    m_mark = *read;
    if (!m_isCancelledOut) return {};
    // Half of what was recorded is better than silence.
    m_only = m_loudest;
  }
}

base::Result<ConvertedSound::Mark> ConvertedSound::Read(const Take& take) {
  auto opened = m_tools.Open(m_path);
  if (!opened) return opened.Why();
  SoundDecoder& decoder = **opened;
  m_shape = decoder.Shape();
  const auto channels = static_cast<std::size_t>(m_shape.channels);
  Mixdown mixdown(channels, m_only);
  const std::unique_ptr<RateConverter> converter = m_tools.MakeConverter(m_shape.rate);
  std::vector<double> frames(kFramesAtOnce * channels);
  std::vector<double> mono;
  std::vector<double> converted;
  Mark mark;
  bool wantsMore = true;
  const auto give = [&] {
    mark.samples += converted.size();
    mark.sum = Sum(mark.sum, converted);
    wantsMore = wantsMore && take(converted);
    converted.clear();
  };

  m_frames = 0;
  for (std::size_t read = decoder.Read(frames); read > 0 && wantsMore; read = decoder.Read(frames)) {
    if (m_goOn && !m_goOn()) return Stopped();
    m_frames += read;
    mono.clear();
    mixdown.Add(std::span(frames).first(read * channels), mono);
    converter->Convert(mono, converted);
    give();
  }
  if (!wantsMore) return mark;
  if (base::Result<> ended = decoder.Ended(); !ended) return ended.Why();
  converter->Finish(converted);
  give();
  m_mended = decoder.Mended();
  m_mixdownText = mixdown.Text();
  m_isCancelledOut = mixdown.IsCancelledOut();
  m_loudest = mixdown.LoudestChannel();
  return mark;
}

base::Result<> ConvertedSound::Play(const Stretch& stretch, const Take& take) {
  if (m_bounds.Count() <= kMostKept) {
    std::array<double, kFramesAtOnce> block;
    for (std::uint64_t place = stretch.begin; place < stretch.end; place += block.size()) {
      if (m_goOn && !m_goOn()) return Stopped();
      const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), stretch.end - place));
      std::copy_n(m_kept.begin() + static_cast<std::ptrdiff_t>(place), count, block.begin());
      if (!take(std::span(block).first(count))) return {};
    }
    return {};
  }
  std::uint64_t place = 0;
  bool wantsMore = true;
  const base::Result<Mark> read = Read([&](std::span<double> samples) {
    const std::uint64_t end = place + samples.size();
    const Stretch here{std::clamp(stretch.begin, place, end), std::clamp(stretch.end, place, end)};
    if (here.Length() > 0 && wantsMore)
      wantsMore =
          take(samples.subspan(static_cast<std::size_t>(here.begin - place), static_cast<std::size_t>(here.Length())));
    place = end;
    // More than the first time is a change already.
    return wantsMore && place <= m_mark.samples;
  });
  if (!read) return read.Why();
  if (wantsMore && *read != m_mark)
    return base::Failure{base::FailureKind::Changed, "The file changed while it was read. Import it again."};
  return {};
}

}  // namespace kestrin::core::sound
