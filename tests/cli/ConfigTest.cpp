// SPDX-License-Identifier: MIT
#include "support/KestrinctlTest.h"
#include "support/ReferenceCoder.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

class ConfigTest : public KestrinctlTest {
 protected:
  [[nodiscard]] std::string Sound(const std::string& name, std::size_t count = 100) const {
    return WriteSoundFile(m_folder / name, SomeSamples(count)).string();
  }
  [[nodiscard]] static Json Entry(const std::string& path, int volume, std::size_t samples) {
    return {{"path", path}, {"volume", volume}, {"samples", samples}};
  }

  std::string m_out = (m_folder / "my set.lscfg").string();
};

TEST_F(ConfigTest, MakeWritesTheFileThatShowReads) {
  const std::string boot = Sound("boot.lsu", 100);
  const std::string on = Sound("on.lsu", 200);
  const std::string off = Sound("off.lsu", 300);
  const std::string idle = Sound("idle.lsu", 400);
  const std::string swing = Sound("swing.lsu", 500);
  const std::string clash = Sound("clash.lsu", 600);
  const std::string lock = Sound("lock.lsu", 700);
  const Json expected = {{"slots",
                          {{"boot", Entry(boot, 100, 100)},
                           {"pwron", Entry(on, 75, 200)},
                           {"pwroff", Entry(off, 100, 300)},
                           {"idle", Entry(idle, 0, 400)},
                           {"motion", Json::array({Entry(swing, 100, 500), Entry(boot, 90, 100)})},
                           {"impact", Json::array({Entry(clash, 32767, 600)})},
                           {"lockup", Json::array({Entry(lock, 100, 700)})}}},
                         {"totalSamples", 100 + 200 + 300 + 400 + 500 + 100 + 600 + 700},
                         {"missing", {{"code", 0}, {"message", ""}}},
                         {"failed", Json::array()}};
  const Json made = RunJson(
      0, {"config", "make", m_out, "--boot", boot, "--pwron", on + ":75", "--pwroff", off, "--idle", idle + ":0",
          "--motion", swing, "--motion", boot + ":90", "--impact", clash + ":32767", "--lockup", lock});
  EXPECT_EQ(made, expected) << made.dump(1);
  EXPECT_EQ(RunJson(0, {"config", "show", m_out}), expected);

  const std::string text = "BOOT\r\n" + boot + "\r\n 100\r\nPWRON\r\n" + on + "\r\n 75\r\nPWROFF\r\n" + off +
                           "\r\n 100\r\nIDLE\r\n" + idle + "\r\n 0\r\nMOTION-2\r\n" + swing + "\r\n 100\r\n" + boot +
                           "\r\n 90\r\nIMPACT-1\r\n" + clash + "\r\n 32767\r\nLOCKUP-1\r\n" + lock + "\r\n 100\r\n";
  EXPECT_EQ(ReadBytes(m_out), text);
}

TEST_F(ConfigTest, AnIncompleteSetIsMadeAndSaysWhatIsMissing) {
  const Json document = RunJson(0, {"config", "make", m_out, "--boot", Sound("boot.lsu")});
  const Json missing = {{"code", 2}, {"message", "Power On file is missing"}};
  EXPECT_EQ(document["missing"], missing);
  EXPECT_EQ(document["slots"]["pwron"]["path"], "");
  EXPECT_EQ(document["slots"]["pwron"]["samples"], 0);
  EXPECT_EQ(document["slots"]["motion"], Json::array());
  const Finished shown = Run({"config", "show", m_out});
  EXPECT_EQ(shown.code, 0);
  EXPECT_NE(shown.out.find("Power On file is missing"), std::string::npos) << shown.out;
  EXPECT_EQ(Run({"config", "make", m_out}).code, 0);
  EXPECT_EQ(RunJson(0, {"config", "show", m_out})["missing"]["code"], 1);
}

TEST_F(ConfigTest, RelativePathsAreMadeWhole) {
  const std::filesystem::path home = std::filesystem::current_path();
  const std::string sound = Sound("boot.lsu");
  const std::string relative = std::filesystem::relative(sound, home).string();
  ASSERT_NE(relative.front(), '/');
  EXPECT_EQ(RunJson(0, {"config", "make", m_out, "--boot", relative + ":60"})["slots"]["boot"], Entry(sound, 60, 100));
}

