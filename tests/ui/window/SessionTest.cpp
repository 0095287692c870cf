// SPDX-License-Identifier: MIT
#include "support/ScriptedAgent.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class Session : public MainFixture {
 protected:
  void PullOut() {
    agent->Unplug();
    Tick("NoticeTimer");
  }
  /// The messages that have been shown by the time that whoever caused them is done.
  const std::vector<QString>& Errors() {
    QCoreApplication::sendPostedEvents();
    return dialogs.errors;
  }
  void WriteCatalogue(const std::string& text) { support::WriteBytes(program / "KestrinLEDS.ldcfg", text); }
  void PlugIn() {
    agent->Plug();
    Tick("NoticeTimer");
    Tick("GoOnlineTimer");
  }
};

TEST_F(Session, GoesOfflineWhenTheBoardIsPulledOutAndOnlineWhenItComesBack) {
  Start();
  PullOut();
  EXPECT_EQ(LabelText("SerialLabel"), "");
  EXPECT_FALSE(Button("SendBtn").isEnabled());
  EXPECT_TRUE(Button("LoadBtn").isEnabled());
  EXPECT_TRUE(Button("SaveBtn").isEnabled());
  EXPECT_TRUE(Find<QTimer>("GoOnlineTimer").isActive());
  PlugIn();
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B535401");
  EXPECT_TRUE(Button("SendBtn").isEnabled());
  EXPECT_FALSE(Find<QTimer>("GoOnlineTimer").isActive());
}

TEST_F(Session, NoticesABoardByItself) {
  StartOffline();
  agent->Plug();
  EXPECT_TRUE(Until([this] { return !LabelText("SerialLabel").isEmpty(); }));
  agent->Unplug();
  EXPECT_TRUE(Until([this] { return LabelText("SerialLabel").isEmpty(); }));
}

TEST_F(Session, WaitsOfflineForABoardThatAnotherProgramUsesAndSaysSo) {
  const QString inUse = "Another program is using this board. Close it and try again.";
  const std::filesystem::path board = folder / "board";
  std::filesystem::create_directories(board);
  std::unique_ptr<core::base::Disk::Lock> other = disk.TryLock(board / "board.lock").lock;
  Make("dir=" + board.string());
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  Show();
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].advice, inUse);
  const auto& label = Find<QLabel>("NoBoardLabel");
  EXPECT_TRUE(label.isVisible());
  EXPECT_EQ(label.toolTip(), inUse);
  EXPECT_EQ(label.accessibleDescription(), inUse);
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_EQ(LabelText("SerialLabel"), "");

  other.reset();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B535401");
  EXPECT_FALSE(label.isVisible());
  EXPECT_EQ(label.toolTip(), "");
}

TEST_F(Session, ShowsABoardThatNeverTellsItsSerialNumber) {
  // The answers 2 and 3 are those of GetSN, behind the one of GetID.
  Start("fault=read:2,fault=read:3");
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: NoSerialNumber");
}

TEST_F(Session, ShowsFourDigitsOfASerialNumberWhoseOtherReportIsMissing) {
  Start("fault=read:3");
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B53");
}

TEST_F(Session, LeavesABoardThatStillErasesToTheTimer) {
  Make("id=64,erase=20");
  std::vector<std::uint8_t> erase(1028, 0);
  erase[0] = 10;
  agent->Board().Receive(erase, clock.Now());
  ASSERT_TRUE(window->StartUp());
  Show();
  // One answer is waited for, not the whole erase; and nobody is asked whether to go on without a board.
  EXPECT_LE(clock.Now(), std::chrono::seconds(4));
  EXPECT_EQ(LabelText("SerialLabel"), "");
  EXPECT_EQ(LabelText("HelpLabel"), "The board is still busy. It comes online by itself when it is done.");
  for (int tick = 0; tick < 10 && LabelText("SerialLabel").isEmpty(); ++tick) {
    clock.Advance(std::chrono::seconds(1));
    Tick("GoOnlineTimer");
  }
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB 64 Serial Number: 4B535401");
  EXPECT_TRUE(Button("SendBtn").isEnabled());
}

