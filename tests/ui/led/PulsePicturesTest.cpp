// SPDX-License-Identifier: MIT
// The pictures of the panel: blade, plots, channel labels, and the colours that they are made of.

#include <QPainter>

#include "support/Contrast.h"
#include "ui/kit/Theme.h"
#include "ui/led/BladeLight.h"
#include "ui/led/BladeView.h"
#include "ui/led/ChannelLabel.h"
#include "ui/led/LedPanelFixture.h"
#include "ui/led/PulsePlot.h"
#include "ui/led/PulseShape.h"

namespace kestrin::ui::led {
namespace {

core::led::LED_Driver Driver(const std::string& record) {
  core::led::LED_Driver driver;
  EXPECT_TRUE(driver.Init(record)) << record;
  return driver;
}

std::string Channel(const std::string& color, int luminance) {
  return "+Col=" + color + "ML" + std::to_string(luminance) + "MDC80VL3.3Coef0_0_0_0;0_0_0.1_0;";
}

const core::led::LED_Driver& Rgb() {
  static const core::led::LED_Driver kDriver =
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
  EXPECT_EQ(Mix(core::led::LED_Driver(), {255, 255, 255, 255}).brightness, 0) << "no LED type, no light";
}

core::led::PulseContent Times(double rise, double on, double fall, double off, std::int16_t repetitions = 0) {
  core::led::PulseContent pulse;
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

void ApplyScheme(bool dark) {
  kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()),
                    dark ? kit::ColorScheme::Dark : kit::ColorScheme::Light);
}

class ChannelColors : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override { ApplyScheme(GetParam()); }
  void TearDown() override { ApplyScheme(false); }
};

