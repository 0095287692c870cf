// SPDX-License-Identifier: MIT
#include "sound/WaveformReader.h"

#include <algorithm>
#include <span>
#include <system_error>

#include "sound/LSU_SoundFile.h"
#include "sound/SampleReader.h"
#include "sound/level/BoardSound.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

/// The next samples; none when there are no more.
using NextSamples = std::function<std::span<const std::int16_t>()>;

std::optional<std::vector<WaveformColumn>> ShapeOf(std::size_t samples, const NextSamples& next, std::size_t columns,
                                                   const std::function<bool()>& goOn) {
  if (columns == 0 || samples == 0) return std::nullopt;
  columns = std::min(columns, samples);

  std::vector<WaveformColumn> result;
  result.reserve(columns);
  std::span<const std::int16_t> rest;
  for (std::size_t column = 0; column < columns; ++column) {
    // Whole stretches differ by one sample at most; the division is split so that the product cannot overflow.
    const auto start = [&](std::size_t at) { return samples / columns * at + samples % columns * at / columns; };
    std::size_t wanted = start(column + 1) - start(column);
    std::optional<WaveformColumn> shape;
    while (wanted > 0) {
      if (rest.empty()) {
        if (goOn && !goOn()) return std::nullopt;
        rest = next();
        if (rest.empty()) return std::nullopt;
      }
      const std::span<const std::int16_t> piece = rest.first(std::min(wanted, rest.size()));
      const auto [low, high] = std::minmax_element(piece.begin(), piece.end());
      shape = shape ? WaveformColumn{std::min(shape->low, *low), std::max(shape->high, *high)}
                    : WaveformColumn{*low, *high};
      wanted -= piece.size();
      rest = rest.subspan(piece.size());
    }
    result.push_back(*shape);
  }
  return result;
}

/// What a measurement that is no longer wanted ends with.
struct Unwanted {};

std::optional<LSU_SoundFile> Measured(const HeardSound& sound, const std::function<bool()>& goOn) {
  try {
    return sound.Measured([&goOn] {
      if (goOn && !goOn()) throw Unwanted();
    });
  } catch (const Unwanted&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<std::vector<WaveformColumn>> WaveformReader::Read(const fs::path& path, std::size_t columns,
                                                                const std::function<bool()>& goOn) {
  std::error_code error;
  const std::uintmax_t bytes = fs::file_size(path, error);
  const std::size_t samples = error ? 0 : static_cast<std::size_t>(LSU_SoundFile::SamplesIn(bytes));
  SampleReader reader(path);
  return ShapeOf(
      samples, [&reader] { return reader.Next(); }, columns, goOn);
}

std::optional<std::vector<WaveformColumn>> WaveformReader::Read(const HeardSound& sound, std::size_t columns,
                                                                const std::function<bool()>& goOn) {
  if (!sound.asOnBoard) return Read(sound.path, columns, goOn);
  const std::optional<LSU_SoundFile> file = Measured(sound, goOn);
  if (!file) return std::nullopt;
  BoardSound board(*file);
  return ShapeOf(
      static_cast<std::size_t>(board.Samples()), [&board] { return board.Next(); }, columns, goOn);
}

}  // namespace kestrin::core::sound
