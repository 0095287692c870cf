// SPDX-License-Identifier: MIT
// Files that are no longer what they were when they were added.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/SampleReader.h"
#include "support/ReferenceCoder.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using support::SomeSamples;
using support::TemporaryFolder;
using support::WriteSoundFile;

/// What is said behind the file's name, and of what kind it is.
struct Reason {
  base::FailureKind kind;
  const char* text;
};
constexpr Reason kGone{base::FailureKind::NotFound, " is no longer there. Put it back or choose another sound."};
constexpr Reason kChanged{base::FailureKind::Changed, " has changed since it was added. Add it again."};
constexpr Reason kUnreadable{base::FailureKind::Failed,
                             " cannot be read. Check that you may read it, or choose another sound."};

struct Change {
  const char* name;
  std::function<void(const fs::path&)> happen;
  Reason reason;
};

std::vector<Change> Changes(std::size_t count) {
  const auto resized = [](std::size_t samples, std::string more = "") {
    return
        [=](const fs::path& path) { support::WriteBytes(path, support::SoundFileBytes(SomeSamples(samples)) + more); };
  };
  return {
      {"vanished", [](const fs::path& path) { fs::remove(path); }, kGone},
      {"grown by a sample", resized(count + 1), kChanged},
      {"grown by many", resized(3 * count), kChanged},
      {"shrunk by a sample", resized(count - 1), kChanged},
      {"shrunk by half a sample", resized(count - 1, "x"), kChanged},
      {"shrunk to one", resized(1), kChanged},
      {"empty", [](const fs::path& path) { support::WriteBytes(path, ""); }, kChanged},
      {"a folder", [](const fs::path& path) { fs::remove(path), fs::create_directory(path); }, kChanged},
#ifdef __linux__
      {"a device", [](const fs::path& path) { fs::remove(path), fs::create_symlink("/dev/zero", path); }, kChanged},
      {"unreadable", [](const fs::path& path) { fs::remove(path), fs::create_symlink("/proc/self/mem", path); },
       kUnreadable},
#endif
  };
}

TEST(LSU_SoundFileChanged, AFileThatChangedIsNotCodedAndTheTextSaysWhy) {
  // Both kinds of count, within a block and beyond.
  for (const std::size_t count :
       {std::size_t{50}, std::size_t{51}, SampleReader::kBlock + 1, 2 * SampleReader::kBlock + 2})
    for (const Change& change : Changes(count)) {
      const TemporaryFolder folder;
      LSU_SoundFile file;
      ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(count))));
      ASSERT_TRUE(file.Code());
      change.happen(folder / "a.lsu");
      EXPECT_FALSE(file.Code()) << count << " " << change.name;
      EXPECT_EQ(file.NrOfBytes(), 0) << count << " " << change.name;
      EXPECT_EQ(file.GetFileCRC(), 0) << count << " " << change.name;
      const base::Result<> codable = file.CheckCodable();
      ASSERT_FALSE(codable) << count << " " << change.name;
      EXPECT_EQ(codable.Why(),
                (base::Failure{change.reason.kind, "\"" + (folder / "a.lsu").string() + "\"" + change.reason.text}))
          << count << " " << change.name;
    }
}

TEST(LSU_SoundFileChanged, AFileThatChangesWhileItIsCodedIsNotCoded) {
  const std::size_t count = 3 * SampleReader::kBlock;
  for (const std::size_t becomes : {std::size_t{10}, count / 2, count + 1}) {
    const TemporaryFolder folder;
    const fs::path path = WriteSoundFile(folder / "a.lsu", SomeSamples(count));
    LSU_SoundFile file;
    ASSERT_TRUE(file.ReadFile(path));
    bool changed = false;
    EXPECT_FALSE(file.Code([&] {
      if (!changed) fs::resize_file(path, 4 + 2 * becomes);
      changed = true;
    })) << becomes;
    EXPECT_TRUE(changed);
    EXPECT_EQ(file.NrOfBytes(), 0);
  }
}

TEST(LSU_SoundFileChanged, HalfASampleMoreIsNoChange) {
  const TemporaryFolder folder;
  const auto samples = SomeSamples(100);
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", samples)));
  support::WriteBytes(folder / "a.lsu", support::SoundFileBytes(samples) + "x");
  EXPECT_EQ(file.CheckCodable().Text(), "");
  EXPECT_TRUE(file.Code());
}

TEST(LSU_SoundFileChanged, OtherSamplesInTheSameNumberAreCodedWithThePeakThatWasMeasured) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(100, 20000))));
  const auto quieter = SomeSamples(100, 5000, 3);
  WriteSoundFile(folder / "a.lsu", quieter);
  ASSERT_TRUE(file.Code());
  std::vector<std::uint8_t> stream;
  ASSERT_TRUE(file.GetBytes(stream, 0, 150));
  EXPECT_EQ(stream, support::ReferenceStream(quieter, 20000, 100));
}

TEST(LSU_SoundFileChanged, ALongerAndLouderFileHasChangedBeforeItIsTooLoud) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(100, 1000))));
  WriteSoundFile(folder / "a.lsu", SomeSamples(200, 30000));
  EXPECT_FALSE(file.Code());
  EXPECT_EQ(file.CheckCodable().Text(), "\"" + (folder / "a.lsu").string() + "\"" + kChanged.text);
}

}  // namespace
}  // namespace kestrin::core::sound
