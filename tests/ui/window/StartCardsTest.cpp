// SPDX-License-Identifier: MIT
#include "ui/window/StartCards.h"

#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "platform/archive/ZipArchives.h"
#include "platform/audio/SystemAudioTools.h"
#include "ui/kit/Theme.h"
#include "ui/window/FoldersWithFonts.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;

class StartCards : public MainFixture {
 protected:
  StartCards() {
    audio = &m_tools;
    archives = &m_zips;
  }

  // The style gives the texts the sizes that they have in the program.
  void SetUp() override {
    ui::kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()), ui::kit::ColorScheme::Light);
  }
  /// The example as an installed program has it.
  void Install() {
    fs::create_directories(program / "Examples");
    const std::string set = ReadBytes(CompleteSet());
    WriteBytes(program / "Examples" / "demo.lscfg", set);
  }
  QPushButton& Push(const char* name) const { return Find<QPushButton>(name); }
  void Resize(const QSize& size) {
    window->resize(size);
    for (int round = 0; round < 3; ++round) QApplication::processEvents();
  }
  [[nodiscard]] int HeightOf(const char* list) const { return Find<QWidget>(list).height(); }

 private:
  platform::audio::SystemAudioTools m_tools;
  RecordingDisk m_zipDisk;
  platform::archive::ZipArchives m_zips{m_zipDisk};
};

TEST_F(StartCards, StandThereAsLongAsTheSetIsEmptyAndTheListsRegainTheirRoom) {
  StartOffline();
  Resize({1280, 800});
  ASSERT_TRUE(Shown("StartCards"));
  const int shortList = HeightOf("MtFileList");
  EXPECT_EQ(shortList, HeightOf("BootFileList"));
  window->OpenSet(CompleteSet());
  Resize({1280, 800});
  EXPECT_FALSE(Shown("StartCards"));
  EXPECT_GT(HeightOf("MtFileList"), 4 * shortList);
  EXPECT_EQ(HeightOf("BootFileList"), shortList);
  // A new set is empty again.
  Find<QAction>("UndoAction").trigger();
  Resize({1280, 800});
  EXPECT_TRUE(Shown("StartCards"));
  EXPECT_EQ(HeightOf("MtFileList"), shortList);
}

TEST_F(StartCards, AreThreeWithAnExampleAndTwoWithout) {
  StartOffline();
  EXPECT_EQ(LabelText("StartTitle"), "Ways to start");
  EXPECT_EQ(window->findChild<QPushButton*>("StartExampleBtn"), nullptr);
  window.reset();
  Install();
  StartOffline();
  EXPECT_EQ(LabelText("StartTitle"), "Three ways to start");
  EXPECT_TRUE(Push("StartImportBtn").isVisible());
  EXPECT_TRUE(Push("StartOpenBtn").isVisible());
  EXPECT_TRUE(Push("StartExampleBtn").isVisible());
}

TEST_F(StartCards, DoNotOfferWhatABuildCannotDo) {
  audio = nullptr;
  StartOffline();
  EXPECT_EQ(window->findChild<QPushButton*>("StartImportBtn"), nullptr);
  EXPECT_TRUE(Push("StartOpenBtn").isVisible());
}

TEST_F(StartCards, ChooseSoundsAsTheToolbarDoes) {
  StartOffline();
  const fs::path sound = WriteBytes(folder / "swing.wav", "no sound at all");
  dialogs.manyToOpen = {QStringList(Text(sound))};
  Push("StartImportBtn").click();
  ASSERT_TRUE(Until([this] { return Shown("ImportFrame"); }));
  EXPECT_TRUE(dialogs.manyToOpen.empty());
}

TEST_F(StartCards, OpenASet) {
  StartOffline();
  dialogs.filesToOpen = {Text(CompleteSet())};
  Push("StartOpenBtn").click();
  EXPECT_EQ(LabelText("SetLabel"), "complete");
}

TEST_F(StartCards, TryTheExample) {
  Install();
  StartOffline();
  Push("StartExampleBtn").click();
  EXPECT_EQ(LabelText("SetLabel"), "demo");
  EXPECT_TRUE(Button("TryBtn").isChecked()) << "its saber is on the screen";
  EXPECT_EQ(Find<QListView>("MtFileList").model()->rowCount(), 1);
  EXPECT_TRUE(dialogs.errors.empty());
}