TEST_F(Session, TellsWhyTheBoardCannotBeUsedAlsoWhenItIsPluggedInAndKeepsSilent) {
  Make("fault=read:1", false);
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  ASSERT_EQ(Button("SendBtn").toolTip(), "No sound board is connected.");
  agent->Plug();
  Tick("NoticeTimer");
  EXPECT_EQ(Button("SendBtn").toolTip(), "The board does not answer. Unplug it and plug it in again.");
  Tick("GoOnlineTimer");
  EXPECT_EQ(Button("SendBtn").toolTip(), "The board does not answer. Unplug it and plug it in again.");
  EXPECT_FALSE(Button("SendBtn").isEnabled());
  agent->Unplug();
  Tick("NoticeTimer");
  EXPECT_EQ(Button("SendBtn").toolTip(), "No sound board is connected.");
}

TEST_F(Session, SaysWhyABoardThatIsThereCannotBeUsedAndForgetsItWhenItCan) {
  const char* const inUse = "Another program is using this board. Close it and try again.";
  ScriptedAgent locked;
  locked.accessProblem = inUse;
  window = std::make_unique<ui::window::Main>(ui::window::Surroundings{
      locked, gate, clock, disk, dialogs, player, folders, kept, sleep, &update, settings, program, {program, data}});
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  EXPECT_EQ(dialogs.asked.back().advice, inUse);
  const auto& label = Find<QLabel>("NoBoardLabel");
  EXPECT_EQ(label.toolTip(), inUse);
  EXPECT_EQ(label.accessibleDescription(), inUse);
  for (const char* const name : {"ConfigBtn", "SendBtn", "UpdateBtn"}) EXPECT_EQ(Button(name).toolTip(), inUse) << name;

  EXPECT_EQ(label.text(), "Board found, not usable yet");
  const QString news = "A board is there, but this program cannot use it yet. \"Why?\" tells what to do.";
  EXPECT_EQ(LabelText("HelpLabel"), news);

  locked.accessProblem.clear();
  Tick("GoOnlineTimer");
  EXPECT_EQ(label.toolTip(), "");
  EXPECT_EQ(label.text(), "No board connected");
  EXPECT_EQ(Button("SendBtn").toolTip(), "No sound board is connected.");
  locked.accessProblem = inUse;
  Tick("GoOnlineTimer");
  EXPECT_EQ(label.toolTip(), inUse);
  EXPECT_EQ(Button("SendBtn").toolTip(), inUse);
  window.reset();
}

TEST_F(Session, NamesADeviceThatOnlyLooksLikeABoard) {
  ScriptedAgent odd;
  odd.toOpen = {{1, kVendorId, kProductId, {}}};
  window = std::make_unique<ui::window::Main>(ui::window::Surroundings{
      odd, gate, clock, disk, dialogs, player, folders, kept, sleep, &update, settings, program, {program, data}});
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  const auto& label = Find<QLabel>("NoBoardLabel");
  EXPECT_EQ(label.text(), "No board connected");
  const QString named = "The device at scripted has the numbers of a Kestrin board but not its reports";
  EXPECT_TRUE(label.toolTip().startsWith(named)) << label.toolTip().toStdString();
  EXPECT_TRUE(label.accessibleDescription().startsWith(named));
  odd.Close(1);
  Tick("NoticeTimer");
  EXPECT_EQ(label.toolTip(), "");
  window.reset();
}

TEST_F(Session, TellsTheMessageAboutAnInvalidCatalogueOnceForABoardThatStays) {
  WriteCatalogue("KestrinLEDConfigurator#3\r\n");
  Start("id=4095");
  constexpr const char* kText = "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";
  ASSERT_EQ(Errors(), std::vector<QString>{kText});
  EXPECT_TRUE(dialogs.lastDetail.contains("line 1")) << dialogs.lastDetail.toStdString();
  EXPECT_EQ(LabelText("SerialLabel"), "");
  for (int tick = 0; tick < 5; ++tick) Tick("GoOnlineTimer");
  EXPECT_EQ(Errors().size(), 1U);

  PullOut();
  PlugIn();
  EXPECT_EQ(Errors().size(), 2U);
  Tick("GoOnlineTimer");
  EXPECT_EQ(Errors().size(), 2U);
}

