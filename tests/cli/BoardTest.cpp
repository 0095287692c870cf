// SPDX-License-Identifier: MIT
#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

/// A board that holds a set of eight sounds.
class BoardTest : public KestrinctlTest {
 protected:
  BoardTest() { static_cast<void>(RunOnBoard(0, {"download", m_set.configuration.string()})); }

  /// Writes the set once more with a change to its text, under another name.
  [[nodiscard]] std::filesystem::path Changed(const std::string& from, const std::string& to) const {
    std::string text = ReadBytes(m_set.configuration);
    text.replace(text.find(from), from.size(), to);
    return WriteBytes(m_folder / "changed.lscfg", text);
  }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
};

TEST_F(BoardTest, TheSetThatItHoldsIsTold) {
  const Json document = RunOnBoard(0, {"board", m_set.configuration.string()});
  EXPECT_EQ(Keys(document), (std::vector<std::string>{"known", "set", "files", "differences"}));
  EXPECT_EQ(document["known"], true);
  EXPECT_EQ(document["set"], m_set.configuration.string());
  EXPECT_EQ(document["differences"], Json::array());
  ASSERT_EQ(document["files"].size(), m_set.sounds.size());
  std::int64_t address = 512;
  const std::string flash = Flash();
  for (std::size_t i = 0; i < m_set.sounds.size(); ++i) {
    const SoundSet::Sound& sound = m_set.sounds[i];
    unsigned sum = 0;
    for (std::int64_t byte = 0; byte < sound.CodedBytes(); ++byte)
      sum += static_cast<unsigned char>(flash[static_cast<std::size_t>(address + byte)]);
    const Json expected = {{"slot", sound.slot},
                           {"position", sound.position},
                           {"address", address},
                           {"length", sound.CodedBytes()},
                           {"checksum", sum % 65536}};
    EXPECT_EQ(document["files"][i], expected) << i;
    address += sound.CodedBytes() + 1;
  }
}

TEST_F(BoardTest, WithoutASetToCompareItsOwnTableIsRead) {
  const Json named = RunOnBoard(0, {"board", m_set.configuration.string()});
  const Json document = RunOnBoard(0, {"board"});
  EXPECT_EQ(document["known"], false);
  EXPECT_EQ(document["set"], "");
  EXPECT_EQ(document["files"], named["files"]);
  const Finished forPeople = Run({"--board", Board(), "board"});
  EXPECT_NE(forPeople.out.find("On the board: A set this computer does not know: 2 motion sounds, 1 impact sound, "
                               "1 lock-up sound, "),
            std::string::npos)
      << forPeople.out;
}

TEST_F(BoardTest, TheLaterOfTwoSetsIsFound) {
  const std::filesystem::path other = Changed("\r\n 50\r\n", "\r\n 51\r\n");
  const Json document = RunOnBoard(0, {"board", other.string(), m_set.configuration.string()});
  EXPECT_EQ(document["known"], true);
  EXPECT_EQ(document["set"], m_set.configuration.string());
}

TEST_F(BoardTest, ASetThatDiffersALittleIsNamedWithIt) {
  const std::filesystem::path other = Changed("\r\n 50\r\n", "\r\n 51\r\n");
  const Json document = RunOnBoard(0, {"board", other.string()});
  EXPECT_EQ(document["known"], false);
  EXPECT_EQ(document["differences"], Json::parse(R"([{"slot":"pwroff","position":1,"kind":"volume"}])"));
  EXPECT_NE(
      Run({"--board", Board(), "board", other.string()}).out.find("On the board: \"changed\", but Power Off differs\n"),
      std::string::npos);
}

TEST_F(BoardTest, AFontOfThisComputerIsKnown) {
  const std::filesystem::path fonts = m_folder / "program";
  const std::filesystem::path font = fonts / "fonts" / "Deep Forge";
  std::filesystem::create_directories(font);
  std::filesystem::copy_file(m_set.configuration, font / "Deep Forge.lscfg");
  WriteBytes(font / "fnt", "");
  // Of the same lengths at other volumes: not the one.
  std::filesystem::create_directories(fonts / "fonts" / "Calm");
  std::filesystem::copy_file(Changed("\r\n 50\r\n", "\r\n 51\r\n"), fonts / "fonts" / "Calm" / "Calm.lscfg");
  WriteBytes(fonts / "fonts" / "Calm" / "fnt", "");
  const Json document = RunJson(0, {"--board", Board(), "--program-folder", fonts.string(), "board"});
  EXPECT_EQ(document["known"], true);
  EXPECT_EQ(document["set"], (font / "Deep Forge.lscfg").string());
}

