// SPDX-License-Identifier: MIT
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "ui/sound/SoundPage.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using Unsaved = ui::kit::Dialogs::Unsaved;

class SetFile : public MainFixture {
 protected:
  void Open(const std::filesystem::path& path) {
    dialogs.filesToOpen = {Text(path)};
    Button("LoadBtn").click();
  }
  /// Makes the set differ from its file.
  void Change() {
    auto& list = Find<QListView>("MtFileList");
    list.setCurrentIndex(list.model()->index(0, 0));
    QKeyEvent remove(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
    QApplication::sendEvent(&list, &remove);
    ASSERT_TRUE(LabelText("SetLabel").endsWith(QString::fromUtf8("\u2022")));
  }
  [[nodiscard]] int Rows(const char* list) const { return Find<QListView>(list).model()->rowCount(); }
  void Drop(const QList<QUrl>& urls, bool taken) {
    QMimeData mime;
    mime.setUrls(urls);
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_EQ(enter.isAccepted(), taken);
    if (!taken) return;
    QDropEvent drop({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
  }
};

TEST_F(SetFile, OpensAndSavesTheSameSet) {
  StartOffline();
  const auto original = CompleteSet();
  Open(original);
  EXPECT_EQ(dialogs.lastFilter, "Light Saber Configuration File (*.lscfg);;All files (*)");
  EXPECT_EQ(LabelText("SetLabel"), "complete");
  EXPECT_EQ(Rows("MtFileList"), 1);
  dialogs.filesToSave = {Text(folder / "copy.lscfg")};
  Button("SaveBtn").click();
  EXPECT_EQ(dialogs.lastSuffix, "lscfg");
  EXPECT_EQ(support::ReadBytes(folder / "copy.lscfg"), support::ReadBytes(original));
  EXPECT_EQ(LabelText("SetLabel"), "copy");
}

TEST_F(SetFile, ChangesNothingWhenADialogIsCancelled) {
  StartOffline();
  dialogs.filesToOpen = {QString()};
  Button("LoadBtn").click();
  dialogs.filesToSave = {QString()};
  Button("SaveBtn").click();
  EXPECT_EQ(LabelText("SetLabel"), "New set");
  EXPECT_TRUE(dialogs.errors.empty());
}

TEST_F(SetFile, RefusesAFileThatIsNoSet) {
  StartOffline();
  Open(support::WriteBytes(folder / "letter.lscfg", "Dear Sir\r\n"));
  ASSERT_EQ(dialogs.errors.size(), 1U);
  EXPECT_TRUE(dialogs.errors[0].startsWith("Not a valid configuration file"));
  EXPECT_EQ(LabelText("SetLabel"), "New set");
}

TEST_F(SetFile, SaysWhyASetCannotBeSaved) {
  StartOffline();
  dialogs.filesToSave = {Text(folder / "nowhere" / "set.lscfg")};
  Button("SaveBtn").click();
  ASSERT_EQ(dialogs.errors.size(), 1U);
  EXPECT_TRUE(dialogs.errors[0].contains("set.lscfg"));
}

TEST_F(SetFile, AsksBeforeAnUnsavedSetIsReplaced) {
  StartOffline();
  const auto set = CompleteSet();
  Open(set);
  Change();
  dialogs.unsavedAnswers = {Unsaved::GoBack};
  Open(set);
  EXPECT_EQ(Rows("MtFileList"), 0);
  dialogs.unsavedAnswers = {Unsaved::Discard};
  Open(set);
  EXPECT_EQ(Rows("MtFileList"), 1);
  EXPECT_EQ(dialogs.unsavedAsked.size(), 2U);
}

TEST_F(SetFile, SavesFirstWhenThePersonWantsThat) {
  StartOffline();
  const auto set = CompleteSet();
  Open(set);
  Change();
  dialogs.unsavedAnswers = {Unsaved::Save};
  dialogs.filesToSave = {Text(folder / "kept.lscfg")};
  Open(set);
  EXPECT_TRUE(std::filesystem::exists(folder / "kept.lscfg"));
  EXPECT_EQ(LabelText("SetLabel"), "complete");
}

TEST_F(SetFile, KeepsTheSetWhenSavingItFirstWasCancelled) {
  StartOffline();
  const auto set = CompleteSet();
  Open(set);
  Change();
  dialogs.unsavedAnswers = {Unsaved::Save};
  dialogs.filesToSave = {QString()};
  Open(set);
  EXPECT_EQ(Rows("MtFileList"), 0);
}

TEST_F(SetFile, AsksBeforeTheWindowIsClosed) {
  StartOffline();
  Open(CompleteSet());
  Change();
  dialogs.unsavedAnswers = {Unsaved::GoBack, Unsaved::Discard};
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(window->close());
}

TEST_F(SetFile, OpensASetThatIsDroppedOntoTheWindow) {
  StartOffline();
  const auto set = CompleteSet();
  Drop({QUrl::fromLocalFile(Text(set))}, true);
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "complete"; }));
}

