// SPDX-License-Identifier: MIT
// Every text of the window that a person reads goes through a translator.

#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTranslator>

#include "ui/sound/DownloadFrame.h"
#include "ui/sound/SoundTexts.h"
#include "ui/window/FoldersWithFonts.h"
#include "ui/window/MainFixture.h"
#include "ui/window/WhyNot.h"

namespace kestrin::support {
namespace {

using ui::window::ToolRow;
using ui::window::WhyNot;

/// Puts each text that it translates between two marks.
class Marker final : public QTranslator {
 public:
  [[nodiscard]] bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* text, const char*, int) const override {
    // Of the program, not of the toolkit.
    const QByteArray place(context);
    return place.startsWith("kestrin::") || place == "core" ? QString("<%1>").arg(QString::fromUtf8(text)) : QString();
  }
};

class Translation : public MainFixture {
 protected:
  Translation() { QCoreApplication::installTranslator(&m_marker); }
  ~Translation() override {
    window.reset();
    QCoreApplication::removeTranslator(&m_marker);
  }
  static void ExpectTranslated(const QString& text, const char* where) {
    EXPECT_TRUE(text.contains('<') && text.contains('>')) << where << ": " << text.toStdString();
  }

 private:
  Marker m_marker;
};

TEST_F(Translation, ReachesTheToolRow) {
  StartOffline();
  for (const bool usable : {false, true}) {
    for (const char* const name : {"LoadBtn", "SaveBtn", "ConfigBtn", "UpdateBtn", "SendBtn"}) {
      const QToolButton& button = Button(name);
      for (const QString& text :
           {button.text(), button.toolTip(), button.accessibleName(), button.accessibleDescription()})
        ExpectTranslated(text, name);
    }
    const auto& picture = Find<QLabel>("OnlinePicture");
    ExpectTranslated(picture.toolTip(), "online picture");
    ExpectTranslated(picture.accessibleName(), "online picture");
    if (usable) break;
    ExpectTranslated(LabelText("NoBoardLabel"), "no board");
    agent->Plug();
    Tick("NoticeTimer");
    Tick("GoOnlineTimer");
    ASSERT_TRUE(Button("SendBtn").isEnabled());
  }
}

TEST_F(Translation, ReachesThePagesAndTheMenu) {
  Start("id=4095");
  const auto& tabs = Find<QTabBar>("PageTabs");
  for (int tab = 0; tab < tabs.count(); ++tab) {
    ExpectTranslated(tabs.tabText(tab), "tab");
    ExpectTranslated(tabs.tabToolTip(tab), "tool tip of a tab");
  }
  ExpectTranslated(tabs.accessibleName(), "tabs");
  ASSERT_FALSE(Button("LoadBtn").menu()->actions().isEmpty());
  ExpectTranslated(Button("LoadBtn").menu()->actions().constFirst()->text(), "menu");
  dialogs.filesToSave = {""};
  Find<QTabBar>("PageTabs").setCurrentIndex(0);
  Button("SaveBtn").click();
  ExpectTranslated(dialogs.lastFilter, "filter of the file dialog");
}

TEST_F(Translation, ReachesTheDrives) {
  Start();
  const auto& drives = Find<QComboBox>("DriveList");
  for (const int drive : {0, 1}) ExpectTranslated(drives.itemText(drive), "drive");
}

TEST_F(Translation, ReachesWhatTheCoreSays) {
  Start();
  ExpectTranslated(ui::sound::SlotTitle(core::sound::SlotKind::Boot), "slot");
  auto& frame = Find<ui::sound::DownloadFrame>("DownloadFrame");
  frame.ShowPhase(core::sound::DownloadPhase::Coding, "Coding data...");
  frame.ShowPercent(50);
  frame.ShowButton("Cancel");
  frame.ShowBoardHolds("The board holds the new set.");
  for (const char* const label : {"InformationLabel", "PercentLabel", "BoardHoldsLabel"})
    ExpectTranslated(LabelText(label), label);
  ExpectTranslated(Find<QPushButton>("CancelBtn").text(), "button of the download");
  core::device::SessionState refused;
  refused.accessProblem = "The board may not be opened.";
  ExpectTranslated((WhyNot{refused, false, true, true, true}).Of(ToolRow::Tool::Send), "no access");
}

TEST_F(Translation, ReachesTheConnectionDoctor) {
  doctor.diagnosis = NotPermitted();
  doctor.diagnosis.remarks = {"Something else."};
  doctor.survey.rulePath = FakeRule::kPath;
  StartOffline();
  for (const QAction* const action : Button("HelpBtn").menu()->actions()) {
    ExpectTranslated(action->text(), "help menu");
    ExpectTranslated(action->toolTip(), "help menu");
  }
  ExpectTranslated(Button("HelpBtn").text(), "help button");
  ExpectTranslated(Find<QPushButton>("WhyLink").text(), "why");
  ExpectTranslated(Find<QPushButton>("WhyLink").accessibleName(), "why");
  Find<QAction>("ConnectionAction").trigger();
  ASSERT_TRUE(Until([this] { return Shown("NextBtn"); }));
  const auto& frame = Find<QWidget>("DoctorFrame");
  const auto expectAll = [&frame] {
    for (const QLabel* const label : frame.findChildren<QLabel*>())
      if (label->isVisible() && label->objectName() != "NextMore")
        ExpectTranslated(label->text(), label->objectName().toLatin1().constData());
    for (const QAbstractButton* const button : frame.findChildren<QAbstractButton*>())
      if (button->isVisible()) ExpectTranslated(button->text(), button->objectName().toLatin1().constData());
  };
  expectAll();
  Find<QPushButton>("NextBtn").click();
  expectAll();
  Find<QPushButton>("RemoveRuleLink").click();
  expectAll();
}

TEST_F(Translation, ReachesTheDriveOfTheFonts) {
  const ui::window::FoldersWithFonts all(folders, folder / "fonts");
  ExpectTranslated(QString::fromStdString(all.Drives().back().label), "drive");
}

TEST_F(Translation, ReachesEveryReasonOfTheButtons) {
  using Stage = core::device::SessionState::Stage;
  core::device::SessionState ready;
  ready.stage = Stage::Ready;
  ready.boards = 1;
  core::device::SessionState silent;
  silent.boards = 1;
  core::device::SessionState finishing = silent;
  finishing.isFinishing = true;
  core::device::SessionState ledDriver = silent;
  ledDriver.deviceType = core::device::DeviceType::LedDriver;
  core::device::SessionState reading = ready;
  reading.stage = Stage::Reading;
  const std::pair<WhyNot, ToolRow::Tool> cases[] = {
      {{{}, true, true, true, true}, ToolRow::Tool::Load},
      {{{}, false, false, true, true}, ToolRow::Tool::Save},
      {{ready, true, true, true, true}, ToolRow::Tool::Config},
      {{{}, false, true, true, true}, ToolRow::Tool::Config},
      {{silent, false, true, true, true}, ToolRow::Tool::Send},
      {{finishing, false, true, true, true}, ToolRow::Tool::Send},
      {{ledDriver, false, true, true, true}, ToolRow::Tool::Send},
      {{reading, false, true, true, true}, ToolRow::Tool::Send},
      {{ready, false, true, false, true}, ToolRow::Tool::Send},
      {{ready, false, true, true, false}, ToolRow::Tool::Update},
  };
  QStringList reasons;
  for (const auto& [why, tool] : cases) {
    ExpectTranslated(why.Of(tool), "reason");
    reasons.append(why.Of(tool));
  }
  // Two of them wait for the same.
  EXPECT_EQ(reasons.removeDuplicates(), 1);
  for (const ToolRow::Tool tool : ToolRow::kTools) EXPECT_EQ((WhyNot{ready, false, true, true, true}).Of(tool), "");
}

}  // namespace
}  // namespace kestrin::support
