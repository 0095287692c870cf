// SPDX-License-Identifier: MIT
#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "support/KestrinctlTest.h"
#include "support/ReferenceCoder.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

class SoundTest : public KestrinctlTest {
 protected:
  static unsigned Sum(std::span<const std::uint8_t> bytes) {
    unsigned sum = 0;
    for (const std::uint8_t byte : bytes) sum = (sum + byte) % 65536;
    return sum;
  }

  std::vector<std::int16_t> m_samples = SomeSamples(12001, 15000, 7);
  std::string m_file = WriteSoundFile(m_folder / "hum.lsu", m_samples).string();
};

TEST_F(SoundTest, InfoMeasuresEveryFile) {
  const std::vector<std::int16_t> shortest = SomeSamples(49, 32767, 3);
  const std::string other = WriteSoundFile(m_folder / "short.lsu", shortest).string();
  const Json document = RunJson(0, {"sound", "info", m_file, other});
  const Json expected = {{"files",
                          {{{"path", m_file},
                            {"valid", true},
                            {"samples", 12001},
                            {"seconds", 12001 / 48000.0},
                            {"peak", 15000},
                            {"codedBytes", 18003},
                            {"checksum", Sum(ReferenceStream(m_samples, 15000, 100))}},
                           {{"path", other},
                            {"valid", true},
                            {"samples", 49},
                            {"seconds", 49 / 48000.0},
                            {"peak", 32767},
                            {"codedBytes", 75},
                            {"checksum", Sum(ReferenceStream(shortest, 32767, 100))}}}}};
  EXPECT_EQ(document, expected);
  EXPECT_EQ(Keys(document["files"][0]), Keys(expected["files"][0]));
}

TEST_F(SoundTest, InfoCodesAtTheVolumeThatIsGiven) {
  const Json document = RunJson(0, {"sound", "info", m_file, "--volume", "37"});
  EXPECT_EQ(document["files"][0]["checksum"], Sum(ReferenceStream(m_samples, 15000, 37)));
}

TEST_F(SoundTest, OfAFileThatIsNotValidOnlyThatIsSaid) {
  const std::string silent = WriteSoundFile(m_folder / "silent.lsu", std::vector<std::int16_t>(100, 0)).string();
  const Json document = RunJson(1, {"sound", "info", silent, m_file, "nowhere.lsu"});
  ASSERT_EQ(document["files"].size(), 3U);
  const Json notValid = {{"path", silent}, {"valid", false}};
  EXPECT_EQ(document["files"][0], notValid);
  EXPECT_EQ(document["files"][1]["valid"], true);
  EXPECT_EQ(document["files"][2]["valid"], false);
  EXPECT_EQ(Keys(document["files"][2]), Keys(notValid));
}

TEST_F(SoundTest, PeopleGetAlignedColumns) {
  const Finished finished = Run({"sound", "info", m_file});
  EXPECT_EQ(finished.code, 0);
  const std::size_t second = finished.out.find('\n') + 1;
  const std::string heading = finished.out.substr(0, second - 1);
  const std::string line = finished.out.substr(second, finished.out.find('\n', second) - second);
  EXPECT_EQ(line.rfind(m_file, 0), 0U);
  EXPECT_EQ(heading.find("samples") + 7, line.find("12001") + 5) << finished.out;
}

TEST_F(SoundTest, AVolumeThatTheFormatCannotHoldFailsWithItsText) {
  const Json document = RunJson(1, {"sound", "info", m_file, "--volume", "200"});
  EXPECT_EQ(document["files"][0]["samples"], 12001);
  EXPECT_EQ(document["files"][0]["codedBytes"], nullptr);
  EXPECT_EQ(document["files"][0]["checksum"], nullptr);
  const std::string error = Run({"sound", "info", m_file, "--volume", "200"}).errors;
  EXPECT_NE(error.find("hum.lsu"), std::string::npos) << error;
  EXPECT_NE(error.find("too loud at 200 %"), std::string::npos) << error;
  EXPECT_EQ(Run({"sound", "code", m_file, "--volume", "200", "--output", (m_folder / "out").string()}).code, 1);
  EXPECT_FALSE(std::filesystem::exists(m_folder / "out"));
}

