#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kestrin::support {

/// A set of sounds on disk, with what is known of it without the program's help.
struct SoundSet {
  struct Sound {
    std::string slot;
    int position = 1;
    std::filesystem::path path;
    int volume = 100;
    std::vector<std::int16_t> samples;

    [[nodiscard]] int Peak() const;
    /// Three bytes for every two samples, an odd one counted as two.
    [[nodiscard]] std::int64_t CodedBytes() const { return (static_cast<std::int64_t>(samples.size()) + 1) / 2 * 3; }
  };

  /// In flash order: boot, power on, power off, idle, two motion files, one impact, one lock-up.
  std::vector<Sound> sounds;
  std::filesystem::path configuration;

  [[nodiscard]] std::int64_t Samples() const;
  [[nodiscard]] std::int64_t CodedBytes() const;
  /// Reports that carry the sounds to the board: 1,024 bytes each, the rest in one, or in two from 1,022 bytes on.
  [[nodiscard]] int WriteReports() const;
};

/// Bytes of the file table of a set with `SoundSet`'s four list files: 30 and 6 for each of them.
inline constexpr int kTableBytes = 30 + 6 * 4;

/// Writes the eight sounds and "set.lscfg", line by line, into `folder`.
[[nodiscard]] SoundSet WriteSoundSet(const std::filesystem::path& folder);

}  // namespace kestrin::support
