// SPDX-License-Identifier: MIT
// Other languages need a third more room than English: nothing may be cut off then, in the smallest window.

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLayout>
#include <QStyle>
#include <QStyleOptionGroupBox>

#include "platform/archive/ZipArchives.h"
#include "platform/audio/SystemAudioTools.h"
#include "ui/kit/Theme.h"
#include "ui/sound/SoundPage.h"
#include "ui/window/MainFixture.h"

namespace kestrin::ui::window {
namespace {

constexpr QSize kSmallest{960, 640};

/// The text, a third longer; numbers stay as they are in every language.
QString Longer(const QString& text) {
  const auto letters = std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
  return letters < 2 ? text : text + text.left((text.size() + 2) / 3).remove('&').replace('\n', ' ');
}

void LengthenTexts(QWidget& root) {
  for (QLabel* const label : root.findChildren<QLabel*>())
    if (label->pixmap().isNull()) label->setText(Longer(label->text()));
  for (QAbstractButton* const button : root.findChildren<QAbstractButton*>())
    if (!button->text().isEmpty()) button->setText(Longer(button->text()));
  for (QGroupBox* const group : root.findChildren<QGroupBox*>()) group->setTitle(Longer(group->title()));
}

/// What cuts off by itself, with an ellipsis and the whole text in its tool tip: names of the person's own files.
bool MayBeCut(const QWidget& widget) {
  static const QStringList kNames{"FolderLabel", "ImportFolderLabel", "SelectedSoundLabel", "SetLabel"};
  return kNames.contains(widget.objectName());
}

/// The room that the widget's text needs when it is that wide.
QSize RoomFor(const QWidget& widget) {
  const auto* const label = qobject_cast<const QLabel*>(&widget);
  if (label != nullptr && label->hasHeightForWidth()) return {0, label->heightForWidth(label->width())};
  const auto* const group = qobject_cast<const QGroupBox*>(&widget);
  if (group != nullptr) return {group->fontMetrics().horizontalAdvance(group->title()), 0};
  return widget.sizeHint();
}

class LongText : public support::MainFixture {
 protected:
  LongText() {
    audio = &m_tools;
    archives = &m_zips;
  }

  // The style asks for the room that it needs; without it the test would measure another program.
  void SetUp() override {
    kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()), kit::ColorScheme::Light);
  }

  void ExpectNothingIsCut(const char* state) {
    window->show();
    LengthenTexts(*window);
    window->resize(kSmallest);
    for (int round = 0; round < 3; ++round) QApplication::processEvents();
    EXPECT_EQ(window->size(), kSmallest) << state << ": the window cannot be so small";
    int texts = 0;
    for (const QWidget* const widget : window->findChildren<QWidget*>()) {
      const bool hasText = qobject_cast<const QLabel*>(widget) != nullptr ||
                           qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                           qobject_cast<const QGroupBox*>(widget) != nullptr;
      if (!hasText || !widget->isVisible() || MayBeCut(*widget)) continue;
      ++texts;
      const QSize room = RoomFor(*widget);
      const std::string name = state + std::string(", ") + widget->objectName().toStdString() + " \"" +
                               widget->property("text").toString().toStdString() + "\"";
      EXPECT_GE(widget->width(), room.width()) << name;
      EXPECT_GE(widget->height(), room.height()) << name;
      // What scrolls may be further down.
      const auto* const shelf = window->findChild<QWidget*>("DoctorShelf");
      if (shelf->isAncestorOf(widget)) continue;
      const QRect place(widget->mapTo(window.get(), QPoint(0, 0)), widget->size());
      EXPECT_TRUE(window->rect().contains(place)) << name << " lies outside the window";
    }
    EXPECT_GT(texts, 10);
  }

  /// A set with a sound in every slot, loaded.
  void StartWithSet(const std::string& board = "") {
    Start(board);
    window->OpenSet(CompleteSet());
    Find<QListView>("MtFileList").setFocus();
  }

