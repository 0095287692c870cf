// SPDX-License-Identifier: MIT
#include "ui/stage/TryList.h"

#include <gtest/gtest.h>

#include <QTest>
#include <vector>

#include "support/SoundSetFixture.h"
#include "ui/kit/ThemeColors.h"
#include "ui/stage/StagePlaces.h"
#include "ui/stage/TryRowDelegate.h"
#include "ui/stage/TryRows.h"

namespace kestrin::ui::stage {
namespace {

using core::sound::SlotKind;
using core::sound::SoundPlace;

class TryListTest : public support::SoundSetFixture {
 protected:
  void Open() {
    rows.emplace(set);
    list.emplace(*rows);
    list->setPalette(kit::PaletteOf({.isDark = true}));
    list->resize(300, 500);
    list->show();
    QObject::connect(&*list, &TryList::chosen, [this](const SoundPlace& place) { chosen.push_back(place); });
    QObject::connect(&*rows, &TryRows::changed, [this] { ++changes; });
  }
  /// A set with a hum and two swings.
  void OpenThree() {
    ASSERT_TRUE(set.Add(SlotKind::Idle, Sound("hum.lsu", 100)));
    ASSERT_TRUE(set.Add(SlotKind::Motion, Sound("one.lsu", 101)));
    ASSERT_TRUE(set.Add(SlotKind::Motion, Sound("two.lsu", 102)));
    Open();
  }
  [[nodiscard]] QRect RowOf(const SoundPlace& place) const { return list->visualRect(rows->IndexOf(place)); }
  [[nodiscard]] QPoint Bar(const SoundPlace& place, double share) const {
    const QRect bar = TryRowDelegate::VolumeRect(RowOf(place), list->fontMetrics());
    // Beside the bar there is room of eight pixels.
    return {bar.left() + 8 + static_cast<int>((bar.width() - 16) * share), bar.center().y()};
  }
  [[nodiscard]] std::string Told(const SoundPlace& place) const {
    return rows->IndexOf(place).data(Qt::AccessibleTextRole).toString().toStdString();
  }

