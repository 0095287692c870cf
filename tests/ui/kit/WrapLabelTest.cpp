// SPDX-License-Identifier: MIT
#include "ui/kit/WrapLabel.h"

#include <gtest/gtest.h>

namespace kestrin::ui::kit {
namespace {

constexpr int kWide = 1000;

TEST(WrapLabel, IsAsHighAsItsLines) {
  WrapLabel label;
  label.setText("one");
  const int line = label.heightForWidth(kWide);
  label.setText("one\ntwo\nthree");
  EXPECT_EQ(label.heightForWidth(kWide), 3 * line);
}

TEST(WrapLabel, BreaksALongNameThatHasNoBlanks) {
  WrapLabel label;
  label.setText(QString(200, 'x'));
  const int line = label.fontMetrics().height();
  // Half of it fits into a line, or a little less.
  EXPECT_GE(label.heightForWidth(label.fontMetrics().horizontalAdvance(QString(100, 'x'))), 2 * line);
  EXPECT_LT(label.heightForWidth(label.fontMetrics().horizontalAdvance(QString(201, 'x'))), 2 * line);
}

}  // namespace
}  // namespace kestrin::ui::kit
