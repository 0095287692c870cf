// SPDX-License-Identifier: MIT
// Sounds and sets whose names are no UTF-8, as old volumes have them: played, put into slots, dragged, saved, opened.

#ifndef _WIN32  // There names are characters.

#include <QAbstractItemModel>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "ui/kit/PathText.h"
#include "ui/sound/SoundRowDelegate.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;

/// Letters of one byte each.
const fs::path kSound =
    "Gr\xFC\xDF"
    "e.lsu";
/// Shown alike, since both odd letters cannot be shown.
const fs::path kOther =
    "Gr\xFC\xE9"
    "e.lsu";
const fs::path kSet = "Schwert f\xFCr mich.lscfg";

class OddNames : public MainFixture {
 protected:
  void SetUp() override {
    fs::create_directories(folder / "odd");
    sound = WriteSoundFile(folder / "odd" / kSound, SomeSamples(100, 20000, 1));
    other = WriteSoundFile(folder / "odd" / kOther, SomeSamples(100, 20000, 2));
    settings.setValue("explorerFolder", Text(folder / "odd"));
    StartOffline();
    ASSERT_TRUE(Until([this] { return Files().model()->rowCount() == 2; }));
  }
  [[nodiscard]] QListView& Files() const { return Find<QListView>("FileList"); }
  [[nodiscard]] QPoint PlaceOf(int row) const { return Files().visualRect(Files().model()->index(row, 0)).center(); }
  void PutIntoSlot(int row) {
    QTest::mouseClick(Files().viewport(), Qt::LeftButton, {}, PlaceOf(row));
    QTest::mouseDClick(Files().viewport(), Qt::LeftButton, {}, PlaceOf(row));
  }
  static void Drop(const QMimeData& dragged, QWidget& where) {
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&where, &enter);
    QDragMoveEvent move({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&where, &move);
    QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&where, &drop);
  }
  /// The row of that sound; the two look the same.
  [[nodiscard]] int RowOf(const fs::path& path) const {
    const auto urls = [this](int row) {
      const std::unique_ptr<QMimeData> dragged(Files().model()->mimeData({Files().model()->index(row, 0)}));
      return dragged->urls();
    };
    return urls(0) == QList{ui::kit::UrlOf(path)} ? 0 : 1;
  }

  fs::path sound;
  fs::path other;
};

TEST_F(OddNames, IsPlayedFromTheExplorer) {
  for (const fs::path& path : {sound, other}) {
    const std::size_t before = player.played.size();
    QTest::mouseClick(Files().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(RowOf(path)));
    ASSERT_TRUE(Until([&] { return player.played.size() > before; })) << LabelText("HelpLabel").toStdString();
    // A header of 44 bytes, then the samples, which in the sound stand behind 4.
    EXPECT_EQ(ReadBytes(player.played.back()).substr(44), ReadBytes(path).substr(4));
    for (const fs::path& each : {sound, other})
      EXPECT_EQ(Files().model()->index(RowOf(each), 0).data(ui::sound::SoundRowDelegate::kPlayingRole).toBool(),
                each == path);
  }
}

TEST_F(OddNames, IsDraggedOutAndIn) {
  const QModelIndex row = Files().model()->index(RowOf(other), 0);
  const std::unique_ptr<QMimeData> dragged(Files().model()->mimeData({row}));
  auto& boot = Find<QListView>("BootFileList");
  Drop(*dragged, *boot.viewport());
  ASSERT_EQ(boot.model()->rowCount(), 1);
  const std::unique_ptr<QMimeData> again(boot.model()->mimeData({boot.model()->index(0, 0)}));
  ASSERT_EQ(again->urls().size(), 1);
  EXPECT_EQ(ui::kit::PathOf(again->urls().constFirst()), other);
}

TEST_F(OddNames, OfASetAndItsSoundsLastFromSavingToTheNextStart) {
  const fs::path set = folder / kSet;
  // A dialog can tell plain names only; this set comes under its own from elsewhere.
  PutIntoSlot(RowOf(other));
  dialogs.filesToSave = {Text(folder / "plain.lscfg")};
  Button("SaveBtn").click();
  fs::rename(folder / "plain.lscfg", set);
  window->OpenSet(set);
  const auto& boot = Find<QListView>("BootFileList");
  const auto held = [&] {
    const std::unique_ptr<QMimeData> dragged(boot.model()->mimeData({boot.model()->index(0, 0)}));
    return dragged->urls().isEmpty() ? fs::path() : ui::kit::PathOf(dragged->urls().constFirst());
  };
  EXPECT_EQ(held(), other);
  EXPECT_TRUE(dialogs.errors.empty());
  // Saved without a dialog, to its own name.
  fs::remove(set);
  window->findChild<QAction*>("SaveAction")->trigger();
  EXPECT_TRUE(fs::exists(set));
  settings.sync();
  EXPECT_EQ(ui::kit::PathsOfSetting(settings.value("recentSets")).front(), set);
}

TEST_F(OddNames, IsOpenedFromTheRecentSetsAndByDrop) {
  const fs::path set = folder / kSet;
  fs::copy(CompleteSet(), set);
  QMimeData dragged;
  dragged.setUrls({ui::kit::UrlOf(set)});
  Drop(dragged, *window);
  ASSERT_TRUE(Until([this] { return Find<QListView>("BootFileList").model()->rowCount() == 1; }));
  const QMenu& menu = *Button("LoadBtn").menu();
  menu.actions().front()->trigger();
  ASSERT_TRUE(Until([this] { return Find<QListView>("BootFileList").model()->rowCount() == 0; }));
  menu.actions().back()->trigger();
  EXPECT_TRUE(Until([this] { return Find<QListView>("BootFileList").model()->rowCount() == 1; }));
  EXPECT_TRUE(dialogs.errors.empty());
}

}  // namespace
}  // namespace kestrin::support

#endif
