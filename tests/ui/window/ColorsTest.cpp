// SPDX-License-Identifier: MIT
// The whole window follows its colors while it runs: after a change it looks as if it had been made with them.

#include <QMenu>
#include <QTest>

#include "support/ScriptedTransfer.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"
#include "ui/sound/WaveformView.h"
#include "ui/update/updateForm.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using ui::kit::ColorScheme;

class Colors : public MainFixture {
 protected:
  ~Colors() override { ui::kit::Theme::Apply(*qApp, ColorScheme::System); }

  static void Desktop(const QPalette& palette) {
    ui::kit::Theme::Apply(*qApp, ColorScheme::System, [palette] { return palette; });
  }
  /// The desktop changes while the program runs.
  static void Change(const QPalette& palette) {
    Desktop(palette);
    QApplication::processEvents();
  }
  void Open() {
    Start("id=65535");
    window->resize(960, 640);
    window->OpenSet(set);
    auto& motion = Find<QListView>("MtFileList");
    QTest::mouseClick(motion.viewport(), Qt::LeftButton, {}, motion.visualRect(motion.model()->index(0, 0)).center());
    ASSERT_TRUE(Until([this] { return Find<QListView>("FileList").model()->rowCount() >= 7; }));
    ASSERT_TRUE(Until([this] { return Find<ui::sound::WaveformView>("Waveform").HasShape(); }));
  }
  [[nodiscard]] QImage Picture() const {
    QApplication::processEvents();
    return window->grab().toImage();
  }

  std::filesystem::path set = CompleteSet();
  QPalette light{QColor(0xee, 0xee, 0xee)};
  QPalette dark{QColor(0x20, 0x20, 0x20)};
  QPalette contrast{QColor(Qt::black)};
};

TEST_F(Colors, OfTheWindowAreThoseOfTheDesktopAlsoWhenTheyChange) {
  Desktop(light);
  Open();
  const QImage inLight = Picture();
  Change(dark);
  const QImage inDark = Picture();
  EXPECT_NE(inDark, inLight);
  Change(contrast);
  const QImage inContrast = Picture();
  EXPECT_NE(inContrast, inDark);
  Change(light);
  EXPECT_EQ(Picture(), inLight);

  window.reset();
  Change(dark);
  Open();
  EXPECT_EQ(Picture(), inDark) << "made in the dark";
  Change(contrast);
  EXPECT_EQ(Picture(), inContrast);
  Change(light);
  EXPECT_EQ(Picture(), inLight);
}

TEST_F(Colors, OfThePanelsFollowToo) {
  Desktop(light);
  Open();
  Button("ConfigBtn").click();
  const QImage inLight = Picture();
  Change(dark);
  const QImage inDark = Picture();
  EXPECT_NE(inDark, inLight);
  Change(light);
  EXPECT_EQ(Picture(), inLight);
  window.reset();
  Change(dark);
  Open();
  Button("ConfigBtn").click();
  EXPECT_EQ(Picture(), inDark) << "made in the dark";
}

TEST_F(Colors, OfTheUpdateFollowToo) {
  ScriptedTransfer transfer;
  const auto picture = [](ui::update::updateForm& form) {
    form.progressA(40);
    form.progressB(70);
    form.show();
    QApplication::processEvents();
    return form.grab().toImage();
  };
  const auto ended = [](ui::update::updateForm& form) {
    form.showMessage("Done.");
    // One window alone has the keyboard and shows where it is.
    form.focusWidget()->clearFocus();
    QApplication::processEvents();
    return form.grab().toImage();
  };
  Desktop(light);
  ui::update::updateForm followed(transfer);
  const QImage inLight = picture(followed);
  Change(dark);
  ui::update::updateForm made(transfer);
  EXPECT_EQ(picture(followed), picture(made));
  Change(light);
  EXPECT_EQ(picture(followed), inLight);
  Change(dark);
  EXPECT_EQ(ended(followed), ended(made));
}

TEST_F(Colors, AreChosenByMouseAndKeyboard) {
  Desktop(light);
  Start();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  QToolButton& view = Button("ViewBtn");
  EXPECT_NE(view.focusPolicy() & Qt::TabFocus, 0);
  view.setFocus();
  for (const auto& [keys, isDark] : {std::pair{Qt::Key_D, true}, {Qt::Key_L, false}}) {
    // The menu has an event loop of its own.
    When([&view] { return view.menu()->isVisible(); }, [&view, key = keys] { QTest::keyClick(view.menu(), key); });
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_TRUE(Until([this, wanted = isDark] { return ui::kit::IsDark(window->palette()) == wanted; }));
  }
  EXPECT_EQ(settings.value("colorScheme").toString(), "light");
  When([&view] { return view.menu()->isVisible(); },
       [&view] {
         QMenu& menu = *view.menu();
         QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions().at(2)).center());
       });
  QTest::mouseClick(&view, Qt::LeftButton);
  EXPECT_TRUE(Until([this] { return ui::kit::IsDark(window->palette()); }));
  EXPECT_EQ(settings.value("colorScheme").toString(), "dark");
}

}  // namespace
}  // namespace kestrin::support
