// SPDX-License-Identifier: MIT
#include "demo/DemoSet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <numeric>

#include "core/sound/ConfigurationFile.h"
#include "demo/Measures.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::demo {
namespace {

namespace fs = std::filesystem;
using core::sound::SlotKind;
using demo_test::Between;
using demo_test::Peak;
using demo_test::Rms;
using ::testing::IsEmpty;

/// Samples that the smallest board holds.
constexpr std::int64_t kSmallestBoard = 2793120;

class IgnoringView : public core::sound::ConfigurationView {
 public:
  void EmptySlot(SlotKind /*kind*/) override {}
  void ShowFile(SlotKind /*kind*/, int /*position*/, const std::string& /*name*/) override {}
  void UpdateMemoryStatus() override {}
};

std::map<std::string, std::string> FilesOf(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    files[entry.path().filename().string()] = support::ReadBytes(entry.path());
  }
  return files;
}

/// The size of the step from each sample to the next, in the middle of all steps.
double UsualStep(const std::vector<std::int16_t>& samples) {
  double sum = 0.0;
  for (std::size_t i = 1; i < samples.size(); ++i) sum += std::pow(samples[i] - samples[i - 1], 2);
  return std::sqrt(sum / static_cast<double>(samples.size() - 1));
}

TEST(DemoSet, LoadsAsAConfigurationWithEverySlotFilled) {
  const support::TemporaryFolder folder;
  ASSERT_EQ(WriteDemoSet(folder.Path(), support::AnyDisk()).Text(), "");
  core::sound::LSU_Configuration configuration;
  IgnoringView view;
  const core::sound::LoadResult result =
      core::sound::ConfigurationFile::Load(folder / "demo.lscfg", configuration, view);
  EXPECT_TRUE(result.valid);
  EXPECT_THAT(result.failed, IsEmpty());
  EXPECT_EQ(configuration.CheckIntegrity(), 0);
  EXPECT_EQ(configuration.NrOfMt(), 6);
  EXPECT_EQ(configuration.NrOfImp(), 5);
  EXPECT_EQ(configuration.NrOfLk(), 2);
  EXPECT_LE(configuration.TotalNrOfSamples(), kSmallestBoard);
  EXPECT_EQ(configuration.GetVolume(SlotKind::Idle, 1), 55);
  EXPECT_EQ(configuration.GetVolume(SlotKind::Lockup, 2), 75);
}

TEST(DemoSet, HasTheSameBytesEveryTime) {
  const support::TemporaryFolder folder;
  ASSERT_EQ(WriteDemoSet(folder.Path(), support::AnyDisk()).Text(), "");
  const auto first = FilesOf(folder.Path());
  ASSERT_EQ(WriteDemoSet(folder.Path(), support::AnyDisk()).Text(), "");
  EXPECT_EQ(first.size(), 18U);
  EXPECT_TRUE(first == FilesOf(folder.Path()));
}

TEST(DemoSet, MakesItsFolderAndNamesTheFilesByAbsolutePathsWithoutDots) {
  const support::TemporaryFolder folder;
  const fs::path wanted = folder / "new" / "one";
  ASSERT_EQ(WriteDemoSet(fs::relative(folder.Path()) / "new" / "." / "one", support::AnyDisk()).Text(), "");
  core::sound::LSU_Configuration configuration;
  IgnoringView view;
  (void)core::sound::ConfigurationFile::Load(wanted / "demo.lscfg", configuration, view);
  EXPECT_EQ(configuration.FileAt(SlotKind::Boot).FileNameAndPath(), wanted / "boot.lsu");
}

TEST(DemoSet, NamesAFolderThatCannotBeMade) {
  const support::TemporaryFolder folder;
  const fs::path file = support::WriteBytes(folder / "file", "x");
  EXPECT_THAT(WriteDemoSet(file / "below", support::AnyDisk()).Text(), ::testing::HasSubstr((file / "below").string()));
}

TEST(DemoSet, EverySoundPeaksOneDecibelBelowFullScale) {
  for (const DemoSound& demo : DemoSounds()) {
    SCOPED_TRACE(demo.fileName);
    EXPECT_NEAR(20.0 * std::log10(Peak(demo.make()) / 32768.0), -1.0, 0.01);
  }
}

TEST(DemoSet, NoSoundHasADirectCurrent) {
  for (const DemoSound& demo : DemoSounds()) {
    SCOPED_TRACE(demo.fileName);
    const std::vector<std::int16_t> samples = demo.make();
    const double sum = std::accumulate(samples.begin(), samples.end(), 0.0);
    EXPECT_LT(std::abs(sum / static_cast<double>(samples.size())), 32.8);  // a thousandth of full scale
  }
}

TEST(DemoSet, TheEndOfALoopMeetsItsStartNextToZero) {
  int loops = 0;
  for (const DemoSound& demo : DemoSounds()) {
    if (!demo.loops) continue;
    SCOPED_TRACE(demo.fileName);
    ++loops;
    const std::vector<std::int16_t> samples = demo.make();
    const double usual = UsualStep(samples);
    EXPECT_EQ(samples.size() % 2, 0U);
    EXPECT_LE(std::abs(samples.front() - samples.back()), usual);
    // The board plays two zeros in their place.
    EXPECT_LE(std::abs(samples.front()), usual / 4.0);
    EXPECT_LE(std::abs(samples.back()), usual / 4.0);
    // Neither does the direction break: each step across the seam is one of those that are found elsewhere.
    const std::size_t n = samples.size();
    EXPECT_LE(std::abs(samples[n - 1] - samples[n - 2]), 4.0 * usual);
    EXPECT_LE(std::abs(samples[1] - samples[0]), 4.0 * usual);
  }
  EXPECT_EQ(loops, 3);
}

TEST(DemoSet, ASoundThatIsPlayedOnceStartsAndEndsSoftly) {
  for (const DemoSound& demo : DemoSounds()) {
    if (demo.loops) continue;
    SCOPED_TRACE(demo.fileName);
    const std::vector<std::int16_t> samples = demo.make();
    EXPECT_EQ(samples.front(), 0);
    EXPECT_LE(std::abs(samples.back()), 1);
    const double length = static_cast<double>(samples.size()) / demo_test::kRate;
    EXPECT_LT(Rms(Between(samples, length - 0.005, length)), 0.01 * Peak(samples));
  }
}

TEST(DemoSet, LoopsAreNeverSilentAndSwingsAreLoudestOnTheWay) {
  for (const DemoSound& demo : DemoSounds()) {
    SCOPED_TRACE(demo.fileName);
    const std::vector<std::int16_t> samples = demo.make();
    const double length = static_cast<double>(samples.size()) / demo_test::kRate;
    if (demo.loops) {
      for (double at = 0.0; at < length; at += 0.1) {
        EXPECT_GT(Rms(Between(samples, at, at + 0.1)), 0.4 * Rms(samples)) << at;
      }
    }
    if (demo.slot == SlotKind::Motion) {
      const double middle = Rms(Between(samples, 0.35 * length, 0.6 * length));
      EXPECT_GT(middle, 2.0 * Rms(Between(samples, 0.0, 0.15 * length)));
      EXPECT_GT(middle, 2.0 * Rms(Between(samples, 0.85 * length, length)));
    }
    if (demo.slot == SlotKind::Impact) {
      EXPECT_GT(Rms(Between(samples, 0.0, 0.06)), 4.0 * Rms(Between(samples, 0.3, 0.36)));
    }
  }
}

}  // namespace
}  // namespace kestrin::demo
