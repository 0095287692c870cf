// SPDX-License-Identifier: MIT
#include "SoundPageFixture.h"
#include "support/EventLoopTurns.h"
#include "support/RecordingDisk.h"
#include "ui/sound/SoundRowDelegate.h"

namespace kestrin::ui::sound {
namespace {

class LargeFolderTest : public SoundPageFixture {};

/// The list's own delegate, which counts what is asked of it.
class CountingDelegate : public SoundRowDelegate {
 public:
  using SoundRowDelegate::SoundRowDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    ++asked;
    SoundRowDelegate::paint(painter, option, index);
  }
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    ++asked;
    return SoundRowDelegate::sizeHint(option, index);
  }

  mutable int asked = 0;
};

TEST_F(LargeFolderTest, AFolderOfFiveThousandSoundsIsReadBesideTheWindowAndOnlyWhatIsSeenIsLaidOut) {
  constexpr int kFiles = 5000;
  const std::filesystem::path large = folder / "large";
  std::filesystem::create_directories(large);
  for (int file = 0; file < kFiles; ++file)
    support::WriteBytes(large / ("sound " + std::to_string(file) + ".lsu"), "1234567890");
  Open();
  QListView& list = *List("FileList");
  CountingDelegate counting(&list);
  list.setItemDelegate(&counting);
  QApplication::processEvents();
  counting.asked = 0;
  bool shown = false;
  QObject::connect(Get<FileExplorer>(), &FileExplorer::folderShown, &*page, [&] { shown = true; });
  ShowFolder([&] {
    page->SetFolder(large);
    EXPECT_FALSE(shown) << "whoever opens a folder does not wait for it";
  });
  // Laid out, painted and scrolled to its end.
  QApplication::processEvents();
  list.scrollToBottom();
  QApplication::processEvents();
  EXPECT_EQ(list.model()->rowCount(), kFiles);
  EXPECT_EQ(list.model()->index(kFiles - 1, 0).data().toString(), "sound 4999.lsu");
  EXPECT_GT(counting.asked, 0);
  EXPECT_LT(counting.asked, kFiles / 10);
}

TEST_F(LargeFolderTest, LeavingALargeFolderWhileItIsReadShowsOnlyTheOther) {
  const std::filesystem::path large = folder / "large";
  std::filesystem::create_directories(large);
  for (int file = 0; file < 500; ++file) support::WriteBytes(large / (std::to_string(file) + ".lsu"), "1234567890");
  Sound("a.lsu", 100);
  Open();
  ShowFolder([&] {
    page->SetFolder(large);
    page->SetFolder(folder.Path());
  });
  EXPECT_EQ(Shown("FileList"), "a.lsu");
}

TEST_F(LargeFolderTest, LoadingFortySoundsGivesTheWindowItsTurnBehindEachOfThem) {
  constexpr int kSounds = 40;
  constexpr int kSamples = 60000;
  for (const core::sound::Slot& slot : core::sound::kSlots) Fill(slot.kind, slot.isList ? 12 : 1);
  ASSERT_EQ(set.Save(folder / "full.lscfg", support::AnyDisk()).Text(), "");
  // What a full board holds in sum.
  for (const core::sound::Slot& slot : core::sound::kSlots)
    for (int number = 1; number <= set.Count(slot.kind); ++number)
      Sound(std::string(slot.name) + " " + std::to_string(number) + ".lsu", kSamples);
  Open();
  std::int64_t loaded = configuration.TotalNrOfSamples();
  std::int64_t mostInOneStep = 0;
  const support::EventLoopTurns turns([&] {
    mostInOneStep = std::max(mostInOneStep, configuration.TotalNrOfSamples() - loaded);
    loaded = configuration.TotalNrOfSamples();
  });
  ASSERT_TRUE(
      set.Load(folder / "full.lscfg", [] { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }).valid);
  EXPECT_EQ(configuration.TotalNrOfSamples(), kSounds * kSamples);
  EXPECT_GE(turns.Count(), kSounds);
  EXPECT_EQ(mostInOneStep, kSamples) << "the window waited for more than one sound";
}

}  // namespace
}  // namespace kestrin::ui::sound