TEST_F(SetFile, LeavesEverythingElseThatIsDroppedAlone) {
  StartOffline();
  const QUrl set = QUrl::fromLocalFile(Text(CompleteSet()));
  Drop({QUrl::fromLocalFile(Text(folder / "letter.txt"))}, false);
  Drop({set, set}, false);
  Drop({QUrl("http://localhost/set.lscfg")}, false);
}

TEST_F(SetFile, OffersTheRecentSetsLatestFirstAlsoAfterARestart) {
  StartOffline();
  const auto first = CompleteSet();
  std::filesystem::copy_file(first, folder / "other & more.lscfg");
  Open(first);
  Open(folder / "other & more.lscfg");
  window.reset();
  StartOffline();
  QStringList offered;
  const QList<QAction*> actions = Button("LoadBtn").menu()->actions();
  for (const QAction* const action : actions)
    if (!action->toolTip().isEmpty() && action->toolTip().endsWith(".lscfg")) offered.append(action->toolTip());
  EXPECT_EQ(offered, (QStringList{Text(folder / "other & more.lscfg"), Text(first)}));
  actions.back()->trigger();
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "complete"; }));
}

TEST_F(SetFile, OffersTheSetToTryThatCameWithTheProgram) {
  StartOffline();
  for (const QAction* const action : Button("LoadBtn").menu()->actions()) EXPECT_NE(action->text(), "A set to &try");
  window.reset();
  std::filesystem::create_directories(program / "Examples");
  std::filesystem::copy_file(CompleteSet(), program / "Examples" / "demo.lscfg");
  StartOffline();
  const QList<QAction*> actions = Button("LoadBtn").menu()->actions();
  ASSERT_GE(actions.size(), 2);
  EXPECT_EQ(actions[1]->text(), "A set to &try");
  EXPECT_EQ(actions[1]->toolTip(), Text(program / "Examples" / "demo.lscfg"));
  actions[1]->trigger();
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "demo"; }));
}

TEST_F(SetFile, StartsANewSet) {
  StartOffline();
  Open(CompleteSet());
  Button("LoadBtn").menu()->actions().front()->trigger();
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "New set"; }));
  EXPECT_EQ(Rows("MtFileList"), 0);
  EXPECT_TRUE(dialogs.unsavedAsked.empty());
}

TEST_F(SetFile, NewSetOutlivesTheMenuThatSavingFirstFillsAnew) {
  StartOffline();
  Open(CompleteSet());
  Change();
  dialogs.unsavedAnswers = {Unsaved::Save};
  dialogs.filesToSave = {Text(folder / "kept.lscfg")};
  QAction* const action = Button("LoadBtn").menu()->actions().front();
  // Those who listen behind the window hear it only when the action is still there.
  bool heard = false;
  QObject::connect(action, &QAction::triggered, window.get(), [&heard] { heard = true; });
  action->trigger();
  EXPECT_TRUE(heard);
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "New set"; }));
  EXPECT_TRUE(std::filesystem::exists(folder / "kept.lscfg"));
}

