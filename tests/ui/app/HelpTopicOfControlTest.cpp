// F1 on every control of the window, and in every dialog, opens the topic that is its own.

#include <QAbstractButton>
#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QMessageBox>
#include <array>

#include "app/help/HelpKey.h"
#include "platform/desktop/QtDialogs.h"
#include "ui/app/MainFixture.h"

namespace kestrin::app {
namespace {

using ::testing::ElementsAre;

void PressF1(QWidget& control) {
  QKeyEvent press(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
  QApplication::sendEvent(&control, &press);
}

class HelpTopicOfControl : public support::MainFixture {
 protected:
  HelpTopicOfControl() {
    QObject::connect(&m_key, &HelpKey::topicRequested, [this](HelpContext topic) { m_asked.push_back(topic); });
  }

  std::vector<HelpContext> m_asked;

 private:
  HelpKey m_key;
};

struct ControlTopic {
  const char* control;
  HelpContext topic;
};

constexpr std::array<ControlTopic, 52> kTopics{{
    {"Main", HelpContext::Main},
    {"LoadBtn", HelpContext::Open},
    {"SaveBtn", HelpContext::Save},
    {"UndoBtn", HelpContext::Undo},
    {"RedoBtn", HelpContext::Undo},
    {"ConfigBtn", HelpContext::Setup},
    {"UpdateBtn", HelpContext::Update},
    {"SendBtn", HelpContext::Download},
    {"OnlinePicture", HelpContext::OnlinePicture},
    {"SerialLabel", HelpContext::OnlinePicture},
    {"SetLabel", HelpContext::UnsavedSet},
    {"HelpLabel", HelpContext::HelpLine},
    {"DriveList", HelpContext::DriveList},
    {"UpBtn", HelpContext::FolderList},
    {"FolderLabel", HelpContext::FolderList},
    {"DirList", HelpContext::FolderList},
    {"FileList", HelpContext::FileList},
    {"HintLabel", HelpContext::Explorer},
    {"BootOption", HelpContext::Boot},
    {"BootFileList", HelpContext::Boot},
    {"PwrOnOption", HelpContext::PwrOn},
    {"PwrOnFileList", HelpContext::PwrOn},
    {"PwrOffOption", HelpContext::PwrOff},
    {"PwrOffFileList", HelpContext::PwrOff},
    {"MtOption", HelpContext::Motion},
    {"MtFileList", HelpContext::Motion},
    {"ImpOption", HelpContext::Impact},
    {"ImpFileList", HelpContext::Impact},
    {"LkOption", HelpContext::Lockup},
    {"LkfileList", HelpContext::Lockup},
    {"IdleOption", HelpContext::Idle},
    {"IdleFileList", HelpContext::Idle},
    {"SelectedSoundLabel", HelpContext::Volume},
    {"VolSlider", HelpContext::Volume},
    {"Waveform", HelpContext::Waveform},
    {"PlayBtn", HelpContext::Preview},
    {"WaitFrame", HelpContext::Preview},
    {"MemoryStatus", HelpContext::Memory},
    {"MemoryLabel", HelpContext::Memory},
    {"DownloadFrame", HelpContext::DownloadFrame},
    {"CancelBtn", HelpContext::DownloadFrame},
    {"DownloadBar", HelpContext::DownloadFrame},
    {"ConfigFrame", HelpContext::ConfigFrame},
    {"MotionThresholdSlider", HelpContext::MotionDetection},
    {"MotionDebouncingSlider", HelpContext::MotionDetection},
    {"ImpactThresholdSlider", HelpContext::ImpactDetection},
    {"ImpactDebouncingslider", HelpContext::ImpactDetection},
    {"ImpactTimeSlider", HelpContext::ImpactDetection},
    {"FOCTimeSlider", HelpContext::LockupFlash},
    {"SendCmdBtn", HelpContext::ConfigFrame},
    {"DefaultBtn", HelpContext::ConfigFrame},
    {"CloseCfgBtn", HelpContext::ConfigFrame},
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
    EXPECT_NE(m_asked.front(), HelpContext::Main) << control->objectName().toStdString();
    EXPECT_NE(m_asked.front(), HelpContext::Slots) << control->objectName().toStdString();
    ++controls;
  }
  EXPECT_GT(controls, 30);
}

TEST_F(HelpTopicOfControl, QuestionsOfTheWindowNameTheirTopic) {
  StartOffline();
  EXPECT_EQ(dialogs.lastTopic, HelpContext::NoBoardQuestion);
  dialogs.filesToOpen = {QString()};
  Button("LoadBtn").click();
  EXPECT_EQ(dialogs.lastTopic, HelpContext::Open);
  dialogs.filesToSave = {QString()};
  Button("SaveBtn").click();
  EXPECT_EQ(dialogs.lastTopic, HelpContext::Save);
}

TEST_F(HelpTopicOfControl, QuestionWhetherToCancelNamesItsTopic) {
  Start();
  window->OpenSet(CompleteSet());
  dialogs.okAnswers = {false};
  WhenInformation("Downloading...", [this] { Find<QPushButton>("CancelBtn").click(); });
  Button("SendBtn").click();
  EXPECT_EQ(dialogs.lastTopic, HelpContext::CancelQuestion);
}

/// A way to bring up a dialog of the desktop, and the topic that F1 opens in it.
struct DialogTopic {
  const char* what;
  std::function<void(Dialogs&)> show;
  HelpContext topic;
};

const DialogTopic kDialogs[] = {
    {"message", [](Dialogs& dialogs) { dialogs.ShowMessage("It is so."); }, HelpContext::Messages},
    {"error", [](Dialogs& dialogs) { dialogs.ShowError("It went wrong."); }, HelpContext::Messages},
    {"question",
     [](Dialogs& dialogs) {
       (void)dialogs.AskOkCancel("Shall it?", "", Dialogs::Harmless::Cancel, HelpContext::NoBoardQuestion);
     },
     HelpContext::NoBoardQuestion},
    {"question of no place",
     [](Dialogs& dialogs) { (void)dialogs.AskOkCancel("Shall it?", "", Dialogs::Harmless::Ok); },
     HelpContext::Messages},
    {"color", [](Dialogs& dialogs) { (void)dialogs.AskColor(Qt::red); }, HelpContext::ColorPicker},
    {"unsaved set", [](Dialogs& dialogs) { (void)dialogs.AskUnsaved("Save it?"); }, HelpContext::UnsavedSet},
    {"file to open", [](Dialogs& dialogs) { (void)dialogs.OpenFile("Open", "", "", HelpContext::Open); },
     HelpContext::Open},
    {"file to save",
     [](Dialogs& dialogs) { (void)dialogs.SaveFile("Save", "", "", "ldset", HelpContext::LedSettings); },
     HelpContext::LedSettings},
};

TEST_F(HelpTopicOfControl, DialogsOpenTheirs) {
  desktop::QtDialogs real;
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
}  // namespace kestrin::app
