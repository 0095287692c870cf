// SPDX-License-Identifier: MIT
#include "ui/kit/Labels.h"
#include "ui/kit/Theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "support/Contrast.h"
#include "ui/kit/Card.h"
#include "ui/kit/ThemeColors.h"

namespace kestrin::ui::kit {
namespace {

constexpr double kVisible = 3.0;

QApplication& Application() { return *static_cast<QApplication*>(QCoreApplication::instance()); }

/// The picture of a control alone on the window's ground.
QImage PictureOf(QWidget& widget) {
  widget.ensurePolished();
  widget.resize(widget.sizeHint().expandedTo({120, 24}));
  QImage picture(widget.size(), QImage::Format_RGB32);
  picture.fill(widget.palette().color(QPalette::Window));
  widget.render(&picture, {}, {}, QWidget::DrawChildren);
  return picture;
}

/// The contrast of the pixel that stands out most from the ground.
double BestContrast(const QImage& picture, const QColor& ground) {
  double best = 1;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) best = std::max(best, Contrast(picture.pixelColor(x, y), ground));
  }
  return best;
}

int PixelsOf(const QImage& picture, const QColor& color) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) == color ? 1 : 0;
  }
  return count;
}

/// A button whose focus does not depend on the platform's windows.
template <typename Widget, typename Option>
class Focusable : public Widget {
 public:
  using Widget::Widget;
  bool hasRing = false;

 protected:
  void initStyleOption(Option* option) const override {
    Widget::initStyleOption(option);
    option->state.setFlag(QStyle::State_HasFocus, hasRing);
  }
};

TEST(ThemeOfTheApplication, LightAndDarkAreTaken) {
  Theme::Apply(Application(), ColorScheme::Dark);
  EXPECT_TRUE(IsDark(QApplication::palette()));
  Theme::Apply(Application(), ColorScheme::Light);
  EXPECT_FALSE(IsDark(QApplication::palette()));
}

TEST(ThemeOfTheApplication, SystemFollowsTheDesktopWhenThatChanges) {
  QPalette desktop(Qt::white);
  Theme::Apply(Application(), ColorScheme::System, [&desktop] { return desktop; });
  ASSERT_FALSE(IsDark(QApplication::palette()));

  desktop = QPalette(QColor(0x20, 0x20, 0x20));
  QWidget window;
  QEvent change(QEvent::ThemeChange);
  QCoreApplication::sendEvent(&window, &change);
  QCoreApplication::processEvents();

  EXPECT_TRUE(IsDark(QApplication::palette()));
  EXPECT_EQ(QApplication::palette().color(QPalette::Window),
            ColorOf(ColorRole::Background, PaletteOf({.isDark = true})));
}

