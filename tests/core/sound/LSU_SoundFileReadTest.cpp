// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/SampleReader.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using support::SomeSamples;
using support::TemporaryFolder;
using support::WriteBytes;
using support::WriteSoundFile;

TEST(LSU_SoundFileRead, IsEmptyUntilAFileIsRead) {
  const LSU_SoundFile file;
  EXPECT_TRUE(file.FileNameAndPath().empty());
  EXPECT_EQ(file.NrOfSamples(), 0);
  EXPECT_EQ(file.NrOfBytes(), 0);
  EXPECT_EQ(file.Peak(), 0);
  EXPECT_EQ(file.WhyNotValid(), "");
}

TEST(LSU_SoundFileRead, TheLastPieceOfThePathDecidesWhetherItIsASound) {
  struct Row {
    const char* name;
    bool accepted;
  };
  constexpr Row kRows[] = {{"boot.LSU", true},   {"boot.lsu", true},      {"boot.Lsu", true}, {"my.sound.lsu", true},
                           {".lsu", true},       {"boot.lsu.wav", false}, {"boot", false},    {"boot.", false},
                           {"boot.lsu ", false}, {"boot.ls", false},      {"bootlsu", false}, {"boot.wav", false}};
  const TemporaryFolder folder;
  for (const Row& row : kRows) {
    const auto path = WriteSoundFile(folder / row.name, SomeSamples(100));
    LSU_SoundFile file;
    EXPECT_EQ(file.ReadFile(path), row.accepted) << row.name;
    EXPECT_EQ(file.FileNameAndPath(), path);
    EXPECT_EQ(file.NrOfSamples(), row.accepted ? 100 : 0) << row.name;
  }
}

TEST(LSU_SoundFileRead, ANameTellsWhetherAFileIsTakenForASound) {
  for (const char* const name : {"hum.lsu", "C:\\my.sounds\\HUM.LSU", "hum.wav.lSu", ".lsu"})
    EXPECT_TRUE(LSU_SoundFile::HasSoundName(name)) << name;
  // The last is a letter that some take for an "s".
  for (const char* const name : {"", "hum", "lsu", "hum.wav", "hum.lsu.wav", "hum.lsu2", "hum.l\xC5\xBFu"})
    EXPECT_FALSE(LSU_SoundFile::HasSoundName(name)) << name;
}

TEST(LSU_SoundFileRead, TheSizeOfAFileTellsItsSamples) {
  struct Row {
    std::uintmax_t bytes;
    std::uintmax_t samples;
  };
  for (const Row& row : {Row{0, 0}, {3, 0}, {4, 0}, {5, 0}, {6, 1}, {7, 1}, {96004, 48000}, {8589934592, 4294967294}})
    EXPECT_EQ(LSU_SoundFile::SamplesIn(row.bytes), row.samples) << row.bytes;
  EXPECT_EQ(LSU_SoundFile::FileBytes(0), 4U);
  EXPECT_EQ(LSU_SoundFile::FileBytes(48000), 96004U);
  EXPECT_EQ(LSU_SoundFile::FileBytes(2147483647), 4294967298U);
}

TEST(LSU_SoundFileRead, APointInAFolderNameMakesNoExtension) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "set.lsu");
  LSU_SoundFile file;
  EXPECT_FALSE(file.ReadFile(WriteSoundFile(folder / "set.lsu" / "boot", SomeSamples(100))));
  EXPECT_TRUE(file.ReadFile(WriteSoundFile(folder / "set.lsu" / "boot.lsu", SomeSamples(100))));
}

