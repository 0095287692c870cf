// SPDX-License-Identifier: MIT
// How the import sheet is reached in the window, with the libraries that read sounds.

#include <QComboBox>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <cmath>
#include <filesystem>
#include <numbers>

#include "platform/archive/ZipArchives.h"
#include "platform/audio/SystemAudioTools.h"
#include "ui/kit/PathText.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class ImportInMain : public MainFixture {
 protected:
  ImportInMain() {
    audio = &tools;
    archives = &zips;
    std::filesystem::create_directories(folders.documents);
    std::filesystem::create_directories(folder / "heron");
  }
  /// A WAV file of a tone: two channels of 16 bits at 44,100 samples a second.
  std::filesystem::path Wav(const std::string& name, double seconds = 0.5) {
    const auto frames = static_cast<std::uint32_t>(44100 * seconds);
    std::string bytes;
    const auto put = [&bytes](std::uint32_t value, int size) {
      for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
    };
    bytes += "RIFF";
    put(36 + 4 * frames, 4);
    bytes += "WAVEfmt ";
    put(16, 4);
    put(1, 2);
    put(2, 2);
    put(44100, 4);
    put(44100 * 4, 4);
    put(4, 2);
    put(16, 2);
    bytes += "data";
    put(4 * frames, 4);
    for (std::uint32_t i = 0; i < frames; ++i) {
      const auto sample = static_cast<std::int16_t>(8000 * std::sin(2 * std::numbers::pi * 440 * i / 44100.0));
      for (int channel = 0; channel < 2; ++channel) put(static_cast<std::uint16_t>(sample), 2);
    }
    return WriteBytes(folder / "heron" / name, bytes);
  }
  QListView& Rows() { return Find<QListView>("ImportList"); }
  void AwaitSheet(int rows) {
    ASSERT_TRUE(Until([this, rows] { return Shown("ImportFrame") && Rows().model()->rowCount() == rows; }));
    ASSERT_TRUE(Until([this] { return Find<QPushButton>("ImportTakeBtn").isEnabled(); }));
  }
  void Take() {
    Find<QPushButton>("ImportTakeBtn").click();
    ASSERT_TRUE(Until([this] { return !Shown("ImportFrame"); }));
  }
  [[nodiscard]] QStringList Sounds(const char* list) const {
    const QAbstractItemModel& model = *Find<QListView>(list).model();
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row) names.append(model.index(row, 0).data().toString());
    return names;
  }
  /// Drops these onto the window's ground; false when it does not take them.
  bool Drop(const std::vector<std::filesystem::path>& paths) {
    QMimeData dragged;
    QList<QUrl> urls;
    for (const std::filesystem::path& path : paths) urls.append(ui::kit::UrlOf(path));
    dragged.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &drop);
    return drop.isAccepted();
  }

  platform::audio::SystemAudioTools tools;
  platform::archive::ZipArchives zips{disk};
};

TEST_F(ImportInMain, TheToolAsksForFilesAndPutsThemIntoTheSet) {
  Start();
  const std::filesystem::path swing = Wav("swing 1.wav");
  const std::filesystem::path boot = Wav("boot.wav", 1);
  dialogs.manyToOpen = {{Text(swing), Text(boot)}};
  Button("ImportBtn").click();
  AwaitSheet(2);
  EXPECT_EQ(Rows().model()->index(0, 0).data().toString(), "boot.wav");
  Take();
  EXPECT_EQ(Sounds("BootFileList"), QStringList{"boot.lsu"});
  EXPECT_EQ(Sounds("MtFileList"), QStringList{"swing 1.lsu"});
  EXPECT_EQ(Find<QAction>("UndoAction").text(), "Undo: Import 2 sounds");
  EXPECT_TRUE(LabelText("HelpLabel").startsWith("2 sounds were imported. The new files are in "));
  // Half a second at the board's rate, whatever the file's was.
  EXPECT_EQ(std::filesystem::file_size(folders.documents / "Kestrin sounds" / "heron" / "swing 1.lsu"), 4U + 2 * 24000);
}

TEST_F(ImportInMain, TheKeyAndTheMenuDoTheSame) {
  Start();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  dialogs.manyToOpen = {{Text(Wav("hum.wav", 2))}};
  QTest::keyClick(window.get(), Qt::Key_I, Qt::ControlModifier);
  AwaitSheet(1);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(Shown("ImportFrame"));
  Wav("clash.wav");
  dialogs.folders = {Text(folder / "heron")};
  const QList<QAction*> entries = Button("ImportBtn").menu()->actions();
  ASSERT_EQ(entries.size(), 2);
  EXPECT_EQ(entries[0]->text(), "&Sounds ...");
  EXPECT_EQ(entries[1]->text(), "A &folder of sounds ...");
  entries[1]->trigger();
  AwaitSheet(2);
  EXPECT_TRUE(LabelText("ImportSummary").startsWith("2 files from \"heron\", 2 of them ready."));
}

TEST_F(ImportInMain, FilesFoldersAndSetsCanBeDropped) {
  Start();
  Wav("swing.wav");
  ASSERT_TRUE(Drop({folder / "heron"}));
  AwaitSheet(1);
  // More of them join.
  ASSERT_TRUE(Drop({Wav("hit.wav")}));
  AwaitSheet(2);
  QTest::keyClick(&Rows(), Qt::Key_Escape);
  EXPECT_FALSE(Drop({WriteBytes(folder / "letter.txt", "x")}));
  EXPECT_FALSE(Drop({Wav("hit.wav"), WriteBytes(folder / "letter.txt", "x")}));
  ASSERT_TRUE(Drop({CompleteSet()}));
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel").contains("complete"); }));
  EXPECT_FALSE(Shown("ImportFrame"));
}

