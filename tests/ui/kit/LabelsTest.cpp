// SPDX-License-Identifier: MIT
// Titles, captions and hints are made in one place: what a text is for decides how it looks.

#include <gtest/gtest.h>

#include <QLabel>
#include <array>
#include <memory>

#include "ui/kit/Labels.h"

namespace kestrin::ui::kit {
namespace {

struct StyleRow {
  TextStyle style;
  double size;
  bool isBold;
  QPalette::ColorRole color;
};

constexpr std::array<StyleRow, 5> kStyles{{
    {TextStyle::Plain, 1.0, false, QPalette::WindowText},
    {TextStyle::Soft, 1.0, false, QPalette::PlaceholderText},
    {TextStyle::Title, 1.0, true, QPalette::WindowText},
    {TextStyle::Caption, 1.2, true, QPalette::WindowText},
    {TextStyle::Headline, 1.4, true, QPalette::WindowText},
}};

TEST(MakeLabel, LooksAsItsTextIsMeant) {
  QWidget parent;
  for (const StyleRow& row : kStyles) {
    const QLabel* const label = MakeLabel("SomeLabel", row.style, "a & b", &parent);
    const int which = static_cast<int>(row.style);
    EXPECT_EQ(label->parent(), &parent) << which;
    EXPECT_EQ(label->objectName(), "SomeLabel") << which;
    EXPECT_EQ(label->text(), "a & b") << which;
    EXPECT_NEAR(label->font().pointSizeF(), parent.font().pointSizeF() * row.size, 0.05) << which;
    EXPECT_EQ(label->font().bold(), row.isBold) << which;
    EXPECT_EQ(label->foregroundRole(), row.color) << which;
  }
}

TEST(MakeLabel, TakesNothingForMarkup) {
  const std::unique_ptr<QLabel> label(MakeLabel("SomeLabel", TextStyle::Plain, "<b>hum</b>.lsu", nullptr));
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

}  // namespace
}  // namespace kestrin::ui::kit
