// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <csignal>
#include <fstream>

#include "core/sound/LSU_SoundFile.h"
#include "platform/archive/ZipArchives.h"
#include "support/KestrinctlTest.h"
#include "support/RecordingDisk.h"
#include "support/SoundFiles.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

class SoundImportTest : public KestrinctlTest {
 protected:
  std::string Wav(const std::string& name, double peak = 0.5, std::size_t samples = 24000) {
    return WriteSound(m_folder / name, "wav", Tone(440, peak, samples)).string();
  }
  std::vector<std::string> Made() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_out)) names.push_back(entry.path().filename().string());
    return names;
  }
  static int Usable(const fs::path& folder) {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(folder))
      count += core::sound::LSU_SoundFile().ReadFile(entry) ? 1 : 0;
    return count;
  }

  fs::path m_out = m_folder / "for the board";
  std::string m_outText = m_out.string();
};

TEST_F(SoundImportTest, MakesSoundsOfEveryKind) {
  std::vector<double> stereo;
  for (const double sample : Tone(440, 0.5, 44100, 44100)) stereo.insert(stereo.end(), {sample, sample});
  const std::string hum = WriteSound(m_folder / "hum.flac", "s24.flac", stereo, 44100, 2).string();
  const std::string clash = WriteSound(m_folder / "clash.mp3", "mp3", Tone(440, 0.5, 24000)).string();
  const Json document = RunJson(0, {"sound", "import", hum, clash, "--output", m_outText});
  const Json& first = document["files"][0];
  EXPECT_EQ(Keys(document), (std::vector<std::string>{"files", "imported", "failed"}));
  EXPECT_EQ(Keys(first), (std::vector<std::string>{"source", "path", "reason", "rate", "channels", "seconds", "samples",
                                                   "truePeak", "loudness", "changes"}));
  EXPECT_EQ(document["imported"], 2);
  EXPECT_EQ(document["failed"], 0);
  EXPECT_EQ(first["source"], hum);
  EXPECT_EQ(first["path"], (m_out / "hum.lsu").string());
  EXPECT_EQ(first["reason"], "");
  EXPECT_EQ(first["rate"], 44100);
  EXPECT_EQ(first["channels"], 2);
  EXPECT_EQ(first["seconds"], 1.0);
  EXPECT_EQ(first["samples"], 48000);
  EXPECT_NEAR(first["truePeak"].get<double>(), -6.02, 0.05);
  EXPECT_NEAR(first["loudness"].get<double>(), -6.02, 1);
  EXPECT_EQ(first["changes"], (Json{"stereo to mono", "44.1 to 48 kHz", "24 to 16 bit"}));
  EXPECT_EQ(document["files"][1]["changes"], Json{"MP3 unpacked"});
  EXPECT_THAT(Made(), UnorderedElementsAre("hum.lsu", "clash.lsu"));
  EXPECT_EQ(RunJson(0, {"sound", "info", (m_out / "hum.lsu").string()})["files"][0]["samples"], 48000);
}

TEST_F(SoundImportTest, ASoundOfTheBoardIsCopiedAsItIs) {
  const std::filesystem::path folder = m_folder / "mixed";
  std::filesystem::create_directory(folder);
  const std::string bytes = ReadBytes(WriteSoundFile(folder / "boot.lsu", SomeSamples(5000)));
  static_cast<void>(WriteSound(folder / "hum.wav", "wav", Tone(440, 0.5, 24000)));
  const Json document = RunJson(0, {"sound", "import", folder.string(), "--output", m_outText});
  EXPECT_EQ(document["imported"], 2);
  EXPECT_EQ(document["files"][0]["changes"], Json::array());
  EXPECT_EQ(ReadBytes(m_out / "boot.lsu"), bytes);
}