TEST_F(SoundTest, CodeWritesTheStream) {
  const std::filesystem::path out = m_folder / "hum.bin";
  const Json document = RunJson(0, {"sound", "code", m_file, "--volume", "50", "--output", out.string()});
  const std::vector<std::uint8_t> stream = ReferenceStream(m_samples, 15000, 50);
  const Json expected = {{"codedBytes", stream.size()}, {"checksum", Sum(stream)}};
  EXPECT_EQ(document, expected);
  EXPECT_EQ(Keys(document), Keys(expected));
  EXPECT_EQ(ReadBytes(out), std::string(stream.begin(), stream.end()));
}

TEST_F(SoundTest, CodeWritesTheWholeFileOrNone) {
  const std::string out = (m_folder / "no such folder" / "hum.bin").string();
  const Json document = RunJson(1, {"sound", "code", m_file, "--output", out});
  EXPECT_EQ(Keys(document), std::vector<std::string>{"error"});
  EXPECT_EQ(RunJson(1, {"sound", "code", "nowhere.lsu", "--output", (m_folder / "x").string()})["error"],
            "\"nowhere.lsu\" is not there. Check its name and its folder.");
  EXPECT_FALSE(std::filesystem::exists(m_folder / "x"));
}

TEST_F(SoundTest, WavHoldsTheSamplesAsTheyStandInTheFile) {
  const std::filesystem::path out = m_folder / "hum.wav";
  const Json document = RunJson(0, {"sound", "wav", m_file, "--output", out.string()});
  const Json expected = {{"samples", 12001}};
  EXPECT_EQ(document, expected);
  const std::string wav = ReadBytes(out);
  ASSERT_EQ(wav.size(), 44U + 2 * 12001);
  EXPECT_EQ(wav.substr(44), ReadBytes(m_file).substr(4));
}

