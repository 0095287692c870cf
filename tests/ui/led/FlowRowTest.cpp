// SPDX-License-Identifier: MIT
#include "ui/led/FlowRow.h"

#include <gmock/gmock.h>

#include <QVBoxLayout>
#include <QWidget>
#include <vector>

namespace kestrin::ui::led {
namespace {

using ::testing::ElementsAre;

/// A control that would like one size and can do with less.
class Box : public QWidget {
 public:
  Box(const QSize& least, const QSize& wanted) : m_least(least), m_wanted(wanted) {}
  [[nodiscard]] QSize minimumSizeHint() const override { return m_least; }
  [[nodiscard]] QSize sizeHint() const override { return m_wanted; }

 private:
  QSize m_least;
  QSize m_wanted;
};

class FlowRowTest : public testing::Test {
 protected:
  void Add(int least, int wanted, int height, int stretch) {
    auto* const box = new Box({least, height}, {wanted, height});
    m_row->Add(box, stretch);
    m_boxes.push_back(box);
  }
  std::vector<QRect> Places(int width, int height) {
    m_ground.resize(width, height);
    m_row->activate();
    m_row->setGeometry({0, 0, width, height});
    std::vector<QRect> places;
    for (const QWidget* const box : m_boxes) places.push_back(box->geometry());
    return places;
  }

  QWidget m_ground;
  FlowRow* m_row = [this] {
    auto* const row = new FlowRow(10, 4);
    m_ground.setLayout(row);
    return row;
  }();
  std::vector<QWidget*> m_boxes;
};

TEST_F(FlowRowTest, TwoThatStretchAlikeShareTheWidthWhileBothFit) {
  Add(100, 100, 30, 1);
  Add(140, 140, 20, 1);
  // 290 are just enough: 140 each and the gap of 10.
  EXPECT_THAT(Places(410, 30), ElementsAre(QRect(0, 0, 200, 30), QRect(210, 0, 200, 30)));
  EXPECT_THAT(Places(290, 30), ElementsAre(QRect(0, 0, 140, 30), QRect(150, 0, 140, 30)));
  EXPECT_THAT(Places(250, 30), ElementsAre(QRect(0, 0, 100, 30), QRect(110, 0, 140, 30)));
  EXPECT_THAT(Places(249, 54), ElementsAre(QRect(0, 0, 249, 30), QRect(0, 34, 249, 20)));
}

TEST_F(FlowRowTest, NeedsTheWidthOfItsWidestAndTheHeightOfItsRows) {
  Add(100, 120, 30, 1);
  Add(140, 150, 20, 1);
  EXPECT_EQ(m_row->minimumSize(), QSize(140, 30));
  EXPECT_EQ(m_row->sizeHint(), QSize(280, 30));
  EXPECT_TRUE(m_row->hasHeightForWidth());
  EXPECT_EQ(m_row->heightForWidth(250), 30);
  EXPECT_EQ(m_row->heightForWidth(249), 54);
}

TEST_F(FlowRowTest, WidthGoesFirstToThoseThatDoNotStretch) {
  Add(50, 80, 20, 0);
  Add(60, 60, 20, 3);
  Add(60, 60, 20, 1);
  // 300 without the two gaps: 80, and 220 as 3 to 1 would leave the last 55, so it keeps its 60.
  EXPECT_THAT(Places(320, 20), ElementsAre(QRect(0, 0, 80, 20), QRect(90, 0, 160, 20), QRect(260, 0, 60, 20)));
  // 400: 320 as 3 to 1.
  EXPECT_THAT(Places(420, 20), ElementsAre(QRect(0, 0, 80, 20), QRect(90, 0, 240, 20), QRect(340, 0, 80, 20)));
  // 180: nobody gets all that it would like to have.
  EXPECT_THAT(Places(200, 20), ElementsAre(QRect(0, 0, 60, 20), QRect(70, 0, 60, 20), QRect(140, 0, 60, 20)));
}

TEST_F(FlowRowTest, SpareHeightIsSharedByTheRows) {
  Add(100, 100, 30, 1);
  Add(100, 100, 20, 1);
  EXPECT_THAT(Places(100, 75), ElementsAre(QRect(0, 0, 100, 40), QRect(0, 44, 100, 31)));
}

TEST_F(FlowRowTest, ARowFromRightToLeftBeginsAtTheRight) {
  m_ground.setLayoutDirection(Qt::RightToLeft);
  Add(100, 100, 30, 0);
  Add(100, 100, 30, 0);
  EXPECT_THAT(Places(300, 30), ElementsAre(QRect(200, 0, 100, 30), QRect(90, 0, 100, 30)));
}

TEST_F(FlowRowTest, ALayoutCanStandInIt) {
  auto* const column = new QVBoxLayout;
  auto* const box = new Box({40, 15}, {40, 15});
  column->addWidget(box);
  m_row->Add(column, 1);
  static_cast<void>(Places(200, 15));
  EXPECT_EQ(box->geometry(), QRect(0, 0, 200, 15));
  EXPECT_EQ(box->parentWidget(), &m_ground);
}

}  // namespace
}  // namespace kestrin::ui::led