TEST_F(ConfigTest, AFileThatEndsLikeAVolumeIsTakenAsItIs) {
  // Such a file is no sound, so its refusal tells which path was meant.
  const std::string odd = WriteBytes(m_folder / "boot.lsu:50", "x").string();
  static_cast<void>(Sound("boot.lsu"));
  const Json document = RunJson(1, {"config", "make", m_out, "--boot", odd});
  EXPECT_EQ(document["error"],
            "\"" + odd + "\" is no sound for a board: its name does not end in \".lsu\". Choose one that does.");
  EXPECT_FALSE(std::filesystem::exists(m_out));
}

TEST_F(ConfigTest, AFileThatIsRefusedLeavesNothingWritten) {
  const std::string good = Sound("boot.lsu");
  for (const char* slot : {"--boot", "--pwron", "--pwroff", "--idle", "--motion", "--impact", "--lockup"}) {
    const Json document =
        RunJson(1, {"config", "make", m_out, "--boot", good, slot == std::string("--boot") ? "--idle" : slot,
                    (m_folder / "none.lsu").string()});
    EXPECT_EQ(document["error"],
              "\"" + (m_folder / "none.lsu").string() + "\" is not there. Check its name and its folder.")
        << slot;
    EXPECT_FALSE(std::filesystem::exists(m_out)) << slot;
  }
}

TEST_F(ConfigTest, AListHoldsTwelve) {
  const std::pair<const char*, const char*> lists[] = {{"motion", "Maximum number of Motion files reached"},
                                                       {"impact", "Maximum number of Impact files reached"},
                                                       {"lockup", "Maximum number of Lock-up files reached"}};
  const std::string sound = Sound("sound.lsu");
  for (const auto& [list, message] : lists) {
    Arguments arguments{"config", "make", m_out};
    for (int i = 0; i < 12; ++i) arguments.insert(arguments.end(), {"--" + std::string(list), sound});
    EXPECT_EQ(RunJson(0, arguments)["slots"][list].size(), 12U);
    std::filesystem::remove(m_out);
    arguments.insert(arguments.end(), {"--" + std::string(list), sound});
    const Json expected = {{"error", message}};
    EXPECT_EQ(RunJson(1, arguments), expected);
    EXPECT_FALSE(std::filesystem::exists(m_out));
  }
}

TEST_F(ConfigTest, AVolumeThatNoFileCanHoldIsWrongUsage) {
  const std::string sound = Sound("sound.lsu");
  for (const char* volume : {":32768", ":99999999999"})
    EXPECT_EQ(Run({"config", "make", m_out, "--boot", sound + volume}).code, 2) << volume;
  EXPECT_FALSE(std::filesystem::exists(m_out));
}

TEST_F(ConfigTest, MakeFailsWhereItCannotWrite) {
  const Json document = RunJson(1, {"config", "make", (m_folder / "none" / "set.lscfg").string()});
  EXPECT_EQ(Keys(document), std::vector<std::string>{"error"});
}

TEST_F(ConfigTest, FilesThatAreGoneAreListedAndTheRestLoads) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  const std::string gone = set.sounds[4].path.string();
  std::filesystem::remove(gone);
  const Json document = RunJson(0, {"config", "show", set.configuration.string()});
  EXPECT_EQ(document["failed"], Json::array({gone}));
  ASSERT_EQ(document["slots"]["motion"].size(), 1U);
  EXPECT_EQ(document["slots"]["motion"][0], Entry(set.sounds[5].path.string(), 100, 1365));
  EXPECT_EQ(document["totalSamples"], set.Samples() - 800);

  const Finished finished = Run({"config", "show", set.configuration.string()});
  EXPECT_EQ(finished.code, 0);
  EXPECT_EQ(finished.errors, "kestrinctl: The following files could not be found or are not valid:\n" + gone + "\n");
}

