// SPDX-License-Identifier: MIT
// F1 on every control of the window, and in every dialog, opens the topic that is its own.

#include <QAbstractButton>
#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QMessageBox>
#include <array>

#include "platform/desktop/QtDialogs.h"
#include "ui/help/HelpKey.h"
#include "ui/window/MainFixture.h"

namespace kestrin::ui::window {
namespace {

using ::testing::ElementsAre;

void PressF1(QWidget& control) {
  QKeyEvent press(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
  QApplication::sendEvent(&control, &press);
}

class HelpTopicOfControl : public support::MainFixture {
 protected:
  HelpTopicOfControl() {
    QObject::connect(&m_key, &help::HelpKey::topicRequested,
                     [this](kit::HelpContext topic) { m_asked.push_back(topic); });
  }

  std::vector<kit::HelpContext> m_asked;

 private:
  help::HelpKey m_key;
};

struct ControlTopic {
  const char* control;
  kit::HelpContext topic;
};

constexpr std::array<ControlTopic, 65> kTopics{{
    {"Main", kit::HelpContext::Main},
    {"LoadBtn", kit::HelpContext::Open},
    {"SaveBtn", kit::HelpContext::Save},
    {"UndoBtn", kit::HelpContext::Undo},
    {"RedoBtn", kit::HelpContext::Undo},
    {"ConfigBtn", kit::HelpContext::Setup},
    {"UpdateBtn", kit::HelpContext::Update},
    {"SendBtn", kit::HelpContext::Download},
    {"ViewBtn", kit::HelpContext::View},
    {"HelpBtn", kit::HelpContext::HelpMenu},
    {"WhyLink", kit::HelpContext::Doctor},
    {"DoctorFrame", kit::HelpContext::Doctor},
    {"CopyReportBtn", kit::HelpContext::Doctor},
    {"OnlinePicture", kit::HelpContext::OnlinePicture},
    {"SerialLabel", kit::HelpContext::OnlinePicture},
    {"SetLabel", kit::HelpContext::UnsavedSet},
    {"HelpLabel", kit::HelpContext::HelpLine},
    {"DriveList", kit::HelpContext::DriveList},
    {"UpBtn", kit::HelpContext::FolderList},
    {"FolderLabel", kit::HelpContext::FolderList},
    {"DirList", kit::HelpContext::FolderList},
    {"FileList", kit::HelpContext::FileList},
    {"HintLabel", kit::HelpContext::Explorer},
    {"BootOption", kit::HelpContext::Boot},
    {"BootFileList", kit::HelpContext::Boot},
    {"PwrOnOption", kit::HelpContext::PwrOn},
    {"PwrOnFileList", kit::HelpContext::PwrOn},
    {"PwrOffOption", kit::HelpContext::PwrOff},
    {"PwrOffFileList", kit::HelpContext::PwrOff},
    {"MtOption", kit::HelpContext::Motion},
    {"MtFileList", kit::HelpContext::Motion},
    {"ImpOption", kit::HelpContext::Impact},
    {"ImpFileList", kit::HelpContext::Impact},
    {"LkOption", kit::HelpContext::Lockup},
    {"LkfileList", kit::HelpContext::Lockup},
    {"IdleOption", kit::HelpContext::Idle},
    {"IdleFileList", kit::HelpContext::Idle},
    {"SelectedSoundLabel", kit::HelpContext::Volume},
    {"VolSlider", kit::HelpContext::Volume},
    {"Waveform", kit::HelpContext::Waveform},
    {"PlayBtn", kit::HelpContext::Preview},
    {"AsOnBoardBox", kit::HelpContext::AsOnBoard},
    {"LevelBtn", kit::HelpContext::Level},
    {"LevelFrame", kit::HelpContext::Level},
    {"Balance_idle", kit::HelpContext::Level},
    {"WaitFrame", kit::HelpContext::Preview},
    {"MemoryStatus", kit::HelpContext::Memory},
    {"MemoryLabel", kit::HelpContext::Memory},
    {"DownloadFrame", kit::HelpContext::DownloadFrame},
    {"CancelBtn", kit::HelpContext::DownloadFrame},
    {"DownloadBar", kit::HelpContext::DownloadFrame},
    {"ConfigFrame", kit::HelpContext::ConfigFrame},
    {"MotionThresholdSlider", kit::HelpContext::MotionDetection},
    {"MotionDebouncingSlider", kit::HelpContext::MotionDetection},
    {"ImpactThresholdSlider", kit::HelpContext::ImpactDetection},
    {"ImpactDebouncingslider", kit::HelpContext::ImpactDetection},
    {"ImpactTimeSlider", kit::HelpContext::ImpactDetection},
    {"FOCTimeSlider", kit::HelpContext::LockupFlash},
    {"SensorChart", kit::HelpContext::Sensor},
    {"TrialAgainBtn", kit::HelpContext::Sensor},
    {"UseThresholdBtn", kit::HelpContext::Sensor},
    {"SensorTurnBtn", kit::HelpContext::Sensor},
    {"SendCmdBtn", kit::HelpContext::ConfigFrame},
    {"DefaultBtn", kit::HelpContext::ConfigFrame},
    {"CloseCfgBtn", kit::HelpContext::ConfigFrame},
}};

TEST_F(HelpTopicOfControl, EveryControlOpensItsOwn) {
  Start();
  for (const ControlTopic& row : kTopics) {
    auto* const found = window->findChild<QWidget*>(row.control);
    QWidget* const control = window->objectName() == row.control ? window.get() : found;
    ASSERT_NE(control, nullptr) << row.control;
    m_asked.clear();
    PressF1(*control);
    EXPECT_THAT(m_asked, ElementsAre(row.topic)) << row.control;
  }
}

TEST_F(HelpTopicOfControl, EveryControlThatTakesTheKeyboardHasOneOfItsOwn) {
  Start();
  // The frame of the LED driver's page knows its controls itself.
  const QWidget& ledFrame = Find<QWidget>("frmLED");
  int controls = 0;
  for (QWidget* const control : window->findChildren<QWidget*>()) {
    if ((control->focusPolicy() & Qt::TabFocus) == 0 || ledFrame.isAncestorOf(control) || control->isWindow()) continue;
    m_asked.clear();
    PressF1(*control);
    ASSERT_EQ(m_asked.size(), 1U);
    EXPECT_NE(m_asked.front(), kit::HelpContext::Main) << control->objectName().toStdString();
    EXPECT_NE(m_asked.front(), kit::HelpContext::Slots) << control->objectName().toStdString();
    ++controls;
  }
  EXPECT_GT(controls, 30);
}

TEST_F(HelpTopicOfControl, QuestionsOfTheWindowNameTheirTopic) {
  StartOffline();
  EXPECT_EQ(dialogs.lastTopic, kit::HelpContext::NoBoardQuestion);
  dialogs.filesToOpen = {QString()};
  Button("LoadBtn").click();
  EXPECT_EQ(dialogs.lastTopic, kit::HelpContext::Open);
  dialogs.filesToSave = {QString()};
  Button("SaveBtn").click();
  EXPECT_EQ(dialogs.lastTopic, kit::HelpContext::Save);
}

TEST_F(HelpTopicOfControl, QuestionWhetherToCancelNamesItsTopic) {
  Start();
  window->OpenSet(CompleteSet());
  dialogs.okAnswers = {false};
  WhenInformation("Downloading...", [this] { Find<QPushButton>("CancelBtn").click(); });
  Button("SendBtn").click();
  EXPECT_EQ(dialogs.lastTopic, kit::HelpContext::CancelQuestion);
}

/// A way to bring up a dialog of the desktop, and the topic that F1 opens in it.
struct DialogTopic {
  const char* what;
  std::function<void(kit::Dialogs&)> show;
  kit::HelpContext topic;
};

const DialogTopic kDialogs[] = {
    {"message", [](kit::Dialogs& dialogs) { dialogs.ShowMessage("It is so."); }, kit::HelpContext::Messages},
    {"error", [](kit::Dialogs& dialogs) { dialogs.ShowError("It went wrong."); }, kit::HelpContext::Messages},
    {"question",
     [](kit::Dialogs& dialogs) {
       (void)dialogs.AskOkCancel("Shall it?", "", kit::Dialogs::Harmless::Cancel, kit::HelpContext::NoBoardQuestion);
     },
     kit::HelpContext::NoBoardQuestion},
    {"question of no place",
     [](kit::Dialogs& dialogs) { (void)dialogs.AskOkCancel("Shall it?", "", kit::Dialogs::Harmless::Ok); },
     kit::HelpContext::Messages},
    {"color", [](kit::Dialogs& dialogs) { (void)dialogs.AskColor(Qt::red); }, kit::HelpContext::ColorPicker},
    {"unsaved set", [](kit::Dialogs& dialogs) { (void)dialogs.AskUnsaved("Save it?"); }, kit::HelpContext::UnsavedSet},
    {"file to open", [](kit::Dialogs& dialogs) { (void)dialogs.OpenFile("Open", "", "", kit::HelpContext::Open); },
     kit::HelpContext::Open},
    {"file to save",
     [](kit::Dialogs& dialogs) { (void)dialogs.SaveFile("Save", "", "", "ldset", kit::HelpContext::LedSettings); },
     kit::HelpContext::LedSettings},
};

TEST_F(HelpTopicOfControl, DialogsOpenTheirs) {
  platform::desktop::QtDialogs real;
  for (const DialogTopic& row : kDialogs) {
    m_asked.clear();
    QTimer press;
    QObject::connect(&press, &QTimer::timeout, [] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      QWidget* const focused = dialog->focusWidget();
      PressF1(focused != nullptr ? *focused : *dialog);
      dialog->reject();
    });
    press.start(0);
    row.show(real);
    EXPECT_THAT(m_asked, ElementsAre(row.topic)) << row.what;
  }
}

}  // namespace
}  // namespace kestrin::ui::window
