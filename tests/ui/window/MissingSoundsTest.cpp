// SPDX-License-Identifier: MIT
#include <QKeyEvent>

#include "ui/sound/SoundPage.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;
using Answer = ui::kit::Dialogs::MissingSounds;
using Unsaved = ui::kit::Dialogs::Unsaved;

constexpr const char* kHeadline = "The following files could not be found or are not valid:";

/// A complete set, opened after some of its sounds have gone from where they were.
class MissingSounds : public MainFixture {
 protected:
  void SetUp() override {
    set = CompleteSet();
    fs::create_directories(folder / "attic" / "deep");
    for (const char* const name : {"s1.lsu", "s5.lsu"}) fs::rename(folder / name, folder / "attic" / "deep" / name);
    saved = ReadBytes(set);
    StartOffline();
  }
  void Open() {
    dialogs.filesToOpen = {Text(set)};
    Button("LoadBtn").click();
  }
  /// Opens it and leaves it as it is.
  void OpenWithMissing() {
    dialogs.listAnswers = {false};
    Open();
    ASSERT_EQ(dialogs.lists.size(), 1U);
  }
  [[nodiscard]] QStringList Names(const char* list) const {
    QStringList names;
    const QAbstractItemModel& model = *Find<QListView>(list).model();
    for (int row = 0; row < model.rowCount(); ++row) names.append(model.index(row, 0).data().toString());
    return names;
  }
  [[nodiscard]] bool IsMissing(const char* list) const {
    return Find<QListView>(list).model()->index(0, 0).data(Qt::AccessibleTextRole).toString().contains("missing");
  }
  [[nodiscard]] bool IsModified() const { return LabelText("SetLabel").endsWith(QString::fromUtf8("\u2022")); }
  ui::sound::SoundPage& Page() { return *window->findChild<ui::sound::SoundPage*>(); }

  fs::path set;
  std::string saved;
};

TEST_F(MissingSounds, AreToldInOneListAndStayAsRows) {
  OpenWithMissing();
  EXPECT_EQ(dialogs.lists[0].headline, kHeadline);
  EXPECT_EQ(dialogs.lists[0].lines, (QStringList{Text(folder / "s1.lsu"), Text(folder / "s5.lsu")}));
  EXPECT_EQ(dialogs.lists[0].action, "Locate the sounds ...");
  EXPECT_EQ(dialogs.errors, std::vector<QString>());
  EXPECT_EQ(Names("BootFileList"), QStringList{"s1.lsu"});
  EXPECT_EQ(Names("MtFileList"), QStringList{"s5.lsu"});
  EXPECT_TRUE(IsMissing("BootFileList"));
  EXPECT_FALSE(IsMissing("ImpFileList"));
  EXPECT_FALSE(IsModified());
}

TEST_F(MissingSounds, AreFoundBelowAFolderInOneStepToUndo) {
  dialogs.listAnswers = {true};
  dialogs.folders = {Text(folder / "attic")};
  Open();
  EXPECT_FALSE(IsMissing("BootFileList"));
  EXPECT_FALSE(IsMissing("MtFileList"));
  EXPECT_EQ(dialogs.lists.size(), 1U);
  EXPECT_EQ(LabelText("HelpLabel"), "All missing sounds were found.");
  EXPECT_TRUE(IsModified());
  Button("UndoBtn").click();
  EXPECT_TRUE(IsMissing("BootFileList"));
  EXPECT_TRUE(IsMissing("MtFileList"));
  EXPECT_FALSE(IsModified());
}

TEST_F(MissingSounds, ThoseThatAreMissingStillAreToldAgain) {
  fs::remove(folder / "attic" / "deep" / "s5.lsu");
  dialogs.listAnswers = {true, true, false};
  dialogs.folders = {Text(folder / "attic"), Text(folder / "attic")};
  Open();
  ASSERT_EQ(dialogs.lists.size(), 3U);
  EXPECT_EQ(dialogs.lists[1].headline, "1 of 2 sounds were found. These are not below that folder, or are not valid:");
  EXPECT_EQ(dialogs.lists[1].lines, QStringList{Text(folder / "s5.lsu")});
  EXPECT_EQ(dialogs.lists[2].headline, "0 of 1 sounds were found. These are not below that folder, or are not valid:");
}