INSTANTIATE_TEST_SUITE_P(Schemes, ChannelColors, testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

TEST_P(ChannelColors, AreReadableOnTheGroundOfTheirLabel) {
  for (const core::led::Color color : {core::led::kWhite, core::led::kRed, core::led::kGreen, core::led::kBlue,
                                       core::led::kAmber, core::led::Color{0}}) {
    ChannelLabel label("LED 1");
    label.ShowColor(color);
    const QColor ink = label.palette().color(label.foregroundRole());
    EXPECT_EQ(ink, ToQColor(color));
    label.resize(label.sizeHint());
    const QImage picture = label.grab().toImage();
    // Beside the text, inside the edge.
    const QColor ground = picture.pixelColor(5, picture.height() / 2);
    EXPECT_GE(kit::Contrast(ink, ground), 4.5) << ink.name().toStdString();
    bool isWritten = false;
    for (int x = 0; x < picture.width(); ++x)
      for (int y = 4; y < picture.height() - 4; ++y) isWritten |= picture.pixelColor(x, y) == ink && x > 4;
    EXPECT_TRUE(isWritten) << ink.name().toStdString();
  }
}

TEST_P(ChannelColors, KeepTheirTextColourWhenTheSchemeChanges) {
  ChannelLabel label("LED 1");
  label.ShowColor(core::led::kAmber);
  ApplyScheme(!GetParam());
  EXPECT_EQ(label.palette().color(label.foregroundRole()), QColor(255, 128, 0));
}

TEST(ChannelLabel, NamesItsColourForThoseWhoDoNotSeeIt) {
  ChannelLabel label("LED 2");
  EXPECT_EQ(label.accessibleName(), "LED 2: not used");
  label.ShowColor(core::led::kAmber);
  EXPECT_EQ(label.accessibleName(), "LED 2: amber");
}

class PanelPictures : public support::LedPanelFixture {};

TEST_F(PanelPictures, TheBladeOfThePickerShowsTheMixedColour) {
  StartLed(40);
  Click("btnPulseHigh");
  // Beside the core of the blade, which is nearly white, the tube has the pure colour.
  const auto shown = [this] {
    auto& blade = Find<BladeView>("PickColorBlade");
    const QImage picture = blade.grab().toImage();
    const QPointF tube(blade.width() * 0.6, blade.height() / 2.0 - 4);
    return picture.pixelColor((tube * picture.devicePixelRatio()).toPoint());
  };
  for (int channel = 1; channel <= 4; ++channel) SetSlider(channel, 0);
  EXPECT_LT(shown().lightness(), 70) << "no light";
  SetSlider(1, 255);
  EXPECT_EQ(shown(), QColor(Qt::red));
  SetSlider(2, 255);
  EXPECT_EQ(shown(), QColor(Qt::yellow));
  SetSlider(3, 255);
  EXPECT_EQ(shown(), QColor(Qt::white));
  Click("PickColorCancel");
  Click("btnPulseHigh");
  SetSlider(1, 255);
  SetSlider(2, 0);
  SetSlider(3, 0);
  SetSlider(4, 0);
  EXPECT_EQ(shown(), QColor(Qt::red));
  Choose("Duo");
  EXPECT_EQ(shown(), QColor(Qt::blue)) << "its first channel is blue";
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

/// In which scheme, and with how many channels.
struct Look {
  bool dark;
  int channels;
};

std::vector<Look> AllLooks() {
  std::vector<Look> looks;
  for (const bool dark : {false, true})
    for (int channels = 1; channels <= 4; ++channels) looks.push_back({dark, channels});
  return looks;
}

/// A picture of the whole panel with the picker open. The pulse's high level, and what the picker shows, is the first
/// channel alone, in full.
class PanelLooks : public support::LedPanelFixture, public testing::WithParamInterface<Look> {
 protected:
  void SetUp() override {
    constexpr int kCodes[] = {1, 2, 12, 40};
    ApplyScheme(GetParam().dark);
    StartLed(kCodes[GetParam().channels - 1]);
    Click("btnPulseHigh");
    FirstAlone();
    Click("PickColorOK");
    Click("btnPulseLow");
    FirstAlone();
    QApplication::processEvents();
    m_picture = window->grab().toImage();
  }
  void TearDown() override { ApplyScheme(false); }

  /// What the labels of the channels are written with.
  [[nodiscard]] static const std::vector<QColor>& Inks() {
    static const std::vector<QColor> kInks[] = {
        {QColor(255, 255, 255)},
        {QColor(128, 128, 255), QColor(255, 128, 0)},
        {QColor(255, 0, 0), QColor(0, 192, 0), QColor(128, 128, 255)},
        {QColor(255, 0, 0), QColor(0, 192, 0), QColor(128, 128, 255), QColor(255, 255, 255)}};
    return kInks[GetParam().channels - 1];
  }
  [[nodiscard]] QWidget& Numbered(const char* name, int channel) const {
    return Find<QWidget>((name + std::to_string(channel)).c_str());
  }
  /// The colour at a place of a control, given in the control's own coordinates.
  [[nodiscard]] QColor At(const QWidget& control, const QPointF& place) const {
    const QPointF inWindow = control.mapTo(window.get(), QPointF(0, 0)) + place;
    return m_picture.pixelColor((inWindow * m_picture.devicePixelRatio()).toPoint());
  }
  /// Whether that colour stands anywhere in the control.
  [[nodiscard]] bool Shows(const QWidget& control, const QColor& color) const {
    for (int x = 0; x < control.width(); ++x)
      for (int y = 0; y < control.height(); ++y)
        if (At(control, QPointF(x, y)) == color) return true;
    return false;
  }
  [[nodiscard]] static bool HasRoom(const QWidget& control, const QWidget& inside) {
    const QRect place(control.mapTo(&inside, QPoint(0, 0)), control.size());
    const QSize needed = control.minimumSizeHint();
    return control.isVisible() && inside.rect().contains(place) && control.width() >= needed.width() &&
           control.height() >= needed.height();
  }

 private:
  void FirstAlone() const {
    for (int channel = 1; channel <= 4; ++channel) SetSlider(channel, channel == 1 ? 255 : 0);
  }

  QImage m_picture;
};

INSTANTIATE_TEST_SUITE_P(Panel, PanelLooks, testing::ValuesIn(AllLooks()), [](const auto& look) {
  return (look.param.dark ? "Dark" : "Light") + std::to_string(look.param.channels);
});

TEST_P(PanelLooks, HaveEverythingInSight) {
  const auto& panel = Find<QWidget>("frmLED");
  const auto& picker = Find<QWidget>("PickColor_frame");
  EXPECT_TRUE(panel.rect().contains(picker.geometry())) << "the picker is cut off";
  for (const char* const name : {"LEDcombo", "labelLED1", "labelLED4", "OverdriveSlider", "OverdriveLabel",
                                 "btnUpdateLED", "btnPulseHigh", "btnPulseLow", "IdleTON", "IdleTFALL", "btnSendPulse",
                                 "btnFocHigh", "FocTON", "focNREP", "btnSendFoc", "btnOpenLED", "btnSaveLED"})
    EXPECT_TRUE(HasRoom(Find<QWidget>(name), panel)) << name;
  for (const char* const name :
       {"PickColorBlade", "PickColor", "ColorFidelity", "PickColorApply", "PickColorCancel", "PickColorOK"})
    EXPECT_TRUE(HasRoom(Find<QWidget>(name), picker)) << name;
  for (int channel = 1; channel <= 4; ++channel)
    for (const char* const name : {"LabelLedSet", "SliderLedSet", "ValueLedSet"}) {
      const QWidget& control = Numbered(name, channel);
      EXPECT_EQ(control.isVisible(), channel <= GetParam().channels) << name << channel;
      EXPECT_TRUE(!control.isVisible() || HasRoom(control, picker)) << name << channel;
    }
}

TEST_P(PanelLooks, ShowLabelsBladeAndSwatchInTheirColours) {
  const QColor ground = At(Find<QWidget>("frmLED"), QPointF(2, 2));
  EXPECT_EQ(ground.lightness() < 128, GetParam().dark) << ground.name().toStdString();

  for (std::size_t i = 0; i < 4; ++i) {
    const int channel = static_cast<int>(i) + 1;
    const bool used = i < Inks().size();
    EXPECT_TRUE(Shows(Numbered("labelLED", channel), used ? Inks()[i] : QColor(Qt::black))) << channel;
    EXPECT_TRUE(!used || Shows(Numbered("LabelLedSet", channel), Inks()[i])) << channel;
  }

  // Only the first channel shines. The core of a bright blade is nearly white; beside it the tube has the pure colour.
  const QColor dies[] = {Qt::white, QColor(0, 0, 255), QColor(255, 0, 0), QColor(255, 0, 0)};
  const QColor die = dies[Inks().size() - 1];
  const auto& blade = Find<QWidget>("PickColorBlade");
  EXPECT_EQ(At(blade, QPointF(blade.width() * 0.6, blade.height() / 2.0 - 4)), die);
  EXPECT_EQ(At(blade, QPointF(8, 8)), QColor(BladeView::kGround)) << "light is shown on a dark ground";

  // Swatch and caption stand in the middle of their button, side by side.
  const auto& button = Find<QPushButton>("btnPulseHigh");
  constexpr int kGap = 4;
  const int swatch = button.iconSize().width();
  const int caption = button.fontMetrics().size(Qt::TextShowMnemonic, button.text()).width();
  const double left = (button.width() - swatch - kGap - caption) / 2.0;
  EXPECT_EQ(At(button, QPointF(left + swatch / 2.0, button.height() / 2.0)), die);
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
}  // namespace kestrin::ui::led
