// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/sound/ConfigurationFile.h"
#include "support/RecordingConfigurationView.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using support::FillEverySlot;
using support::ReadBytes;
using support::TemporaryFolder;

TEST(ConfigurationFileSave, AnEmptyConfigurationIsExactlyTheseLines) {
  const TemporaryFolder folder;
  EXPECT_EQ(ConfigurationFile::Save(LSU_Configuration(), folder / "a.lscfg", support::AnyDisk()).Text(), "");
  EXPECT_EQ(ReadBytes(folder / "a.lscfg"),
            "BOOT\r\n\r\n 100\r\n"
            "PWRON\r\n\r\n 100\r\n"
            "PWROFF\r\n\r\n 100\r\n"
            "IDLE\r\n\r\n 100\r\n"
            "MOTION-0\r\n"
            "IMPACT-0\r\n"
            "LOCKUP-0\r\n");
}

TEST(ConfigurationFileSave, PathsAndVolumesStandInTheOrderOfTheFlash) {
  const TemporaryFolder folder;
  LSU_Configuration configuration;
  FillEverySlot(configuration, folder, 2);
  std::int16_t volume = -2;
  for (const SlotFile& entry : configuration.FilesInFlashOrder()) entry.file->SetVolume(volume++);
  EXPECT_EQ(ConfigurationFile::Save(configuration, folder / "a.lscfg", support::AnyDisk()).Text(), "");
  const std::string at = folder.Path().string() + static_cast<char>(fs::path::preferred_separator);
  EXPECT_EQ(ReadBytes(folder / "a.lscfg"),
            "BOOT\r\n" + at + "boot.lsu\r\n-2\r\n" + "PWRON\r\n" + at + "pwron.lsu\r\n-1\r\n" + "PWROFF\r\n" + at +
                "pwroff.lsu\r\n 0\r\n" + "IDLE\r\n" + at + "idle.lsu\r\n 1\r\n" + "MOTION-2\r\n" + at +
                "motion 1.lsu\r\n 2\r\n" + at + "motion 2.lsu\r\n 3\r\n" + "IMPACT-2\r\n" + at +
                "impact 1.lsu\r\n 4\r\n" + at + "impact 2.lsu\r\n 5\r\n" + "LOCKUP-2\r\n" + at +
                "lockup 1.lsu\r\n 6\r\n" + at + "lockup 2.lsu\r\n 7\r\n");
}

TEST(ConfigurationFileSave, WhatWasSavedLoadsBackTheSame) {
  const TemporaryFolder folder;
  for (const int entries : {0, 1, 3, kListCapacity}) {
    LSU_Configuration saved;
    FillEverySlot(saved, folder, entries);
    std::int16_t volume = 3;
    for (const SlotFile& entry : saved.FilesInFlashOrder()) entry.file->SetVolume(volume += 7);
    saved.SetVolume(SlotKind::Idle, 1, -32768);
    saved.SetVolume(SlotKind::Boot, 1, 32767);
    ASSERT_EQ(ConfigurationFile::Save(saved, folder / "a.lscfg", support::AnyDisk()).Text(), "");

    LSU_Configuration loaded;
    support::RecordingConfigurationView view;
    const LoadResult result = ConfigurationFile::Load(folder / "a.lscfg", loaded, view);
    EXPECT_TRUE(result.valid) << result.valid.Text();
    EXPECT_EQ(result.Message(), "");
    EXPECT_EQ(loaded.TotalNrOfSamples(), saved.TotalNrOfSamples());
    const auto expected = saved.FilesInFlashOrder();
    const auto found = loaded.FilesInFlashOrder();
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
      EXPECT_EQ(found[i].kind, expected[i].kind);
      EXPECT_EQ(found[i].file->FileNameAndPath(), expected[i].file->FileNameAndPath());
      EXPECT_EQ(found[i].file->Volume(), expected[i].file->Volume());
      EXPECT_EQ(found[i].file->NrOfSamples(), expected[i].file->NrOfSamples());
      EXPECT_EQ(found[i].file->Peak(), expected[i].file->Peak());
    }
    EXPECT_EQ(ConfigurationFile::Save(loaded, folder / "b.lscfg", support::AnyDisk()).Text(), "");
    EXPECT_EQ(ReadBytes(folder / "b.lscfg"), ReadBytes(folder / "a.lscfg"));
  }
}