TEST_F(ImportInMain, CannotBeOpenedDuringADownloadOrOverAnotherSheet) {
  Start();
  const std::filesystem::path swing = Wav("swing.wav");
  window->OpenSet(CompleteSet());
  bool tried = false;
  WhenInformation("Downloading...", [&, this] {
    tried = true;
    EXPECT_FALSE(Button("ImportBtn").isEnabled());
    EXPECT_EQ(Button("ImportBtn").toolTip(), "Please wait until this is done.");
    EXPECT_FALSE(Drop({swing}));
  });
  Button("SendBtn").click();
  EXPECT_TRUE(tried);
  Find<QPushButton>("CancelBtn").click();
  EXPECT_TRUE(Button("ImportBtn").isEnabled());
  Find<QAction>("ConnectionAction").trigger();
  ASSERT_TRUE(Shown("DoctorFrame"));
  EXPECT_FALSE(Drop({swing}));
}

TEST_F(ImportInMain, TheExplorerShowsOtherSoundsWhereThePersonWantsThat) {
  Wav("swing.wav");
  WriteSoundFile(folder / "heron" / "own.lsu", SomeSamples(4800));
  Start();
  window->OpenPath(folder / "heron");
  ASSERT_TRUE(Until([this] { return Sounds("FileList") == QStringList{"own.lsu"}; }));
  auto& filter = Find<QComboBox>("FilterList");
  EXPECT_EQ(filter.currentText(), "Sounds for the board");
  filter.setCurrentIndex(1);
  emit filter.activated(1);
  ASSERT_TRUE(Until([this] { return Sounds("FileList") == QStringList{"own.lsu", "swing.wav"}; }));
  EXPECT_EQ(settings.value("explorerFilter").toString(), "all");
  // Adding such a sound opens the sheet, for the chosen slot.
  auto& files = Find<QListView>("FileList");
  files.setCurrentIndex(files.model()->index(1, 0));
  files.selectionModel()->select(files.model()->index(1, 0), QItemSelectionModel::ClearAndSelect);
  QTest::keyClick(&files, Qt::Key_Return);
  AwaitSheet(1);
  Take();
  EXPECT_EQ(Sounds("BootFileList"), QStringList{"swing.lsu"});
  // One for the board goes in as it is.
  files.selectionModel()->setCurrentIndex(files.model()->index(0, 0), QItemSelectionModel::ClearAndSelect);
  QTest::keyClick(&files, Qt::Key_Return);
  EXPECT_EQ(Sounds("BootFileList"), QStringList{"own.lsu"});
  EXPECT_FALSE(Shown("ImportFrame"));
  window.reset();
  Start();
  EXPECT_EQ(Find<QComboBox>("FilterList").currentText(), "All sounds") << "it is remembered";
}

TEST_F(ImportInMain, SoundsForTheBoardAreTakenWhereTheyLie) {
  Start();
  const std::filesystem::path own = WriteSoundFile(folder / "heron" / "swing.lsu", SomeSamples(4800));
  Wav("hit.wav");
  ASSERT_TRUE(Drop({folder / "heron"}));
  AwaitSheet(2);
  Take();
  EXPECT_EQ(Sounds("MtFileList"), QStringList{"swing.lsu"});
  EXPECT_EQ(Sounds("ImpFileList"), QStringList{"hit.lsu"});
  EXPECT_TRUE(std::filesystem::exists(own));
  EXPECT_FALSE(std::filesystem::exists(folders.documents / "Kestrin sounds" / "heron" / "swing.lsu"));
}

TEST_F(ImportInMain, ADamagedFileIsToldAndTheOthersGoOn) {
  Start();
  Wav("swing.wav");
  WriteBytes(folder / "heron" / "swing 2.wav", "no sound at all");
  ASSERT_TRUE(Drop({folder / "heron"}));
  AwaitSheet(2);
  EXPECT_TRUE(LabelText("ImportSummary").startsWith("2 files from \"heron\", 1 of them ready."));
  Take();
  EXPECT_EQ(Sounds("MtFileList"), QStringList{"swing.lsu"});
}

TEST_F(ImportInMain, WhatIsHeardIsTheStagedSound) {
  Start();
  ASSERT_TRUE(Drop({Wav("swing.wav")}));
  AwaitSheet(1);
  QTest::keyClick(&Rows(), Qt::Key_P);
  ASSERT_TRUE(Until([this] { return player.played.size() == 1; }));
  QTest::keyClick(&Rows(), Qt::Key_P, Qt::ShiftModifier);
  ASSERT_TRUE(Until([this] { return player.played.size() == 2; }));
  // 44 bytes of header; both copies play half a second.
  EXPECT_EQ(std::filesystem::file_size(player.played.back()), 44U + 2 * 24000);
  const int stops = player.stops;
  QTest::keyClick(&Rows(), Qt::Key_Escape);
  EXPECT_GT(player.stops, stops);
}

TEST_F(ImportInMain, IsNotOfferedWhereNobodyCanReadSounds) {
  audio = nullptr;
  Start();
  EXPECT_FALSE(Shown("ImportBtn"));
  EXPECT_FALSE(Shown("FilterList"));
  EXPECT_FALSE(Drop({Wav("swing.wav")}));
}

TEST_F(ImportInMain, EndingTheProgramEndsTheImport) {
  Start();
  ASSERT_TRUE(Drop({Wav("swing.wav")}));
  AwaitSheet(1);
  window->EndNow();
  EXPECT_FALSE(Shown("ImportFrame"));
  EXPECT_TRUE(window->IsOver());
}

}  // namespace
}  // namespace kestrin::support
