// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/sound/SoundSet.h"
#include "support/TestFiles.h"

namespace kestrin::support {

/// A set over an empty configuration, and a folder for its sounds.
class SoundSetFixture : public ::testing::Test {
 protected:
  SoundSetFixture() { configuration.SetMaxNrOfSamples(2793120); }

  /// Writes a sound of that many samples into the folder. Returns its path.
  std::filesystem::path Sound(const std::string& name, std::size_t samples, std::int16_t peak = 20000) {
    return WriteSoundFile(folder / name, SomeSamples(samples, peak));
  }

  /// Adds `count` sounds to a slot, named like "motion 1.lsu", of 100 samples and more.
  void Fill(core::sound::SlotKind kind, int count) {
    for (int number = 1; number <= count; ++number) {
      const std::string name = std::string(core::sound::SlotOf(kind).name) + " " + std::to_string(number) + ".lsu";
      const auto samples = static_cast<std::size_t>(100 + number);
      ASSERT_EQ(set.Add(kind, Sound(name, samples, static_cast<std::int16_t>(1000 * number))).Text(), "");
    }
  }

  /// The sounds of a slot with their volumes, like "a.lsu@100 b.lsu@80".
  std::string Names(core::sound::SlotKind kind) {
    std::string names;
    for (int position = 1; position <= set.Count(kind); ++position) {
      const core::sound::LSU_SoundFile& file = set.At({kind, position});
      names +=
          (names.empty() ? "" : " ") + file.FileNameAndPath().filename().string() + "@" + std::to_string(file.Volume());
    }
    return names;
  }

  TemporaryFolder folder;
  core::sound::LSU_Configuration configuration;
  core::sound::SoundSet set{configuration};
};

}  // namespace kestrin::support
