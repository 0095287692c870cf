// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/sound/LSU_Configuration.h"
#include "core/sound/SlotKind.h"
#include "support/TestFiles.h"

namespace kestrin::support {

/// The one builder of sets of sounds: it writes each sound when it is added, and knows without the program's help what
/// the set holds.
class SoundSet {
 public:
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

  /// What is usually of no account about a sound.
  struct Details {
    int volume = 100;
    std::int16_t peak = 20000;
    /// The name of its file; when there is none, it is like "boot.lsu", in a list like "motion 2.lsu".
    std::string name{};
  };

  /// Nothing yet; the sounds go into `folder`, which is there.
  explicit SoundSet(std::filesystem::path folder) : m_folder(std::move(folder)) {}

  /// Writes a sound of that many samples, which differ from every other sound's, behind the others of its slot.
  const Sound& Add(core::sound::SlotKind kind, std::size_t samples, const Details& details);
  const Sound& Add(core::sound::SlotKind kind, std::size_t samples) { return Add(kind, samples, Details()); }
  /// One sound of that many samples in every slot.
  void AddOneEach(std::size_t samplesEach);
  /// Writes the set file, line by line. Returns its path.
  std::filesystem::path WriteConfiguration(const std::string& name = "set.lscfg");

  [[nodiscard]] std::int64_t Samples() const;
  [[nodiscard]] std::int64_t CodedBytes() const;
  /// Reports that carry the sounds to the board: 1,024 bytes each, the rest in one, or in two from 1,022 bytes on.
  [[nodiscard]] int WriteReports() const;

  /// In the order in which they were added.
  std::vector<Sound> sounds;
  /// The set file, once it is written.
  std::filesystem::path configuration;

 private:
  std::filesystem::path m_folder;
};

/// Bytes of the file table of a set with four list files, like that of `WriteSoundSet`: 30 and 6 for each of them.
inline constexpr int kTableBytes = 30 + 6 * 4;

/// Writes eight sounds, in flash order: boot, power on, power off, idle, two motion files, one impact, one lock-up; and
/// their set file.
[[nodiscard]] SoundSet WriteSoundSet(const std::filesystem::path& folder);

/// Writes a sound file `name` of `samples` samples and adds it to the slot. True when it was taken.
bool AddSound(core::sound::LSU_Configuration& configuration, const TemporaryFolder& folder, core::sound::SlotKind kind,
              const std::string& name, std::size_t samples = 100, std::int16_t peak = 20000);

/// Fills every slot: the single ones with 100 + 2 * number samples, each list with `entries` files of 200 + 2 * number
/// samples. Returns what it has written.
SoundSet FillEverySlot(core::sound::LSU_Configuration& configuration, const TemporaryFolder& folder, int entries = 1);

/// A complete configuration over sound files in a folder of its own.
class CompleteSet {
 public:
  /// The smallest: one file in every slot, of that many samples each.
  explicit CompleteSet(std::size_t samplesEach = 100);

  /// Adds a file of that many samples to a slot.
  void Add(core::sound::SlotKind kind, std::size_t samples);

  TemporaryFolder folder;
  core::sound::LSU_Configuration configuration;

 private:
  SoundSet m_files{folder.Path()};
};

}  // namespace kestrin::support