TEST(ThemeOfTheApplication, ManyWindowsAreOneChange) {
  int asked = 0;
  Theme::Apply(Application(), ColorScheme::System, [&asked] {
    ++asked;
    return QPalette(Qt::white);
  });
  ASSERT_EQ(asked, 1);
  QWidget one;
  QWidget other;
  for (QWidget* window : {&one, &other}) {
    QEvent change(QEvent::ThemeChange);
    QCoreApplication::sendEvent(window, &change);
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(asked, 2);
}

TEST(ThemeOfTheApplication, AChosenSchemeStaysWhateverTheDesktopDoes) {
  Theme::Apply(Application(), ColorScheme::Light, [] { return QPalette(Qt::black); });
  QWidget window;
  QEvent change(QEvent::ThemeChange);
  QCoreApplication::sendEvent(&window, &change);
  QCoreApplication::processEvents();
  EXPECT_FALSE(IsDark(QApplication::palette()));
}

TEST(ThemeOfTheApplication, TheDesktopsOwnPaletteIsAskedThroughTheProgramsOwn) {
  Theme::Apply(Application(), ColorScheme::System);
  const bool desktop = IsDark(QApplication::palette());
  Theme::Apply(Application(), desktop ? ColorScheme::Light : ColorScheme::Dark);
  ASSERT_NE(IsDark(QApplication::palette()), desktop);
  Theme::Apply(Application(), ColorScheme::System);
  EXPECT_EQ(IsDark(QApplication::palette()), desktop);
}

TEST(ThemeOfTheApplication, TheDesktopsAccentAndItsContrastAreTakenInEveryScheme) {
  // A green that can be used as it is in the dark scheme alone; in the light one it is darker.
  const QColor accent(0x6b, 0xd0, 0x8a);
  QPalette desktop(QColor(0x20, 0x20, 0x20));
  desktop.setColor(QPalette::Highlight, accent);
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
  desktop.setColor(QPalette::Accent, accent);
#endif
  const auto color = [](ColorRole role) { return ColorOf(role, QApplication::palette()); };
  Theme::Apply(Application(), ColorScheme::System, [&desktop] { return desktop; });
  EXPECT_EQ(color(ColorRole::Accent), accent);
  Theme::Choose(Application(), ColorScheme::Light);
  EXPECT_NEAR(color(ColorRole::Accent).hslHue(), accent.hslHue(), 3);
  EXPECT_LT(color(ColorRole::Accent).lightness(), accent.lightness());
  Theme::Choose(Application(), ColorScheme::Dark);
  EXPECT_EQ(color(ColorRole::Accent), accent);

  desktop.setColor(QPalette::Window, Qt::white);
  desktop.setColor(QPalette::WindowText, Qt::black);
  QWidget window;
  QEvent change(QEvent::ThemeChange);
  QCoreApplication::sendEvent(&window, &change);
  QCoreApplication::processEvents();
  EXPECT_TRUE(IsHighContrast(QApplication::palette()));
  EXPECT_TRUE(IsDark(QApplication::palette())) << "that was chosen";
  EXPECT_EQ(color(ColorRole::Background), Qt::black);
}

class ThemedControls : public testing::TestWithParam<ColorScheme> {
 protected:
  void SetUp() override { Theme::Apply(Application(), GetParam()); }

  [[nodiscard]] static QColor Color(ColorRole role) { return ColorOf(role, QApplication::palette()); }
};

INSTANTIATE_TEST_SUITE_P(BothSchemes, ThemedControls, testing::Values(ColorScheme::Light, ColorScheme::Dark),
                         [](const auto& scheme) { return scheme.param == ColorScheme::Dark ? "Dark" : "Light"; });

TEST_P(ThemedControls, UncheckedRadioButtonsAndCheckBoxesAreSeen) {
  QRadioButton radio;
  QCheckBox check;
  for (QAbstractButton* button : {static_cast<QAbstractButton*>(&radio), static_cast<QAbstractButton*>(&check)}) {
    EXPECT_GE(BestContrast(PictureOf(*button), Color(ColorRole::Background)), kVisible)
        << button->metaObject()->className();
  }
}

TEST_P(ThemedControls, CheckedOnesCarryTheAccent) {
  QRadioButton radio;
  QCheckBox check;
  for (QAbstractButton* button : {static_cast<QAbstractButton*>(&radio), static_cast<QAbstractButton*>(&check)}) {
    button->setCheckable(true);
    EXPECT_EQ(PixelsOf(PictureOf(*button), Color(ColorRole::Accent)), 0) << button->metaObject()->className();
    button->setChecked(true);
    EXPECT_GT(PixelsOf(PictureOf(*button), Color(ColorRole::Accent)), 40) << button->metaObject()->className();
  }
}

TEST_P(ThemedControls, FocusShowsAsARingOfTheAccent) {
  Focusable<QPushButton, QStyleOptionButton> push;
  Focusable<QRadioButton, QStyleOptionButton> radio;
  Focusable<QCheckBox, QStyleOptionButton> check;
  Focusable<QToolButton, QStyleOptionToolButton> tool;
  Focusable<QSlider, QStyleOptionSlider> slider;
  const auto ringOf = [](auto& control) {
    control.hasRing = false;
    const int without = PixelsOf(PictureOf(control), Color(ColorRole::Accent));
    control.hasRing = true;
    return PixelsOf(PictureOf(control), Color(ColorRole::Accent)) - without;
  };
  // Curved rings are smoothed, so that few of their pixels have the pure colour; straight ones are two pixels wide.
  EXPECT_GT(ringOf(push), 2 * 2 * 100);
  tool.setAutoRaise(true);
  EXPECT_GT(ringOf(tool), 2 * 2 * 100);
  EXPECT_GT(ringOf(radio), 10);
  EXPECT_GT(ringOf(check), 40);
  EXPECT_GT(ringOf(slider), 10);
}

TEST_P(ThemedControls, TheRingAroundASlidersKnobIsWhole) {
  for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
    Focusable<QSlider, QStyleOptionSlider> slider;
    slider.hasRing = true;
    slider.setOrientation(orientation);
    slider.setRange(0, 10);
    // As narrow as it may be.
    const QSize least = slider.sizeHint();
    const bool lies = orientation == Qt::Horizontal;
    const int thickness = lies ? least.height() : least.width();
    slider.resize(lies ? QSize(120, thickness) : QSize(thickness, 120));
    for (const int value : {0, 5, 10}) {
      slider.setValue(value);
      QImage picture(slider.size(), QImage::Format_RGB32);
      picture.fill(Qt::white);
      slider.render(&picture, {}, {}, QWidget::DrawChildren);
      // Across groove, knob and ring nothing is white but inside of the knob and beside the ring.
      int first = thickness;
      int last = -1;
      for (int across = 0; across < thickness; ++across) {
        for (int along = 0; along < 120; ++along) {
          if (picture.pixelColor(lies ? along : across, lies ? across : along) == Qt::white) continue;
          first = std::min(first, across);
          last = across;
        }
      }
      EXPECT_EQ(last - first + 1, 22) << "the knob's 16 pixels, and 3 on each side for the ring and its distance";
    }
  }
}