TEST_F(SetFile, EveryEntryOfTheMenuHasALetterOrADigit) {
  StartOffline();
  const auto first = CompleteSet();
  std::filesystem::copy_file(first, folder / "other & more.lscfg");
  Open(first);
  Open(folder / "other & more.lscfg");
  QStringList texts;
  for (const QAction* const action : Button("LoadBtn").menu()->actions())
    if (!action->isSeparator()) texts.append(action->text());
  EXPECT_EQ(texts, (QStringList{"&New set", "&1  other && more", "&2  complete"}));
}

TEST_F(SetFile, CtrlSWritesTheNamedSetWithoutADialog) {
  StartOffline();
  const auto set = CompleteSet();
  Open(set);
  const std::string before = support::ReadBytes(set);
  Change();
  QAction& save = Find<QAction>("SaveAction");
  EXPECT_EQ(save.shortcut(), QKeySequence(Qt::CTRL | Qt::Key_S));
  QTest::keyClick(&Find<QListView>("MtFileList"), Qt::Key_S, Qt::ControlModifier);
  EXPECT_NE(support::ReadBytes(set), before);
  EXPECT_NE(support::ReadBytes(set).find("MOTION-0\r\n"), std::string::npos);
  EXPECT_EQ(LabelText("SetLabel"), "complete");
  EXPECT_EQ(LabelText("HelpLabel"), "The set was saved as \"" + Text(set) + "\".");
}

TEST_F(SetFile, CtrlSAsksForTheNameOfASetThatHasNone) {
  StartOffline();
  dialogs.filesToSave = {Text(folder / "named.lscfg")};
  Find<QAction>("SaveAction").trigger();
  EXPECT_EQ(LabelText("SetLabel"), "named");
  EXPECT_TRUE(dialogs.filesToSave.empty());
}

TEST_F(SetFile, TheSaveButtonKeepsItsDialog) {
  StartOffline();
  Open(CompleteSet());
  dialogs.filesToSave = {Text(folder / "copy.lscfg")};
  Button("SaveBtn").click();
  EXPECT_EQ(LabelText("SetLabel"), "copy");
  EXPECT_EQ(Button("SaveBtn").shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
}

TEST_F(SetFile, CtrlSSaysWhyTheSetCannotBeWritten) {
  StartOffline();
  std::filesystem::create_directories(folder / "stick");
  std::filesystem::copy_file(CompleteSet(), folder / "stick" / "set.lscfg");
  Open(folder / "stick" / "set.lscfg");
  std::filesystem::remove_all(folder / "stick");
  Find<QAction>("SaveAction").trigger();
  ASSERT_EQ(dialogs.errors.size(), 1U);
  EXPECT_TRUE(dialogs.errors[0].contains("set.lscfg"));
}

/// Somebody whose home folder holds nothing.
class EmptyHome {
 public:
  explicit EmptyHome(const std::filesystem::path& home) {
    std::filesystem::create_directories(home);
    qputenv("HOME", QByteArray::fromStdString(home.string()));
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((home / ".config").string()));
  }
  ~EmptyHome() {
    qputenv("HOME", m_home);
    if (m_config.isNull())
      qunsetenv("XDG_CONFIG_HOME");
    else
      qputenv("XDG_CONFIG_HOME", m_config);
  }
  EmptyHome(const EmptyHome&) = delete;
  EmptyHome& operator=(const EmptyHome&) = delete;

 private:
  QByteArray m_home = qgetenv("HOME");
  QByteArray m_config = qgetenv("XDG_CONFIG_HOME");
};

