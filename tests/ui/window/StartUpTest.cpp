// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QRadioButton>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class StartUp : public MainFixture {
 protected:
  [[nodiscard]] bool ShowsDisabled(const char* button, const char* file) const {
    const QPixmap wanted(Text(program / file));
    return !wanted.isNull() &&
           Button(button).icon().pixmap(wanted.size(), QIcon::Disabled).toImage() == wanted.toImage();
  }
  [[nodiscard]] bool OnlinePictureIs(const char* file) const {
    const QPixmap shown = Find<QLabel>("OnlinePicture").pixmap();
    const QPixmap wanted =
        ui::kit::Pictures(Text(program)).Pixmap(file, shown.deviceIndependentSize().toSize(), shown.devicePixelRatio());
    return !shown.isNull() && shown.toImage() == wanted.toImage();
  }
};

TEST_F(StartUp, HasItsCaption) {
  Start();
  EXPECT_EQ(window->windowTitle(), "Corvent Kestrin Launcher v2.2.2");
}

TEST_F(StartUp, EndsWithoutShowingTheWindowWhenThePersonCancelsTheQuestion) {
  Make("", false);
  dialogs.okAnswers = {false};
  EXPECT_FALSE(window->StartUp());
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(update.calls, std::vector<std::string>{"unload"});
}

TEST_F(StartUp, AsksWhetherToWorkOffline) {
  StartOffline();
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question,
            "A connection with Kuskekpize could not be established.\r\n"
            " Press OK to work offline or Cancel to exit the application");
}

TEST_F(StartUp, LeavesOnlyTheFileButtonsUsableOffline) {
  StartOffline();
  EXPECT_TRUE(OnlinePictureIs("LS_off.bmp"));
  EXPECT_EQ(LabelText("SerialLabel"), "");
  EXPECT_TRUE(Button("LoadBtn").isEnabled());
  EXPECT_TRUE(Button("SaveBtn").isEnabled());
  for (const auto& [name, picture] : {std::pair{"ConfigBtn", "setup_off.bmp"}, std::pair{"SendBtn", "download_off.bmp"},
                                      std::pair{"UpdateBtn", "update_off.bmp"}}) {
    EXPECT_FALSE(Button(name).isEnabled()) << name;
    EXPECT_TRUE(ShowsDisabled(name, picture)) << name;
    EXPECT_EQ(Button(name).toolTip(), "No sound board is connected.") << name;
  }
  EXPECT_TRUE(Find<QTimer>("GoOnlineTimer").isActive());
  EXPECT_EQ(Find<QTimer>("GoOnlineTimer").interval(), 1000);
}

TEST_F(StartUp, FindsABoardThatWasPluggedInWhileTheQuestionStood) {
  Make("", false);
  dialogs.okAnswers = {true};
  dialogs.whileAsking = [this] {
    agent->Plug();
    Tick("GoOnlineTimer");
  };
  ASSERT_TRUE(window->StartUp());
  EXPECT_EQ(LabelText("SerialLabel"), "");
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B535401");
}

TEST_F(StartUp, EnablesEverythingForASoundBoard) {
  Start();
  EXPECT_TRUE(OnlinePictureIs("LS_on.bmp"));
  for (const char* const name : {"LoadBtn", "SaveBtn", "ConfigBtn", "SendBtn", "UpdateBtn"})
    EXPECT_TRUE(Button(name).isEnabled()) << name;
  EXPECT_FALSE(Find<QTimer>("GoOnlineTimer").isActive());
  EXPECT_FALSE(Shown("frmLED"));
}

TEST_F(StartUp, SelectsTheBootSlot) {
  Start();
  EXPECT_TRUE(Find<QRadioButton>("BootOption").isChecked());
}

TEST_F(StartUp, MakesTheUpdateReadyAndOpensItOnItsButton) {
  Start();
  Button("UpdateBtn").click();
  EXPECT_EQ(update.calls, (std::vector<std::string>{"initialise", "open 4B535401"}));
}

TEST_F(StartUp, AsksForAHalfSerialNumberAgainBeforeAnUpdate) {
  Start("fault=read:3");
  ASSERT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B53");
  Button("UpdateBtn").click();
  EXPECT_EQ(update.calls.back(), "open 4B535401");
  EXPECT_EQ(LabelText("SerialLabel"), "Kestrin USB Serial Number: 4B535401");
}

TEST_F(StartUp, FetchesNothingForABoardThatDoesNotTellItsWholeSerialNumber) {
  // The answers 4 to 6 are the parameters; then each question for the serial number has two.
  Start("fault=read:3,fault=read:8,fault=read:10");
  Button("UpdateBtn").click();
  EXPECT_EQ(update.calls, std::vector<std::string>{"initialise"});
  EXPECT_EQ(dialogs.errors,
            std::vector<QString>{"The board did not tell its whole serial number. Unplug it, plug it in "
                                 "again and repeat this."});
  EXPECT_FALSE(gate.IsBusy());
  Button("UpdateBtn").click();
  EXPECT_EQ(update.calls.back(), "open 4B535401") << "it has recovered";
}