TEST_P(ThemedControls, TheFocusOfTheMainButtonIsSeenOnTheAccent) {
  Focusable<QPushButton, QStyleOptionButton> button;
  Theme::MakePrimary(button);
  const int without = PixelsOf(PictureOf(button), Color(ColorRole::AccentText));
  button.hasRing = true;
  EXPECT_GT(PixelsOf(PictureOf(button), Color(ColorRole::AccentText)), without + 2 * 2 * 90);
}

TEST_P(ThemedControls, TheMainButtonIsFilledUnlessItIsDisabled) {
  QPushButton push("Download");
  QToolButton tool;
  tool.setText("Download");
  tool.setAutoRaise(true);
  for (QAbstractButton* button : {static_cast<QAbstractButton*>(&push), static_cast<QAbstractButton*>(&tool)}) {
    Theme::MakePrimary(*button);
    ASSERT_TRUE(Theme::IsPrimary(button));
    const QImage enabled = PictureOf(*button);
    EXPECT_GT(PixelsOf(enabled, Color(ColorRole::Accent)), enabled.width() * enabled.height() / 2);
    EXPECT_GT(PixelsOf(enabled, Color(ColorRole::AccentText)), 0) << "the text has the text's colour on the accent";
    button->setEnabled(false);
    EXPECT_EQ(PixelsOf(PictureOf(*button), Color(ColorRole::Accent)), 0);
  }
}

TEST_P(ThemedControls, DisabledButtonsLookDifferent) {
  QPushButton push("Play");
  const QImage enabled = PictureOf(push);
  push.setEnabled(false);
  EXPECT_NE(enabled, PictureOf(push));
}

TEST_P(ThemedControls, AProgressBarShowsItsShare) {
  QProgressBar bar;
  bar.setTextVisible(false);
  bar.setRange(0, 4);
  for (int done = 0; done <= 4; ++done) {
    bar.setValue(done);
    const QImage picture = PictureOf(bar);
    const int row = picture.height() / 2;
    int filled = 0;
    for (int x = 0; x < picture.width(); ++x) filled += picture.pixelColor(x, row) == Color(ColorRole::Accent) ? 1 : 0;
    EXPECT_NEAR(filled, picture.width() * done / 4, 2) << done << " of 4";
  }
}

TEST_P(ThemedControls, AProgressBarsTextIsReadOnBothSides) {
  QProgressBar bar;
  bar.setRange(0, 100);
  bar.setValue(50);
  bar.setFormat("MMMMMM");
  const QImage picture = PictureOf(bar);
  EXPECT_GT(PixelsOf(picture, Color(ColorRole::AccentText)), 0);
  EXPECT_GT(PixelsOf(picture, Color(ColorRole::Text)), 0);
}

