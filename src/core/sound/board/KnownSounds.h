// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/EventPump.h"
#include "sound/LSU_SoundFile.h"
#include "sound/SoundPlace.h"
#include "sound/board/StreamSums.h"

namespace kestrin::core::sound {

/// Remembers what sound files look like once they are coded, since coding all that a computer knows takes seconds. What
/// is remembered of a file counts as long as its size and time stay the same. All of it can be found out again: a file
/// that cannot be read or written costs time alone.
///
/// The file, one thing a line, paths in UTF-8 to the line's end:
///
///     kestrin known sounds 1
///     sound SIZE TIME SAMPLES PEAK PATH          a sound; 0 samples: it is none
///     sums PEAK VOLUME LENGTH SUM SUM SUM SUM    of the sound above, coded so; length 0: it cannot be
///     set SIZE TIME PATH                         the file of a set
///     holds SLOT POSITION VOLUME PATH            a sound of the set above
///
/// One thread at a time.
class KnownSounds {
 public:
  static constexpr const char* kFileName = "known-sounds.txt";
  /// Sounds that are remembered at most; those that nobody asked for go first.
  static constexpr std::size_t kMost = 4000;

  /// A sound that the file of a set names.
  struct Named {
    SoundPlace place;
    std::filesystem::path path;
    std::int16_t volume = 100;

    friend bool operator==(const Named&, const Named&) = default;
  };

  /// Reads the file when it is asked for the first time. Empty: nothing is kept.
  explicit KnownSounds(std::filesystem::path file) : m_file(std::move(file)) {}

  /// The sound coded with its peak and volume; nothing when that cannot be. `pump` gets its turn on the way, and may
  /// throw.
  [[nodiscard]] std::optional<StreamSums> SumsOf(const LSU_SoundFile& sound, const base::EventPump& pump = {});
  /// The same of a file as it is by itself.
  [[nodiscard]] std::optional<StreamSums> SumsOf(const std::filesystem::path& path, std::int16_t volume,
                                                 const base::EventPump& pump = {});
  /// The coded length of a file, 0 for one that is no sound.
  [[nodiscard]] std::int32_t LengthOf(const std::filesystem::path& path, const base::EventPump& pump = {});
  /// The sounds that the file of a set names, in flash order; nothing when it is no set, or one of which sounds are
  /// missing.
  [[nodiscard]] std::optional<std::vector<Named>> SoundsOf(const std::filesystem::path& set,
                                                           const base::EventPump& pump = {});
  /// Writes what was found out since it was read, if anything was.
  void Keep();

 private:
  /// What tells whether a file is still the same.
  struct Stamp {
    std::uintmax_t size = 0;
    std::int64_t time = 0;

    [[nodiscard]] static std::optional<Stamp> Of(const std::filesystem::path& path);
    friend bool operator==(const Stamp&, const Stamp&) = default;
  };
  struct Sound {
    Stamp stamp;
    std::int32_t samples = 0;
    std::int32_t peak = 0;
    /// By peak and volume.
    std::map<std::pair<std::int32_t, std::int16_t>, StreamSums> sums;
    bool isUsed = false;
  };
  struct Set {
    Stamp stamp;
    std::vector<Named> sounds;
  };

  /// What is known of that file, measured; nullptr when there is none.
  [[nodiscard]] Sound* Find(const std::filesystem::path& path, const base::EventPump& pump);
  [[nodiscard]] std::optional<StreamSums> Code(Sound& known, LSU_SoundFile sound, const base::EventPump& pump);
  void Read();
  [[nodiscard]] bool ReadLine(const std::string& line);
  [[nodiscard]] std::string Text() const;

  std::filesystem::path m_file;
  bool m_isRead = false;
  bool m_hasNews = false;
  std::map<std::filesystem::path, Sound> m_sounds;
  std::map<std::filesystem::path, Set> m_sets;
  /// What the line that is read belongs to.
  Sound* m_sound = nullptr;
  Set* m_set = nullptr;
};

}  // namespace kestrin::core::sound
