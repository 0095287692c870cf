// SPDX-License-Identifier: MIT
#include "support/KestrinctlTest.h"

namespace kestrin::support {
namespace {

using InfoTest = KestrinctlTest;

struct Model {
  const char* id;
  const char* model;
  int type;
  int revision;
  int capacity;
  const char* caption;
};

TEST_F(InfoTest, EveryModelIsRecognised) {
  // The capacity of a board without sound memory is the one that the program begins with.
  const Model models[] = {
      {"0", "USB", 0, 0, 2793120, "Kestrin USB Serial Number: 0A0B0C0D"},
      {"32", "USB", 0, 0, 2793120, "Kestrin USB Serial Number: 0A0B0C0D"},
      {"64", "USB 64", 0, 0, 5589300, "Kestrin USB 64 Serial Number: 0A0B0C0D"},
      {"4096", "USB2", 0, 0, 2793120, "Kestrin USB2 Serial Number: 0A0B0C0D"},
      {"8191", "USB2", 0, 4095, 2793120, "Kestrin USB2 Serial Number: 0A0B0C0D"},
      {"65535", "USB2", 0, 293, 2793120, "Kestrin USB2 Serial Number: 0A0B0C0D"},
      {"4095", "LED Driver", 1, 0, 2793120, "Kestrin LED Driver Serial Number: 0A0B0C0D"},
      {"8192", "LED Driver", 1, 0, 2793120, "Kestrin LED Driver Serial Number: 0A0B0C0D"},
  };
  for (const Model& model : models) {
    const Json document = RunJson(0, {"--board", std::string("sim:serial=0A0B0C0D,id=") + model.id, "info"});
    const Json expected = {{"id", std::stoi(model.id)},        {"model", model.model},
                           {"deviceType", model.type},         {"deviceRevision", model.revision},
                           {"memoryCapacity", model.capacity}, {"serial", "0A0B0C0D"},
                           {"caption", model.caption}};
    EXPECT_EQ(document, expected);
    EXPECT_EQ(Keys(document), Keys(expected));
  }
}

TEST_F(InfoTest, PeopleReadTheSerialLabel) {
  const Finished finished = Run({"--board", "sim", "info"});
  EXPECT_EQ(finished.code, 0);
  EXPECT_EQ(finished.out.rfind("Kestrin USB Serial Number: 4B535401\n", 0), 0U) << finished.out;
  EXPECT_EQ(finished.errors, "");
}

TEST_F(InfoTest, ABoardThatDoesNotAnswerIsShownAndFails) {
  const Json document = RunJson(1, {"--board", "sim:fault=write:2", "info"});
  EXPECT_EQ(document["serial"], "NoSerialNumber");
  EXPECT_EQ(document["caption"], "Kestrin USB Serial Number: NoSerialNumber");
  const Finished finished = Run({"--board", "sim:fault=write:2", "info"});
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.errors, "kestrinctl: The board did not answer.\n");
}

TEST_F(InfoTest, HalfASerialNumberIsShown) {
  // Answer 1 is the identity, 2 and 3 are the halves of the number.
  const Json document = RunJson(0, {"--board", "sim:fault=read:3", "info"});
  EXPECT_EQ(document["serial"], "4B53");
}

TEST_F(InfoTest, NothingIsClaimedOfABoardThatDidNotSayWhatItIs) {
  // One question, and as many reads as the longest erase takes.
  const std::string board = "sim:id=4095," + FailingReads(1, 11);
  const Json expected = {{"error", "The board did not say what it is. Unplug it, plug it in again and repeat this."}};
  EXPECT_EQ(RunJson(1, {"--board", board, "info"}), expected);
  const Finished finished = Run({"--board", board, "info"});
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.out, "The board is still busy, please wait ...\n");
  EXPECT_EQ(finished.errors, "kestrinctl: " + std::string(expected["error"]) + "\n");
  EXPECT_EQ(Run({"--quiet", "--board", board, "info"}).out, "");
  EXPECT_EQ(RunJson(1, {"--board", board, "led", "status"}), expected);
}

TEST_F(InfoTest, ABoardThatAnswersLateIsAskedAgain) {
  const Json document = RunJson(0, {"--board", "sim:id=4095,fault=read:1", "info"});
  EXPECT_EQ(document["model"], "LED Driver");
  EXPECT_EQ(document["serial"], "4B535401");
}

TEST_F(InfoTest, ABoardThatTakesNoQuestionIsNotAskedAnotherOne) {
  const Finished finished = Run({"--board", Board("fault=write:1"), "info"});
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.out, "The board takes nothing.\n");
  EXPECT_EQ(finished.errors,
            "kestrinctl: The board did not say what it is. Unplug it, plug it in again and repeat this.\n");
  EXPECT_EQ(BoardState()["byes"], 0);
}

TEST_F(InfoTest, NoBoardEndsWithThree) {
  const Json document = RunJson(3, {"--board", "hid:/no/such/board", "info"});
  const Json expected = {{"error",
                          "A connection with Kuskekpize could not be established.\nPlug the board in and try again. "
                          "\"kestrinctl devices\" lists the boards that are found."}};
  EXPECT_EQ(document, expected);
  for (const char* command : {"get", "defaults", "restore"})
    EXPECT_EQ(Run({"--board", "hid:/no/such/board", "accel", command}).code, 3) << command;
}

TEST_F(InfoTest, TheBoardHearsAGoodByeAfterEveryCommand) {
  static_cast<void>(RunOnBoard(0, {"info"}));
  EXPECT_EQ(BoardState()["byes"], 1);
  static_cast<void>(RunOnBoard(0, {"accel", "get"}));
  EXPECT_EQ(BoardState()["byes"], 2);
}

TEST_F(InfoTest, AStateFolderThatCannotBeUsedFails) {
  WriteBytes(m_folder / "board", "in the way");
  const Json document = RunOnBoard(1, {"info"});
  EXPECT_EQ(Keys(document), std::vector<std::string>{"error"});
}

TEST_F(InfoTest, DevicesListsWhatIsFoundOverUsb) {
  const Json document = RunJson(0, {"devices"});
  ASSERT_EQ(Keys(document), std::vector<std::string>{"devices"});
  ASSERT_TRUE(document["devices"].is_array());
  const std::vector<std::string> keys{"path", "manufacturer", "product", "accessible"};
  for (const Json& board : document["devices"]) EXPECT_EQ(Keys(board), keys);
  const Finished text = Run({"devices"});
  EXPECT_EQ(text.code, 0);
  if (document["devices"].empty()) {
    EXPECT_EQ(text.out, "No board was found. Plug one in and try again.\n");
  }
}

}  // namespace
}  // namespace kestrin::support
