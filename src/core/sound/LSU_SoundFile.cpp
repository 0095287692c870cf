// SPDX-License-Identifier: MIT
#include "sound/LSU_SoundFile.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <span>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/Bytes.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "base/WholeFile.h"
#include "sound/SampleCoder.h"
#include "sound/SampleReader.h"
#include "sound/WavStream.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

constexpr std::int32_t kFewestSamples = 49;
constexpr std::int64_t kMostSamples = std::numeric_limits<std::int32_t>::max();

/// What stands in the way of coding a file.
enum class Obstacle { None, Missing, Unreadable, Changed, TooLong, TooLoud };

/// What reading the samples that are coded has found.
struct Reading {
  Obstacle obstacle = Obstacle::None;
  /// The largest magnitude among them.
  std::int32_t loudest = 0;
};

/// Takes a block of samples that are coded, an even number of them.
using TakeBlock = std::function<void(std::span<const std::int16_t>)>;

Obstacle ObstacleOf(SampleReader::State state) {
  switch (state) {
    case SampleReader::State::Good:
      return Obstacle::None;
    case SampleReader::State::Missing:
      return Obstacle::Missing;
    case SampleReader::State::NotAFile:
      return Obstacle::Changed;
    case SampleReader::State::Failed:
      break;
  }
  return Obstacle::Unreadable;
}

/// Reads a file that had `count` samples and gives those that are coded to `take`, block by block, up to the first
/// block that is too loud. The first sample is never coded, nor is the last of an even count.
Reading ReadCodedSamples(const fs::path& path, std::int32_t count, const SampleCoder& coder,
                         const base::EventPump& pump, const TakeBlock& take) {
  if (LSU_SoundFile::CodedBytes(count) > LSU_SoundFile::kLongestStream) return {Obstacle::TooLong, 0};
  SampleReader reader(path);
  Reading reading;
  bool complete = reader.Next(1).size() == 1;
  for (auto left = static_cast<std::size_t>(count - 1) / 2 * 2; left > 0 && complete;) {
    const std::size_t wanted = std::min(left, SampleReader::kBlock);
    const std::span<const std::int16_t> block = reader.Next(wanted);
    complete = block.size() == wanted;
    left -= wanted;
    reading.loudest = std::max(reading.loudest, LargestMagnitude(block));
    if (complete && coder.CanCode(reading.loudest)) take(block);
    base::Pump(pump);
  }
  if (count % 2 == 0) complete = complete && reader.Next(1).size() == 1;
  const bool grown = complete && !reader.Next(1).empty();

  reading.obstacle = ObstacleOf(reader.GetState());
  if (reading.obstacle != Obstacle::None) return reading;
  if (!complete || grown)
    reading.obstacle = Obstacle::Changed;
  else if (!coder.CanCode(reading.loudest))
    reading.obstacle = Obstacle::TooLoud;
  return reading;
}

/// What to do about a sound that is too loud.
std::string VolumeAdvice(std::int32_t loudest, std::int32_t peak, std::int16_t volume) {
  int limit = std::abs(int{volume}) - 1;
  while (!SampleCoder(peak, static_cast<std::int16_t>(limit)).CanCode(loudest)) --limit;
  const std::string percent = std::to_string(limit) + " %";
  return volume > 0 ? "Lower its volume to " + percent + " or less."
                    : "Set its volume to between -" + percent + " and " + percent + ".";
}

std::string TooLoudText(const LSU_SoundFile& file, std::int32_t loudest) {
  // The peak belongs to the place in the list: a sound that moved up is scaled by that of the one which stood there. No
  // volume puts that right.
  if (loudest > file.Peak())
    return base::Quoted(file.FileNameAndPath()) +
           " is louder than was measured for its place in the list. Take it out and add it again.";
  return base::Quoted(file.FileNameAndPath()) + " is too loud at " + std::to_string(file.Volume()) + " %. " +
         VolumeAdvice(loudest, file.Peak(), file.Volume());
}

}  // namespace

bool LSU_SoundFile::HasSoundName(const fs::path& path) {
  // A path without a point is a single piece and has no ending.
  const std::string name = base::TextOf(path);
  const std::size_t point = name.rfind('.');
  return point != name.npos && base::EqualsIgnoringCase(std::string_view(name).substr(point + 1), "LSU");
}

