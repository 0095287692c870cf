// SPDX-License-Identifier: MIT
#include "ui/kit/LinkButton.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>

#include "support/Contrast.h"
#include "ui/kit/Theme.h"

namespace kestrin::ui::kit {
namespace {

TEST(LinkButton, IsAButtonForTabAndForScreenReaders) {
  LinkButton link("SomeLink", "Why?");
  EXPECT_EQ(link.objectName(), "SomeLink");
  EXPECT_EQ(link.focusPolicy(), Qt::TabFocus);
  QAccessibleInterface* const said = QAccessible::queryAccessibleInterface(&link);
  ASSERT_NE(said, nullptr);
  EXPECT_EQ(said->role(), QAccessible::PushButton);
  EXPECT_EQ(said->text(QAccessible::Name), "Why?");
}

TEST(LinkButton, IsReadInTheColourOfLinksInEveryScheme) {
  for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
    Theme::Apply(*qApp, scheme);
    LinkButton link("SomeLink", "Why?");
    link.resize(link.sizeHint());
    const QImage picture = link.grab().toImage();
    const QColor wanted = link.palette().color(QPalette::Link);
    int found = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) found += static_cast<int>(picture.pixelColor(x, y) == wanted);
    EXPECT_GT(found, link.fontMetrics().horizontalAdvance("Why?") / 2) << "the line below it at least";
    EXPECT_GE(Contrast(wanted, link.palette().color(QPalette::Window)), 4.5);
  }
  Theme::Apply(*qApp, ColorScheme::Light);
}

TEST(LinkButton, HasRoomForItsTextAndTheRing) {
  const LinkButton link("SomeLink", "Why is no board connected?");
  EXPECT_GE(link.sizeHint().width(), link.fontMetrics().horizontalAdvance(link.text()) + 4);
  EXPECT_EQ(link.minimumSizeHint(), link.sizeHint());
}

}  // namespace
}  // namespace kestrin::ui::kit
