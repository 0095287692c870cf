// The pictures of the panel: blade, plots, channel labels, and the colours that they are made of.

#include <QPainter>

#include "app/theme/Theme.h"
#include "led/ui/BladeLight.h"
#include "led/ui/BladeView.h"
#include "led/ui/ChannelLabel.h"
#include "led/ui/PulsePlot.h"
#include "led/ui/PulseShape.h"
#include "led/ui/SystemColor.h"
#include "support/Contrast.h"
#include "ui/led/LedPanelFixture.h"

namespace kestrin::led::ui {
namespace {

LED_Driver Driver(const std::string& record) {
  LED_Driver driver;
  EXPECT_TRUE(driver.Init(record)) << record;
  return driver;
}

std::string Channel(const std::string& color, int luminance) {
  return "+Col=" + color + "ML" + std::to_string(luminance) + "MDC80VL3.3Coef0_0_0_0;0_0_0.1_0;";
}

const LED_Driver& Rgb() {
  static const LED_Driver kDriver =
      Driver("RGB@1#3#1000" + Channel("red", 900) + Channel("green", 1500) + Channel("blue", 600));
  return kDriver;
}

TEST(BladeLight, OneChannelHasItsOwnPureColour) {
  EXPECT_EQ(Mix(Rgb(), {255, 0, 0, 0}).hue, QColor(255, 0, 0));
  EXPECT_EQ(Mix(Rgb(), {0, 10, 0, 0}).hue, QColor(0, 255, 0));
  EXPECT_EQ(Mix(Rgb(), {0, 0, 255, 255}).hue, QColor(0, 0, 255)) << "there is no fourth channel";
}

TEST(BladeLight, EqualLuminanceIsWhite) {
  const QColor white = Mix(Rgb(), {170, 102, 255, 0}).hue;
  EXPECT_EQ(white, QColor(Qt::white));
  const QColor unbalanced = Mix(Rgb(), {255, 255, 255, 0}).hue;
  EXPECT_EQ(unbalanced.green(), 255) << "the strongest die";
  EXPECT_LT(unbalanced.blue(), unbalanced.red());
}

TEST(BladeLight, BrightnessGrowsWithTheHighestLevel) {
  EXPECT_DOUBLE_EQ(Mix(Rgb(), {255, 0, 0, 0}).brightness, 1);
  EXPECT_DOUBLE_EQ(Mix(Rgb(), {0, 0, 0, 0}).brightness, 0);
  EXPECT_DOUBLE_EQ(Mix(Rgb(), {300, -5, 0, 0}).brightness, 1) << "files may hold any level";
  const double half = Mix(Rgb(), {127.5, 0, 0, 0}).brightness;
  EXPECT_GT(half, 0.7) << "half the light looks like three quarters";
  EXPECT_LT(half, 0.76);
  EXPECT_EQ(Mix(Rgb(), {}).OnBlack(), QColor(Qt::black));
  EXPECT_EQ(Mix(LED_Driver(), {255, 255, 255, 255}).brightness, 0) << "no LED type, no light";
}

LED_Pulse Times(double rise, double on, double fall, double off, std::int16_t repetitions = 0) {
  LED_Pulse pulse;
  pulse.Trise = rise;
  pulse.Ton = on;
  pulse.Tfall = fall;
  pulse.Toff = off;
  pulse.NRep = repetitions;
  return pulse;
}

TEST(PulseShape, TheIdlePulseRisesStaysFallsAndRests) {
  const PulseShape shape = PulseShape::Idle(Times(1000, 500, 200, 300));
  EXPECT_DOUBLE_EQ(shape.Length(), 2000);
  const struct {
    double moment;
    double share;
  } kRows[] = {{-1, 0},   {0, 0},      {250, 0.25},  {999, 0.999}, {1000, 1}, {1499, 1},
               {1500, 1}, {1600, 0.5}, {1650, 0.25}, {1700, 0},    {1999, 0}, {2000, 0}};
  for (const auto& row : kRows) EXPECT_NEAR(shape.ShareAt(row.moment), row.share, 1e-12) << row.moment;
}

TEST(PulseShape, TheFlashRepeats) {
  const PulseShape shape = PulseShape::FlashOnClash(Times(0, 40, 0, 60, 3));
  EXPECT_DOUBLE_EQ(shape.Length(), 300);
  for (const double start : {0.0, 100.0, 200.0}) {
    EXPECT_EQ(shape.ShareAt(start), 1);
    EXPECT_EQ(shape.ShareAt(start + 39), 1);
    EXPECT_EQ(shape.ShareAt(start + 40), 0);
    EXPECT_EQ(shape.ShareAt(start + 99), 0);
  }
  EXPECT_EQ(PulseShape::FlashOnClash(Times(0, 40, 0, 60, 0)).Phases().size(), 2U);
  EXPECT_EQ(PulseShape::FlashOnClash(Times(0, 40, 0, 60, 30000)).Phases().size(), 20U);
}

TEST(PulseShape, TakesWhateverAFileHolds) {
  EXPECT_EQ(PulseShape::Idle(Times(0, 0, 0, 0)).Length(), 0);
  EXPECT_EQ(PulseShape::Idle(Times(-5, -1, -2, -3)).Length(), 0);
  EXPECT_EQ(PulseShape().ShareAt(10), 0);
  const double infinite = std::numeric_limits<double>::infinity();
  const PulseShape endless = PulseShape::Idle(Times(infinite, std::numeric_limits<double>::quiet_NaN(), 1e300, 20));
  EXPECT_TRUE(std::isfinite(endless.Length()));
  EXPECT_EQ(endless.Phases().size(), 3U);
}

TEST(PulsePlot, MovesOnlyWhileItCanBeSeen) {
  PulsePlot plot;
  const auto* const timer = plot.findChild<QTimer*>();
  ASSERT_NE(timer, nullptr);
  plot.Show(PulseShape::Idle(Times(20, 20, 20, 20)), 0);
  EXPECT_FALSE(timer->isActive());
  plot.resize(300, 120);
  plot.show();
  int moves = 0;
  QObject::connect(&plot, &PulsePlot::shareChanged, &plot, [&moves] { ++moves; });
  EXPECT_TRUE(support::Until([&moves] { return moves > 2; }));
  plot.hide();
  EXPECT_FALSE(timer->isActive());
}

TEST(PulsePlot, PlaysAFlashAndThenRests) {
  PulsePlot plot;
  plot.resize(300, 120);
  plot.Show(PulseShape::FlashOnClash(Times(0, 100000, 0, 100000, 1)), 1000);
  plot.Restart();
  EXPECT_EQ(plot.Share(), 1);
  EXPECT_EQ(plot.accessibleDescription(), "ON 100 s, OFF 100 s");
}

TEST(PulsePlot, IsPaintedInTheColoursOfItsLight) {
  PulsePlot plot;
  plot.resize(400, 160);
  plot.SetColors(QColor(0, 0, 200), QColor(250, 0, 0));
  plot.Show(PulseShape::Idle(Times(0, 100000, 0, 100000)), 0);
  const QImage picture = plot.grab().toImage();
  const qreal ratio = picture.devicePixelRatio();
  const auto at = [&](double x, double y) {
    return picture.pixelColor((QPointF(x * plot.width(), y * plot.height()) * ratio).toPoint());
  };
  EXPECT_EQ(at(0.25, 0.5), QColor(250, 0, 0)) << "half of the time it is at the high level";
  EXPECT_EQ(at(0.75, 0.5), QColor(BladeView::kGround)) << "then at the low one";
  EXPECT_EQ(at(0.75, 0.78), QColor(0, 0, 200));
}

TEST(BladeView, IsPaintedInItsLight) {
  BladeView blade;
  blade.resize(400, blade.height());
  const auto middle = [&blade] {
    const QImage picture = blade.grab().toImage();
    return picture.pixelColor(picture.width() / 2, picture.height() / 2 - 4);
  };
  const QColor off = middle();
  EXPECT_LT(off.lightness(), 70);
  blade.Show({QColor(0, 255, 0), 1});
  const QColor green = middle();
  EXPECT_GT(green.green(), 200);
  EXPECT_GT(green.green(), green.red() + 60);
  blade.Show({QColor(0, 255, 0), 0.3});
  EXPECT_LT(middle().green(), green.green());
}

class ChannelColors : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override { Apply(GetParam()); }
  void TearDown() override { Apply(false); }
  static void Apply(bool dark) {
    app::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()),
                      dark ? app::ColorScheme::Dark : app::ColorScheme::Light);
  }
};