TEST_F(MissingSounds, StayWhereNobodyPointsAtAFolder) {
  dialogs.listAnswers = {true};
  dialogs.folders = {QString()};
  Open();
  EXPECT_EQ(dialogs.lists.size(), 1U);
  EXPECT_TRUE(IsMissing("BootFileList"));
  // The folder where they were is shown first.
  EXPECT_EQ(dialogs.lastStart, Text(folder.Path()));
}

TEST_F(MissingSounds, ASearchGivesTheWindowItsTurnAndStopsWhenThePersonWantsSilence) {
  for (int i = 0; i < 200; ++i) WriteBytes(folder / "attic" / ("file" + std::to_string(i)), "");
  dialogs.listAnswers = {true};
  dialogs.folders = {Text(folder / "attic")};
  bool looked = false;
  When([this] { return Shown("WaitFrame"); },
       [this, &looked] {
         looked = true;
         EXPECT_FALSE(Button("LoadBtn").isEnabled());
         EXPECT_FALSE(Button("UndoBtn").isEnabled());
         EXPECT_EQ(LabelText("HelpLabel"), "Looking for the sounds ... Escape stops.");
         emit Page().stopRequested();
       });
  Open();
  EXPECT_TRUE(looked);
  EXPECT_FALSE(Shown("WaitFrame"));
  EXPECT_TRUE(Button("LoadBtn").isEnabled());
  // Whoever has stopped it gets no further message in the way.
  EXPECT_EQ(dialogs.lists.size(), 1U);
  EXPECT_EQ(LabelText("HelpLabel"), "The search was stopped. Sounds that are missing still: 2.");
  EXPECT_TRUE(IsMissing("BootFileList"));
}

TEST_F(MissingSounds, ASearchEndsWhenTheWindowIsClosed) {
  for (int i = 0; i < 200; ++i) WriteBytes(folder / "attic" / ("file" + std::to_string(i)), "");
  dialogs.listAnswers = {true};
  dialogs.folders = {Text(folder / "attic")};
  bool closed = false;
  QObject::connect(window.get(), &ui::window::Main::closed, [&closed] { closed = true; });
  When([this] { return Shown("WaitFrame"); }, [this] { window->close(); });
  Open();
  EXPECT_TRUE(Until([&closed] { return closed; }));
  EXPECT_EQ(dialogs.lists.size(), 1U);
}

TEST_F(MissingSounds, OneIsLocatedByItsFile) {
  OpenWithMissing();
  dialogs.filesToOpen = {Text(folder / "attic" / "deep" / "s5.lsu")};
  emit Page().locateRequested({core::sound::SlotKind::Motion, 1});
  EXPECT_EQ(dialogs.lastStart, Text(folder.Path()));
  EXPECT_FALSE(IsMissing("MtFileList"));
  EXPECT_TRUE(IsMissing("BootFileList"));
  dialogs.filesToOpen = {Text(set)};
  emit Page().locateRequested({core::sound::SlotKind::Boot, 1});
  EXPECT_EQ(dialogs.errors, std::vector<QString>{"Not a valid file"});
  EXPECT_TRUE(IsMissing("BootFileList"));
  dialogs.filesToOpen = {QString()};
  emit Page().locateRequested({core::sound::SlotKind::Boot, 1});
  EXPECT_EQ(dialogs.errors.size(), 1U);
}

TEST_F(MissingSounds, AllAreLocatedFromTheMenuOfOne) {
  OpenWithMissing();
  dialogs.folders = {Text(folder / "attic")};
  emit Page().locateAllRequested();
  EXPECT_FALSE(IsMissing("BootFileList"));
  EXPECT_EQ(dialogs.lists.size(), 1U);
  // With none missing there is nothing to ask for.
  emit Page().locateAllRequested();
}

