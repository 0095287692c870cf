// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QScrollBar>
#include <QToolButton>

#include "SoundPageFixture.h"
#include "ui/sound/PathLabel.h"
#include "ui/sound/SoundRowDelegate.h"

namespace kestrin::ui::sound {
namespace {

class FileExplorerTest : public SoundPageFixture {
 protected:
  void Choose(int drive) {
    auto* drives = Get<QComboBox>("DriveList");
    drives->setCurrentIndex(drive);
    emit drives->activated(drive);
  }
};

TEST_F(FileExplorerTest, TheDriveListBeginsWithDesktopAndMyDocuments) {
  Open();
  const auto* drives = Get<QComboBox>("DriveList");
  ASSERT_EQ(drives->count(), 4);
  EXPECT_EQ(drives->itemText(0), "Desktop");
  EXPECT_EQ(drives->itemText(1), "My Documents");
  EXPECT_EQ(drives->itemText(2), "Root");
  EXPECT_EQ(drives->itemText(3), "Stick");
}

TEST_F(FileExplorerTest, WithoutAnyDriveTheTwoPlacesAreStillThere) {
  FakeFolders none;
  SoundPage other(set, none);
  const auto* drives = other.findChild<QComboBox*>("DriveList");
  ASSERT_EQ(drives->count(), 2);
  EXPECT_EQ(drives->itemText(0), "Desktop");
  EXPECT_EQ(drives->itemText(1), "My Documents");
  // A system that does not know its desktop: choosing it does nothing.
  emit const_cast<QComboBox*>(drives)->activated(0);
}

TEST_F(FileExplorerTest, AFolderSelectsTheInnermostDriveItLiesOn) {
  std::filesystem::create_directories(folder / "fonts");
  Open();
  EXPECT_EQ(Get<QComboBox>("DriveList")->currentText(), "Stick");
  ShowFolder([&] { page->SetFolder(folder.Path().parent_path()); });
  EXPECT_EQ(Get<QComboBox>("DriveList")->currentText(), "Root");
  ShowFolder([&] { page->SetFolder(folder / "fonts"); });
  EXPECT_EQ(Get<QComboBox>("DriveList")->currentText(), "Stick");
}

TEST_F(FileExplorerTest, AFolderOnNoDriveSelectsNone) {
  Open();
  folders.drives = {{"Stick", folder.Path()}};
  SoundPage other(set, folders);
  const auto* drives = other.findChild<QComboBox*>("DriveList");
  other.SetFolder(folder.Path());
  EXPECT_EQ(drives->currentText(), "Stick");
  other.SetFolder(folder.Path().parent_path());
  EXPECT_EQ(drives->currentIndex(), -1);
}

TEST_F(FileExplorerTest, EveryPlaceShowsItsFiles) {
  Open();
  support::WriteSoundFile(folder / "desktop" / "d.lsu", support::SomeSamples(100));
  support::WriteSoundFile(folder / "documents" / "m.lsu", support::SomeSamples(100));
  Sound("s.lsu", 100);
  ShowFolder([&] { Choose(0); });
  EXPECT_EQ(Shown("FileList"), "d.lsu");
  ShowFolder([&] { Choose(1); });
  EXPECT_EQ(Shown("FileList"), "m.lsu");
  ShowFolder([&] { Choose(3); });
  EXPECT_EQ(Shown("FileList"), "s.lsu");
}

TEST_F(FileExplorerTest, OnlySoundFilesAreListedAsPeopleCount) {
  for (const char* name : {"swing 10.lsu", "swing 2.LSU", "Boot.lsu", "notes.txt", "lsu", "a.lsu.bak"})
    Sound(name, 4800);
  std::filesystem::create_directories(folder / "folder.lsu");
  std::filesystem::create_directories(folder / ".hidden");
  Open();
  EXPECT_EQ(Shown("FileList"), "Boot.lsu swing 2.LSU swing 10.lsu");
  EXPECT_EQ(Shown("DirList"), "desktop documents folder.lsu");
}

TEST_F(FileExplorerTest, FilesShowDurationAndSize) {
  Sound("a.lsu", 72000);
  Open();
  const QModelIndex file = IndexOf("FileList", "a.lsu");
  EXPECT_EQ(file.data(SoundRowDelegate::kTimeRole).toString(), "1.5 s");
  // 144,004 bytes in units of 1,024.
  EXPECT_EQ(file.data(SoundRowDelegate::kSizeRole).toString(), "141 kB");
}

TEST_F(FileExplorerTest, FoldersOpenByDoubleClickAndByEnterAndLeadBackUp) {
  std::filesystem::create_directories(folder / "fonts" / "ember");
  Open();
  ShowFolder([&] { DoubleClick("DirList", "fonts"); });
  EXPECT_EQ(Shown("DirList"), "ember");
  EXPECT_EQ(Text("FolderLabel"), (folder / "fonts").string());
  Click("DirList", "ember");
  ShowFolder([&] { QTest::keyClick(List("DirList"), Qt::Key_Return); });
  EXPECT_EQ(Text("FolderLabel"), (folder / "fonts" / "ember").string());
  EXPECT_EQ(Shown("DirList"), "");
  ShowFolder([&] { Get<QToolButton>("UpBtn")->click(); });
  EXPECT_EQ(Text("FolderLabel"), (folder / "fonts").string());
  // The folder that was left is found again at once.
  EXPECT_EQ(List("DirList")->currentIndex().data().toString(), "ember");
  List("DirList")->setFocus();
  ShowFolder([&] { QTest::keyClick(List("DirList"), Qt::Key_Backspace); });
  EXPECT_EQ(Shown("DirList"), "desktop documents fonts");
}

TEST_F(FileExplorerTest, ThePathGoesOnInFurtherLinesWhereOneIsTooShort) {
  PathLabel label;
  label.setText("/home/anna/Documents/Sabers/Ember Knight");
  const auto widthOf = [&label](const QString& text) { return label.fontMetrics().horizontalAdvance(text); };
  EXPECT_EQ(label.Lines(widthOf(label.text())), QStringList{label.text()});
  // Lines break behind separators only.
  const QString first = "/home/anna/Documents/";
  EXPECT_EQ(label.Lines(widthOf(first) + 1), (QStringList{first, "Sabers/Ember Knight"}));
  EXPECT_EQ(label.heightForWidth(widthOf(first) + 1), 2 * label.fontMetrics().lineSpacing());
  // A name that is longer than the line breaks at any letter, and none of it is lost.
  label.setText("/" + QString(40, 'w'));
  EXPECT_EQ(label.Lines(widthOf(QString(25, 'w')) + 1), (QStringList{"/", QString(25, 'w'), QString(15, 'w')}));
  label.setText("C:\\Sounds\\Ember Knight");
  EXPECT_EQ(label.Lines(widthOf("Ember Knight")), (QStringList{"C:\\Sounds\\", "Ember Knight"}));
}

TEST_F(FileExplorerTest, APathOfMoreThanThreeLinesLosesItsMiddle) {
  PathLabel label;
  label.setText("/first folder/second folder/third folder/fourth folder/fifth folder");
  const QStringList lines = label.Lines(label.fontMetrics().horizontalAdvance("\u2026/fourth folder/"));
  EXPECT_EQ(lines, (QStringList{"/first folder/", "\u2026/fourth folder/", "fifth folder"}));
}

TEST_F(FileExplorerTest, TheLabelIsAsHighAsItsPath) {
  Open();
  auto* const label = Get<PathLabel>("FolderLabel");
  const QFontMetrics metrics = label->fontMetrics();
  // Longer than the explorer is wide, yet no longer than three lines of it.
  std::filesystem::path deep = folder.Path();
  while (metrics.horizontalAdvance(kit::TextOf(deep)) < label->width() * 5 / 4) deep /= "folder";
  std::filesystem::create_directories(deep);
  ShowFolder([&] { page->SetFolder(deep); });
  QApplication::processEvents();
  const QStringList lines = label->Lines(label->width());
  EXPECT_GT(lines.size(), 1);
  EXPECT_EQ(lines.join(QString()), kit::TextOf(deep));
  EXPECT_GE(label->height(), lines.size() * metrics.lineSpacing());
}

TEST_F(FileExplorerTest, EvenAnEmptyFolderLeadsUpByKey) {
  std::filesystem::create_directories(folder / "fonts");
  Open();
  ShowFolder([&] { DoubleClick("DirList", "fonts"); });
  List("DirList")->setFocus();
  ShowFolder([&] { QTest::keyClick(List("DirList"), Qt::Key_Backspace); });
  EXPECT_EQ(List("DirList")->currentIndex().data().toString(), "fonts");
}

TEST_F(FileExplorerTest, ANewFileAppearsByItself) {
  Open();
  ShowFolder([&] { Sound("new.lsu", 100); });
  EXPECT_EQ(Shown("FileList"), "new.lsu");
}

TEST_F(FileExplorerTest, ADriveThatIsPluggedInIsThereWhenTheListOpens) {
  Open();
  auto* drives = Get<QComboBox>("DriveList");
  std::filesystem::create_directories(folder / "card");
  support::WriteSoundFile(folder / "card" / "k.lsu", support::SomeSamples(100));
  folders.drives.insert(folders.drives.begin(), {"Card", folder / "card"});
  drives->showPopup();
  ASSERT_EQ(drives->count(), 5);
  EXPECT_EQ(drives->itemText(0), "Desktop");
  EXPECT_EQ(drives->itemText(1), "My Documents");
  EXPECT_EQ(drives->itemText(2), "Card");
  EXPECT_EQ(drives->currentText(), "Stick");
  drives->hidePopup();
  ShowFolder([&] { Choose(2); });
  EXPECT_EQ(Shown("FileList"), "k.lsu");
  // And one that was pulled out is gone, also when it is the one that is shown.
  folders.drives.erase(folders.drives.begin());
  drives->showPopup();
  EXPECT_EQ(drives->count(), 4);
  EXPECT_EQ(drives->currentIndex(), -1);
  drives->hidePopup();
}

TEST_F(FileExplorerTest, ReadingTheFolderAgainLeavesThePersonWhereTheyWere) {
  for (const char* name : {"b.lsu", "c.lsu", "d.lsu", "e.lsu", "f.lsu"}) Sound(name, 100);
  Open();
  Click("DirList", "documents");
  Click("FileList", "b.lsu");
  Click("FileList", "d.lsu", Qt::ShiftModifier);
  const auto chosen = [&] {
    QStringList names;
    for (const QModelIndex& index : List("FileList")->selectionModel()->selectedRows())
      names.append(index.data().toString());
    names.sort();
    return names.join(QLatin1Char(' ')).toStdString();
  };
  const auto keyboard = [&](const char* list) { return List(list)->currentIndex().data().toString(); };
  ASSERT_EQ(chosen(), "b.lsu c.lsu d.lsu");

  // A preview's copy, which is not shown.
  ShowFolder([&] { support::WriteBytes(folder / "temp.wav", "RIFF"); });
  EXPECT_EQ(chosen(), "b.lsu c.lsu d.lsu");
  EXPECT_EQ(keyboard("FileList"), "d.lsu");
  EXPECT_EQ(keyboard("DirList"), "documents");

  ShowFolder([&] {
    Sound("a.lsu", 100);
    std::filesystem::create_directories(folder / "another");
  });
  EXPECT_EQ(Shown("FileList"), "a.lsu b.lsu c.lsu d.lsu e.lsu f.lsu");
  EXPECT_EQ(chosen(), "b.lsu c.lsu d.lsu");
  EXPECT_EQ(keyboard("FileList"), "d.lsu");
  EXPECT_EQ(keyboard("DirList"), "documents");
  EXPECT_EQ(Text("SelectedSoundLabel"), "d.lsu");

  ShowFolder([&] { std::filesystem::remove(folder / "c.lsu"); });
  EXPECT_EQ(chosen(), "b.lsu d.lsu");
  ShowFolder([&] { std::filesystem::remove(folder / "d.lsu"); });
  EXPECT_EQ(chosen(), "b.lsu");
  EXPECT_FALSE(List("FileList")->currentIndex().isValid());
}

TEST_F(FileExplorerTest, ReadingTheFolderAgainChoosesNothing) {
  for (const char* name : {"b.lsu", "c.lsu"}) Sound(name, 100);
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  Click("FileList", "c.lsu");
  Click("MtFileList", "motion 2.lsu");
  List("FileList")->setFocus(Qt::TabFocusReason);
  ShowFolder([&] { Sound("a.lsu", 100); });
  EXPECT_EQ(List("FileList")->currentIndex().data().toString(), "c.lsu");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 2");
}

TEST_F(FileExplorerTest, ReadingTheFolderAgainScrollsNowhere) {
  for (int number = 1; number <= 60; ++number) Sound(std::to_string(number) + ".lsu", 100);
  Open();
  Click("FileList", "2.lsu");
  QScrollBar* bar = List("FileList")->verticalScrollBar();
  bar->setValue(bar->maximum());
  const int place = bar->value();
  ASSERT_GT(place, 10);
  ShowFolder([&] { Sound("61.lsu", 100); });
  EXPECT_EQ(bar->value(), place);
}

TEST_F(FileExplorerTest, AFolderThatIsGoneIsEmpty) {
  Sound("a.lsu", 100);
  Open();
  ShowFolder([&] { page->SetFolder(folder / "no such folder"); });
  EXPECT_EQ(Shown("FileList"), "");
  EXPECT_EQ(Shown("DirList"), "");
}

TEST_F(FileExplorerTest, EnterAddsAllChosenFilesInOneStep) {
  for (const char* name : {"a.lsu", "b.lsu", "c.lsu"}) Sound(name, 100);
  Open();
  page->FocusSlot(core::sound::SlotKind::Motion);
  Click("FileList", "a.lsu");
  Click("FileList", "c.lsu", Qt::ShiftModifier);
  QTest::keyClick(List("FileList"), Qt::Key_Return);
  EXPECT_EQ(Shown("MtFileList"), "a.lsu b.lsu c.lsu");
  page->UndoAction()->trigger();
  EXPECT_EQ(Shown("MtFileList"), "");
}

}  // namespace
}  // namespace kestrin::ui::sound
