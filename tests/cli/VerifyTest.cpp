// SPDX-License-Identifier: MIT
#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

class VerifyTest : public KestrinctlTest {
 protected:
  void Download() const { static_cast<void>(RunOnBoard(0, {"download", m_set.configuration.string()})); }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
};

/// The sum of flash bytes modulo 65536.
unsigned Sum(const std::string& flash, std::size_t address, std::size_t length) {
  unsigned sum = 0;
  for (const char byte : flash.substr(address, length)) sum = (sum + static_cast<unsigned char>(byte)) % 65536;
  return sum;
}

TEST_F(VerifyTest, ABoardThatHoldsTheSetIsVerified) {
  Download();
  const Json document = RunOnBoard(0, {"verify", m_set.configuration.string()});
  const std::string flash = Flash();
  Json files = Json::array();
  std::int64_t address = 512;
  for (const SoundSet::Sound& sound : m_set.sounds) {
    const unsigned sum = Sum(flash, static_cast<std::size_t>(address), static_cast<std::size_t>(sound.CodedBytes()));
    files.push_back({{"slot", sound.slot},
                     {"position", sound.position},
                     {"address", address},
                     {"length", sound.CodedBytes()},
                     {"expected", sum},
                     {"board", sum},
                     {"ok", true}});
    address += sound.CodedBytes() + 1;
  }
  const unsigned table = Sum(flash, 12, kTableBytes - 2);
  const Json expected = {
      {"verified", true}, {"files", files}, {"table", {{"expected", table}, {"board", table}, {"ok", true}}}};
  EXPECT_EQ(document, expected) << document.dump(1);
}

TEST_F(VerifyTest, NothingIsWritten) {
  Download();
  const std::string flash = Flash();
  Json before = BoardState();
  static_cast<void>(RunOnBoard(0, {"verify", m_set.configuration.string()}));
  EXPECT_EQ(Flash(), flash);
  before["byes"] = 2;
  EXPECT_EQ(BoardState(), before);
}

TEST_F(VerifyTest, OneDamagedByteIsFound) {
  Download();
  std::string flash = Flash();
  const std::size_t inSecondFile = 512 + 75 + 1 + 600;
  flash[inSecondFile] = static_cast<char>(flash[inSecondFile] ^ 0x10);
  WriteBytes(m_board / "flash.bin", flash);
  const Json document = RunOnBoard(1, {"verify", m_set.configuration.string()});
  EXPECT_EQ(document["verified"], false);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(document["files"][i]["ok"], i != 1) << i;
  EXPECT_EQ(document["table"]["ok"], true);
  const int difference = document["files"][1]["expected"].get<int>() - document["files"][1]["board"].get<int>();
  EXPECT_EQ(std::abs(difference) % 65536 == 16 || std::abs(difference) == 65536 - 16, true) << difference;
}

TEST_F(VerifyTest, AnotherVolumeIsAnotherSet) {
  Download();
  std::string text = ReadBytes(m_set.configuration);
  text.replace(text.find("\r\n 50\r\n"), 7, "\r\n 51\r\n");
  WriteBytes(m_set.configuration, text);
  const Json document = RunOnBoard(1, {"verify", m_set.configuration.string()});
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(document["files"][i]["ok"], i != 2) << i;
}

TEST_F(VerifyTest, ABoardThatDoesNotAnswerHasNoSum) {
  Download();
  // Answers 1 to 3 are identity and serial number.
  const Arguments verify{"--board", Board("fault=read:5"), "verify", m_set.configuration.string()};
  const Json document = RunJson(1, verify);
  EXPECT_EQ(document["verified"], false);
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(document["files"][i]["board"].is_null(), i == 1) << i;
    EXPECT_EQ(document["files"][i]["ok"], i != 1) << i;
  }
  EXPECT_EQ(Run(verify).errors, "kestrinctl: CRC not received\n");

  const Json table = RunOnBoard(1, {"verify", m_set.configuration.string()}, "fault=read:12");
  EXPECT_TRUE(table["table"]["board"].is_null());
  EXPECT_EQ(table["table"]["ok"], false);
  EXPECT_EQ(table["verified"], false);
}

TEST_F(VerifyTest, AnEmptyBoardHoldsAnotherSet) {
  const Json document = RunOnBoard(1, {"verify", m_set.configuration.string()});
  EXPECT_EQ(document["verified"], false);
  // 75 erased bytes.
  EXPECT_EQ(document["files"][0]["board"], 75 * 255);
}

TEST_F(VerifyTest, AnIncompleteSetIsNamed) {
  std::filesystem::remove(m_set.sounds[7].path);
  const Json document = RunOnBoard(1, {"verify", m_set.configuration.string()});
  const std::string error = document["error"];
  EXPECT_NE(error.find("At least one locku-up file is required"), std::string::npos) << error;
  EXPECT_NE(error.find(m_set.sounds[7].path.string()), std::string::npos) << error;
}

}  // namespace
}  // namespace kestrin::support
