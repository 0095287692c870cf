#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <memory>

#include "SoundPageFixture.h"

namespace kestrin::sound::ui {
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
  /// Drops before that row; false when the list does not take it.
  bool Drop(const QMimeData& data, const char* list, int row = kBehindAll, Qt::DropAction action = Qt::MoveAction) {
    QWidget* where = List(list)->viewport();
    QPoint point(20, where->height() - 2);
    if (row != kBehindAll) point = List(list)->visualRect(List(list)->model()->index(row, 0)).topLeft() + QPoint(20, 2);
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
  Fill(SlotKind::Motion, 2);
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
}

TEST_F(DragAndDropTest, MoreThanTwelveEndWithOneMessage) {
  Open();
  Fill(SlotKind::Lockup, 11);
  std::vector<std::string> names;
  for (int file = 0; file < 4; ++file) {
    names.push_back("more " + std::to_string(file) + ".lsu");
    Sound(names.back(), 100);
  }
  EXPECT_TRUE(Drop(*Files(names), "LkfileList"));
  EXPECT_EQ(set.Count(SlotKind::Lockup), 12);
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
  Fill(SlotKind::Motion, 3);
  Fill(SlotKind::Impact, 1);
  set.SetVolume(SlotKind::Motion, 1, 10);
  set.SetVolume(SlotKind::Motion, 3, 30);
  EXPECT_TRUE(Drop(*Dragged("MtFileList", {0, 2}), "ImpFileList", 0));
  EXPECT_EQ(Names(SlotKind::Impact), "motion 1.lsu@10 motion 3.lsu@30 impact 1.lsu@100");
  EXPECT_EQ(Names(SlotKind::Motion), "motion 2.lsu@100");
  page->UndoAction()->trigger();
  EXPECT_EQ(Names(SlotKind::Motion), "motion 1.lsu@10 motion 2.lsu@100 motion 3.lsu@30");
}

TEST_F(DragAndDropTest, WithCtrlSoundsAreCopied) {
  Open();
  Fill(SlotKind::Motion, 2);
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
      ASSERT_EQ(set.Add(SlotKind::Motion, Sound(std::to_string(number) + ".lsu", 100)), "");
    EXPECT_TRUE(Drop(*Dragged("MtFileList", each.rows), "MtFileList", each.before));
    std::string order = Shown("MtFileList");
    for (auto at = order.find(".lsu"); at != order.npos; at = order.find(".lsu")) order.erase(at, 4);
    EXPECT_EQ(order, each.order) << "before row " << each.before;
  }
}

TEST_F(DragAndDropTest, FilesOfTheExplorerCanBeDropped) {
  Sound("a.lsu", 100);
  Open();
  EXPECT_TRUE(Drop(*Dragged("FileList", {0}), "MtFileList"));
  EXPECT_EQ(Shown("MtFileList"), "a.lsu");
}

TEST_F(DragAndDropTest, WhatLeavesASlotCanBeDroppedElsewhereAsFiles) {
  Open();
  Fill(SlotKind::Motion, 2);
  const auto data = Dragged("MtFileList", {1, 0});
  ASSERT_EQ(data->urls().size(), 2);
  EXPECT_EQ(data->urls().first().toLocalFile(), PathText("motion 1.lsu"));
}

TEST_F(DragAndDropTest, DamagedDataOfAnotherProgramIsNoSound) {
  Open();
  Fill(SlotKind::Motion, 1);
  QMimeData data;
  data.setData("application/x-kestrin-sounds", "\x00\x00\x00\x63");
  EXPECT_FALSE(Drop(data, "MtFileList"));
}

TEST_F(DragAndDropTest, WhileBusyNothingIsTaken) {
  Open();
  Fill(SlotKind::Motion, 2);
  page->SetBusy(true);
  EXPECT_FALSE(Drop(*Dragged("MtFileList", {0}), "ImpFileList"));
  EXPECT_EQ(set.Count(SlotKind::Impact), 0);
}

}  // namespace
}  // namespace kestrin::sound::ui