TEST_P(ThemedControls, SelectedRowsAreMarked) {
  QListWidget list;
  list.addItems({"one", "two"});
  EXPECT_EQ(PixelsOf(list.grab().toImage(), Color(ColorRole::Selection)), 0);
  list.item(1)->setSelected(true);
  EXPECT_GT(PixelsOf(list.grab().toImage(), Color(ColorRole::Selection)), 1000);
}

TEST_P(ThemedControls, SoftLabelsFollowTheScheme) {
  QLabel label("MMMM");
  SetTextStyle(label, TextStyle::Soft);
  EXPECT_GT(PixelsOf(PictureOf(label), Color(ColorRole::Soft)), 0);
  EXPECT_EQ(PixelsOf(PictureOf(label), Color(ColorRole::Text)), 0);
}

TEST_P(ThemedControls, ACardCarriesItsSlotsColourAndShowsThatItIsChosen) {
  Card card;
  card.resize(100, 60);
  const auto side = [&card] { return card.grab().toImage().pixelColor(2, 30); };
  const auto top = [&card] { return card.grab().toImage().pixelColor(50, 0); };
  EXPECT_EQ(card.grab().toImage().pixelColor(50, 30), Color(ColorRole::Card));
  EXPECT_EQ(side(), Color(ColorRole::Card));
  EXPECT_EQ(top(), Color(ColorRole::Line));
  card.SetSlot(core::sound::SlotKind::Impact);
  EXPECT_EQ(side(), SlotColor(core::sound::SlotKind::Impact, QApplication::palette()));
  card.SetChosen(true);
  EXPECT_EQ(side(), SlotColor(core::sound::SlotKind::Impact, QApplication::palette()));
  EXPECT_EQ(top(), Color(ColorRole::Accent));
  card.SetSlot(std::nullopt);
  EXPECT_EQ(side(), Color(ColorRole::Card));
}

TEST_P(ThemedControls, SignsOfMessagesAreLinesInTheSchemesColours) {
  const std::pair<QStyle::StandardPixmap, ColorRole> signs[] = {
      {QStyle::SP_MessageBoxInformation, ColorRole::Accent},
      {QStyle::SP_MessageBoxQuestion, ColorRole::Accent},
      {QStyle::SP_MessageBoxWarning, ColorRole::Warning},
      {QStyle::SP_MessageBoxCritical, ColorRole::Error},
  };
  for (const auto& [picture, role] : signs) {
    const QPixmap sign = QApplication::style()->standardIcon(picture).pixmap(QSize(40, 40), 2);
    ASSERT_EQ(sign.size(), QSize(80, 80)) << picture;
    const QImage image = sign.toImage();
    EXPECT_GT(PixelsOf(image, Color(role)), 100) << picture;
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << picture;
  }
}

TEST(ThemedScrollBar, TheHandleReachesBothEnds) {
  Theme::Apply(Application(), ColorScheme::Light);
  QScrollBar bar(Qt::Vertical);
  bar.resize(bar.sizeHint().width(), 200);
  bar.setRange(0, 300);
  bar.setPageStep(100);
  QStyleOptionSlider option;
  option.initFrom(&bar);
  option.orientation = Qt::Vertical;
  option.maximum = 300;
  option.pageStep = 100;
  const auto part = [&](int position, QStyle::SubControl which) {
    option.sliderPosition = position;
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, which, &bar);
  };
  // A page of 100 among 300 + 100: a quarter of the bar's 200 pixels.
  EXPECT_EQ(part(0, QStyle::SC_ScrollBarSlider), QRect(0, 0, bar.width(), 50));
  EXPECT_EQ(part(300, QStyle::SC_ScrollBarSlider), QRect(0, 150, bar.width(), 50));
  EXPECT_EQ(part(150, QStyle::SC_ScrollBarSubPage), QRect(0, 0, bar.width(), 75));
  EXPECT_EQ(part(150, QStyle::SC_ScrollBarAddPage), QRect(0, 125, bar.width(), 75));
  option.maximum = 1000000;
  EXPECT_EQ(part(1000000, QStyle::SC_ScrollBarSlider).height(), 32) << "the handle stays large enough to be caught";
}

}  // namespace
}  // namespace kestrin::ui::kit
