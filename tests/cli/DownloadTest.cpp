// SPDX-License-Identifier: MIT
#include <cstdlib>

#include "support/KestrinctlTest.h"
#include "support/ReferenceCoder.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

using DownloadTest = KestrinctlTest;

std::size_t Big24(const std::string& bytes, std::size_t at) {
  std::size_t number = 0;
  for (std::size_t i = 0; i < 3; ++i) number = number * 256 + static_cast<unsigned char>(bytes[at + i]);
  return number;
}

TEST_F(DownloadTest, ASuccessfulOneIsReported) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  const Json document = RunOnBoard(0, {"download", set.configuration.string()});
  const std::vector<std::string> keys{"outcome", "information", "seconds", "bytes"};
  EXPECT_EQ(Keys(document), keys);
  EXPECT_EQ(document["outcome"], "success");
  EXPECT_EQ(document["information"], "SUCCESS !");
  EXPECT_GT(document["seconds"], 0.0);
  EXPECT_EQ(document["bytes"], set.CodedBytes() + kTableBytes);
  EXPECT_EQ(BoardState()["resets"], 1);
  EXPECT_EQ(BoardState()["byes"], 1);
  EXPECT_EQ(KeptFiles(), 0U);
}

TEST_F(DownloadTest, ASuccessfulOneIsKeptAsASetThatOpens) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  static_cast<void>(RunOnBoard(0, {"download", set.configuration.string()}));
  static_cast<void>(RunOnBoard(1, {"download", set.configuration.string()}, "fault=unplug:20"));
  std::vector<std::filesystem::path> entries;
  for (const auto& file : std::filesystem::recursive_directory_iterator(m_data))
    if (file.path().extension() == ".lscfg") entries.push_back(file.path());
  ASSERT_EQ(entries.size(), 1U) << "of a download that failed, or none";
  EXPECT_EQ(entries[0].parent_path().filename(), "on-the-board");
  EXPECT_EQ(RunOnBoard(0, {"config", "diff", entries[0].string(), set.configuration.string()})["same"], true);
  const std::string text = ReadBytes(entries[0]);
  EXPECT_NE(text.find("\nboard 4B535401\n"), std::string::npos);
  // As the factory sets them, in command order.
  EXPECT_NE(text.find("\nparameters 180 2 10 50 125 13\n"), std::string::npos) << text;
}

// A board finds its sounds by the table at address 12 and plays magnitudes of ten bits, the loudest sample of a file
// being 999 at 100 %. The first sample of a pair loses what lies behind the point and borrows from its neighbour what
// is left over; the second one's two lowest bits give way to that.
TEST_F(DownloadTest, WhatTheFlashHoldsAreTheSoundsWithinTheFormatsSteps) {
  constexpr double kFirstOfPair = 1.5;
  constexpr double kSecondOfPair = 3.5;
  const SoundSet set = WriteSoundSet(m_folder.Path());
  static_cast<void>(RunOnBoard(0, {"download", set.configuration.string()}));
  const std::string flash = Flash();
  ASSERT_GE(flash.size(), 512U);
  EXPECT_EQ(flash.substr(0, 12), std::string(12, '\xFF'));
  EXPECT_EQ(flash.substr(12, 4), std::string("\x02\x01\x01\x00", 4));

  for (std::size_t file = 0; file < set.sounds.size(); ++file) {
    const SoundSet::Sound& sound = set.sounds[file];
    const std::size_t entry = 16 + 6 * file;
    const std::size_t start = Big24(flash, entry);
    const std::size_t length = Big24(flash, entry + 3);
    ASSERT_EQ(length, static_cast<std::size_t>(sound.CodedBytes()));
    ASSERT_LE(start + length, flash.size());
    const std::vector<std::uint8_t> stream(flash.begin() + static_cast<std::ptrdiff_t>(start),
                                           flash.begin() + static_cast<std::ptrdiff_t>(start + length));
    const std::vector<int> played = DecodeStream(stream);
    EXPECT_EQ(played[0], 0);
    EXPECT_EQ(played[1], 0);
    // The samples from the second one on; an even count loses its last, an odd count has no partner for its last.
    const std::size_t count = (sound.samples.size() - 1) / 2 * 2;
    ASSERT_EQ(played.size(), (sound.samples.size() + 1) / 2 * 2);
    for (std::size_t i = 0; i < count; ++i) {
      const double wanted = sound.samples[i + 1] * 999.0 / sound.Peak() * sound.volume / 100;
      ASSERT_NEAR(played[i + 2], wanted, i % 2 == 0 ? kFirstOfPair : kSecondOfPair)
          << sound.path << " sample " << i + 1;
    }
  }
}

TEST_F(DownloadTest, TheDetectionParametersOutliveTheErase) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionTh", "77", "--ImpactTm", "100"}));
  const Json before = BoardState()["accelerometer"];
  static_cast<void>(RunOnBoard(0, {"download", set.configuration.string()}));
  EXPECT_EQ(BoardState()["accelerometer"], before);
}

TEST_F(DownloadTest, TheSecondSetReplacesTheFirst) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  static_cast<void>(RunOnBoard(0, {"download", set.configuration.string()}));
  const std::string first = Flash();
  WriteSoundFile(set.sounds[3].path, SomeSamples(3001, 800, 99));
  static_cast<void>(RunOnBoard(0, {"download", set.configuration.string()}));
  EXPECT_NE(Flash(), first);
  static_cast<void>(RunOnBoard(0, {"verify", set.configuration.string()}));
}