TEST_F(ConfigTest, NoControlCharacterOfAPathReachesTheTerminal) {
  // Clears the screen, names the window, and begins a command as U+009B does.
  const std::string evil = "\x1B[2J\x1B]0;owned\x07\x7F\u009B31m";
  const std::string shown = "?[2J?]0;owned???31m";
  const std::string sound = Sound(evil + ".lsu");
  const std::string gone = (m_folder / (evil + "gone.lsu")).string();
  ASSERT_EQ(Run({"config", "make", m_out, "--boot", sound}).code, 0);
  std::string text = ReadBytes(m_out);
  text.replace(text.find("PWRON\r\n\r\n"), 9, "PWRON\r\n" + gone + "\r\n");
  WriteBytes(m_out, text);

  const Finished people = Run({"config", "show", m_out});
  EXPECT_NE(people.out.find(shown + ".lsu\n"), std::string::npos) << people.out;
  EXPECT_NE(people.errors.find(shown + "gone.lsu\n"), std::string::npos) << people.errors;
  const Json document = RunJson(0, {"config", "show", m_out});
  EXPECT_EQ(document["slots"]["boot"]["path"], sound);
  EXPECT_EQ(document["failed"], Json::array({gone}));
  // The document holds them as escapes.
  const std::string json = Run({"--json", "config", "show", m_out}).out;
  EXPECT_NE(json.find(R"(\u001b[2J\u001b]0;owned\u0007\u007f\u009b31m.lsu)"), std::string::npos) << json;
  EXPECT_EQ(json.find_first_of("\x1B\x07\x7F"), std::string::npos) << json;
  EXPECT_EQ(json.find("\u009B"), std::string::npos) << json;

  const std::vector<Arguments> commands{{"config", "show", m_out},
                                        {"config", "map", m_out},
                                        {"config", "show", m_out + evil},
                                        {"config", "make", m_out, "--boot", gone},
                                        {"config", "make", (m_folder / evil / "set.lscfg").string()},
                                        {"sound", "info", sound, gone},
                                        {"sound", "info", sound, "--volume", "200"},
                                        {"sound", "code", sound, "--output", (m_folder / (evil + ".bin")).string()},
                                        {"sound", "wav", sound, "--output", (m_folder / (evil + ".wav")).string()},
                                        {"sound", "wav", gone, "--output", m_out},
                                        {"fonts", "serve", gone},
                                        {"info", "--board", evil},
                                        {"info", "--" + evil},
                                        {"led", "settings", gone}};
  for (const Arguments& command : commands) {
    const Finished finished = Run(command);
    const std::string all = finished.out + finished.errors;
    EXPECT_NE(all.find("owned"), std::string::npos) << command.front();
    EXPECT_EQ(all.find_first_of("\x1B\x07\x7F"), std::string::npos) << all;
    EXPECT_EQ(all.find("\u009B"), std::string::npos) << all;
  }
}

#ifndef __APPLE__
TEST_F(ConfigTest, NamesThatAreNoUtf8AreStillTheSameFiles) {
  const std::string sound = Sound("gr\xFC\xDF.lsu");
  const std::string out = (m_folder / "ses \xE9t\xE9s.lscfg").string();
  ASSERT_EQ(Run({"config", "make", out, "--boot", sound + ":70"}).code, 0);
  EXPECT_NE(ReadBytes(out).find("BOOT\r\n" + sound + "\r\n 70\r\n"), std::string::npos);
  EXPECT_NE(Run({"config", "show", out}).out.find(sound + "\n"), std::string::npos);
  const std::string wav = (m_folder / "\xFF.wav").string();
  EXPECT_EQ(Run({"sound", "wav", sound, "--output", wav}).code, 0);
  EXPECT_EQ(ReadBytes(wav).substr(0, 4), "RIFF");
  EXPECT_EQ(RunJson(0, {"sound", "info", sound})["files"][0]["samples"], 100);
}
#endif

TEST_F(ConfigTest, WhatIsNoConfigurationFileFails) {
  const std::string file = WriteBytes(m_folder / "bad.lscfg", "BOOT\r\n\r\n 100\r\nPWR\r\n").string();
  const std::vector<Arguments> commands{
      {"config", "show"}, {"config", "map"}, {"--board", "sim", "download"}, {"--board", "sim", "verify"}};
  for (Arguments command : commands) {
    command.push_back(file);
    const Json document = RunJson(1, command);
    EXPECT_EQ(Keys(document), std::vector<std::string>{"error"});
    const std::string error = document["error"];
    EXPECT_EQ(error.rfind("Not a valid configuration file", 0), 0U) << error;
    EXPECT_NE(error.find("line 4"), std::string::npos) << error;
    command.back() = (m_folder / "none.lscfg").string();
    EXPECT_EQ(Run(command).code, 1);
  }
}