INSTANTIATE_TEST_SUITE_P(Schemes, ChannelColors, testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

TEST_P(ChannelColors, AreReadableOnTheGroundOfTheirLabel) {
  for (const Color color : {kWhite, kRed, kGreen, kBlue, kAmber, Color{0}}) {
    ChannelLabel label("LED 1");
    label.ShowColor(color);
    const QColor ink = label.palette().color(label.foregroundRole());
    EXPECT_EQ(ink, ToQColor(color));
    label.resize(label.sizeHint());
    const QImage picture = label.grab().toImage();
    // Beside the text, inside the edge.
    const QColor ground = picture.pixelColor(5, picture.height() / 2);
    EXPECT_EQ(ground, label.Ground()) << ink.name().toStdString();
    EXPECT_GE(app::Contrast(ink, ground), 4.5) << ink.name().toStdString();
    bool isWritten = false;
    for (int x = 0; x < picture.width(); ++x)
      for (int y = 4; y < picture.height() - 4; ++y) isWritten |= picture.pixelColor(x, y) == ink && x > 4;
    EXPECT_TRUE(isWritten) << ink.name().toStdString();
  }
}

TEST_P(ChannelColors, KeepTheirTextColourWhenTheSchemeChanges) {
  ChannelLabel label("LED 1");
  label.ShowColor(kAmber);
  Apply(!GetParam());
  EXPECT_EQ(label.palette().color(label.foregroundRole()), QColor(255, 128, 0));
}

TEST(ChannelLabel, NamesItsColourForThoseWhoDoNotSeeIt) {
  ChannelLabel label("LED 2");
  EXPECT_EQ(label.accessibleName(), "LED 2: not used");
  label.ShowColor(kAmber);
  EXPECT_EQ(label.accessibleName(), "LED 2: amber");
}

TEST(SystemColor, IsLookedUpInThePalette) {
  QPalette palette;
  palette.setColor(QPalette::Active, QPalette::Highlight, QColor(1, 2, 3));
  palette.setColor(QPalette::Active, QPalette::Base, QColor(10, 20, 30));
  palette.setColor(QPalette::Disabled, QPalette::Text, QColor(7, 8, 9));
  EXPECT_EQ(SystemColor(13, palette), 0x030201) << "selection";
  EXPECT_EQ(SystemColor(5, palette), 0x1E140A) << "window";
  EXPECT_EQ(SystemColor(17, palette), 0x090807) << "grey text";
  EXPECT_EQ(SystemColor(31, palette), 0);
  EXPECT_EQ(SystemColor(-1, palette), 0);
  const Components parts = SysToRGB(static_cast<std::int32_t>(0x8000000DU),
                                    [&](std::int32_t number) { return SystemColor(number, palette); });
  EXPECT_EQ(parts.Red, 1);
  EXPECT_EQ(parts.Green, 2);
  EXPECT_EQ(parts.Blue, 3);
}

class PanelPictures : public support::LedPanelFixture {};

TEST_F(PanelPictures, TheBladeOfThePickerShowsTheMixedColour) {
  StartLed(40);
  Click("btnPulseHigh");
  const auto shown = [this] { return Find<BladeView>("PickColorBlade").Shown().hue; };
  for (int channel = 1; channel <= 4; ++channel) SetSlider(channel, 0);
  EXPECT_EQ(shown(), QColor(Qt::black));
  SetSlider(1, 200);
  EXPECT_EQ(shown(), QColor(Qt::red));
  SetSlider(2, 200);
  EXPECT_EQ(shown(), QColor(Qt::yellow));
  SetSlider(3, 200);
  EXPECT_EQ(shown(), QColor(Qt::white));
}

TEST_F(PanelPictures, PlotsFollowTheBoxes) {
  StartLed(12);
  const auto told = [this](const char* plot) { return Find<PulsePlot>(plot).accessibleDescription(); };
  EXPECT_EQ(told("FrameIdlePlot"), "RISE 1 s, ON 0.8 s, FALL 0.5 s, OFF 1.5 s");
  EXPECT_EQ(told("FrameFocPlot"), "ON 0.04 s, OFF 0.06 s, ON 0.04 s, OFF 0.06 s, ON 0.04 s, OFF 0.06 s");
  Find<QLineEdit>("IdleTRISE").setText("2");
  Find<QLineEdit>("focNREP").setText("1");
  EXPECT_EQ(told("FrameIdlePlot"), "RISE 2 s, ON 0.8 s, FALL 0.5 s, OFF 1.5 s");
  EXPECT_EQ(told("FrameFocPlot"), "ON 0.04 s, OFF 0.06 s");
}

TEST_F(PanelPictures, StandStillWhileASoundBoardIsConnected) {
  Start();
  for (const char* const plot : {"FrameIdlePlot", "FrameFocPlot"})
    EXPECT_FALSE(Find<PulsePlot>(plot).findChild<QTimer*>()->isActive()) << plot;
}

TEST_F(PanelPictures, LevelButtonsCarryTheirColour) {
  StartLed(12);
  Click("btnPulseLow");
  for (int channel = 1; channel <= 3; ++channel) SetSlider(channel, channel == 2 ? 255 : 0);
  Click("PickColorOK");
  const QImage icon = Find<QAbstractButton>("btnPulseLow").icon().pixmap(16, 16).toImage();
  EXPECT_EQ(icon.pixelColor(icon.width() / 2, icon.height() / 2), QColor(0, 255, 0));
}

}  // namespace
}  // namespace kestrin::led::ui
