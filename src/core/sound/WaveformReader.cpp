// SPDX-License-Identifier: MIT
#include "sound/WaveformReader.h"

#include <algorithm>
#include <span>
#include <system_error>

#include "sound/LSU_SoundFile.h"
#include "sound/SampleReader.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

std::optional<std::vector<WaveformColumn>> WaveformReader::Read(const fs::path& path, std::size_t columns,
                                                                const std::function<bool()>& goOn) {
  std::error_code error;
  const std::uintmax_t bytes = fs::file_size(path, error);
  const std::size_t samples = error ? 0 : static_cast<std::size_t>(LSU_SoundFile::SamplesIn(bytes));
  if (columns == 0 || samples == 0) return std::nullopt;
  columns = std::min(columns, samples);

  std::vector<WaveformColumn> result;
  result.reserve(columns);
  SampleReader reader(path);
  std::span<const std::int16_t> rest;
  for (std::size_t column = 0; column < columns; ++column) {
    // Whole stretches differ by one sample at most; the division is split so that the product cannot overflow.
    const auto start = [&](std::size_t at) { return samples / columns * at + samples % columns * at / columns; };
    std::size_t wanted = start(column + 1) - start(column);
    std::optional<WaveformColumn> shape;
    while (wanted > 0) {
      if (rest.empty()) {
        if (goOn && !goOn()) return std::nullopt;
        rest = reader.Next();
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

}  // namespace kestrin::core::sound