TEST_F(StartCards, AreReachedByTabBehindTheSlotsAndLeaveTheKeyboardInASlot) {
  Install();
  StartOffline();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  Find<QWidget>("LkfileList").setFocus();
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  QStringList order;
  for (int stop = 0; stop < 3; ++stop) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    order.append(QApplication::focusWidget()->objectName());
  }
  EXPECT_EQ(order, QStringList({"StartImportBtn", "StartOpenBtn", "StartExampleBtn"}));
  Push("StartOpenBtn").setFocus();
  dialogs.filesToOpen = {Text(CompleteSet())};
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  ASSERT_EQ(LabelText("SetLabel"), "complete");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "BootFileList");
}

TEST_F(StartCards, TakeDroppedSounds) {
  StartOffline();
  QMimeData mime;
  mime.setUrls({QUrl::fromLocalFile(Text(WriteBytes(folder / "swing.wav", "no sound at all")))});
  auto& cards = Find<QWidget>("StartCards");
  // Whoever has no use for a drop leaves it to the window behind.
  QDragEnterEvent enter(cards.rect().center(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(&cards, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(cards.rect().center(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&cards, &drop);
  EXPECT_TRUE(drop.isAccepted());
  EXPECT_TRUE(Until([this] { return Shown("ImportFrame"); }));
}

TEST_F(StartCards, SayLessWhereThereIsLessRoom) {
  Install();
  StartOffline();
  const auto texts = [this] {
    int shown = 0;
    for (const QLabel* const label : Find<QWidget>("StartCards").findChildren<QLabel*>())
      shown += static_cast<int>(label->isVisible());
    return shown;
  };
  // Title and hint, and of each way its name and what comes of it.
  Resize({1600, 1200});
  EXPECT_EQ(texts(), 8);
  Resize(window->minimumSizeHint());
  EXPECT_LT(texts(), 8);
  for (const char* const name : {"StartImportBtn", "StartOpenBtn", "StartExampleBtn"}) {
    const QPushButton& button = Push(name);
    EXPECT_TRUE(button.isVisible()) << name;
    const QWidget& cards = Find<QWidget>("StartCards");
    EXPECT_TRUE(cards.rect().contains(QRect(button.mapTo(&cards, QPoint()), button.size()))) << name;
    EXPECT_FALSE(button.accessibleDescription().isEmpty()) << name;
  }
}

TEST_F(StartCards, EmptySlotsSayWhenTheyPlay) {
  StartOffline();
  EXPECT_EQ(Find<QWidget>("BootFileList").accessibleDescription(), "plays when the board starts");
  EXPECT_EQ(Find<QWidget>("PwrOnFileList").accessibleDescription(), "plays when the blade comes out");
  EXPECT_EQ(Find<QWidget>("PwrOffFileList").accessibleDescription(), "plays when the blade goes in");
  EXPECT_EQ(Find<QWidget>("IdleFileList").accessibleDescription(), "hums while the blade is on");
  EXPECT_EQ(Find<QWidget>("MtFileList").accessibleDescription(), "one of these plays when you swing");
  EXPECT_EQ(Find<QWidget>("ImpFileList").accessibleDescription(), "one of these plays when you hit");
  EXPECT_EQ(Find<QWidget>("LkfileList").accessibleDescription(), "plays while two blades are pressed together");
}

TEST_F(StartCards, TheExamplesAreAPlaceOfTheDriveListWhereTheyAreInstalled) {
  const ui::window::FoldersWithFonts all(folders, folder / "fonts", program / "Examples");
  surroundingFolders = &all;
  StartOffline();
  auto& drives = Find<QComboBox>("DriveList");
  const auto names = [&drives] {
    QStringList texts;
    for (int row = 0; row < drives.count(); ++row) texts.append(drives.itemText(row));
    return texts;
  };
  EXPECT_EQ(names(), QStringList({"Desktop", "My Documents", "Stick", "Sound fonts"}));
  Install();
  drives.showPopup();
  drives.hidePopup();
  EXPECT_EQ(names(), QStringList({"Desktop", "My Documents", "Stick", "Sound fonts", "Examples"}));
  emit drives.activated(4);
  EXPECT_EQ(Find<QLabel>("FolderLabel").text(), Text(program / "Examples"));
  window.reset();
}

TEST_F(StartCards, WhatCanBeDoneAboutAMissingBoardIsOneClickAway) {
  StartOffline();
  ASSERT_TRUE(Shown("WhyLink"));
  Push("WhyLink").click();
  EXPECT_TRUE(Until([this] { return Shown("DoctorFrame"); }));
}

}  // namespace
}  // namespace kestrin::support