  /// A board that may not be opened, and the rule that permits it.
  void OpenDoctor() {
    doctor.diagnosis = support::NotPermitted();
    doctor.survey.rulePath = support::FakeRule::kPath;
    StartOffline();
    Find<QAction>("ConnectionAction").trigger();
    ASSERT_TRUE(support::Until([this] { return Shown("NextBtn"); }));
    // What is found later would be as short as it was.
    Find<QTimer>("DoctorTimer").stop();
  }

  void ExpectNothingIsCutAfterSending(const char* state) {
    Button("SendBtn").click();
    EXPECT_EQ(LabelText("InformationLabel"), state);
    ExpectNothingIsCut(state);
  }

 private:
  platform::audio::SystemAudioTools m_tools;
  platform::archive::ZipArchives m_zips{disk};
};

TEST_F(LongText, FitsWithABoard) {
  StartWithSet("id=65535");
  ExpectNothingIsCut("online");
}

TEST_F(LongText, FitsWithAnLedDriver) {
  Start("id=512");
  ASSERT_TRUE(Shown("frmLED"));
  ExpectNothingIsCut("LED driver");
}

TEST_F(LongText, FitsWithoutABoard) {
  StartOffline();
  ExpectNothingIsCut("offline");
}

TEST_F(LongText, FitsWhenTheSoundsDoNotFit) {
  StartWithSet();
  QMetaObject::invokeMethod(
      window.get(), [this] { window->OpenSet(CompleteSet(2000000)); }, Qt::DirectConnection);
  ExpectNothingIsCut("too much");
}

TEST_F(LongText, FitsInTheLongestNewsOfTheHelpLine) {
  StartOffline();
  auto& line = Find<QLabel>("HelpLabel");
  QMetaObject::invokeMethod(&line, [&line] {
    line.setText(
        "The sound cannot be played: there is no place for its copy \"temp.wav\". Make room on the disk or permit "
        "writing into the folder of the program.");
  });
  ExpectNothingIsCut("news");
}

TEST_F(LongText, FitsIntoThePanelOfTheAccelerometer) {
  Start("id=65535");
  Button("ConfigBtn").click();
  ExpectNothingIsCut("setup");
}

TEST_F(LongText, FitsIntoTheConnectionDoctor) {
  OpenDoctor();
  ExpectNothingIsCut("doctor");
}

TEST_F(LongText, FitsIntoTheQuestionOfTheConnectionDoctor) {
  OpenDoctor();
  Find<QPushButton>("NextBtn").click();
  ExpectNothingIsCut("consent");
}

TEST_F(LongText, FitsAtTheEndOfADownload) {
  StartWithSet();
  ExpectNothingIsCutAfterSending("SUCCESS !");
}

TEST_F(LongText, FitsWhenTheTableArrivesDamaged) {
  StartWithSet("fault=flip:14");
  ExpectNothingIsCutAfterSending("Memory check error");
}

TEST_F(LongText, FitsWhenTheConnectionIsLost) {
  StartWithSet("fault=unplug:5");
  ExpectNothingIsCutAfterSending("Connection lost");
}

TEST_F(LongText, FitsWhenTheDownloadWasCancelled) {
  StartWithSet();
  dialogs.okAnswers = {false};
  WhenInformation("Downloading...", [this] { Find<QPushButton>("CancelBtn").click(); });
  ExpectNothingIsCutAfterSending("Canceled");
}

TEST_F(LongText, FitsOnTheImportSheet) {
  StartWithSet();
  // One that cannot be read will do.
  const std::filesystem::path file = support::WriteBytes(folder / "swing.wav", "no sound");
  emit window->findChild<sound::SoundPage*>()->importRequested({file}, {});
  ASSERT_TRUE(support::Until([this] { return Find<QListView>("ImportList").model()->rowCount() == 1; }));
  ExpectNothingIsCut("import");
}

}  // namespace
}  // namespace kestrin::ui::window
