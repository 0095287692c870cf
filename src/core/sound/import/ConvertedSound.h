// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"
#include "sound/import/AudioTools.h"
#include "sound/import/SoundBounds.h"

namespace kestrin::core::sound {

/// A sound as one channel with 48,000 samples a second, as often as it is needed: a short one is kept in memory, a long
/// one is decoded again each time, and what is then no longer the same is found out.
class ConvertedSound {
 public:
  /// Takes the next samples, which it may change; false when it wants no more.
  using Take = std::function<bool(std::span<double>)>;
  /// Whether to go on.
  using GoOn = std::function<bool()>;

  /// So many samples are kept in memory: 22 seconds, 8 MiB.
  static constexpr std::size_t kMostKept = std::size_t{1} << 20;

  /// `tools` must outlive the object.
  ConvertedSound(AudioTools& tools, std::filesystem::path path, GoOn goOn);

  /// Decodes it for the first time; everything below is valid afterwards. Fails when the file cannot be read to its
  /// end, and with the kind Cancelled when it shall not go on.
  [[nodiscard]] base::Result<> Decode();

  /// Gives a stretch of the sound, block by block. Fails as Decode() does, and when the file has changed.
  [[nodiscard]] base::Result<> Play(const Stretch& stretch, const Take& take);

  [[nodiscard]] const SoundShape& Shape() const { return m_shape; }
  /// Of the source.
  [[nodiscard]] std::uint64_t Frames() const { return m_frames; }
  [[nodiscard]] std::uint64_t Mended() const { return m_mended; }
  [[nodiscard]] const SoundBounds& Bounds() const { return m_bounds; }
  /// How several channels became one, in a few words; "" when there is only one.
  [[nodiscard]] const std::string& MixdownText() const { return m_mixdownText; }

 private:
  /// Behind the last sample: what tells one reading of a file from another.
  struct Mark {
    std::uint64_t samples = 0;
    std::uint64_t sum = 0;
    friend bool operator==(const Mark&, const Mark&) = default;
  };

  /// Goes through the whole file.
  [[nodiscard]] base::Result<Mark> Read(const Take& take);
  void Keep(std::span<const double> samples);

  AudioTools& m_tools;
  std::filesystem::path m_path;
  GoOn m_goOn;
  SoundShape m_shape;
  std::uint64_t m_frames = 0;
  std::uint64_t m_mended = 0;
  SoundBounds m_bounds;
  std::string m_mixdownText;
  /// The channel to take alone.
  std::optional<std::size_t> m_only;
  bool m_isCancelledOut = false;
  std::size_t m_loudest = 0;
  Mark m_mark;
  /// All samples of a short sound.
  std::vector<double> m_kept;
};

}  // namespace kestrin::core::sound
