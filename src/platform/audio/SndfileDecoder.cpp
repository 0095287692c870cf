// SPDX-License-Identifier: MIT
#include "platform/audio/SndfileDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "core/sound/LSU_SoundFile.h"
#include "platform/audio/FileSignature.h"
#include "platform/audio/SoundFormat.h"

namespace kestrin::platform::audio {

using core::base::Failure;
using core::base::FailureKind;

namespace {

constexpr int kLowestRate = 1000;
constexpr int kHighestRate = 768000;
constexpr int kMostChannels = 32;
/// A sound that is louder is none: no scale that anybody uses reaches so far.
constexpr double kLoudest = 1e6;

/// A larger file holds more than a ".lsu" file may, whatever its kind.
constexpr std::uint64_t kLargestFile = std::uint64_t{64} << 30;
/// A file of any usual kind goes through, but none that unpacks to days of silence.
constexpr std::uint64_t kSecondsOfAnyFile = 600;
constexpr std::uint64_t kFramesPerByte = 100;
/// What a ".lsu" file may hold.
constexpr std::uint64_t kMostSamples = 0x7FFFFFFF;

std::uint64_t MostFrames(std::uint64_t bytes, std::uint64_t rate) {
  const std::uint64_t held = kMostSamples * rate / core::sound::LSU_SoundFile::kSamplesPerSecond;
  return std::min(held, kSecondsOfAnyFile * rate + kFramesPerByte * bytes);
}

constexpr const char* kTooLong = "The sound is longer than can be imported. Cut it shorter and import that.";

Failure NotValid(std::string text) { return {FailureKind::NotValid, std::move(text)}; }

std::string BreaksOff(const std::string& where) {
  return "The file breaks off " + where + ". Copy it again from where it came.";
}

/// Fails for a sound that nobody could have meant.
core::base::Result<> CheckShape(const SF_INFO& info) {
  if (info.channels < 1 || info.channels > kMostChannels)
    return NotValid("The file says that it has " + std::to_string(info.channels) + " channels; up to " +
                    std::to_string(kMostChannels) + " can be read. Save it with one or two and import that.");
  if (info.samplerate < kLowestRate || info.samplerate > kHighestRate)
    return NotValid("The file says that it has " + std::to_string(info.samplerate) +
                    " samples a second; 1,000 to 768,000 can be read. Save it with 48,000 and import that.");
  return {};
}

core::sound::SoundShape ShapeOf(const SF_INFO& info) {
  const SoundFormat format = FormatOf(info.format);
  core::sound::SoundShape shape;
  shape.rate = info.samplerate;
  shape.channels = info.channels;
  shape.bits = format.bits;
  shape.format = format.name;
  shape.isLossy = format.isLossy;
  if (info.frames > 0 && info.frames < SF_COUNT_MAX) shape.claimedFrames = static_cast<std::uint64_t>(info.frames);
  return shape;
}

std::string StartOf(SourceFile& file) {
  std::array<char, kSignatureBytes> start{};
  const std::size_t read = file.ReadAt(0, start.data(), start.size());
  return {start.data(), read};
}

}  // namespace

core::base::Result<std::unique_ptr<core::sound::SoundDecoder>> SndfileDecoder::Open(const std::filesystem::path& path) {
  auto file = SourceFile::Open(path);
  if (!file) return file.Why();
  if ((*file)->Size() > kLargestFile) return NotValid(kTooLong);
  Opened opened{std::move(*file), nullptr, nullptr, {}, FileEnd::Whole};
  opened.end = EndOf(*opened.file);
  opened.calls = std::make_unique<VirtualFile>(*opened.file);
  SF_VIRTUAL_IO calls = VirtualFile::Calls();
  opened.handle = sf_open_virtual(&calls, SFM_READ, &opened.info, opened.calls.get());
  if (opened.handle == nullptr) {
    const std::string why = WhyNoSound(StartOf(*opened.file));
    const bool isCut = opened.end == FileEnd::BrokenOff && why.starts_with("The ") && opened.file->Size() > 0;
    return NotValid(isCut ? BreaksOff("before its sound can be read") : why);
  }
  const core::base::Result<> shape = CheckShape(opened.info);
  auto decoder = std::make_unique<SndfileDecoder>(std::move(opened));
  if (!shape) return shape.Why();
  return std::unique_ptr<SoundDecoder>(std::move(decoder));
}

SndfileDecoder::SndfileDecoder(Opened opened)
    : m_opened(std::move(opened)),
      m_shape(ShapeOf(m_opened.info)),
      m_most(MostFrames(m_opened.file->Size(), static_cast<std::uint64_t>(m_shape.rate))) {}

SndfileDecoder::~SndfileDecoder() { (void)sf_close(m_opened.handle); }

std::size_t SndfileDecoder::Read(std::span<double> frames) {
  if (m_isTooLong) return 0;
  const auto channels = static_cast<std::size_t>(m_shape.channels);
  const auto wanted = static_cast<sf_count_t>(frames.size() / channels);
  // Whole numbers would wrap or lose their scale in some formats; fractions never do.
  const sf_count_t got = std::max<sf_count_t>(sf_readf_double(m_opened.handle, frames.data(), wanted), 0);
  const auto read = static_cast<std::size_t>(got);
  m_read += read;
  if (m_read > m_most) {
    m_isTooLong = true;
    return 0;
  }
  for (double& sample : frames.first(read * channels)) {
    // No number compares with anything.
    if (std::fabs(sample) <= kLoudest) continue;
    sample = 0;
    ++m_mended;
  }
  return read;
}

std::string SndfileDecoder::BrokenOffText() const {
  const std::uint64_t tenths = m_read * 10 / static_cast<std::uint64_t>(m_shape.rate);
  if (tenths < 10) return BreaksOff("inside its first second");
  return BreaksOff("after " + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s");
}

core::base::Result<> SndfileDecoder::Ended() const {
  if (m_isTooLong) return NotValid(kTooLong);
  if (m_opened.file->HasFailed())
    return Failure{FailureKind::Failed,
                   "The file could not be read to its end. Check the disk, or copy it again from "
                   "where it came."};
  if (m_opened.file->HasChanged())
    return Failure{FailureKind::Changed, "The file changed while it was read. Import it again."};
  if (m_opened.end == FileEnd::OneOfSeveral)
    return NotValid(
        "The file holds several sounds one after another, of which only the first can be read. Save them "
        "as one WAV file and import that.");
  // MP3 only guesses how long it is, unless it says so, and then EndOf() has looked.
  const bool guesses = (m_opened.info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_MPEG;
  const bool misses =
      m_opened.info.frames == SF_COUNT_MAX || (m_shape.claimedFrames && *m_shape.claimedFrames > m_read);
  if (m_opened.end == FileEnd::BrokenOff || (misses && !guesses)) return NotValid(BrokenOffText());
  if (m_opened.calls->IsUsedUp() || sf_error(m_opened.handle) != SF_ERR_NO_ERROR)
    return NotValid("The file is damaged inside. Copy it again from where it came.");
  return {};
}

}  // namespace kestrin::platform::audio
