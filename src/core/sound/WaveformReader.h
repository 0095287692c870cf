// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "sound/level/HeardSound.h"

namespace kestrin::core::sound {

/// The lowest and the highest sample of a stretch of a sound.
struct WaveformColumn {
  std::int16_t low = 0;
  std::int16_t high = 0;

  friend bool operator==(const WaveformColumn&, const WaveformColumn&) = default;
};

/// Reads the shape of a sound for a picture of it.
class WaveformReader {
 public:
  /// The file's samples in `columns` stretches of equal length (to one sample), from the first to the last; fewer
  /// columns when there are fewer samples. `goOn` is asked after every block of samples; when it says false, or when
  /// the file cannot be read to its end or holds no sample, there is no result.
  [[nodiscard]] static std::optional<std::vector<WaveformColumn>> Read(const std::filesystem::path& path,
                                                                       std::size_t columns,
                                                                       const std::function<bool()>& goOn = {});
  /// The same of a sound as it is heard: as on the board it is what BoardSound plays, and there is none of a sound that
  /// no board can be given.
  [[nodiscard]] static std::optional<std::vector<WaveformColumn>> Read(const HeardSound& sound, std::size_t columns,
                                                                       const std::function<bool()>& goOn = {});
};

}  // namespace kestrin::core::sound