TEST(ConfigurationFileSave, MissingSoundsStandInTheirPlaces) {
  const TemporaryFolder folder;
  LSU_Configuration configuration;
  ASSERT_TRUE(support::AddSound(configuration, folder, SlotKind::Impact, "i.lsu"));
  configuration.SetVolume(SlotKind::Impact, 1, 7);
  MissingSounds missing;
  missing.Put({{SlotKind::PwrOff, 1}, "/gone/off.lsu", 50});
  missing.Put({{SlotKind::Motion, 1}, "C:\\gone\\m.lsu", -3});
  missing.Put({{SlotKind::Impact, 1}, "/gone/first.lsu", 60});
  missing.Put({{SlotKind::Impact, 3}, "/gone/third.lsu", 70});
  EXPECT_EQ(ConfigurationFile::Save(configuration, folder / "a.lscfg", support::AnyDisk(), missing).Text(), "");
  EXPECT_EQ(ReadBytes(folder / "a.lscfg"),
            "BOOT\r\n\r\n 100\r\n"
            "PWRON\r\n\r\n 100\r\n"
            "PWROFF\r\n/gone/off.lsu\r\n 50\r\n"
            "IDLE\r\n\r\n 100\r\n"
            "MOTION-1\r\nC:\\gone\\m.lsu\r\n-3\r\n"
            "IMPACT-3\r\n/gone/first.lsu\r\n 60\r\n" +
                (folder / "i.lsu").string() +
                "\r\n 7\r\n/gone/third.lsu\r\n 70\r\n"
                "LOCKUP-0\r\n");
}

TEST(ConfigurationFileSave, NamesBeyondPlainLettersSurvive) {
  const TemporaryFolder folder;
  LSU_Configuration saved;
  const fs::path name(u8"gr\u00FC\u00DFe \u2694.lsu");
  ASSERT_TRUE(saved.AddFile(support::WriteSoundFile(folder / name, support::SomeSamples(100)), SlotKind::Boot));
  ASSERT_EQ(ConfigurationFile::Save(saved, folder / "a.lscfg", support::AnyDisk()).Text(), "");
  EXPECT_NE(ReadBytes(folder / "a.lscfg")
                .find("gr\xC3\xBC\xC3\x9F"
                      "e \xE2\x9A\x94.lsu\r\n"),
            std::string::npos);
  LSU_Configuration loaded;
  support::RecordingConfigurationView view;
  EXPECT_TRUE(ConfigurationFile::Load(folder / "a.lscfg", loaded, view).valid);
  EXPECT_EQ(loaded.FileAt(SlotKind::Boot).FileNameAndPath(), folder / name);
}

TEST(ConfigurationFileSave, AnOlderFileIsReplacedWhole) {
  const TemporaryFolder folder;
  support::WriteBytes(folder / "a.lscfg", std::string(100000, 'x'));
  ASSERT_EQ(ConfigurationFile::Save(LSU_Configuration(), folder / "a.lscfg", support::AnyDisk()).Text(), "");
  EXPECT_LT(fs::file_size(folder / "a.lscfg"), 100U);
}

TEST(ConfigurationFileSave, WhereNothingCanBeWrittenTheTextNamesTheFile) {
  const TemporaryFolder folder;
  const fs::path path = folder / "no such folder" / "a.lscfg";
  const base::Result<> saved = ConfigurationFile::Save(LSU_Configuration(), path, support::AnyDisk());
  ASSERT_FALSE(saved);
  EXPECT_EQ(saved.Why().kind, base::FailureKind::NotFound);
  EXPECT_NE(saved.Text().find(path.string()), std::string::npos);
}

#ifndef _WIN32
TEST(ConfigurationFileSave, ANameThatNoLineCanHoldIsRefusedAndTheOlderFileStays) {
  const TemporaryFolder folder;
  support::WriteBytes(folder / "a.lscfg", "older");
  struct Row {
    const char* name;
    const char* shown;
  };
  for (const auto& [name, shown] :
       {Row{"line\nbreak.lsu", "line?break.lsu"}, {"return\rhere.lsu", "return?here.lsu"}}) {
    LSU_Configuration configuration;
    ASSERT_TRUE(support::AddSound(configuration, folder, SlotKind::Boot, name));
    const base::Result<> saved = ConfigurationFile::Save(configuration, folder / "a.lscfg", support::AnyDisk());
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.Why().kind, base::FailureKind::NotValid);
    const std::string text = saved.Text();
    EXPECT_NE(text.find((folder / "a.lscfg").string()), std::string::npos) << text;
    EXPECT_NE(text.find(shown), std::string::npos) << text;
    EXPECT_EQ(ReadBytes(folder / "a.lscfg"), "older");
  }
}
#endif

}  // namespace
}  // namespace kestrin::core::sound