TEST_F(ConfigTest, MapLaysTheFilesOutOneByteApart) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  const Json document = RunJson(0, {"config", "map", set.configuration.string()});
  Json files = Json::array();
  std::string table = "02010100";
  const auto put24 = [&](std::int64_t number) {
    char text[7];
    std::snprintf(text, sizeof text, "%06x", static_cast<unsigned>(number));
    table += text;
  };
  std::int64_t address = 512;
  for (const SoundSet::Sound& sound : set.sounds) {
    unsigned sum = 0;
    for (const unsigned byte : ReferenceStream(sound.samples, sound.Peak(), sound.volume)) sum = (sum + byte) % 65536;
    files.push_back({{"slot", sound.slot},
                     {"position", sound.position},
                     {"path", sound.path.string()},
                     {"address", address},
                     {"length", sound.CodedBytes()},
                     {"checksum", sum}});
    put24(address);
    put24(sound.CodedBytes());
    address += sound.CodedBytes() + 1;
  }
  unsigned sum = 0;
  for (std::size_t i = 0; i < table.size(); i += 2)
    sum += static_cast<unsigned>(std::stoi(table.substr(i, 2), nullptr, 16));
  char checksum[5];
  std::snprintf(checksum, sizeof checksum, "%04x", sum % 65536);
  const Json expected = {{"files", files},
                         {"table", {{"address", 12}, {"bytes", table + checksum}, {"checksum", sum % 65536}}}};
  EXPECT_EQ(document, expected) << document.dump(1);
}

TEST_F(ConfigTest, MapGivesNoAddressThatTheBoardDoesNotHave) {
  // 11,184,000 samples are 16,776,000 bytes from address 512 on. Behind them and five small sounds of 75 bytes, each
  // with a byte between, 16,776,893 of 16,777,216 bytes are taken: 323 are left.
  const std::string large = WriteSoundFile(m_folder / "large.lsu", SomeSamples(100)).string();
  std::filesystem::resize_file(large, 4 + 2 * std::uintmax_t{11184000});
  const std::string sound = Sound("sound.lsu", 50);
  const auto make = [&](const std::string& lockup) {
    return Run({"config", "make", m_out, "--boot", large, "--pwron", sound, "--pwroff", sound, "--idle", sound,
                "--motion", sound, "--impact", sound, "--lockup", lockup});
  };
  ASSERT_EQ(make(sound).code, 0);
  const Json fits = RunJson(0, {"config", "map", m_out});
  EXPECT_EQ(fits["files"][6]["address"], 512 + 16776001 + 5 * 76);

  // 214 samples are 321 bytes, 215 are 324.
  ASSERT_EQ(make(Sound("longer.lsu", 214)).code, 0);
  EXPECT_EQ(RunJson(0, {"config", "map", m_out})["files"][6]["length"], 321);
  ASSERT_EQ(make(Sound("longest.lsu", 215)).code, 0);
  const Json expected = {{"error", "The sounds are longer than any board can hold. Take some out."}};
  EXPECT_EQ(RunJson(1, {"config", "map", m_out}), expected);
}

TEST_F(ConfigTest, MapNamesThePieceThatIsMissing) {
  const std::pair<const char*, const char*> pieces[] = {
      {"--boot", "Boot file is missing"},
      {"--pwron", "Power On file is missing"},
      {"--pwroff", "Power Off file is missing"},
      {"--idle", "Idle file is missing"},
      {"--motion", "At least one motion file is required"},
      {"--impact", "At least one impact file is required"},
      {"--lockup", "At least one locku-up file is required"},
  };
  const std::string sound = Sound("sound.lsu");
  for (const auto& [missing, message] : pieces) {
    Arguments make{"config", "make", m_out};
    for (const auto& piece : pieces)
      if (piece.first != missing) make.insert(make.end(), {piece.first, sound});
    ASSERT_EQ(Run(make).code, 0);
    const Json expected = {{"error", message}};
    EXPECT_EQ(RunJson(1, {"config", "map", m_out}), expected);
  }
}

TEST_F(ConfigTest, MapNamesAFileThatIsTooLoud) {
  const std::string sound = Sound("sound.lsu");
  ASSERT_EQ(Run({"config", "make", m_out, "--boot", sound, "--pwron", sound, "--pwroff", sound, "--idle",
                 sound + ":150", "--motion", sound, "--impact", sound, "--lockup", sound})
                .code,
            0);
  const std::string error = RunJson(1, {"config", "map", m_out})["error"];
  EXPECT_NE(error.find("sound.lsu"), std::string::npos) << error;
  EXPECT_NE(error.find("too loud at 150 %"), std::string::npos) << error;
}

}  // namespace
}  // namespace kestrin::support