#ifndef _WIN32
TEST_F(SetFile, OpenBeginsInAFolderThatExistsAndSuggestsNoFolderAsAName) {
  const EmptyHome home(folder / "home");
  StartOffline();
  dialogs.filesToOpen = {QString()};
  Button("LoadBtn").click();
  // There is no folder for documents.
  EXPECT_EQ(dialogs.lastStart, Text(folder / "home"));
  // Nor one of the set that was used last, after a stick was pulled out.
  std::filesystem::create_directories(folder / "stick" / "sets");
  std::filesystem::copy_file(CompleteSet(), folder / "stick" / "sets" / "set.lscfg");
  Open(folder / "stick" / "sets" / "set.lscfg");
  EXPECT_EQ(LabelText("SetLabel"), "set");
  std::filesystem::remove_all(folder / "stick");
  dialogs.filesToOpen = {QString()};
  Button("LoadBtn").click();
  EXPECT_EQ(dialogs.lastStart, Text(folder / "set.lscfg"));
  Button("LoadBtn").menu()->actions().front()->trigger();
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == "New set"; }));
  dialogs.filesToOpen = {QString()};
  Button("LoadBtn").click();
  EXPECT_EQ(dialogs.lastStart, Text(folder.Path()));
}
#endif

TEST_F(SetFile, TheExplorerGoesWhereTheSetLies) {
  StartOffline();
  EXPECT_EQ(LabelText("FolderLabel"), Text(program));
  std::filesystem::create_directories(folder / "sets");
  std::filesystem::copy_file(CompleteSet(), folder / "sets" / "set.lscfg");
  Open(folder / "sets" / "set.lscfg");
  EXPECT_EQ(LabelText("FolderLabel"), Text(folder / "sets"));
  // One that has no file leaves the person where they are.
  Button("LoadBtn").menu()->actions().front()->trigger();
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == "New set"; }));
  EXPECT_EQ(LabelText("FolderLabel"), Text(folder / "sets"));
}

TEST_F(SetFile, TheExplorerGoesWhereThePersonWasLast) {
  StartOffline();
  std::filesystem::create_directories(folder / "sounds");
  window->findChild<ui::sound::SoundPage*>()->SetFolder(folder / "sounds");
  window->close();
  window.reset();
  StartOffline();
  EXPECT_EQ(LabelText("FolderLabel"), Text(folder / "sounds"));
  window->close();
  window.reset();
  std::filesystem::remove(folder / "sounds");
  StartOffline();
  EXPECT_EQ(LabelText("FolderLabel"), Text(program));
}

TEST_F(SetFile, ReadsKeywordsInAnyLetterCase) {
  StartOffline();
  std::string text = support::ReadBytes(CompleteSet());
  for (const char* const keyword : {"BOOT", "PWRON", "PWROFF", "IDLE", "MOTION-1", "IMPACT-1", "LOCKUP-1"}) {
    std::string small = keyword;
    std::transform(small.begin(), small.end(), small.begin(), [](unsigned char c) { return std::tolower(c); });
    text.replace(text.find(keyword), small.size(), small);
  }
  Open(support::WriteBytes(folder / "small.lscfg", text));
  EXPECT_EQ(dialogs.errors, std::vector<QString>());
  for (const char* const list : {"MtFileList", "ImpFileList", "LkfileList"}) EXPECT_EQ(Rows(list), 1) << list;
  for (const char* const slot : {"BootFileList", "PwrOnFileList", "PwrOffFileList", "IdleFileList"})
    EXPECT_EQ(Rows(slot), 1) << slot;
}

TEST_F(SetFile, ShowsTheSoundPageWhenASetIsOpenedAfterAnLedDriverHasGone) {
  Start("id=4095");
  agent->Unplug();
  Tick("NoticeTimer");
  EXPECT_TRUE(Shown("frmLED"));
  Open(CompleteSet());
  EXPECT_FALSE(Shown("frmLED"));
}

TEST_F(SetFile, ShowsTheSoundPageForANewSetAfterAnLedDriverHasGone) {
  Start("id=4095");
  agent->Unplug();
  Tick("NoticeTimer");
  ASSERT_TRUE(Shown("frmLED"));
  Button("LoadBtn").menu()->actions().front()->trigger();
  EXPECT_TRUE(Until([this] { return !Shown("frmLED"); }));
}

}  // namespace
}  // namespace kestrin::support
