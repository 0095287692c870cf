// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/SampleReader.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using support::ReadBytes;
using support::SomeSamples;
using support::TemporaryFolder;
using support::WriteSoundFile;

TEST(LSU_SoundFileWav, TheHeaderIsExactlyThese44Bytes) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(1000))));
  ASSERT_TRUE(file.WriteWav(folder / "temp.wav"));
  const std::string expected(
      "RIFF\xF4\x07\x00\x00"  // 2036 = 2 * 1000 + 36
      "WAVEfmt \x10\x00\x00\x00"
      "\x01\x00\x01\x00"
      "\x80\xBB\x00\x00"  // 48000
      "\x00\x77\x01\x00"  // 96000
      "\x02\x00\x10\x00"
      "data\xD0\x07\x00\x00",  // 2000
      44);
  EXPECT_EQ(ReadBytes(folder / "temp.wav").substr(0, 44), expected);
}

TEST(LSU_SoundFileWav, TheDataIsTheFileFromByteFourOnWhateverTheVolume) {
  const TemporaryFolder folder;
  for (const std::size_t count :
       {std::size_t{49}, std::size_t{50}, SampleReader::kBlock, 2 * SampleReader::kBlock + 1}) {
    const auto path = WriteSoundFile(folder / "a.lsu", SomeSamples(count, 32767));
    LSU_SoundFile file;
    ASSERT_TRUE(file.ReadFile(path));
    file.SetVolume(7);
    EXPECT_TRUE(file.WriteWav(folder / "temp.wav"));
    const std::string wav = ReadBytes(folder / "temp.wav");
    EXPECT_EQ(wav.size(), 44 + 2 * count);
    EXPECT_EQ(wav.substr(44), ReadBytes(path).substr(4));
  }
}

TEST(LSU_SoundFileWav, HalfASampleAtTheEndIsNotCopied) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(support::WriteBytes(folder / "a.lsu", support::SoundFileBytes(SomeSamples(50)) + "x")));
  EXPECT_TRUE(file.WriteWav(folder / "temp.wav"));
  EXPECT_EQ(fs::file_size(folder / "temp.wav"), 144U);
}

TEST(LSU_SoundFileWav, AFileOfThatNameIsReplaced) {
  const TemporaryFolder folder;
  support::WriteBytes(folder / "temp.wav", std::string(5000, 'x'));
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(49))));
  EXPECT_TRUE(file.WriteWav(folder / "temp.wav"));
  EXPECT_EQ(fs::file_size(folder / "temp.wav"), 142U);
}

TEST(LSU_SoundFileWav, OfASoundThatIsGoneOrShorterNoFileIsLeft) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(100))));
  for (const bool gone : {false, true}) {
    WriteSoundFile(folder / "a.lsu", SomeSamples(99));
    if (gone) fs::remove(folder / "a.lsu");
    support::WriteBytes(folder / "temp.wav", "an older sound");
    EXPECT_FALSE(file.WriteWav(folder / "temp.wav"));
    EXPECT_FALSE(fs::exists(folder / "temp.wav"));
  }
}

TEST(LSU_SoundFileWav, WithoutASoundNothingIsWritten) {
  const TemporaryFolder folder;
  EXPECT_FALSE(LSU_SoundFile().WriteWav(folder / "temp.wav"));
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(LSU_SoundFileWav, WhereNothingCanBeWrittenTheResultIsFalse) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(49))));
  EXPECT_FALSE(file.WriteWav(folder / "no such folder" / "temp.wav"));
  fs::create_directory(folder / "temp.wav");
  EXPECT_FALSE(file.WriteWav(folder / "temp.wav"));
  EXPECT_TRUE(fs::is_directory(folder / "temp.wav"));
}

TEST(LSU_SoundFileWav, SavedItIsTheSameFile) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(3 * SampleReader::kBlock + 1))));
  ASSERT_TRUE(file.WriteWav(folder / "temp.wav"));
  support::RecordingDisk disk;
  int turns = 0;
  EXPECT_EQ(file.SaveWav(folder / "mine.wav", disk, [&] { ++turns; }).Text(), "");
  EXPECT_EQ(ReadBytes(folder / "mine.wav"), ReadBytes(folder / "temp.wav"));
  EXPECT_EQ(turns, 4);
  // What the person keeps is on the disk.
  EXPECT_EQ(disk.flushed.size(), 3U);
}

TEST(LSU_SoundFileWav, WhatCannotBeSavedLeavesWhatWasThere) {
  const TemporaryFolder folder;
  const auto sound = WriteSoundFile(folder / "a.lsu", SomeSamples(100));
  const auto older = support::WriteBytes(folder / "mine.wav", "an older sound");
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(sound));
  support::RecordingDisk disk;
  EXPECT_THROW((void)file.SaveWav(older, disk, [] { throw std::runtime_error("enough"); }), std::runtime_error);
  EXPECT_EQ(ReadBytes(older), "an older sound");

  EXPECT_EQ(file.SaveWav(sound, disk).Text(),
            "\"" + sound.string() + "\" is the sound itself. Choose another name for its copy.");
  WriteSoundFile(sound, SomeSamples(99));
  EXPECT_EQ(file.SaveWav(older, disk).Text(), "\"" + older.string() + "\" could not be written: \"" + sound.string() +
                                                  "\" changed while it was read. Try again.");
  EXPECT_EQ(ReadBytes(older), "an older sound");
  EXPECT_EQ(LSU_SoundFile().SaveWav(older, disk).Text(),
            "\"" + older.string() + "\" could not be written: there is no sound to write");
  EXPECT_EQ(ReadBytes(older), "an older sound");
  const fs::directory_iterator files(folder.Path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 2);
}

TEST(LSU_SoundFileWav, TheSoundItselfIsNeverOverwritten) {
  const TemporaryFolder folder;
  LSU_SoundFile file;
  ASSERT_TRUE(file.ReadFile(WriteSoundFile(folder / "a.lsu", SomeSamples(49))));
  const std::string before = ReadBytes(folder / "a.lsu");
  EXPECT_FALSE(file.WriteWav(folder / "." / "a.lsu"));
  EXPECT_EQ(ReadBytes(folder / "a.lsu"), before);
}

}  // namespace
}  // namespace kestrin::core::sound