TEST_F(MissingSounds, SavingAsksWhatBecomesOfThemAndGoingBackSavesNothing) {
  OpenWithMissing();
  dialogs.missingAnswers = {Answer::GoBack};
  Button("SaveBtn").click();
  ASSERT_EQ(dialogs.missingAsked.size(), 1U);
  EXPECT_EQ(dialogs.missingAsked[0].question, "Sounds of the set \"complete\" are missing: 2.\nSave it without them?");
  EXPECT_EQ(ReadBytes(set), saved);
  EXPECT_TRUE(IsMissing("BootFileList"));
}

TEST_F(MissingSounds, AreLeftOutOfTheFileWhenThePersonSaysSo) {
  OpenWithMissing();
  dialogs.missingAnswers = {Answer::LeaveOut};
  dialogs.filesToSave = {Text(folder / "less.lscfg")};
  Button("SaveBtn").click();
  const std::string text = ReadBytes(folder / "less.lscfg");
  EXPECT_EQ(text.substr(0, 11), "BOOT\r\n\r\n 10");
  EXPECT_NE(text.find("MOTION-0\r\n"), text.npos);
  EXPECT_EQ(text.find("s1.lsu"), text.npos);
  EXPECT_EQ(Names("BootFileList"), QStringList());
  EXPECT_FALSE(IsModified());
  Button("UndoBtn").click();
  EXPECT_TRUE(IsMissing("BootFileList"));
  EXPECT_TRUE(IsModified());
}

TEST_F(MissingSounds, StayInTheFileWhenThePersonKeepsThem) {
  OpenWithMissing();
  dialogs.missingAnswers = {Answer::Keep};
  dialogs.filesToSave = {Text(folder / "same.lscfg")};
  Button("SaveBtn").click();
  EXPECT_EQ(ReadBytes(folder / "same.lscfg"), saved);
  EXPECT_TRUE(IsMissing("BootFileList"));
  EXPECT_FALSE(IsModified());
}

TEST_F(MissingSounds, GoingBackFromThatQuestionKeepsTheUnsavedSet) {
  OpenWithMissing();
  auto& list = Find<QListView>("ImpFileList");
  list.setCurrentIndex(list.model()->index(0, 0));
  QKeyEvent remove(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
  QApplication::sendEvent(&list, &remove);
  ASSERT_TRUE(IsModified());
  dialogs.unsavedAnswers = {Unsaved::Save};
  dialogs.missingAnswers = {Answer::GoBack};
  EXPECT_FALSE(window->close());
  EXPECT_EQ(ReadBytes(set), saved);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(MissingSounds, ThatMovedTogetherWithTheSetAreFoundBesideIt) {
  fs::create_directories(folder / "new place");
  for (const auto& file : fs::directory_iterator(folder.Path()))
    if (file.path().extension() == ".lsu") fs::rename(file.path(), folder / "new place" / file.path().filename());
  for (const auto& file : fs::directory_iterator(folder / "attic" / "deep"))
    fs::rename(file.path(), folder / "new place" / file.path().filename());
  fs::rename(set, folder / "new place" / "complete.lscfg");
  set = folder / "new place" / "complete.lscfg";
  Open();
  EXPECT_TRUE(dialogs.lists.empty());
  EXPECT_FALSE(IsMissing("BootFileList"));
  EXPECT_FALSE(IsMissing("LkfileList"));
  // The file says as much as before: it will lead there again.
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(LabelText("HelpLabel"), "The sounds have moved with the set: they were found beside it.");
  QAction& save = Find<QAction>("SaveAction");
  save.trigger();
  EXPECT_NE(ReadBytes(set).find(Text(folder / "new place" / "s1.lsu").toStdString()), std::string::npos);
}

TEST_F(MissingSounds, ADownloadIsRefusedAsWithAnEmptySlot) {
  window.reset();
  Start();
  OpenWithMissing();
  Button("SendBtn").click();
  EXPECT_EQ(dialogs.errors, std::vector<QString>{"Boot file is missing"});
  EXPECT_FALSE(Shown("DownloadFrame"));
}

}  // namespace
}  // namespace kestrin::support
