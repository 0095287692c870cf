// SPDX-License-Identifier: MIT
#include <QMenu>
#include <QMimeData>
#include <QUrl>

#include "platform/audio/SystemAudioTools.h"
#include "support/FakeArchives.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using Unsaved = ui::kit::Dialogs::Unsaved;

/// Sets with their sounds as one file, in the window.
class PackedSet : public MainFixture {
 protected:
  PackedSet() { archives = &m_archives; }

  [[nodiscard]] fs::path Place() const { return folders.documents / "Kestrin sounds"; }
  void Open(const fs::path& path) {
    dialogs.filesToOpen = {Text(path)};
    Button("LoadBtn").click();
  }
  /// A packed set with one boot sound.
  fs::path Packed(const std::string& name, unsigned seed = 1) {
    return m_archives.Put(
        folder / name,
        {FakeArchives::File("any.lscfg",
                            "BOOT\r\nboot.lsu\r\n 60\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n"
                            " 100\r\nMOTION-0\r\nIMPACT-0\r\nLOCKUP-0\r\n"),
         FakeArchives::File("boot.lsu", SoundFileBytes(SomeSamples(100, 20000, seed)))});
  }
  /// The entry beside Save, as it is when the menu opens.
  [[nodiscard]] QAction& PackAction() const {
    QMenu& menu = *Button("SaveBtn").menu();
    emit menu.aboutToShow();
    QAction* const action = menu.findChild<QAction*>("PackAction");
    if (action == nullptr) throw std::runtime_error("the menu has no such entry");
    return *action;
  }
  /// Chooses it, as a person who has the menu open.
  void ChoosePack() {
    ASSERT_TRUE(PackAction().isEnabled());
    PackAction().trigger();
    QApplication::processEvents();
  }

  FakeArchives m_archives;
};

TEST_F(PackedSet, IsMadeBesideSave) {
  StartOffline();
  Open(CompleteSet());
  const fs::path out = folder / "out.zip";
  dialogs.filesToSave = {Text(out)};
  ChoosePack();
  EXPECT_EQ(dialogs.lastSuffix, "zip");
  EXPECT_EQ(dialogs.lastStart, Text(folder / "complete.zip"));
  ASSERT_TRUE(fs::exists(out));
  const auto& entries = m_archives.At(out);
  ASSERT_EQ(entries.size(), 8U) << "the set and seven sounds";
  EXPECT_EQ(entries[0].about.name, "out.lscfg");
  EXPECT_EQ(entries[1].content, ReadBytes(folder / "s1.lsu"));
  EXPECT_EQ(LabelText("SetLabel"), "complete") << "the set is still its file's";
  EXPECT_TRUE(LabelText("HelpLabel").contains("out.zip"));
}

TEST_F(PackedSet, IsNotMadeOfNothing) {
  StartOffline();
  EXPECT_FALSE(PackAction().isEnabled());
  EXPECT_EQ(PackAction().toolTip(), "There are no sounds in the set. Add some first.");
}

TEST_F(PackedSet, ReplacesAFileThatThePersonWasAskedAbout) {
  StartOffline();
  Open(CompleteSet());
  const fs::path out = WriteBytes(folder / "out.zip", "an old one");
  dialogs.filesToSave = {Text(out)};
  ChoosePack();
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_EQ(ReadBytes(out), "archive");
  for (const auto& entry : fs::directory_iterator(folder.Path())) EXPECT_NE(entry.path().extension(), ".new");
}

TEST_F(PackedSet, SaysWhichSoundsAreMissing) {
  StartOffline();
  Open(CompleteSet());
  fs::remove(folder / "s3.lsu");
  dialogs.filesToSave = {Text(folder / "out.zip")};
  ChoosePack();
  ASSERT_EQ(dialogs.errors.size(), 1U);
  EXPECT_TRUE(dialogs.errors[0].contains("s3.lsu"));
  EXPECT_FALSE(fs::exists(folder / "out.zip"));
}

TEST_F(PackedSet, IsUnpackedAmongTheDocumentsAndOpened) {
  StartOffline();
  Open(Packed("Ember.zip"));
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_EQ(LabelText("SetLabel"), "any");
  EXPECT_TRUE(fs::exists(Place() / "Ember" / "any.lscfg"));
  EXPECT_EQ(ReadBytes(Place() / "Ember" / "boot.lsu"), SoundFileBytes(SomeSamples(100, 20000, 1)));
  EXPECT_TRUE(LabelText("HelpLabel").contains("Ember"));
  Open(folder / "Ember.zip");
  EXPECT_TRUE(fs::exists(Place() / "Ember 2" / "any.lscfg"));
}

TEST_F(PackedSet, ComesFromTheDesktopAndByDrop) {
  StartOffline();
  window->OpenPath(Packed("Ember.zip"));
  ASSERT_TRUE(Until([&] { return LabelText("SetLabel") == "any"; }));
  EXPECT_TRUE(fs::exists(Place() / "Ember" / "any.lscfg"));

  QMimeData mime;
  mime.setUrls({QUrl::fromLocalFile(Text(Packed("Frost.ZIP")))});
  QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(window.get(), &enter);
  ASSERT_TRUE(enter.isAccepted());
  QDropEvent drop({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(window.get(), &drop);
  EXPECT_TRUE(Until([&] { return fs::exists(Place() / "Frost" / "any.lscfg"); }));
}

TEST_F(PackedSet, ThatIsDamagedLeavesTheOpenSetAlone) {
  StartOffline();
  Open(CompleteSet());
  Open(m_archives.Put(folder / "bad.zip", {FakeArchives::File("any.lscfg", "BOOT\r\ngone.lsu\r\n 60\r\n")}));
  ASSERT_EQ(dialogs.errors.size(), 1U);
  EXPECT_TRUE(dialogs.errors[0].contains("gone.lsu"));
  EXPECT_EQ(LabelText("SetLabel"), "complete");
  EXPECT_FALSE(fs::exists(Place() / "bad"));
  Open(WriteBytes(folder / "no archive.zip", "hello"));
  ASSERT_EQ(dialogs.errors.size(), 2U);
  EXPECT_TRUE(dialogs.errors[1].contains("no archive.zip"));
}

TEST_F(PackedSet, AnUnsavedSetIsAskedAboutBeforeAnythingIsUnpacked) {
  StartOffline();
  Open(CompleteSet());
  auto& list = Find<QListView>("MtFileList");
  list.setCurrentIndex(list.model()->index(0, 0));
  QKeyEvent remove(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
  QApplication::sendEvent(&list, &remove);
  dialogs.unsavedAnswers = {Unsaved::GoBack};
  Open(Packed("Ember.zip"));
  EXPECT_EQ(dialogs.unsavedAsked.size(), 1U);
  EXPECT_FALSE(fs::exists(Place()));
}

TEST_F(PackedSet, TheButtonsFitBesideEachOtherInASmallWindow) {
  platform::audio::SystemAudioTools tools;
  audio = &tools;
  Start();
  window->resize(960, 640);
  QApplication::processEvents();
  EXPECT_TRUE(Button("ImportBtn").isVisible());
  EXPECT_EQ(window->width(), 960);
}

}  // namespace
}  // namespace kestrin::support