TEST_F(BoardTest, AnEmptyBoardHoldsNothing) {
  std::filesystem::remove(m_board / "flash.bin");
  const Json document = RunOnBoard(0, {"board", m_set.configuration.string()});
  EXPECT_EQ(document["known"], false);
  EXPECT_EQ(document["files"], Json::array());
  EXPECT_EQ(document["differences"], Json::array());
  EXPECT_EQ(Run({"--board", Board(), "board"}).out, "On the board: Nothing yet: its memory is empty\n");
}

TEST_F(BoardTest, ABoardThatTellsNonsenseIsNotKnown) {
  std::string flash = Flash();
  flash[14] = 77;
  WriteBytes(m_board / "flash.bin", flash);
  const Json document = RunOnBoard(1, {"board"});
  EXPECT_EQ(document["error"], "This board does not tell what it holds. Download a set to be sure of it.");
}

TEST_F(BoardTest, ABoardThatFallsSilentIsNotKnown) {
  // Answers 1 to 3 are identity and serial number.
  const Json document = RunOnBoard(1, {"board"}, "fault=read:5");
  EXPECT_EQ(document["error"], "The board does not answer. Unplug it, plug it in and try again.");
}

TEST_F(BoardTest, NothingIsWritten) {
  const std::string flash = Flash();
  Json before = BoardState();
  static_cast<void>(RunOnBoard(0, {"board"}));
  EXPECT_EQ(Flash(), flash);
  before["byes"] = before["byes"].get<int>() + 1;
  EXPECT_EQ(BoardState(), before);
}

TEST_F(BoardTest, DiffWithTheBoardHasItsWords) {
  const std::string set = m_set.configuration.string();
  EXPECT_EQ(RunOnBoard(0, {"config", "diff", set, "board"}), Json::parse(R"({"same":true,"differences":[]})"));
  const Json document = RunOnBoard(1, {"config", "diff", Changed("\r\n 50\r\n", "\r\n 51\r\n").string(), "board"});
  EXPECT_EQ(document, Json::parse(R"({"same":false,"differences":[{"slot":"pwroff","position":1,"kind":"volume"}]})"));
}

TEST_F(BoardTest, DiffOfTwoSetsNeedsNoBoard) {
  SoundSet other(m_folder.Path());
  for (const SoundSet::Sound& sound : m_set.sounds) {
    if (sound.slot == "motion" && sound.position == 2) continue;
    other.sounds.push_back(sound);
  }
  other.sounds[0].volume = 12;
  std::swap(other.sounds[1].path, other.sounds[2].path);
  const std::string first = m_set.configuration.string();
  const std::string second = other.WriteConfiguration("other.lscfg").string();
  EXPECT_EQ(RunJson(1, {"config", "diff", first, second}),
            Json::parse(R"({"same":false,"differences":[{"slot":"boot","position":1,"kind":"volume"},
                {"slot":"pwron","position":1,"kind":"sound"},{"slot":"pwroff","position":1,"kind":"sound"},
                {"slot":"motion","position":2,"kind":"only-a"}]})"));
  EXPECT_EQ(RunJson(1, {"config", "diff", second, first})["differences"].back(),
            Json::parse(R"({"slot":"motion","position":2,"kind":"only-b"})"));
  EXPECT_EQ(Run({"config", "diff", first, first}).out, "No differences.\n");
}

TEST_F(BoardTest, DiffNeedsEverySound) {
  std::filesystem::remove(m_set.sounds[7].path);
  const std::string set = m_set.configuration.string();
  const Json document = RunJson(1, {"config", "diff", set, set});
  EXPECT_NE(document["error"].get<std::string>().find(m_set.sounds[7].path.string()), std::string::npos) << document;
}

}  // namespace
}  // namespace kestrin::support
