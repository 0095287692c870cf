// SPDX-License-Identifier: MIT
// Files that are no configuration, or no longer one.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/sound/ConfigurationFile.h"
#include "support/RecordingConfigurationView.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using support::TemporaryFolder;

const std::string kSingles = "BOOT\r\n\r\n 100\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\n";

class ConfigurationFileDamage : public testing::Test {
 protected:
  LoadResult Load(const std::string& bytes) {
    return ConfigurationFile::Load(support::WriteBytes(m_folder / "set.lscfg", bytes), m_configuration, m_view);
  }

  TemporaryFolder m_folder;
  LSU_Configuration m_configuration;
  support::RecordingConfigurationView m_view;
};

TEST_F(ConfigurationFileDamage, DamagedLinesEndTheLoadAndTheDetailNamesTheLine) {
  struct Row {
    std::string bytes;
    int line;
    const char* expected;
  };
  const Row kRows[] = {
      {"", 1, "the file ends where \"BOOT\" is expected"},
      {"\r\n", 1, "\"BOOT\" is expected"},
      {"BOOTS\r\n\r\n 100\r\n", 1, "\"BOOT\" is expected"},
      {" BOOT\r\n\r\n 100\r\n", 1, "\"BOOT\" is expected"},
      {"\rBOOT\r\n\r\n 100\r\n", 1, "\"BOOT\" is expected"},
      {"PWRON\r\n\r\n 100\r\n", 1, "\"BOOT\" is expected"},
      {"BOOT\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\n", 4, "\"PWRON\" is expected"},
      {"BOOT\r\n\r\n 100\r\nPWRON\r\n\r\n 100\r\nIDLE\r\n", 7, "\"PWROFF\" is expected"},
      {"BOOT\r\n\r\n 100\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nBOOT\r\n", 10, "\"IDLE\" is expected"},
      {kSingles + "IMPACT-0\r\n", 13, "\"MOTION-\" and a number from 0 to 12 is expected"},
      {kSingles + "MOTION-0\r\nLOCKUP-0\r\n", 14, "\"IMPACT-\" and a number from 0 to 12 is expected"},
      {kSingles + "MOTION-0\r\nIMPACT-0\r\nMOTION-0\r\n", 15, "\"LOCKUP-\" and a number from 0 to 12 is expected"},
      {"BOOT\r\n\r\n 32768\r\n", 3, "a volume from -32768 to 32767 is expected"},
      {"BOOT\r\n\r\n-32769\r\n", 3, "a volume from -32768 to 32767 is expected"},
      {"BOOT\r\n\r\n 32767.5\r\n", 3, "a volume from -32768 to 32767 is expected"},
      {"BOOT\r\n\r\n 1e999\r\n", 3, "a volume from -32768 to 32767 is expected"},
      {kSingles + "MOTION-1\r\n\r\n 99999\r\n", 15, "a volume from -32768 to 32767 is expected"},
  };
  for (const Row& row : kRows) {
    const LoadResult result = Load(row.bytes);
    EXPECT_FALSE(result.valid) << row.bytes;
    EXPECT_EQ(result.Message(), "Not a valid configuration file");
    EXPECT_EQ(result.valid.Text(),
              (m_folder / "set.lscfg").string() + ", line " + std::to_string(row.line) + ": " + row.expected);
  }
}

TEST_F(ConfigurationFileDamage, AListLineNeedsItsKeywordAndANumberFrom0To12) {
  for (const char* line : {"MOTION", "MOTION-", "MOTION- ", "MOTION-x", "MOTION--1", "MOTION-13", "MOTION-1.5",
                           "MOTION-1x", "MOTION-+1", "MOTION-1 2", "MOTION-0-0", "MOTION 1", "MOTION -1", "-1",
                           "MOTIONS-1", "MOTION-99999999999999999999", "MOTION-0x1", "MOTION-\t1"}) {
    const LoadResult result = Load(kSingles + line + "\r\nIMPACT-0\r\nLOCKUP-0\r\n");
    EXPECT_FALSE(result.valid) << line;
    EXPECT_EQ(result.Message(), "Not a valid configuration file") << line;
  }
  for (const char* line : {"MOTION-0", "motion-0", "MOTION- 0", "MOTION-0 ", "MOTION-00"})
    EXPECT_TRUE(Load(kSingles + line + "\r\nIMPACT-0\r\nLOCKUP-0\r\n").valid) << line;
}

TEST_F(ConfigurationFileDamage, AFileCutOffAnywhereIsNotValidUnlessOnlyItsLastLineEndIsGone) {
  LSU_Configuration full;
  support::FillEverySlot(full, m_folder);
  ASSERT_EQ(ConfigurationFile::Save(full, m_folder / "full.lscfg", support::AnyDisk()).Text(), "");
  const std::string text = support::ReadBytes(m_folder / "full.lscfg");
  // From the last volume's first digit on nothing tells a shorter number from a whole one.
  const std::size_t lastLine = text.rfind(" 100\r\n");
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const LoadResult result = Load(text.substr(0, length));
    EXPECT_EQ(static_cast<bool>(result.valid), length > lastLine) << length;
    EXPECT_EQ(result.valid.Text().empty(), length > lastLine) << length;
  }
}