TEST_F(DownloadTest, PeopleReadThePhasesAndWhatTheBoardHolds) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  const Finished finished = Run({"--board", Board(), "download", set.configuration.string()});
  EXPECT_EQ(finished.code, 0);
  EXPECT_EQ(finished.out,
            "Erasing flash memory ...\nCoding data...\nDownloading...\nSUCCESS !\n"
            "The board holds the new sounds and restarts with them.\n");
  EXPECT_EQ(finished.errors, "");
}

TEST_F(DownloadTest, QuietShowsNoPhases) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  const Finished text = Run({"--quiet", "--board", Board(), "download", set.configuration.string()});
  EXPECT_EQ(text.out, "SUCCESS !\nThe board holds the new sounds and restarts with them.\n");
  const Finished json = Run({"--quiet", "--json", "--board", Board(), "download", set.configuration.string()});
  EXPECT_EQ(Json::parse(json.out)["outcome"], "success");
  EXPECT_EQ(json.errors, "");
}

TEST_F(DownloadTest, AMissingPieceIsRefusedBeforeAnythingIsSent) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  static_cast<void>(RunOnBoard(0, {"download", set.configuration.string()}));
  const std::string flash = Flash();
  std::filesystem::remove(set.sounds[3].path);
  const Json document = RunOnBoard(1, {"download", set.configuration.string()});
  EXPECT_EQ(document["outcome"], "incomplete");
  EXPECT_EQ(document["information"], "Idle file is missing");
  EXPECT_EQ(document["bytes"], 0);
  EXPECT_EQ(Flash(), flash);
  const Finished finished = Run({"--board", Board(), "download", set.configuration.string()});
  EXPECT_EQ(finished.errors, "kestrinctl: The following files could not be found or are not valid:\n" +
                                 set.sounds[3].path.string() + "\nIdle file is missing\n");
}

TEST_F(DownloadTest, ASetThatLostOneOfItsSoundsIsRefusedBeforeAnythingIsSent) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  // One of its two motion sounds; the other is enough for a complete set.
  const std::string gone = set.sounds[4].path.string();
  std::filesystem::remove(gone);
  const Json document = RunOnBoard(1, {"download", set.configuration.string()});
  EXPECT_EQ(document["outcome"], "incomplete");
  EXPECT_EQ(document["information"], "The following files could not be found or are not valid:\n" + gone);
  EXPECT_FALSE(std::filesystem::exists(m_board));
  EXPECT_EQ(Run({"config", "map", set.configuration.string()}).code, 1);
  EXPECT_EQ(Run({"--board", Board(), "verify", set.configuration.string()}).code, 1);
}

TEST_F(DownloadTest, AFileThatIsTooLoudIsRefusedBeforeAnythingIsSent) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  std::string text = ReadBytes(set.configuration);
  text.replace(text.find("\r\n 102\r\n"), 8, "\r\n 103\r\n");
  WriteBytes(set.configuration, text);
  const Json document = RunOnBoard(1, {"download", set.configuration.string()});
  EXPECT_EQ(document["outcome"], "incomplete");
  const std::string information = document["information"];
  EXPECT_NE(information.find("impact 1.lsu"), std::string::npos) << information;
  EXPECT_EQ(Flash(), "");
}

TEST_F(DownloadTest, ASetLargerThanTheBoardIsRefused) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  std::vector<std::int16_t> samples(2793120);
  samples[1000] = 20000;
  WriteSoundFile(set.sounds[3].path, samples);
  const Json document = RunOnBoard(1, {"download", set.configuration.string()});
  EXPECT_EQ(document["outcome"], "too-large");
  EXPECT_NE(document["information"], "");
  EXPECT_EQ(Flash(), "");
  // The larger model takes it.
  EXPECT_EQ(RunJson(0, {"--board", "sim:id=64", "download", set.configuration.string()})["outcome"], "success");
}

TEST_F(DownloadTest, AnLedDriverTakesNoSounds) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  const std::vector<Arguments> commands{{"download", set.configuration.string()},
                                        {"verify", set.configuration.string()},
                                        {"accel", "get"},
                                        {"accel", "set", "--MotionTh", "3"},
                                        {"accel", "defaults"},
                                        {"accel", "restore"}};
  for (Arguments command : commands) {
    const Json document = RunOnBoard(1, command, "id=200");
    const std::string error = document.value("error", "");
    EXPECT_NE(error.find("LED driver"), std::string::npos) << command[0];
  }
}

TEST_F(DownloadTest, WithoutAPlaceForTheParametersNothingIsSent) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  m_environment = {"HOME", "XDG_DATA_HOME", "APPDATA"};
  const Json document = RunOnBoard(1, {"download", set.configuration.string()});
  EXPECT_EQ(document["outcome"], "incomplete");
  const std::string information = document["information"];
#ifdef _WIN32
  EXPECT_NE(information.find("APPDATA"), std::string::npos) << information;
#else
  EXPECT_NE(information.find("HOME"), std::string::npos) << information;
#endif
  EXPECT_EQ(Flash(), "");
  EXPECT_EQ(RunOnBoard(0, {"accel", "get"})["MotionTh"], 180) << "reading needs no such place";

  const std::string inTheWay = WriteBytes(m_folder / "in the way", "x").string();
  m_environment = {"HOME", "XDG_DATA_HOME=" + inTheWay, "APPDATA=" + inTheWay};
  EXPECT_EQ(RunOnBoard(1, {"download", set.configuration.string()})["outcome"], "incomplete");
  EXPECT_EQ(Flash(), "");
}

}  // namespace
}  // namespace kestrin::support
