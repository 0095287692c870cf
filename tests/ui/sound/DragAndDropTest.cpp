// SPDX-License-Identifier: MIT
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QUrl>
#include <memory>

#include "SoundPageFixture.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::sound {
namespace {

class DragAndDropTest : public SoundPageFixture {
 protected:
  static constexpr int kBehindAll = -1;

  /// What leaves a list when these rows are dragged.
  std::unique_ptr<QMimeData> Dragged(const char* list, const std::vector<int>& rows) {
    QModelIndexList indexes;
    for (const int row : rows) indexes.append(List(list)->model()->index(row, 0));
    return std::unique_ptr<QMimeData>(List(list)->model()->mimeData(indexes));
  }
  /// What leaves the desktop when these files of the test's folder are dragged.
  std::unique_ptr<QMimeData> Files(const std::vector<std::string>& names) {
    QList<QUrl> urls;
    for (const std::string& name : names) urls.append(QUrl::fromLocalFile(PathText(name)));
    auto data = std::make_unique<QMimeData>();
    data->setUrls(urls);
    return data;
  }
  QPoint PointBefore(const char* list, int row) {
    if (row == kBehindAll) return {20, List(list)->viewport()->height() - 2};
    return List(list)->visualRect(List(list)->model()->index(row, 0)).topLeft() + QPoint(20, 2);
  }
  /// Moves what is dragged over the list, to before that row.
  void Hover(const QMimeData& data, const char* list, int row) {
    QWidget* where = List(list)->viewport();
    QDragEnterEvent enter(PointBefore(list, row), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(where, &enter);
    if (!enter.isAccepted()) return;
    QDragMoveEvent move(PointBefore(list, row), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(where, &move);
  }
  void Leave(const char* list) {
    QDragLeaveEvent leave;
    QApplication::sendEvent(List(list)->viewport(), &leave);
  }
  /// The rows of pixels of a list, from the top, that are in the accent's colour for most of their length.
  std::vector<int> Marks(const char* list) {
    const QImage picture = List(list)->viewport()->grab().toImage();
    const QRgb accent = kit::ColorOf(kit::ColorRole::Accent, List(list)->palette()).rgb();
    std::vector<int> rows;
    for (int y = 0; y < picture.height(); ++y) {
      int pixels = 0;
      for (int x = 0; x < picture.width(); ++x) pixels += static_cast<int>(picture.pixel(x, y) == accent);
      if (pixels > picture.width() / 2) rows.push_back(y);
    }
    return rows;
  }
  /// The names of the selected rows, the one with the keyboard in brackets.
  std::string Selected(const char* list) {
    QStringList names;
    for (const QModelIndex& index : List(list)->selectionModel()->selectedRows()) {
      const QString name = index.data().toString();
      names.append(index == List(list)->currentIndex() ? "[" + name + "]" : name);
    }
    names.sort();
    return names.join(' ').toStdString();
  }
  /// Drops before that row; false when the list does not take it.
  bool Drop(const QMimeData& data, const char* list, int row = kBehindAll, Qt::DropAction action = Qt::MoveAction) {
    QWidget* where = List(list)->viewport();
    const QPoint point = PointBefore(list, row);
    QDragEnterEvent enter(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(where, &enter);
    if (!enter.isAccepted()) return false;
    QDragMoveEvent move(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(where, &move);
    QDropEvent drop(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    drop.setDropAction(action);
    QApplication::sendEvent(where, &drop);
    return drop.isAccepted();
  }
};

TEST_F(DragAndDropTest, FilesFromOutsideGoToWhereTheyAreDropped) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  Sound("a.lsu", 100);
  Sound("b.lsu", 100);
  EXPECT_TRUE(Drop(*Files({"a.lsu", "b.lsu"}), "MtFileList", 1, Qt::CopyAction));
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu a.lsu b.lsu motion 2.lsu");
  page->UndoAction()->trigger();
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 2.lsu");
}

TEST_F(DragAndDropTest, AFolderStandsForItsSounds) {
  Open();
  std::filesystem::create_directories(folder / "clashes");
  for (const char* name : {"clash 10.lsu", "clash 2.lsu", "readme.txt"})
    support::WriteSoundFile(folder / "clashes" / name, support::SomeSamples(100));
  EXPECT_TRUE(Drop(*Files({"clashes"}), "ImpFileList"));
  EXPECT_EQ(Shown("ImpFileList"), "clash 2.lsu clash 10.lsu");
}

TEST_F(DragAndDropTest, ASingleSlotTakesTheFirstSoundOfSeveral) {
  Open();
  Sound("a.lsu", 100);
  Sound("b.lsu", 100);
  EXPECT_TRUE(Drop(*Files({"a.lsu", "b.lsu"}), "IdleFileList"));
  EXPECT_EQ(Shown("IdleFileList"), "a.lsu");
}

TEST_F(DragAndDropTest, WhatIsNoSoundIsNamedInOneMessage) {
  Open();
  Sound("a.lsu", 100);
  support::WriteBytes(folder / "bad.lsu", "bad");
  support::WriteBytes(folder / "song.mp3", "song");
  EXPECT_TRUE(Drop(*Files({"bad.lsu", "a.lsu", "song.mp3"}), "MtFileList"));
  EXPECT_EQ(Shown("MtFileList"), "a.lsu");
  EXPECT_EQ(messages, QStringList{"Not a valid file\nbad.lsu\nsong.mp3"});
  EXPECT_EQ(details, QStringList{'"' + PathText("bad.lsu") +
                                 "\" is too short: a sound has at least 49 samples, a thousandth of a second. "
                                 "Choose a longer one.\n\"" +
                                 PathText("song.mp3") +
                                 "\" is no sound for a board: its name does not end in \".lsu\". Choose one that "
                                 "does."});
}

TEST_F(DragAndDropTest, MoreThanTwelveEndWithOneMessage) {
  Open();
  Fill(core::sound::SlotKind::Lockup, 11);
  std::vector<std::string> names;
  for (int file = 0; file < 4; ++file) {
    names.push_back("more " + std::to_string(file) + ".lsu");
    Sound(names.back(), 100);
  }
  EXPECT_TRUE(Drop(*Files(names), "LkfileList"));
  EXPECT_EQ(set.Count(core::sound::SlotKind::Lockup), 12);
  EXPECT_EQ(messages, QStringList{"Maximum number of Lock-up files reached"});
}

TEST_F(DragAndDropTest, ASetIsLeftToTheWindow) {
  Open();
  EXPECT_FALSE(Drop(*Files({"a.lscfg"}), "MtFileList"));
  QMimeData text;
  text.setText("hello");
  EXPECT_FALSE(Drop(text, "MtFileList"));
}

TEST_F(DragAndDropTest, SoundsMoveBetweenSlotsWithTheirVolumes) {
  Open();
  Fill(core::sound::SlotKind::Motion, 3);
  Fill(core::sound::SlotKind::Impact, 1);
  set.SetVolume(core::sound::SlotKind::Motion, 1, 10);
  set.SetVolume(core::sound::SlotKind::Motion, 3, 30);
  EXPECT_TRUE(Drop(*Dragged("MtFileList", {0, 2}), "ImpFileList", 0));
  EXPECT_EQ(Names(core::sound::SlotKind::Impact), "motion 1.lsu@10 motion 3.lsu@30 impact 1.lsu@100");
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 2.lsu@100");
  page->UndoAction()->trigger();
  EXPECT_EQ(Names(core::sound::SlotKind::Motion), "motion 1.lsu@10 motion 2.lsu@100 motion 3.lsu@30");
}

TEST_F(DragAndDropTest, WithCtrlSoundsAreCopied) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  EXPECT_TRUE(Drop(*Dragged("MtFileList", {0, 1}), "BootFileList", kBehindAll, Qt::CopyAction));
  EXPECT_EQ(Shown("BootFileList"), "motion 1.lsu");
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 2.lsu");
  EXPECT_TRUE(Drop(*Dragged("MtFileList", {0, 1}), "MtFileList", 1, Qt::CopyAction));
  EXPECT_EQ(Shown("MtFileList"), "motion 1.lsu motion 1.lsu motion 2.lsu motion 2.lsu");
}

struct Reorder {
  std::vector<int> rows;
  int before;
  const char* order;
};

TEST_F(DragAndDropTest, AListIsReordered) {
  const std::vector<Reorder> cases{
      {{0}, 3, "2 3 1 4 5"},    {{0}, kBehindAll, "2 3 4 5 1"}, {{4}, 0, "5 1 2 3 4"},
      {{2}, 2, "1 2 3 4 5"},    {{2}, 3, "1 2 3 4 5"},          {{0, 1}, kBehindAll, "3 4 5 1 2"},
      {{1, 3}, 0, "2 4 1 3 5"}, {{0, 4}, 2, "2 1 5 3 4"},       {{0, 2, 4}, 3, "2 1 3 5 4"},
  };
  Open();
  for (const Reorder& each : cases) {
    set.Clear();
    for (int number = 1; number <= 5; ++number)
      ASSERT_EQ(set.Add(core::sound::SlotKind::Motion, Sound(std::to_string(number) + ".lsu", 100)).Text(), "");
    EXPECT_TRUE(Drop(*Dragged("MtFileList", each.rows), "MtFileList", each.before));
    std::string order = Shown("MtFileList");
    for (auto at = order.find(".lsu"); at != order.npos; at = order.find(".lsu")) order.erase(at, 4);
    EXPECT_EQ(order, each.order) << "before row " << each.before;
  }
}

TEST_F(DragAndDropTest, AMarkShowsWhereADropWillLand) {
  Open();
  Fill(core::sound::SlotKind::Motion, 3);
  Sound("a.lsu", 100);
  const auto files = Files({"a.lsu"});
  EXPECT_EQ(Marks("MtFileList"), std::vector<int>{});
  for (const int row : {1, 2, kBehindAll}) {
    Hover(*files, "MtFileList", row);
    const QModelIndex above = List("MtFileList")->model()->index(row == kBehindAll ? 2 : row - 1, 0);
    const int gap = List("MtFileList")->visualRect(above).bottom() + 1;
    EXPECT_EQ(Marks("MtFileList"), (std::vector<int>{gap - 1, gap})) << row;
  }
  Hover(*files, "MtFileList", 0);
  ASSERT_EQ(Marks("MtFileList").size(), 2U);
  EXPECT_LT(Marks("MtFileList").back(), 4);
  Leave("MtFileList");
  EXPECT_EQ(Marks("MtFileList"), std::vector<int>{});
  Hover(*files, "MtFileList", 1);
  EXPECT_TRUE(Drop(*files, "MtFileList", 1));
  EXPECT_EQ(Marks("MtFileList"), std::vector<int>{});
}

TEST_F(DragAndDropTest, AMarkRoundASingleSlotShowsThatItsSoundIsReplaced) {
  Open();
  Sound("a.lsu", 100);
  Hover(*Files({"a.lsu"}), "IdleFileList", kBehindAll);
  const std::vector<int> marks = Marks("IdleFileList");
  ASSERT_FALSE(marks.empty());
  EXPECT_LT(marks.front(), 4);
  EXPECT_GT(marks.back(), List("IdleFileList")->viewport()->height() - 5);
  Leave("IdleFileList");
  EXPECT_EQ(Marks("IdleFileList"), std::vector<int>{});
}

TEST_F(DragAndDropTest, WhatIsNotTakenLeavesNoMark) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  Hover(*Files({"a.lscfg"}), "MtFileList", 1);
  EXPECT_EQ(Marks("MtFileList"), std::vector<int>{});
}

TEST_F(DragAndDropTest, TheSelectionFollowsSoundsThatAreMovedInTheirList) {
  Open();
  Fill(core::sound::SlotKind::Motion, 4);
  Click("MtFileList", "motion 1.lsu");
  EXPECT_TRUE(Drop(*Dragged("MtFileList", {0}), "MtFileList", 3));
  EXPECT_EQ(Shown("MtFileList"), "motion 2.lsu motion 3.lsu motion 1.lsu motion 4.lsu");
  EXPECT_EQ(Selected("MtFileList"), "[motion 1.lsu]");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Motion 3");
  EXPECT_TRUE(Drop(*Dragged("MtFileList", {0, 3}), "MtFileList", 1));
  EXPECT_EQ(Shown("MtFileList"), "motion 2.lsu motion 4.lsu motion 3.lsu motion 1.lsu");
  EXPECT_EQ(Selected("MtFileList"), "[motion 2.lsu] motion 4.lsu");
}

TEST_F(DragAndDropTest, TheSelectionFollowsSoundsIntoAnotherSlot) {
  Open();
  Fill(core::sound::SlotKind::Motion, 3);
  Fill(core::sound::SlotKind::Impact, 2);
  Click("MtFileList", "motion 1.lsu");
  EXPECT_TRUE(Drop(*Dragged("MtFileList", {0, 2}), "ImpFileList", 1));
  EXPECT_EQ(Shown("ImpFileList"), "impact 1.lsu motion 1.lsu motion 3.lsu impact 2.lsu");
  EXPECT_EQ(Selected("ImpFileList"), "[motion 1.lsu] motion 3.lsu");
  EXPECT_EQ(Selected("MtFileList"), "");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Impact 2 and 1 more");
  EXPECT_TRUE(Drop(*Dragged("ImpFileList", {1}), "BootFileList"));
  EXPECT_EQ(Selected("BootFileList"), "[motion 1.lsu]");
  EXPECT_EQ(Text("SelectedPlaceLabel"), "Boot");
}

TEST_F(DragAndDropTest, FilesOfTheExplorerCanBeDropped) {
  Sound("a.lsu", 100);
  Open();
  EXPECT_TRUE(Drop(*Dragged("FileList", {0}), "MtFileList"));
  EXPECT_EQ(Shown("MtFileList"), "a.lsu");
}

TEST_F(DragAndDropTest, WhatLeavesASlotCanBeDroppedElsewhereAsFiles) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  const auto data = Dragged("MtFileList", {1, 0});
  ASSERT_EQ(data->urls().size(), 2);
  EXPECT_EQ(QDir::toNativeSeparators(data->urls().first().toLocalFile()), PathText("motion 1.lsu"));
}

TEST_F(DragAndDropTest, DamagedDataOfAnotherProgramIsNoSound) {
  Open();
  Fill(core::sound::SlotKind::Motion, 1);
  QMimeData data;
  data.setData("application/x-kestrin-sounds", "\x00\x00\x00\x63");
  EXPECT_FALSE(Drop(data, "MtFileList"));
}

TEST_F(DragAndDropTest, WhileBusyNothingIsTaken) {
  Open();
  Fill(core::sound::SlotKind::Motion, 2);
  page->SetBusy(true);
  EXPECT_FALSE(Drop(*Dragged("MtFileList", {0}), "ImpFileList"));
  EXPECT_EQ(set.Count(core::sound::SlotKind::Impact), 0);
}

}  // namespace
}  // namespace kestrin::ui::sound
