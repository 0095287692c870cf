// SPDX-License-Identifier: MIT
// View: System, Light, Dark is chosen, holds at once and is remembered.

#include "ui/kit/ViewMenu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>

#include "support/TestFiles.h"
#include "ui/kit/PathText.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {
namespace {

struct Choice {
  int row;
  const char* caption;
  ColorScheme scheme;
  bool isDark;
};

/// On a dark desktop.
constexpr Choice kChoices[] = {{1, "&Light", ColorScheme::Light, false},
                               {2, "&Dark", ColorScheme::Dark, true},
                               {0, "&System", ColorScheme::System, true}};

class ViewMenuTest : public testing::Test {
 protected:
  void SetUp() override {
    Theme::Apply(*qApp, ColorScheme::System, [] { return QPalette(QColor(0x20, 0x20, 0x20)); });
  }
  static QAction* Checked(const ViewMenu& menu) {
    for (QAction* const action : menu.actions())
      if (action->isChecked()) return action;
    return nullptr;
  }

  support::TemporaryFolder folder;
  QString file = TextOf(folder / "settings.ini");
};

TEST_F(ViewMenuTest, BeginsWithTheDesktopsColors) {
  QSettings settings(file, QSettings::IniFormat);
  EXPECT_EQ(ViewMenu::Chosen(settings), ColorScheme::System);
  const ViewMenu menu(settings);
  EXPECT_EQ(Checked(menu)->text(), "&System");
  settings.setValue("colorScheme", "purple");
  EXPECT_EQ(ViewMenu::Chosen(settings), ColorScheme::System);
}

TEST_F(ViewMenuTest, AChoiceHoldsAtOnceAndTheNextTime) {
  for (const Choice& choice : kChoices) {
    {
      QSettings settings(file, QSettings::IniFormat);
      const ViewMenu menu(settings);
      QAction* const action = menu.actions().at(choice.row);
      ASSERT_EQ(action->text(), choice.caption);
      action->trigger();
      EXPECT_EQ(IsDark(QApplication::palette()), choice.isDark) << choice.caption;
      EXPECT_EQ(Checked(menu), action) << choice.caption;
    }
    QSettings settings(file, QSettings::IniFormat);
    EXPECT_EQ(ViewMenu::Chosen(settings), choice.scheme) << choice.caption;
    const ViewMenu again(settings);
    EXPECT_EQ(Checked(again)->text(), choice.caption);
  }
}

}  // namespace
}  // namespace kestrin::ui::kit