TEST_F(StartUp, FetchesNothingForABoardThatDidNotAnswer) {
  Start("fault=read:7");
  Button("UpdateBtn").click();
  EXPECT_EQ(update.calls, std::vector<std::string>{"initialise"});
  EXPECT_TRUE(dialogs.errors.empty());
}

TEST_F(StartUp, SaysThatThereIsNoUpdateInABuildWithout) {
  agent = std::make_unique<simulator::SimulatedAgent>(simulator::BoardOptions{}, clock, gate.Pump());
  window = std::make_unique<ui::window::Main>(ui::window::Surroundings{
      *agent, gate, clock, disk, dialogs, player, folders, kept, sleep, nullptr, settings, program, {program, data}});
  ASSERT_TRUE(window->StartUp());
  EXPECT_FALSE(Button("UpdateBtn").isEnabled());
  EXPECT_EQ(Button("UpdateBtn").toolTip(), "This version does not fetch sounds from the Internet.");
}

TEST_F(StartUp, ListsDesktopAndDocumentsBeforeAllDrives) {
  Start();
  const auto& drives = Find<QComboBox>("DriveList");
  ASSERT_EQ(drives.count(), 3);
  EXPECT_EQ(drives.itemText(0), "Desktop");
  EXPECT_EQ(drives.itemText(1), "My Documents");
  EXPECT_EQ(drives.itemText(2), "Stick");
}

TEST_F(StartUp, ListsDesktopAndDocumentsWithoutAnyDrive) {
  folders.drives.clear();
  Start();
  const auto& drives = Find<QComboBox>("DriveList");
  ASSERT_GE(drives.count(), 2);
  EXPECT_EQ(drives.itemText(0), "Desktop");
  EXPECT_EQ(drives.itemText(1), "My Documents");
}

TEST_F(StartUp, KeepsTheTextsOfButtonsWhosePicturesAreMissing) {
  std::filesystem::remove_all(program);
  Start();
  EXPECT_TRUE(Button("SendBtn").icon().isNull());
  EXPECT_EQ(Button("SendBtn").text(), "Download");
  EXPECT_EQ(Button("LoadBtn").text(), "Open");
}

TEST_F(StartUp, KnowsTheShellsFolders) {
  Start();
  EXPECT_EQ(window->fGetSpecialFolder(16), folders.desktop);
  EXPECT_EQ(window->fGetSpecialFolder(5), folders.documents);
  EXPECT_EQ(window->fGetSpecialFolder(0), std::filesystem::path());
}

TEST_F(StartUp, SaysGoodByeToTheBoardWhenItIsClosed) {
  Start();
  EXPECT_TRUE(window->close());
  EXPECT_EQ(agent->Board().State().byes, 1U);
  EXPECT_EQ(update.calls.back(), "unload");
}

struct Model {
  int id;
  const char* caption;
  int capacity;
  bool sounds;
};

class Identity : public MainFixture, public testing::WithParamInterface<Model> {};

TEST_P(Identity, IsShown) {
  Start("id=" + std::to_string(GetParam().id) + ",serial=0A0B0C0D");
  EXPECT_EQ(LabelText("SerialLabel"), QString(GetParam().caption) + "0A0B0C0D");
  EXPECT_EQ(Button("SendBtn").isEnabled(), GetParam().sounds);
  EXPECT_EQ(Button("ConfigBtn").isEnabled(), GetParam().sounds);
  EXPECT_EQ(Button("UpdateBtn").isEnabled(), GetParam().sounds);
  // They belong to the page of the sounds.
  EXPECT_EQ(Button("LoadBtn").isEnabled(), GetParam().sounds);
  EXPECT_EQ(Button("SaveBtn").isEnabled(), GetParam().sounds);
  EXPECT_EQ(Shown("frmLED"), !GetParam().sounds);
  if (GetParam().sounds) {
    const QString seconds = QString::number(GetParam().capacity / 48000.0, 'f', 1);
    EXPECT_TRUE(LabelText("MemoryLabel").contains(seconds)) << LabelText("MemoryLabel").toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(Boards, Identity,
                         testing::Values(Model{0, "Kestrin USB Serial Number: ", 2793120, true},
                                         Model{32, "Kestrin USB Serial Number: ", 2793120, true},
                                         Model{64, "Kestrin USB 64 Serial Number: ", 5589300, true},
                                         Model{4096, "Kestrin USB2 Serial Number: ", 2793120, true},
                                         Model{8191, "Kestrin USB2 Serial Number: ", 2793120, true},
                                         Model{65535, "Kestrin USB2 Serial Number: ", 2793120, true},
                                         Model{4095, "Kestrin LED Driver Serial Number: ", 0, false},
                                         Model{8192, "Kestrin LED Driver Serial Number: ", 0, false}));

}  // namespace
}  // namespace kestrin::support