TEST(LSU_SoundFileRead, SamplesAreCountedAndThePeakIsMeasured) {
  struct Row {
    std::int16_t loudest;
    int peak;
  };
  constexpr Row kRows[] = {{1, 1}, {-1, 1}, {12345, 12345}, {-12345, 12345}, {32767, 32767}, {-32768, 32768}};
  const TemporaryFolder folder;
  for (const Row& row : kRows)
    for (const std::size_t at : {std::size_t{0}, std::size_t{1}, std::size_t{48}}) {
      std::vector<std::int16_t> samples(49, 0);
      samples[at] = row.loudest;
      LSU_SoundFile file;
      EXPECT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", samples)));
      EXPECT_EQ(file.Peak(), row.peak);
      EXPECT_EQ(file.NrOfSamples(), 49);
      EXPECT_EQ(file.Volume(), 100);
      EXPECT_EQ(file.NrOfBytes(), 0);
    }
}

TEST(LSU_SoundFileRead, AFileOf49SamplesIsLongEnoughOneOf48IsNot) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  std::vector<std::int16_t> samples(49, 0);
  samples[20] = 1;
  EXPECT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", samples)));
  samples.pop_back();
  EXPECT_FALSE(file.ReadFile(WriteSoundFile(folder / "a.lsu", samples)));
}

TEST(LSU_SoundFileRead, HalfASampleAtTheEndDoesNotCount) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  EXPECT_TRUE(file.ReadFile(WriteBytes(folder / "a.lsu", support::SoundFileBytes(SomeSamples(49)) + "x")));
  EXPECT_EQ(file.NrOfSamples(), 49);
  EXPECT_FALSE(file.ReadFile(WriteBytes(folder / "a.lsu", support::SoundFileBytes(SomeSamples(48)) + "x")));
}

TEST(LSU_SoundFileRead, SilenceIsRejectedHoweverLong) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  // The header word is no sample: what stands there makes no sound.
  EXPECT_FALSE(file.ReadFile(WriteSoundFile(folder / "a.lsu", std::vector<std::int16_t>(5000, 0))));
}

TEST(LSU_SoundFileRead, EmptyFilesAreRejected) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  for (const char* bytes : {"", "abc", "abcd"}) EXPECT_FALSE(file.ReadFile(WriteBytes(folder / "a.lsu", bytes)));
}

TEST(LSU_SoundFileRead, APeakBehindTheFirstBlockIsFound) {
  const TemporaryFolder folder;
  std::vector<std::int16_t> samples(3 * SampleReader::kBlock + 5, 1);
  samples.back() = -30000;
  LSU_SoundFile file;
  EXPECT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", samples)));
  EXPECT_EQ(file.Peak(), 30000);
  EXPECT_EQ(file.NrOfSamples(), static_cast<int>(samples.size()));
}

TEST(LSU_SoundFileRead, AMissingFileIsRejectedAndNotCreated) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  EXPECT_FALSE(file.ReadFile(folder / "none.lsu"));
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(LSU_SoundFileRead, AFolderIsRejected) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "a.lsu");
  LSU_SoundFile file;
  EXPECT_FALSE(file.ReadFile(folder / "a.lsu"));
}

TEST(LSU_SoundFileRead, MoreSamplesThanCanBeCountedAreRejectedWithoutReadingThemAll) {
  const TemporaryFolder folder;
  const auto path = WriteSoundFile(folder / "a.lsu", SomeSamples(100));
  // A file with a hole: it takes no room on the disk. A file system without such files fails the test.
  std::filesystem::resize_file(path, 4 + 2 * (std::uintmax_t{1} << 31));
  LSU_SoundFile file;
  EXPECT_FALSE(file.ReadFile(path, [] { FAIL() << "it was read"; }));
  EXPECT_EQ(file.NrOfSamples(), 0);
  EXPECT_EQ(file.WhyNotValid(), "\"" + path.string() + "\" is longer than any board can hold. Choose a shorter sound.");
}

#ifdef __linux__
TEST(LSU_SoundFileRead, AnEndlessDeviceIsRejectedAtOnce) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("/dev/urandom", folder / "a.lsu");
  LSU_SoundFile file;
  EXPECT_FALSE(file.ReadFile(folder / "a.lsu"));
}