TEST_F(SoundImportTest, ABadFileEndsNothing) {
  const std::string bad = WriteBytes(m_folder / "diary.wav", "Dear diary").string();
  const std::string why = "This is no sound that can be read here. Save it as WAV, FLAC, Ogg or MP3 and import that.";
  const Arguments arguments{"sound", "import", Wav("a.wav"), bad, Wav("b.wav"), "--output", m_outText};
  const Json document = RunJson(1, arguments);
  EXPECT_EQ(document["imported"], 2);
  EXPECT_EQ(document["failed"], 1);
  EXPECT_EQ(document["files"][1]["path"], "");
  EXPECT_EQ(document["files"][1]["reason"], why);
  EXPECT_EQ(document["files"][1]["loudness"], nullptr);
  EXPECT_THAT(Made(), UnorderedElementsAre("a.lsu", "b.lsu"));
  const Finished finished = Run(arguments);
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.errors, "kestrinctl: \"" + bad + "\": " + why + "\n");
}

TEST_F(SoundImportTest, PeopleGetATableAndACount) {
  const std::string source = Wav("a.wav");
  const Finished finished = Run({"--quiet", "sound", "import", source, "--output", m_outText});
  const std::string gap(source.size() - 6, ' ');
  EXPECT_EQ(finished.out, "source" + gap + "  sound  seconds  LUFS  peak dB  changes\n" + source +
                              "  a.lsu      0.5  -6.7     -6.0  nothing, fits as it is\n1 of 1 sound imported into \"" +
                              m_outText + "\"\n");
  EXPECT_EQ(finished.errors, "");
}

TEST_F(SoundImportTest, WhatIsToBeDoneIsChosen) {
  std::vector<double> padded(48000, 0.0);
  const std::vector<double> tone = Tone(440, 0.5, 48000);
  padded.insert(padded.end(), tone.begin(), tone.end());
  const std::string source = WriteSound(m_folder / "hum.wav", "wav", padded).string();
  const auto run = [&](const Arguments& options) {
    fs::remove_all(m_out);
    Arguments arguments{"sound", "import", source, "--output", m_outText};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunJson(0, arguments)["files"][0];
  };
  EXPECT_EQ(run({})["changes"], Json::array());
  EXPECT_EQ(run({"--level", "none"})["changes"], Json::array());
  EXPECT_EQ(run({"--trim"})["changes"], Json{"1 s silence off"});
  EXPECT_EQ(run({"--trim", "--loop"})["changes"], (Json{"ends joined to a loop", "1 s silence off"}));
  const Json levelled = run({"--trim", "--level", "-14"});
  EXPECT_NEAR(levelled["loudness"].get<double>(), -14, 0.1);
  EXPECT_EQ(levelled["changes"], (Json{"7 dB quieter", "1 s silence off"}));
}

TEST_F(SoundImportTest, ALevelThatIsNoneIsWrongUsage) {
  for (const std::string level : {"loud", "3", "-61", "-16dB", "nan", "-inf", "0x10"}) {
    const Finished finished = Run({"sound", "import", Wav("a.wav"), "--output", m_outText, "--level", level});
    EXPECT_EQ(finished.code, 2) << level;
    EXPECT_EQ(finished.errors, "kestrinctl: \"" + level +
                                   "\" is no loudness. Give --level a number of LUFS from -60 to 0, say -16, or "
                                   "\"none\".\n");
    EXPECT_FALSE(fs::exists(m_out));
  }
  EXPECT_EQ(Run({"sound", "import", Wav("a.wav")}).code, 2);
  EXPECT_EQ(Run({"sound", "import", "--output", m_outText}).code, 2);
}

TEST_F(SoundImportTest, NothingOfThePersonsIsTouched) {
  const std::string source = Wav("a.wav");
  const std::string before = ReadBytes(source);
  fs::create_directory(m_out);
  WriteBytes(m_out / "A.LSU", "older");
  EXPECT_EQ(RunJson(0, {"sound", "import", source, source, "--output", m_outText})["imported"], 2);
  EXPECT_THAT(Made(), UnorderedElementsAre("A.LSU", "a 2.lsu", "a 3.lsu"));
  EXPECT_EQ(ReadBytes(m_out / "A.LSU"), "older");
  EXPECT_EQ(ReadBytes(source), before);
}