bool LSU_SoundFile::ReadFile(const fs::path& FileNameAndPath, const base::EventPump& pump) {
  m_path = FileNameAndPath;
  m_nrOfSamples = 0;
  m_nrOfBytes = 0;
  m_peak = 0;
  m_volume = 100;
  m_bytes = std::vector<std::uint8_t>();
  m_flaw = Flaw::None;
  m_flaw = Measure(pump);
  return m_flaw == Flaw::None;
}

LSU_SoundFile::Flaw LSU_SoundFile::Measure(const base::EventPump& pump) {
  if (!HasSoundName(m_path)) return Flaw::Ending;

  // Gigabytes need not be read to be refused; a file that grows meanwhile is counted below.
  std::error_code error;
  const std::uintmax_t size = fs::file_size(m_path, error);
  if (!error && SamplesIn(size) > static_cast<std::uintmax_t>(kMostSamples)) return Flaw::TooLong;

  SampleReader reader(m_path);
  std::int64_t count = 0;
  std::int32_t peak = 0;
  for (auto block = reader.Next(); !block.empty() && count <= kMostSamples; block = reader.Next()) {
    count += static_cast<std::int64_t>(block.size());
    peak = std::max(peak, LargestMagnitude(block));
    base::Pump(pump);
  }
  switch (reader.GetState()) {
    case SampleReader::State::Good:
      break;
    case SampleReader::State::Missing:
      return Flaw::Missing;
    case SampleReader::State::NotAFile:
      return Flaw::NotAFile;
    case SampleReader::State::Failed:
      return Flaw::Unreadable;
  }
  if (count > kMostSamples) return Flaw::TooLong;
  if (count < kFewestSamples) return Flaw::TooShort;
  if (peak == 0) return Flaw::Silent;
  m_nrOfSamples = static_cast<std::int32_t>(count);
  m_peak = peak;
  return Flaw::None;
}

std::string LSU_SoundFile::WhyNotValid() const {
  const auto about = [this]() -> std::string {
    switch (m_flaw) {
      case Flaw::None:
        break;
      case Flaw::Ending:
        return "is no sound for a board: its name does not end in \".lsu\". Choose one that does.";
      case Flaw::Missing:
        return "is not there. Check its name and its folder.";
      case Flaw::NotAFile:
        return "is a folder or a device and no file. Choose a sound file.";
      case Flaw::Unreadable:
        return "cannot be read. Check that you may read it, or choose another sound.";
      case Flaw::TooLong:
        return "is longer than any board can hold. Choose a shorter sound.";
      case Flaw::TooShort:
        return "is too short: a sound has at least " + std::to_string(kFewestSamples) +
               " samples, a thousandth of a second. Choose a longer one.";
      case Flaw::Silent:
        return "is silent from its beginning to its end. Choose a sound that can be heard.";
    }
    return {};
  };
  return m_flaw == Flaw::None ? "" : base::Quoted(m_path) + " " + about();
}

bool LSU_SoundFile::Code(const base::EventPump& pump) {
  // The object holds the stream only when it is whole; until then it keeps nothing, whatever happens.
  std::vector<std::uint8_t> stream = std::exchange(m_bytes, {});
  m_nrOfBytes = 0;
  if (m_nrOfSamples == 0) return true;
  // Refused before memory is asked for.
  if (CodedBytes(m_nrOfSamples) > kLongestStream) return false;

  // The first three bytes stay 0: the triples begin behind the first sample.
  stream.assign(3, 0);
  stream.reserve(static_cast<std::size_t>(CodedBytes(m_nrOfSamples)));
  const SampleCoder coder(m_peak, m_volume);
  const Reading reading =
      ReadCodedSamples(m_path, m_nrOfSamples, coder, pump, [&](std::span<const std::int16_t> samples) {
        const std::size_t coded = stream.size();
        stream.resize(coded + samples.size() / 2 * 3);
        coder.Code(samples, std::span(stream).subspan(coded));
      });
  if (reading.obstacle == Obstacle::TooLoud) throw std::overflow_error(TooLoudText(*this, reading.loudest));
  if (reading.obstacle != Obstacle::None) return false;
  m_bytes = std::move(stream);
  m_nrOfBytes = static_cast<std::int32_t>(m_bytes.size());
  return true;
}

