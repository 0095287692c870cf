// SPDX-License-Identifier: MIT
// The colour picker.

#include "ui/kit/Theme.h"
#include "ui/led/LedPanelFixture.h"

namespace kestrin::support {
namespace {

using ::testing::ElementsAre;

class PickColor : public LedPanelFixture {
 protected:
  [[nodiscard]] QWidget& Frame() const { return Find<QWidget>("PickColor_frame"); }
  /// The rows that can be seen.
  [[nodiscard]] int Rows() const {
    int rows = 0;
    for (int channel = 1; channel <= 4; ++channel) {
      const std::string number = std::to_string(channel);
      const bool shown = Shown(("SliderLedSet" + number).c_str());
      EXPECT_EQ(Shown(("LabelLedSet" + number).c_str()), shown) << channel;
      EXPECT_EQ(Shown(("ValueLedSet" + number).c_str()), shown) << channel;
      if (!shown) continue;
      EXPECT_EQ(channel, rows + 1) << "a row is left out";
      ++rows;
    }
    return rows;
  }
  [[nodiscard]] QSpinBox& Value(int channel) const {
    return Find<QSpinBox>(("ValueLedSet" + std::to_string(channel)).c_str());
  }
  void Pick(const QColor& color) {
    dialogs.colors = {color};
    Click("PickColor");
  }
  void Press(Qt::Key key) { QTest::keyClick(window->focusWidget(), key); }
};

TEST_F(PickColor, OpensWithTheLevelsThatItsButtonIsFor) {
  StartLed(12);
  EXPECT_FALSE(Shown("PickColor_frame"));
  Click("btnPulseHigh");
  EXPECT_TRUE(Shown("PickColor_frame"));
  EXPECT_EQ(Rows(), 3);
  EXPECT_THAT(Sliders(3), ElementsAre(255, 30, 140));
  EXPECT_EQ(LabelText("PickColorSubject"), "Idle Pulse, high level");
  Click("btnPulseLow");
  EXPECT_THAT(Sliders(3), ElementsAre(40, 0, 90));
  EXPECT_EQ(LabelText("PickColorSubject"), "Idle Pulse, low level");
  Click("PickColorCancel");
  Click("btnFocHigh");
  EXPECT_THAT(Sliders(3), ElementsAre(255, 128, 64));
  EXPECT_EQ(LabelText("PickColorSubject"), "Flash on Clash");
  for (int channel = 1; channel <= 3; ++channel) EXPECT_EQ(Value(channel).value(), Slider(channel));
}

struct ChannelsRow {
  int code;
  int channels;
  bool canPick;
  std::vector<QColor> colors;
};

void PrintTo(const ChannelsRow& row, std::ostream* out) { *out << row.channels << " channels"; }

class PickColorRows : public PickColor, public testing::WithParamInterface<ChannelsRow> {};

INSTANTIATE_TEST_SUITE_P(
    LedTypes, PickColorRows,
    testing::Values(ChannelsRow{1, 1, false, {{255, 255, 255}}},
                    ChannelsRow{2, 2, false, {{128, 128, 255}, {255, 128, 0}}},
                    ChannelsRow{12, 3, true, {{255, 0, 0}, {0, 192, 0}, {128, 128, 255}}},
                    ChannelsRow{40, 4, true, {{255, 0, 0}, {0, 192, 0}, {128, 128, 255}, {255, 255, 255}}}));

TEST_P(PickColorRows, AreAsManyAsTheLedTypeHasChannels) {
  StartLed(GetParam().code);
  Click("btnPulseHigh");
  EXPECT_EQ(Rows(), GetParam().channels);
  std::vector<QColor> colors = TextColors("LabelLedSet");
  colors.resize(GetParam().colors.size());
  EXPECT_EQ(colors, GetParam().colors);
  EXPECT_EQ(Find<QAbstractButton>("PickColor").isEnabled(), GetParam().canPick);
  EXPECT_EQ(Find<QAbstractButton>("ColorFidelity").isEnabled(), GetParam().canPick);
}

TEST_F(PickColor, LevelsAreDraggedAndTyped) {
  StartLed(12);
  Click("btnPulseHigh");
  for (int channel = 1; channel <= 4; ++channel) {
    const auto& slider = Find<QSlider>(("SliderLedSet" + std::to_string(channel)).c_str());
    EXPECT_EQ(slider.minimum(), 0);
    EXPECT_EQ(slider.maximum(), 255);
  }
  SetSlider(2, 77);
  EXPECT_EQ(Value(2).text(), "77");
  Value(3).setFocus();
  Value(3).selectAll();
  QTest::keyClicks(&Value(3), "201");
  EXPECT_EQ(Slider(3), 201);
}

TEST_F(PickColor, WithFidelityTheDiesGiveEqualLuminance) {
  StartLed(12);
  Click("btnPulseHigh");
  Find<QCheckBox>("ColorFidelity").setChecked(true);
  Pick(Qt::white);
  // 600 * 255 / 900, 600 * 255 / 1500, the weakest die itself.
  EXPECT_THAT(Sliders(3), ElementsAre(170, 102, 255));
  Pick(QColor(255, 0, 0));
  EXPECT_THAT(Sliders(3), ElementsAre(255, 0, 0));
}

TEST_F(PickColor, WithoutFidelityTheColourIsTakenAsItIs) {
  StartLed(40);
  Click("btnPulseHigh");
  Pick(QColor(255, 128, 7));
  EXPECT_THAT(Sliders(4), ElementsAre(255, 128, 7, 200)) << "white keeps its level";
  EXPECT_EQ(Value(2).value(), 128);
}

TEST_F(PickColor, TheColourDialogStartsWithTheLastColourAndMayBeCancelled) {
  StartLed(12);
  Click("btnPulseHigh");
  Pick(QColor(1, 2, 3));
  dialogs.colors = {std::nullopt};
  Click("PickColor");
  EXPECT_EQ(dialogs.lastColor, QColor(1, 2, 3));
  EXPECT_EQ(dialogs.lastTopic, ui::kit::HelpContext::ColorPicker);
  EXPECT_THAT(Sliders(3), ElementsAre(1, 2, 3));
}

TEST_F(PickColor, OkKeepsTheLevelsForItsPulseAndSendsNothing) {
  StartLed(12);
  const simulator::BoardState before = Held();
  Click("btnPulseLow");
  SetSlider(1, 11);
  SetSlider(3, 33);
  Click("PickColorOK");
  EXPECT_FALSE(Shown("PickColor_frame"));
  EXPECT_EQ(Held(), before);
  Click("btnPulseLow");
  EXPECT_THAT(Sliders(3), ElementsAre(11, 0, 33));
  Click("btnPulseHigh");
  EXPECT_THAT(Sliders(3), ElementsAre(255, 30, 140)) << "the high level is another one";
}

TEST_F(PickColor, CancelForgetsTheLevels) {
  StartLed(12);
  Click("btnFocHigh");
  SetSlider(1, 11);
  Click("PickColorCancel");
  EXPECT_FALSE(Shown("PickColor_frame"));
  Click("btnFocHigh");
  EXPECT_EQ(Slider(1), 255);
}

TEST_F(PickColor, ApplyShowsTheLevelsOnTheBlade) {
  StartLed(2, 100);
  const simulator::BoardState before = Held();
  Click("btnPulseHigh");
  SetSlider(1, 51);
  SetSlider(2, 0);
  Click("PickColorApply");
  // Blue: a fifth of 500, a duty cycle of 10 %, 50 of 500 counts and the base. Amber is off.
  EXPECT_THAT(Held().ledParam, ElementsAre(500, 1, 51, 0, 1, 0, 0, 0, 0));
  EXPECT_TRUE(Shown("PickColor_frame"));
  EXPECT_EQ(Held().ledPulses, before.ledPulses);
  EXPECT_EQ(Held().pulseStarted, std::nullopt);
  Click("PickColorCancel");
  EXPECT_THAT(Held().ledParam, ElementsAre(500, 1, 51, 0, 1, 0, 0, 0, 0)) << "the blade keeps the preview";
}

TEST_F(PickColor, APreviewThatFailsGoesOfflineWithoutAMessage) {
  StartLed(12, 100, FailRead(1));
  Click("btnPulseHigh");
  Click("PickColorApply");
  EXPECT_FALSE(IsOnline());
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_FALSE(Find<QAbstractButton>("PickColorApply").isEnabled());
}

TEST_F(PickColor, FollowsTheKeyboard) {
  StartLed(12);
  Find<QWidget>("btnPulseLow").setFocus();
  Press(Qt::Key_Space);
  ASSERT_TRUE(Shown("PickColor_frame"));
  EXPECT_EQ(window->focusWidget()->objectName(), "SliderLedSet1");
  Press(Qt::Key_Right);
  Press(Qt::Key_Up);
  EXPECT_EQ(Slider(1), 42);
  QStringList order;
  for (int i = 0; i < 10; ++i) {
    Press(Qt::Key_Tab);
    order.append(window->focusWidget()->objectName());
  }
  EXPECT_EQ(order, QStringList({"ValueLedSet1", "SliderLedSet2", "ValueLedSet2", "SliderLedSet3", "ValueLedSet3",
                                "PickColor", "ColorFidelity", "PickColorApply", "PickColorCancel", "PickColorOK"}));
  Press(Qt::Key_Escape);
  EXPECT_FALSE(Shown("PickColor_frame"));
  EXPECT_EQ(window->focusWidget()->objectName(), "btnPulseLow") << "the keyboard goes back";
  Press(Qt::Key_Space);
  EXPECT_EQ(Slider(1), 40) << "Escape has forgotten the level";
  Press(Qt::Key_Right);
  Press(Qt::Key_Return);
  EXPECT_FALSE(Shown("PickColor_frame"));
  Press(Qt::Key_Space);
  EXPECT_EQ(Slider(1), 41) << "Enter has kept it";
  Value(1).setFocus();
  Value(1).selectAll();
  QTest::keyClicks(&Value(1), "9");
  Press(Qt::Key_Enter);
  Find<QWidget>("btnPulseLow").setFocus();
  Press(Qt::Key_Space);
  EXPECT_EQ(Slider(1), 9);
  SetSlider(1, 99);
  Find<QWidget>("PickColorCancel").setFocus();
  Press(Qt::Key_Return);
  Press(Qt::Key_Space);
  EXPECT_EQ(Slider(1), 9) << "Enter on Cancel is Cancel";
}

TEST_F(PickColor, IsDraggedAsideButNotOutOfThePanel) {
  StartLed(12);
  Click("btnPulseHigh");
  const QPoint before = Frame().pos();
  const auto drag = [this](const QPoint& by) {
    const QPoint grip(20, 12);
    QTest::mousePress(&Frame(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(&Frame(), grip + by);
    QTest::mouseRelease(&Frame(), Qt::LeftButton, Qt::NoModifier, grip);
  };
  drag({-60, -25});
  EXPECT_EQ(Frame().pos(), before + QPoint(-60, -25));
  Click("PickColorCancel");
  Click("btnPulseLow");
  EXPECT_EQ(Frame().pos(), before + QPoint(-60, -25)) << "it stays where the person wants it";
  drag({-4000, 4000});
  const QRect panel = Find<QWidget>("frmLED").rect();
  EXPECT_TRUE(panel.contains(Frame().geometry()));
  EXPECT_EQ(Frame().x(), 0);
  drag({4000, 0});
  window->resize(window->minimumSizeHint());
  EXPECT_TRUE(Until([this] { return Find<QWidget>("frmLED").rect().contains(Frame().geometry()); }));
}

TEST_F(PickColor, LeavesThePulseThatItEditsInSight) {
  StartLed(12);
  Click("btnFocHigh");
  EXPECT_LT(Frame().geometry().right(), Find<QWidget>("FrameFoc").x());
  Click("PickColorCancel");
  Click("btnPulseHigh");
  const QWidget& idle = Find<QWidget>("FrameIdle");
  EXPECT_GT(Frame().x(), idle.geometry().right());
}

TEST_F(PickColor, FitsIntoTheSmallestWindowWithTextsAThirdLonger) {
  ui::kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()), ui::kit::ColorScheme::Light);
  StartLed(40);
  window->resize(960, 640);
  const auto longer = [](const QString& text) { return text + text.left((text.size() + 2) / 3); };
  for (auto* const label : Frame().findChildren<QLabel*>()) label->setText(longer(label->text()));
  for (auto* const button : Frame().findChildren<QAbstractButton*>()) button->setText(longer(button->text()));
  Click("btnPulseLow");
  QApplication::processEvents();
  EXPECT_EQ(window->size(), QSize(960, 640));
  EXPECT_TRUE(Find<QWidget>("frmLED").rect().contains(Frame().geometry()));
  for (const auto* const control : Frame().findChildren<QWidget*>()) {
    if (!control->isVisible() || control->focusProxy() != nullptr) continue;
    EXPECT_TRUE(Frame().rect().contains(control->geometry())) << control->objectName().toStdString();
    const bool hasText = qobject_cast<const QLabel*>(control) || qobject_cast<const QAbstractButton*>(control);
    if (!hasText) continue;
    EXPECT_GE(control->width(), control->sizeHint().width()) << control->objectName().toStdString();
    EXPECT_GE(control->height(), control->sizeHint().height()) << control->objectName().toStdString();
  }
}

TEST_F(PickColor, LocksNothingElse) {
  StartLed(12);
  Click("btnPulseHigh");
  Type("IdleTON", "3");
  EXPECT_EQ(BoxText("IdleTON"), "3");
  Click("btnSendFoc");
  EXPECT_EQ(Held().pulseStarted, 1);
  EXPECT_TRUE(Shown("PickColor_frame"));
}

TEST_F(PickColor, ShowsTheChannelsOfATypeThatIsChosenMeanwhile) {
  StartLed(12);
  Click("btnPulseHigh");
  Choose("Solo");
  EXPECT_EQ(Rows(), 1);
}

}  // namespace
}  // namespace kestrin::support
