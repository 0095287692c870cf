// SPDX-License-Identifier: MIT
// Titles, captions and hints are made in one place: what a text is for decides how it looks.

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QLabel>
#include <memory>

#include "ui/kit/Labels.h"

namespace kestrin::ui::kit {
namespace {

class MakeLabelOf : public testing::Test {
 protected:
  [[nodiscard]] const QLabel& Of(TextStyle style) { return *MakeLabel("SomeLabel", style, "a & b", &m_parent); }
  /// In pixels on the screen, however the font says it.
  [[nodiscard]] int HeightOf(TextStyle style) { return QFontInfo(Of(style).font()).pixelSize(); }
  void ExpectLargerInOrder() {
    EXPECT_EQ(HeightOf(TextStyle::Soft), HeightOf(TextStyle::Plain));
    EXPECT_EQ(HeightOf(TextStyle::Title), HeightOf(TextStyle::Plain));
    EXPECT_GT(HeightOf(TextStyle::Caption), HeightOf(TextStyle::Title));
    EXPECT_GT(HeightOf(TextStyle::Headline), HeightOf(TextStyle::Caption));
  }

  QWidget m_parent;
};

TEST_F(MakeLabelOf, EveryStyleHasItsNameItsTextAndItsParent) {
  for (const TextStyle style :
       {TextStyle::Plain, TextStyle::Soft, TextStyle::Title, TextStyle::Caption, TextStyle::Headline}) {
    const QLabel& label = Of(style);
    EXPECT_EQ(label.parent(), &m_parent);
    EXPECT_EQ(label.objectName(), "SomeLabel");
    EXPECT_EQ(label.text(), "a & b");
  }
}

TEST_F(MakeLabelOf, TitlesAreBoldAndWhatIsMoreIsLargerToo) {
  ExpectLargerInOrder();
  for (const TextStyle style : {TextStyle::Title, TextStyle::Caption, TextStyle::Headline})
    EXPECT_TRUE(Of(style).font().bold()) << static_cast<int>(style);
  for (const TextStyle style : {TextStyle::Plain, TextStyle::Soft})
    EXPECT_FALSE(Of(style).font().bold()) << static_cast<int>(style);
}

TEST_F(MakeLabelOf, FontsOfADesktopThatCountsInPixelsGrowAsWell) {
  QFont font = m_parent.font();
  font.setPixelSize(20);
  m_parent.setFont(font);
  ExpectLargerInOrder();
}

TEST_F(MakeLabelOf, OnlySoftTextStepsBack) {
  EXPECT_EQ(Of(TextStyle::Soft).foregroundRole(), QPalette::PlaceholderText);
  for (const TextStyle style : {TextStyle::Plain, TextStyle::Title, TextStyle::Caption, TextStyle::Headline})
    EXPECT_EQ(Of(style).foregroundRole(), QPalette::WindowText) << static_cast<int>(style);
}

TEST(MakeLabel, TakesNothingForMarkup) {
  const std::unique_ptr<QLabel> label(MakeLabel("SomeLabel", TextStyle::Plain, "<b>hum</b>.lsu", nullptr));
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

}  // namespace
}  // namespace kestrin::ui::kit