TEST_F(SoundImportTest, FoldersAndZipFilesAreSearched) {
  fs::create_directories(m_folder / "font" / "more");
  static_cast<void>(Wav("font/b.wav"));
  static_cast<void>(Wav("font/more/c.wav"));
  RecordingDisk disk;
  platform::archive::ZipArchives archives(disk);
  const fs::path zip = m_folder / "set.zip";
  ASSERT_TRUE(archives.Write(zip, {{"deep/d.wav", Wav("d.wav"), ""}, {"bad.wav", {}, "nothing of the kind"}}, {}));
  const Json document =
      RunJson(1, {"sound", "import", (m_folder / "font").string(), zip.string(), "--output", m_outText});
  EXPECT_EQ(document["imported"], 3);
  EXPECT_EQ(document["failed"], 1);
  EXPECT_THAT(Made(), UnorderedElementsAre("b.lsu", "c.lsu", "d.lsu"));
}

TEST_F(SoundImportTest, AFolderThatCannotBeMadeIsTold) {
  const std::string file = WriteBytes(m_folder / "file", "mine").string();
  const Finished finished = Run({"sound", "import", Wav("a.wav"), "--output", file});
  EXPECT_EQ(finished.code, 1);
  EXPECT_THAT(finished.errors, HasSubstr("The folder \"" + file + "\" cannot be made: "));
  EXPECT_EQ(ReadBytes(file), "mine");
}

TEST_F(SoundImportTest, AFolderThatWasMadeForNothingGoesAgain) {
  EXPECT_EQ(Run({"sound", "import", WriteBytes(m_folder / "x.wav", "x").string(), "--output", m_outText}).code, 1);
  EXPECT_FALSE(fs::exists(m_out));
}

TEST_F(SoundImportTest, TwoAtOnceNeverTakeEachOthersNames) {
  Arguments arguments{"sound", "import"};
  for (int i = 0; i < 12; ++i) arguments.push_back(Wav("s" + std::to_string(i % 3) + ".wav", 0.05 * (i + 1), 4800));
  arguments.insert(arguments.end(), {"--output", m_outText});
  const auto one = Start(arguments);
  const auto other = Start(arguments);
  EXPECT_EQ(one->Wait().code, 0);
  EXPECT_EQ(other->Wait().code, 0);
  EXPECT_EQ(Made().size(), 24U);
  EXPECT_EQ(Usable(m_out), 24);
}

#ifndef _WIN32
TEST_F(SoundImportTest, OnAFullDiskNothingHalfStays) {
  const Finished finished =
      Run({"sound", "import", Wav("a.wav"), Wav("b.wav", 0.5, 1000), "--output", m_outText}, {.largestFile = 10000});
  EXPECT_EQ(finished.code, 1);
  EXPECT_THAT(finished.errors, HasSubstr("File too large"));
  EXPECT_THAT(finished.errors, HasSubstr("Make room on the disk"));
  EXPECT_THAT(Made(), UnorderedElementsAre("b.lsu"));
}

TEST_F(SoundImportTest, CtrlCLeavesNothingHalf) {
  // Two gigabytes of silence: nobody is through with them before the signal comes.
  const fs::path huge = m_folder / "huge.wav";
  fs::copy_file(Wav("head.wav", 0.5, 100), huge);
  {
    std::fstream file(huge, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(40).write("\x00\x00\x00\x70", 4);
  }
  fs::resize_file(huge, 0x70000000U + 44);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    fs::remove_all(m_out);
    const auto import = Start({"sound", "import", Wav("a.wav"), huge.string(), huge.string(), "--output", m_outText});
    import->WaitForOutput("Importing ...\n");
    import->Signal(signal);
    const Finished finished = import->Wait();
    EXPECT_EQ(finished.code, 128 + signal);
    EXPECT_EQ(finished.errors, "kestrinctl: Stopped. The sounds that were imported until then are complete.\n");
    if (!fs::exists(m_out)) continue;
    EXPECT_THAT(Made(), UnorderedElementsAre("a.lsu"));
    EXPECT_EQ(Usable(m_out), 1);
  }
}
#endif

}  // namespace
}  // namespace kestrin::support