TEST(LSU_SoundFileRead, AFileThatCannotBeReadIsRejected) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink("/proc/self/mem", folder / "a.lsu");
  LSU_SoundFile file;
  EXPECT_FALSE(file.ReadFile(folder / "a.lsu"));
  EXPECT_EQ(file.WhyNotValid(), "\"" + (folder / "a.lsu").string() +
                                    "\" cannot be read. Check that you may read it, or choose another sound.");
}
#endif

TEST(LSU_SoundFileRead, WhyItWasRefusedIsSaidUntilTheNextFile) {
  const TemporaryFolder folder;
  const auto sound = WriteSoundFile(folder / "a.lsu", SomeSamples(100));
  LSU_SoundFile file;
  EXPECT_FALSE(file.ReadFile(folder / "none.lsu"));
  EXPECT_EQ(file.WhyNotValid(),
            "\"" + (folder / "none.lsu").string() + "\" is not there. Check its name and its folder.");
  // Silent as it is, there is too little of it.
  EXPECT_FALSE(file.ReadFile(WriteSoundFile(folder / "b.lsu", std::vector<std::int16_t>(48, 0))));
  EXPECT_EQ(file.WhyNotValid(), "\"" + (folder / "b.lsu").string() +
                                    "\" is too short: a sound has at least 49 samples, a thousandth of a second. "
                                    "Choose a longer one.");
  EXPECT_FALSE(file.ReadFile(folder / "\x1B[2Jnone"));
  EXPECT_EQ(file.WhyNotValid(), "\"" + (folder / "?[2Jnone").string() +
                                    "\" is no sound for a board: its name does not end in \".lsu\". Choose one that "
                                    "does.");
  EXPECT_TRUE(file.ReadFile(sound));
  EXPECT_EQ(file.WhyNotValid(), "");
}

TEST(LSU_SoundFileRead, ThePumpGetsItsTurnAndMayEndIt) {
  const TemporaryFolder folder;
  const auto sound = WriteSoundFile(folder / "a.lsu", SomeSamples(200000));
  LSU_SoundFile file;
  int turns = 0;
  EXPECT_TRUE(file.ReadFile(sound, [&] { ++turns; }));
  EXPECT_GE(turns, 200000 / 50000);
  EXPECT_LE(turns, 200000 / 10000);
  EXPECT_THROW((void)file.ReadFile(sound, [] { throw std::runtime_error("enough"); }), std::runtime_error);
  EXPECT_EQ(file.NrOfSamples(), 0);
  EXPECT_EQ(file.Peak(), 0);
  EXPECT_TRUE(file.ReadFile(sound));
}

TEST(LSU_SoundFileRead, ReadingAgainStartsOver) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(100, 500))));
  file.SetVolume(50);
  ASSERT_TRUE(file.Code());
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "b.lsu", SomeSamples(60, 700))));
  EXPECT_EQ(file.FileNameAndPath(), folder / "b.lsu");
  EXPECT_EQ(file.NrOfSamples(), 60);
  EXPECT_EQ(file.Peak(), 700);
  EXPECT_EQ(file.Volume(), 100);
  EXPECT_EQ(file.NrOfBytes(), 0);
  EXPECT_EQ(file.GetFileCRC(), 0);
}

TEST(LSU_SoundFileRead, AFileThatIsRefusedLeavesNothingOfTheOneBefore) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(100))));
  ASSERT_TRUE(file.Code());
  EXPECT_FALSE(file.ReadFile(folder / "none.lsu"));
  EXPECT_EQ(file.FileNameAndPath(), folder / "none.lsu");
  EXPECT_EQ(file.NrOfSamples(), 0);
  EXPECT_EQ(file.Peak(), 0);
  EXPECT_EQ(file.NrOfBytes(), 0);
  std::vector<std::uint8_t> bytes;
  EXPECT_FALSE(file.GetBytes(bytes, 0, 1));
}

}  // namespace
}  // namespace kestrin::core::sound