TEST_F(Session, NoticesBoardsWhileAMessageIsOpen) {
  WriteCatalogue("KestrinLEDConfigurator#3\r\n");
  Make("id=4095", false);
  dialogs.okAnswers = {true};
  ASSERT_TRUE(window->StartUp());
  Show();
  bool noticed = false;
  dialogs.whileTelling = [&] {
    agent->Unplug();
    noticed = Until([this] { return Button("SendBtn").toolTip() == "No sound board is connected."; });
  };
  agent->Plug();
  ASSERT_TRUE(Until([this] { return !dialogs.errors.empty(); }));
  EXPECT_TRUE(noticed);
}

TEST_F(Session, AsksAnLedDriverThatDidNotAnswerAgainAndTellsItOnce) {
  // At first the third command asks for the configuration; each further try has four until then.
  Start("id=4095,fault=write:3,fault=write:7");
  EXPECT_EQ(Errors().size(), 1U);
  EXPECT_EQ(dialogs.lastDetail, "The LED driver did not answer. Unplug it and plug it in again.");
  EXPECT_EQ(LabelText("SerialLabel"), "");
  Tick("GoOnlineTimer");
  EXPECT_EQ(LabelText("SerialLabel"), "") << "it fails a second time";
  EXPECT_TRUE(Find<QTimer>("GoOnlineTimer").isActive());
  Tick("GoOnlineTimer");
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin LED Driver Serial Number: 4B535401");
  EXPECT_EQ(LabelText("LEDNotice"), "");
  EXPECT_FALSE(Find<QTimer>("GoOnlineTimer").isActive());
  EXPECT_EQ(Errors().size(), 1U);
}

TEST_F(Session, TellsAgainWhenSomethingElseIsWrongWithTheSameBoard) {
  Start("id=4095,fault=write:3");
  ASSERT_EQ(Errors().size(), 1U);
  WriteCatalogue("KestrinLEDConfigurator#3\r\n");
  Tick("GoOnlineTimer");
  EXPECT_EQ(Errors().size(), 2U);
  EXPECT_TRUE(dialogs.lastDetail.contains("line 1")) << dialogs.lastDetail.toStdString();
}

TEST_F(Session, TriesTheCatalogueAgainWhenItHasChanged) {
  const std::string good = support::ReadBytes(program / "KestrinLEDS.ldcfg");
  std::filesystem::remove(program / "KestrinLEDS.ldcfg");
  Start("id=4095");
  WriteCatalogue("KestrinLEDConfigurator#2\r\n");
  Tick("GoOnlineTimer");
  EXPECT_EQ(Errors().size(), 2U);
  WriteCatalogue(good);
  Tick("GoOnlineTimer");
  EXPECT_EQ(Errors().size(), 2U);
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin LED Driver Serial Number: 4B535401");
  EXPECT_EQ(Button("SendBtn").toolTip(),
            "The board is an LED driver: it has neither sounds nor an acceleration sensor.");
}

TEST_F(Session, SendButtonFollowsWhetherTheSetFits) {
  Start();
  // 2,793,120 samples are the capacity; the six others have 100 each.
  const auto large = Sound("large.lsu", 2793120 - 6 * 100 + 1);
  window->OpenSet(CompleteSet());
  EXPECT_TRUE(Button("SendBtn").isEnabled());
  support::WriteBytes(folder / "large.lscfg",
                      support::ReadBytes(folder / "complete.lscfg")
                          .replace(support::ReadBytes(folder / "complete.lscfg").find("s1.lsu"), 6, "large.lsu"));
  window->OpenSet(folder / "large.lscfg");
  EXPECT_FALSE(Button("SendBtn").isEnabled());
  EXPECT_EQ(Button("SendBtn").toolTip(),
            "The sounds do not fit into the board's memory. Remove some or choose shorter ones.");
}

}  // namespace
}  // namespace kestrin::support