TEST_F(ConfigurationFileDamage, WhatWasLoadedUpToTheDamageStaysLoadedAndTheRestIsUntouched) {
  support::FillEverySlot(m_configuration, m_folder, 3);
  const auto boot = support::WriteSoundFile(m_folder / "new boot.lsu", support::SomeSamples(60));
  const LoadResult result = Load("BOOT\r\n" + boot.string() + "\r\n 44\r\nPWRON\r\n\r\n 100\r\nOFF\r\n");
  EXPECT_FALSE(result.valid);
  EXPECT_EQ(m_configuration.FileAt(SlotKind::Boot).FileNameAndPath(), boot);
  EXPECT_EQ(m_configuration.GetVolume(SlotKind::Boot, 1), 44);
  EXPECT_EQ(m_configuration.Count(SlotKind::PwrOn), 0);
  EXPECT_EQ(m_configuration.FileAt(SlotKind::PwrOff).FileNameAndPath(), m_folder / "pwroff.lsu");
  EXPECT_EQ(m_configuration.NrOfMt(), 3);
  EXPECT_EQ(m_view.Calls(), (std::vector<std::string>{"empty boot", "show boot 1 new boot.lsu", "memory", "empty pwron",
                                                      "memory", "memory"}));
}

TEST_F(ConfigurationFileDamage, AFileRejectedAtItsFirstLineChangesNothing) {
  support::FillEverySlot(m_configuration, m_folder);
  const auto total = m_configuration.TotalNrOfSamples();
  EXPECT_FALSE(Load("PWRON\r\n").valid);
  EXPECT_EQ(m_configuration.TotalNrOfSamples(), total);
  EXPECT_EQ(m_configuration.CheckIntegrity(), 0);
}

TEST_F(ConfigurationFileDamage, AListLineWithoutAGoodCountDoesNotEmptyTheList) {
  support::FillEverySlot(m_configuration, m_folder, 2);
  EXPECT_FALSE(Load(kSingles + "MOTION-13\r\n").valid);
  EXPECT_EQ(m_configuration.NrOfMt(), 2);
}

TEST_F(ConfigurationFileDamage, FailuresBeforeTheDamageAreRememberedButTheMessageIsOne) {
  const LoadResult result = Load("BOOT\r\n" + (m_folder / "none.lsu").string() + "\r\n 100\r\n");
  EXPECT_FALSE(result.valid);
  EXPECT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(result.Message(), "Not a valid configuration file");
}

TEST_F(ConfigurationFileDamage, WhatCannotBeOpenedAsAConfigurationIsNamed) {
  fs::create_directory(m_folder / "folder.lscfg");
  std::vector<fs::path> paths{m_folder / "none.lscfg", m_folder / "folder.lscfg", fs::path()};
#ifdef __linux__
  fs::create_symlink("/dev/zero", m_folder / "device.lscfg");
  fs::create_symlink("/proc/self/mem", m_folder / "unreadable.lscfg");
  paths.push_back(m_folder / "device.lscfg");
  paths.push_back(m_folder / "unreadable.lscfg");
#endif
  for (const fs::path& path : paths) {
    const LoadResult result = ConfigurationFile::Load(path, m_configuration, m_view);
    EXPECT_FALSE(result.valid) << path;
    EXPECT_EQ(result.Message(), "Not a valid configuration file") << path;
    EXPECT_NE(result.valid.Text().find(path.string() + ": "), std::string::npos) << result.valid.Text();
  }
}

TEST_F(ConfigurationFileDamage, LargeAndBinaryFilesAreNotValid) {
  const std::size_t mebibyte = 1 << 20;
  const std::string whole = kSingles + "MOTION-0\r\nIMPACT-0\r\nLOCKUP-0\r\n";
  EXPECT_TRUE(Load(whole + std::string(mebibyte - whole.size(), ' ')).valid);
  EXPECT_FALSE(Load(whole + std::string(mebibyte - whole.size() + 1, ' ')).valid);
  EXPECT_FALSE(Load(std::string(3 * mebibyte, 'x')).valid);
  EXPECT_FALSE(Load(std::string(mebibyte / 2, '\n')).valid);
  EXPECT_FALSE(Load(std::string("BOOT\r\n\0.lsu\r\n", 13) + whole.substr(6)).valid);
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += static_cast<char>(i * 7 + i / 256);
  EXPECT_FALSE(Load(bytes).valid);
}

}  // namespace
}  // namespace kestrin::core::sound
