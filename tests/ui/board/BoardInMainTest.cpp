// SPDX-License-Identifier: MIT
// What the window knows of the board that is connected, from the first question to the comparison.

#include <QAction>
#include <QMenu>

#include "ui/board/BoardFixture.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::support {
namespace {

class BoardInMain : public BoardFixture {};

TEST_F(BoardInMain, SaysThatTheBoardHoldsTheOpenSet) {
  StartWith(Plain(), Plain());
  ASSERT_TRUE(Says("Board: This set"));
  EXPECT_EQ(Chip().Shown(), ui::board::BoardChip::State::Same);
  EXPECT_TRUE(Chip().isVisible());
  EXPECT_EQ(ui::kit::TopicOf(&Chip()), ui::kit::HelpContext::Board);
}

TEST_F(BoardInMain, FollowsTheSetWithoutAskingAgain) {
  StartWith(Plain(), Plain());
  ASSERT_TRUE(Says("Board: This set"));
  std::uint64_t asked = Written();
  Open(With(3, 50));
  ASSERT_TRUE(Says("Board: This set, but Idle differs"));
  // The four quarters of the one sound that is louder on the board.
  EXPECT_EQ(Written(), asked + 4);
  Open(With(0, 50, With(3, 50)));
  ASSERT_TRUE(Says("Board: This set, but Boot and Idle differ"));
  Open(With(1, 50, With(0, 50, With(3, 50))));
  ASSERT_TRUE(Says("Board: This set, but Boot and Power On differ +1"));
  EXPECT_EQ(Chip().toolTip(), "Board: This set, but Boot, Power On and Idle differ");
  asked = Written();
  Open(With(0, 51, With(3, 50)));
  ASSERT_TRUE(Says("Board: This set, but Boot and Idle differ"));
  Open(Plain());
  ASSERT_TRUE(Says("Board: This set"));
  EXPECT_EQ(Written(), asked) << "what the board has told was asked again";
}

TEST_F(BoardInMain, KnowsASetThatWasUsedBefore) {
  PutOnBoard(With(2, 77));
  settings.setValue("recentSets", QStringList{Text(WriteSet("Deep Forge.lscfg", With(2, 77)))});
  Start(Board());
  ASSERT_TRUE(Says("Board: Deep Forge"));
  EXPECT_EQ(Chip().Shown(), ui::board::BoardChip::State::Other);
}

TEST_F(BoardInMain, TakesNoSetOfAsManySoundsForTheOneOnTheBoard) {
  PutOnBoard(With(2, 77));
  settings.setValue("recentSets", QStringList{Text(WriteSet("Nearly.lscfg", With(2, 76))),
                                              Text(WriteSet("Deep Forge.lscfg", With(2, 77)))});
  Start(Board());
  ASSERT_TRUE(Says("Board: Deep Forge"));
}

TEST_F(BoardInMain, KnowsASoundFont) {
  PutOnBoard(Plain());
  const auto font = program / "fonts" / "Calm Sea";
  std::filesystem::create_directories(font);
  std::filesystem::rename(WriteSet("font.lscfg", Plain()), font / "Calm Sea.lscfg");
  WriteBytes(font / "fnt", "");
  Start(Board());
  ASSERT_TRUE(Says("Board: Calm Sea"));
}

TEST_F(BoardInMain, TellsWhatAnUnknownSetIsMadeOf) {
  PutOnBoard(Plain());
  Start(Board());
  // Seven sounds of 200 samples: 1,400 of 48,000 a second.
  ASSERT_TRUE(
      Says("Board: A set this computer does not know: 1 motion sound, 1 impact sound, 1 lock-up sound, 0.0 s in all"));
  // Nobody may claim more than what the board says: of no sound there is a name.
  Chip().click();
  for (const ui::board::CompareRow* const row : window->findChildren<ui::board::CompareRow*>())
    EXPECT_EQ(row->findChild<QLabel*>("ThereLabel")->text(), "Sound of 0.0 s");
}

TEST_F(BoardInMain, AnEmptyBoardHoldsNothing) {
  Start(Board());
  ASSERT_TRUE(Says("Board: Nothing yet: its memory is empty"));
}

TEST_F(BoardInMain, ABoardThatTellsNonsenseIsNotKnown) {
  std::string flash(64, '\xFF');
  flash[12] = 77;
  WriteBytes(folder / "board" / "flash.bin", flash);
  Start(Board());
  ASSERT_TRUE(Says("Board: not known"));
  EXPECT_EQ(Chip().Shown(), ui::board::BoardChip::State::NotKnown);
  Chip().click();
  EXPECT_TRUE(LabelText("CompareNothingLabel").startsWith("This board does not tell what it holds."));
}

TEST_F(BoardInMain, WithoutABoardThereIsNoChip) {
  StartOffline();
  EXPECT_FALSE(Chip().isVisible());
}

TEST_F(BoardInMain, TakesASoundOfTheBoardOverAsOneStep) {
  Sound("other.lsu", 300, 9);
  Seven here = With(4, 31);
  here[3].file = "other.lsu";
  // The board's idle sound is known from another set.
  settings.setValue("recentSets", QStringList{Text(WriteSet("known.lscfg", With(0, 12)))});
  StartWith(Plain(), here);
  ASSERT_TRUE(Says("Board: This set, but Idle and Motion 1 differ"));
  Chip().click();
  ASSERT_TRUE(Shown("CompareFrame"));
  EXPECT_EQ(LabelText("CompareSummary"), "5 sounds are the same, 2 differ.");
  TakeOver("Idle");
  ASSERT_TRUE(Until([this] { return LabelText("CompareSummary") == "6 sounds are the same, 1 differs."; }));
  TakeOver("Motion 1");
  ASSERT_TRUE(Until([this] { return LabelText("CompareSummary") == "All 7 sounds are the same."; }));
  EXPECT_EQ(Chip().Words(), "Board: This set");
  Find<QPushButton>("CompareCloseBtn").click();
  EXPECT_FALSE(Shown("CompareFrame"));
  auto& undo = *window->findChild<QAction*>("UndoAction");
  undo.trigger();
  ASSERT_TRUE(Says("Board: This set, but Motion 1 differs"));
  undo.trigger();
  ASSERT_TRUE(Says("Board: This set, but Idle and Motion 1 differ"));
}

TEST_F(BoardInMain, PlaysBothSidesAsTheBoardDoes) {
  StartWith(Plain(), With(3, 50));
  ASSERT_TRUE(Says("Board: This set, but Idle differs"));
  Chip().click();
  for (const ui::board::CompareRow* const row : window->findChildren<ui::board::CompareRow*>())
    if (!row->isHidden() && row->findChild<QLabel*>("PlaceLabel")->text() == "Idle")
      static_cast<QAbstractButton*>(row->Button(ui::board::CompareRow::Part::PlayThere))->click();
  ASSERT_TRUE(Until([this] { return player.played.size() == 1; })) << LabelText("LabelCtrlClick").toStdString();
  Find<QPushButton>("CompareCloseBtn").click();
  EXPECT_FALSE(player.status.playing);
}

TEST_F(BoardInMain, ComparesWithAnotherSet) {
  const auto other = WriteSet("other.lscfg", With(0, 44));
  StartOffline();
  Open(Plain());
  dialogs.filesToOpen = {Text(other)};
  MenuEntry("CompareSetAction").trigger();
  ASSERT_TRUE(Until([this] { return Shown("CompareFrame") && LabelText("CompareSummary").endsWith("1 differs."); }));
  EXPECT_EQ(LabelText("CompareCaption"), "This set and another one");
  EXPECT_FALSE(Shown("CompareSendBtn"));
  TakeOver("Boot");
  ASSERT_TRUE(Until([this] { return LabelText("CompareSummary") == "All 7 sounds are the same."; }));
}

TEST_F(BoardInMain, ASetThatCannotBeComparedIsSaidSo) {
  StartOffline();
  dialogs.filesToOpen = {Text(WriteBytes(folder / "bad.lscfg", "no set"))};
  MenuEntry("CompareSetAction").trigger();
  ASSERT_TRUE(Until([this] { return LabelText("CompareNothingLabel") == "Not a valid configuration file"; }));
}

TEST_F(BoardInMain, ADownloadThatWouldChangeNothingSaysSo) {
  StartWith(Plain(), Plain());
  const std::string flash = Flash();
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return Shown("DownloadFrame"); }));
  EXPECT_EQ(LabelText("InformationLabel"), "The board holds just this set.");
  EXPECT_EQ(LabelText("BoardHoldsLabel"),
            "Its sounds and volumes were compared. Nothing was sent; to send it again takes about 31 s.");
  EXPECT_FALSE(Shown("DownloadBar"));
  EXPECT_EQ(Find<QPushButton>("CancelBtn").text(), "Close");
  EXPECT_TRUE(Entries().empty());
  // A second press on what has started it would not have been read.
  Find<QPushButton>("SendAgainBtn").animateClick();
  clock.Wait(std::chrono::seconds(1));
  Find<QPushButton>("SendAgainBtn").click();
  ASSERT_TRUE(Until([this] { return LabelText("InformationLabel") == "SUCCESS !"; }));
  EXPECT_FALSE(Shown("SendAgainBtn"));
  EXPECT_EQ(Flash().substr(0, flash.size() - 1), flash.substr(0, flash.size() - 1));
  EXPECT_EQ(Entries().size(), 1U);
  ASSERT_TRUE(Says("Board: This set"));
}

