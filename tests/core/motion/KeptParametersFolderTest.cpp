// SPDX-License-Identifier: MIT
#include "core/motion/KeptParametersFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef __linux__
#include <sys/stat.h>
#endif

#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::motion {
namespace {

constexpr device::AccParam kValues{180, 2, 10, 50, 125, 13};

TEST(KeptParametersFolder, RemembersForEachBoardAcrossObjects) {
  const support::TemporaryFolder folder;
  {
    KeptParametersFolder kept(folder / "new" / "folder", support::AnyDisk());
    EXPECT_EQ(kept.Keep("4B535401", kValues).Text(), "");
    EXPECT_EQ(kept.Keep("00000002", {1, 2, 3, 4, 5, 6}).Text(), "");
  }
  const KeptParametersFolder later(folder / "new" / "folder", support::AnyDisk());
  EXPECT_EQ(later.Find("4B535401"), kValues);
  EXPECT_EQ(later.Find("00000002"), (device::AccParam{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(later.Find("00000003"), std::nullopt);
}

TEST(KeptParametersFolder, ForgetsOneBoardOnly) {
  const support::TemporaryFolder folder;
  KeptParametersFolder kept(folder.Path(), support::AnyDisk());
  ASSERT_EQ(kept.Keep("A", kValues).Text(), "");
  ASSERT_EQ(kept.Keep("B", kValues).Text(), "");
  kept.Forget("A");
  EXPECT_EQ(kept.Find("A"), std::nullopt);
  EXPECT_EQ(kept.Find("B"), kValues);
  EXPECT_NO_THROW(kept.Forget("A"));
}

TEST(KeptParametersFolder, WritesOneNamedNumberALine) {
  const support::TemporaryFolder folder;
  KeptParametersFolder kept(folder.Path(), support::AnyDisk());
  ASSERT_EQ(kept.Keep("A", kValues).Text(), "");
  EXPECT_EQ(support::ReadBytes(folder / "A.txt"),
            "MotionTh 180\nMotionDeb 2\nImpactTh 10\nImpactDeb 50\nImpactTm 125\nFOCTime 13\n");
}

TEST(KeptParametersFolder, TakesADamagedFileAsNothing) {
  const support::TemporaryFolder folder;
  const KeptParametersFolder kept(folder.Path(), support::AnyDisk());
  const char* const damaged[] = {
      "",
      "MotionTh 180\n",
      "MotionTh 180\nMotionDeb 2\nImpactTh 10\nImpactDeb 50\nImpactTm 125\nFOCTime\n",
      "MotionTh 256\nMotionDeb 2\nImpactTh 10\nImpactDeb 50\nImpactTm 125\nFOCTime 13\n",
      "MotionTh -1\nMotionDeb 2\nImpactTh 10\nImpactDeb 50\nImpactTm 125\nFOCTime 13\n",
      "MotionDeb 2\nMotionTh 180\nImpactTh 10\nImpactDeb 50\nImpactTm 125\nFOCTime 13\n",
      "MotionTh x\nMotionDeb 2\nImpactTh 10\nImpactDeb 50\nImpactTm 125\nFOCTime 13\n",
  };
  for (const char* content : damaged) {
    support::WriteBytes(folder / "A.txt", content);
    EXPECT_EQ(kept.Find("A"), std::nullopt) << content;
  }
}

TEST(KeptParametersFolder, WithoutAFolderNothingIsAndCanBeKept) {
  KeptParametersFolder kept("", support::AnyDisk());
  EXPECT_EQ(kept.Find("A"), std::nullopt);
#ifdef _WIN32
  const char* const variable = " APPDATA ";
#else
  const char* const variable = " HOME ";
#endif
  EXPECT_THAT(kept.Keep("A", kValues).Text(), ::testing::HasSubstr(variable));
  EXPECT_NO_THROW(kept.Forget("A"));
}

TEST(KeptParametersFolder, SaysWhatIsWrongWhenItCannotRemember) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "file", "in the way");
  KeptParametersFolder kept(folder / "file" / "below", support::AnyDisk());
  EXPECT_THAT(kept.Keep("A", kValues).Text(), ::testing::HasSubstr("could not be made"));
}

TEST(KeptParametersFolder, IsOnTheDiskWhenItSaysThatItIsKept) {
  const support::TemporaryFolder folder;
  support::RecordingDisk disk;
  KeptParametersFolder kept(folder.Path(), disk);
  ASSERT_EQ(kept.Keep("4B535401", {180, 2, 10, 50, 125, 13}).Text(), "");
  ASSERT_FALSE(disk.flushed.empty());
  EXPECT_EQ(disk.flushed.back(), folder.Path());
  disk.flushed.clear();
  kept.Forget("4B535401");
  EXPECT_EQ(disk.flushed, std::vector{folder.Path()}) << "what is forgotten must not come back with the next start";
}

#ifdef __linux__
TEST(KeptParametersFolder, DoesNotWaitForTheOtherEndOfAPipe) {
  const support::TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "4B535401.txt").c_str(), 0600), 0);
  EXPECT_FALSE(KeptParametersFolder(folder.Path(), support::AnyDisk()).Find("4B535401"));
}
#endif

TEST(KeptParametersFolder, SaysWhenTheDiskFails) {
  const support::TemporaryFolder folder;
  support::RecordingDisk disk;
  disk.onFlush = [](const std::filesystem::path&) { return std::make_error_code(std::errc::io_error); };
  KeptParametersFolder kept(folder.Path(), disk);
  EXPECT_NE(kept.Keep("4B535401", {180, 2, 10, 50, 125, 13}).Text(), "");
  EXPECT_FALSE(kept.Find("4B535401"));
}

}  // namespace
}  // namespace kestrin::core::motion