  std::optional<TryRows> rows;
  std::optional<TryList> list;
  std::vector<SoundPlace> chosen;
  int changes = 0;
};

constexpr SoundPlace kOne{SlotKind::Motion, 1};
constexpr SoundPlace kTwo{SlotKind::Motion, 2};

TEST_F(TryListTest, ShowsAllSlotsWithTheirSounds) {
  OpenThree();
  std::vector<std::string> told;
  for (int row = 0; row < rows->rowCount(); ++row)
    told.push_back(rows->index(row).data(Qt::AccessibleTextRole).toString().toStdString());
  EXPECT_EQ(told,
            (std::vector<std::string>{"Boot: no sound", "Power On: no sound", "Power Off: no sound", "Idle",
                                      "Idle: hum.lsu, volume 100 %", "Motion", "Motion 1: one.lsu, volume 100 %",
                                      "Motion 2: two.lsu, volume 100 %", "Impact: no sound", "Lock-up: no sound"}));
  EXPECT_FALSE(rows->PlaceOf(rows->index(3)));
}

TEST_F(TryListTest, LightsWhatSounds) {
  OpenThree();
  const QRgb dark = list->grab().toImage().pixel(RowOf(kTwo).center());
  rows->Light({kHum, kTwo});
  EXPECT_EQ(Told(kTwo), "Motion 2: two.lsu, volume 100 %, sounding");
  EXPECT_NE(list->grab().toImage().pixel(RowOf(kTwo).center()), dark);
  rows->Light({kHum});
  EXPECT_EQ(Told(kTwo), "Motion 2: two.lsu, volume 100 %");
  EXPECT_EQ(Told(kHum), "Idle: hum.lsu, volume 100 %, sounding");
  EXPECT_EQ(list->grab().toImage().pixel(RowOf(kTwo).center()), dark);
}

TEST_F(TryListTest, ABarIsASliderUnderThePointer) {
  OpenThree();
  QTest::mousePress(list->viewport(), Qt::LeftButton, {}, Bar(kOne, 0.5));
  EXPECT_NEAR(set.At(kOne).Volume(), 50, 2);
  QTest::mouseMove(list->viewport(), Bar(kOne, 0.25));
  EXPECT_NEAR(set.At(kOne).Volume(), 25, 2);
  QTest::mouseMove(list->viewport(), Bar(kOne, 0) - QPoint(100, 60));
  EXPECT_EQ(set.At(kOne).Volume(), 0);
  QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, Bar(kOne, 0));
  QTest::mouseMove(list->viewport(), Bar(kOne, 0.8));
  EXPECT_EQ(set.At(kOne).Volume(), 0) << "nobody holds it any more";
  EXPECT_TRUE(chosen.empty());
  EXPECT_GE(changes, 3);
  // One step, however far it was moved.
  set.Undo();
  EXPECT_EQ(set.At(kOne).Volume(), 100);
  EXPECT_EQ(set.At(kTwo).Volume(), 100);
}

TEST_F(TryListTest, ArrowsSetTheVolumeAndEnterChooses) {
  OpenThree();
  list->setFocus();
  list->setCurrentIndex(rows->IndexOf(kHum));
  QTest::keyClick(&*list, Qt::Key_Left);
  QTest::keyClick(&*list, Qt::Key_Left);
  EXPECT_EQ(set.At(kHum).Volume(), 90);
  QTest::keyClick(&*list, Qt::Key_Right);
  EXPECT_EQ(set.At(kHum).Volume(), 95);
  for (int i = 0; i < 4; ++i) QTest::keyClick(&*list, Qt::Key_Plus);
  EXPECT_EQ(set.At(kHum).Volume(), 100);
  // The titles between are passed over.
  QTest::keyClick(&*list, Qt::Key_Down);
  EXPECT_EQ(rows->PlaceOf(list->currentIndex()), kOne);
  QTest::keyClick(&*list, Qt::Key_Return);
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0], kOne);
}

TEST_F(TryListTest, AVolumeOfMoreThan100GoesDownStepByStepAndNoFurtherUp) {
  OpenThree();
  set.SetVolume(SlotKind::Idle, 1, 150);
  list->setFocus();
  list->setCurrentIndex(rows->IndexOf(kHum));
  QTest::keyClick(&*list, Qt::Key_Right);
  EXPECT_EQ(set.At(kHum).Volume(), 150);
  QTest::keyClick(&*list, Qt::Key_Left);
  EXPECT_EQ(set.At(kHum).Volume(), 145);
}

TEST_F(TryListTest, AClickOnASoundChoosesIt) {
  OpenThree();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, RowOf(kTwo).topLeft() + QPoint(40, 8));
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0], kTwo);
  EXPECT_EQ(set.At(kTwo).Volume(), 100);
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(rows->index(3)).center());
  EXPECT_EQ(chosen.size(), 1U) << "a title";
}

TEST_F(TryListTest, FollowsTheSet) {
  OpenThree();
  rows->Light({kTwo});
  ASSERT_TRUE(set.Remove(SlotKind::Motion, 1));
  EXPECT_EQ(Told(kOne), "Motion 1: two.lsu, volume 100 %");
  EXPECT_FALSE(rows->IndexOf(kTwo).isValid());
  rows->Light({kTwo});
  set.Clear();
  EXPECT_EQ(rows->rowCount(), 7);
}

TEST_F(TryListTest, ChangesNothingWhileBusyNorOfMissingSounds) {
  OpenThree();
  rows->SetBusy(true);
  rows->SetVolume(rows->IndexOf(kOne), 10);
  EXPECT_EQ(set.At(kOne).Volume(), 100);
  rows->SetBusy(false);
  rows->SetVolume(rows->IndexOf(kOne), 140);
  EXPECT_EQ(set.At(kOne).Volume(), 100);
  rows->SetVolume(rows->index(0), 10);
  rows->SetVolume({}, 10);
}

}  // namespace
}  // namespace kestrin::ui::stage