base::Result<> LSU_SoundFile::CheckCodable(const base::EventPump& pump) const {
  if (m_nrOfSamples == 0) return {};
  const Reading reading = ReadCodedSamples(m_path, m_nrOfSamples, SampleCoder(m_peak, m_volume), pump,
                                           [](std::span<const std::int16_t>) {});
  using base::Failure;
  using base::FailureKind;
  const std::string name = base::Quoted(m_path);
  switch (reading.obstacle) {
    case Obstacle::None:
      break;
    case Obstacle::Missing:
      return Failure{FailureKind::NotFound, name + " is no longer there. Put it back or choose another sound."};
    case Obstacle::Unreadable:
      return Failure{FailureKind::Failed,
                     name + " cannot be read. Check that you may read it, or choose another sound."};
    case Obstacle::Changed:
      return Failure{FailureKind::Changed, name + " has changed since it was added. Add it again."};
    case Obstacle::TooLong:
      return Failure{FailureKind::NotValid, name + " is longer than any board can hold. Choose a shorter sound."};
    case Obstacle::TooLoud:
      return Failure{FailureKind::NotValid, TooLoudText(*this, reading.loudest)};
  }
  return {};
}

bool LSU_SoundFile::GetBytes(std::vector<std::uint8_t>& BytesArray, std::size_t FirstIndex, std::size_t size) const {
  // An entry that moved in its list has a length that says nothing about the stream of its new position.
  const std::size_t end = std::min(static_cast<std::size_t>(m_nrOfBytes), m_bytes.size());
  if (FirstIndex > end || size > end - FirstIndex) return false;
  const std::span slice = std::span(m_bytes).subspan(FirstIndex, size);
  BytesArray.assign(slice.begin(), slice.end());
  return true;
}

std::uint16_t LSU_SoundFile::GetFileCRC() const { return base::ByteSum(m_bytes); }

base::ContentInPieces LSU_SoundFile::WavPieces(const base::EventPump& pump) const {
  return [this, pump](const base::AppendBytes& append) -> base::Result<> {
    const std::int64_t samples = m_nrOfSamples;
    if (samples == 0) return base::Failure{base::FailureKind::NotFound, "there is no sound to write"};
    if (samples > WavStream::kMostSamples)
      return base::Failure{base::FailureKind::NotValid,
                           base::Quoted(m_path) + " is longer than a WAV file can be. Choose a shorter sound."};

    if (!append(WavStream::Header(samples))) return {};
    SampleReader reader(m_path);
    for (auto left = static_cast<std::size_t>(samples); left > 0;) {
      const auto block = reader.Next(std::min(left, SampleReader::kBlock));
      if (block.empty())
        return base::Failure{base::FailureKind::Changed,
                             base::Quoted(m_path) + " changed while it was read. Try again."};
      if (!WavStream::Append(block, append)) return {};
      left -= block.size();
      base::Pump(pump);
    }
    return {};
  };
}

bool LSU_SoundFile::WriteWav(const fs::path& WAVFileName) const {
  std::error_code error;
  if (m_nrOfSamples == 0 || fs::equivalent(WAVFileName, m_path, error)) return false;
  if (fs::is_regular_file(WAVFileName, error)) fs::remove(WAVFileName, error);
  return static_cast<bool>(base::WriteWholeFile(WAVFileName, WavPieces({})));
}

base::Result<> LSU_SoundFile::SaveWav(const fs::path& WAVFileName, base::Disk& disk,
                                      const base::EventPump& pump) const {
  std::error_code error;
  if (fs::equivalent(WAVFileName, m_path, error))
    return base::Failure{base::FailureKind::InTheWay,
                         base::Quoted(WAVFileName) + " is the sound itself. Choose another name for its copy."};
  return base::WriteWholeFile(WAVFileName, WavPieces(pump), disk);
}

void LSU_SoundFile::Remove() {
  m_path.clear();
  m_nrOfSamples = 0;
}

void LSU_SoundFile::TakeOver(const LSU_SoundFile& next) {
  m_startAddress = next.m_startAddress;
  m_path = next.m_path;
  m_nrOfBytes = next.m_nrOfBytes;
  m_nrOfSamples = next.m_nrOfSamples;
}

LSU_SoundFile LSU_SoundFile::WithoutStream() const {
  LSU_SoundFile copy;
  copy.TakeOver(*this);
  copy.m_peak = m_peak;
  copy.m_volume = m_volume;
  return copy;
}

}  // namespace kestrin::core::sound