TEST_F(BoardInMain, AnotherSetIsSentWithoutAWord) {
  StartWith(Plain(), With(3, 99));
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return LabelText("InformationLabel") == "SUCCESS !"; }));
  EXPECT_EQ(Entries().size(), 1U);
  ASSERT_TRUE(Says("Board: This set"));
}

TEST_F(BoardInMain, WhatTheBoardGetsCanBeOpenedAgain) {
  Start(Board());
  Open(With(3, 63));
  ASSERT_TRUE(Says("Board: Nothing yet: its memory is empty"));
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return Entries().size() == 1; }));
  const core::sound::HistoryEntry entry = Entries()[0];
  EXPECT_EQ(entry.serialNumber, "4B535401");
  EXPECT_EQ(entry.set.name, "open");
  EXPECT_TRUE(entry.parameters.has_value());
  // What nobody knows any more but the history.
  std::filesystem::remove(folder / "open.lscfg");
  Button("LoadBtn").menu()->actions().front()->trigger();
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == "New set"; }));
  ASSERT_TRUE(Says("Board: open"));
  auto& menu = *MenuEntry("BoardHistoryMenu").menu();
  emit menu.aboutToShow();
  ASSERT_EQ(menu.actions().size(), 1);
  EXPECT_TRUE(menu.actions()[0]->text().endsWith("open, 7 sounds")) << menu.actions()[0]->text().toStdString();
  menu.actions()[0]->trigger();
  ASSERT_TRUE(Says("Board: This set"));
  EXPECT_EQ(LabelText("SetLabel"), QString::fromUtf8("New set \u2022"));
}

TEST_F(BoardInMain, ADownloadThatFailsIsNotWhatTheBoardHasGot) {
  StartWith(Plain(), With(3, 63));
  ASSERT_TRUE(Says("Board: This set, but Idle differs"));
  WhenInformation("Downloading...", [this] { agent->Unplug(); });
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return LabelText("InformationLabel") == "Connection lost"; }));
  EXPECT_TRUE(Entries().empty());
}

TEST_F(BoardInMain, SoundsThatAreGoneAreToldOfWhenASetIsOpenedAgain) {
  Start(Board());
  Open(Plain());
  Button("SendBtn").click();
  ASSERT_TRUE(Until([this] { return Entries().size() == 1; }));
  std::filesystem::remove(folder / Name(4));
  auto& menu = *MenuEntry("BoardHistoryMenu").menu();
  emit menu.aboutToShow();
  dialogs.listAnswers = {false};
  menu.actions()[0]->trigger();
  ASSERT_TRUE(Until([this] { return dialogs.lists.size() == 1; }));
  EXPECT_EQ(dialogs.lists[0].lines, QStringList{Text(folder / Name(4))});
}

}  // namespace
}  // namespace kestrin::support