TEST_F(SoundTest, WhatIsWrongWithAFileIsSaidWithTheNextStep) {
  namespace fs = std::filesystem;
  fs::create_directory(m_folder / "folder.lsu");
#ifdef _WIN32
  // Neither has a name in a folder there.
  fs::create_directory(m_folder / "pipe.lsu");
  fs::create_directory(m_folder / "endless.lsu");
#else
  ASSERT_EQ(mkfifo((m_folder / "pipe.lsu").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", m_folder / "endless.lsu");
#endif
  std::vector<std::int16_t> loudEnough(49, 0);
  loudEnough[7] = 1;
  const std::string noFile = " is a folder or a device and no file. Choose a sound file.";
  const std::pair<fs::path, std::string> rows[] = {
      {WriteSoundFile(m_folder / "a.wav", m_samples),
       " is no sound for a board: its name does not end in \".lsu\". Choose one that does."},
      {m_folder / "gone.lsu", " is not there. Check its name and its folder."},
      {m_folder / "folder.lsu", noFile},
      {m_folder / "pipe.lsu", noFile},
      {m_folder / "endless.lsu", noFile},
      {WriteSoundFile(m_folder / "short.lsu", SomeSamples(48)),
       " is too short: a sound has at least 49 samples, a thousandth of a second. Choose a longer one."},
      {WriteSoundFile(m_folder / "silent.lsu", std::vector<std::int16_t>(49, 0)),
       " is silent from its beginning to its end. Choose a sound that can be heard."},
  };
  for (const auto& [path, text] : rows) {
    const std::string why = "\"" + path.string() + "\"" + text;
    const Json expected = {{"error", why}};
    EXPECT_EQ(RunJson(1, {"sound", "code", path.string(), "--output", (m_folder / "out").string()}), expected);
    EXPECT_EQ(RunJson(1, {"sound", "wav", path.string(), "--output", (m_folder / "out").string()}), expected);
    EXPECT_EQ(RunJson(1, {"config", "make", (m_folder / "out").string(), "--boot", path.string()}), expected);
    EXPECT_EQ(RunJson(1, {"config", "make", (m_folder / "out").string(), "--impact", path.string() + ":7"}), expected);
    EXPECT_EQ(Run({"sound", "info", path.string()}).errors, "kestrinctl: " + why + "\n");
    EXPECT_FALSE(fs::exists(m_folder / "out"));
  }
  EXPECT_EQ(Run({"sound", "info", WriteSoundFile(m_folder / "just.lsu", loudEnough).string()}).code, 0);
}

#ifndef _WIN32
// Windows has no limits like these.
TEST_F(SoundTest, OnAFullDiskTheOlderFileStays) {
  const std::string out = WriteBytes(m_folder / "older", "what was there").string();
  const auto entries = [&] {
    const std::filesystem::directory_iterator files(m_folder.Path());
    return std::distance(begin(files), end(files));
  };
  const auto before = entries();
  for (const char* const command : {"wav", "code"}) {
    const Finished finished = Run({"sound", command, m_file, "--output", out}, {.largestFile = 10000});
    EXPECT_EQ(finished.code, 1) << command;
    EXPECT_EQ(finished.errors, "kestrinctl: \"" + out +
                                   "\" could not be written: File too large\nWhat was there before is unchanged. Check "
                                   "that the folder is there and has room, or choose another place with --output.\n");
    EXPECT_EQ(ReadBytes(out), "what was there") << command;
    EXPECT_EQ(entries(), before) << command;
    EXPECT_EQ(Run({"sound", command, m_file, "--output", out}, {.largestFile = 100000}).code, 0) << command;
    EXPECT_NE(ReadBytes(out), "what was there") << command;
    WriteBytes(out, "what was there");
  }
}

// Sanitizers ask for terabytes.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(SoundTest, ASoundOfAnyLengthNeedsLittleMemory) {
  // Of 50,000,000 samples, nearly all of them silence: 75 megabytes coded.
  const std::string large = WriteSoundFile(m_folder / "large.lsu", SomeSamples(100, 20000)).string();
  std::filesystem::resize_file(large, 4 + 2 * std::uintmax_t{50000000});
  const Surroundings little{.memory = std::uint64_t{64} << 20};
  const Finished info = Run({"--json", "sound", "info", large}, little);
  EXPECT_EQ(info.code, 1);
  EXPECT_EQ(info.errors, "kestrinctl: \"" + large + "\" is longer than any board can hold. Choose a shorter sound.\n");
  const Json expected = {{"files",
                          {{{"path", large},
                            {"valid", true},
                            {"samples", 50000000},
                            {"seconds", 50000000 / 48000.0},
                            {"peak", 20000},
                            {"codedBytes", nullptr},
                            {"checksum", nullptr}}}}};
  EXPECT_EQ(Json::parse(info.out), expected);
  EXPECT_EQ(Run({"sound", "wav", large, "--output", "/dev/null"}, little).errors, "");
  EXPECT_EQ(Run({"sound", "code", large, "--output", "/dev/null"}, little).errors, info.errors);
}
#endif
#endif

TEST_F(SoundTest, WavFailsWhereItCannotWrite) {
  EXPECT_EQ(Run({"sound", "wav", m_file, "--output", (m_folder / "none" / "hum.wav").string()}).code, 1);
  EXPECT_EQ(Run({"sound", "wav", "nowhere.lsu", "--output", (m_folder / "hum.wav").string()}).code, 1);
}

TEST_F(SoundTest, TheSoundItselfIsNeverOverwritten) {
  const std::string before = ReadBytes(m_file);
  EXPECT_EQ(Run({"sound", "wav", m_file, "--output", m_file}).code, 2);
  EXPECT_EQ(Run({"sound", "code", m_file, "--output", m_file}).code, 2);
  EXPECT_EQ(ReadBytes(m_file), before);
}

}  // namespace
}  // namespace kestrin::support
