// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <array>
#include <string>

#include "core/led/Color.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {

/// The window with an LED driver online. The catalogue has one LED type for each number of channels; every channel's
/// duty cycle is a plain multiple of its luminance, so that counts can be worked out by head.
class LedPanelFixture : public MainFixture {
 protected:
  /// The answers of a board from its identity to its second pulse: the first answer to an action comes next.
  static constexpr int kReadsBefore = 24;
  /// The commands until then.
  static constexpr int kWritesBefore = 5;

  static constexpr const char* kHeader = "KestrinLEDConfigurator#2\r\n";
  static constexpr const char* kSolo = "Solo@1#1#1000+Col=whiteML1000MDC80VL3.3Coef0_0_0_0;0_0_0.1_0;\r\n";
  static constexpr const char* kDuo =
      "Duo@2#2#500+Col=blueML500MDC50VL3.2Coef0_0_0_0;0_0_0.1_0;+Col=amberML1000MDC40VL3Coef0_0_0_0;0_0_0.05_0;\r\n";
  static constexpr const char* kTrio =
      "Trio@12#3#1000+Col=redML900MDC80VL3Coef0_0_0_0;0_0_0.1_0;+Col=greenML1500MDC90VL3.4Coef0_0_0_0;0_0_0.05_0;"
      "+Col=blueML600MDC85VL3.2Coef0_0_0_0;0_0_0.1_0;\r\n";
  static constexpr const char* kQuad =
      "Quad@40#4#1000+Col=redML900MDC80VL3Coef0_0_0_0;0_0_0.1_0;+Col=greenML900MDC80VL3.4Coef0_0_0_0;0_0_0.1_0;"
      "+Col=blueML900MDC80VL3.2Coef0_0_0_0;0_0_0.1_0;+Col=whiteML900MDC80VL3.3Coef0_0_0_0;0_0_0.1_0;\r\n";

  LedPanelFixture() { WriteCatalogue(std::string(kHeader) + kSolo + kDuo + kTrio + kQuad); }

  void WriteCatalogue(const std::string& text) { WriteBytes(program / "KestrinLEDS.ldcfg", text); }

  /// Starts with a board that is set to that LED type and holds two pulses. `more` is added to the board's options.
  void StartLed(int code, int overdrive = 100, const std::string& more = "") {
    std::filesystem::create_directories(folder / "board");
    WriteBytes(folder / "board" / "board.json", R"({"id":4095,"ledConfig":{"code":)" + std::to_string(code) +
                                                    R"(,"voltage":3.7,"overdrive":)" + std::to_string(overdrive) +
                                                    R"(},"ledPulses":[
{"low":[40,0,90,7],"high":[255,30,140,200],"Trise":1000,"Ton":800,"Tfall":500,"Toff":1500,"NRep":0},
{"low":[1,2,3,4],"high":[255,128,64,20],"Trise":0,"Ton":40,"Tfall":0,"Toff":60,"NRep":3}]})");
    Start("dir=" + core::base::TextOf(folder / "board") + more);
    window->resize(1000, 700);
    window->activateWindow();
    ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  }
  static std::string FailWrite(int number) { return ",fault=write:" + std::to_string(kWritesBefore + number); }
  static std::string FailRead(int number) { return ",fault=read:" + std::to_string(kReadsBefore + number); }

  [[nodiscard]] const simulator::BoardState& Held() const { return agent->Board().State(); }
  [[nodiscard]] bool IsOnline() const { return !LabelText("SerialLabel").isEmpty() && Shown("frmLED"); }

  void Click(const char* button) { QTest::mouseClick(&Find<QAbstractButton>(button), Qt::LeftButton); }
  [[nodiscard]] QString BoxText(const char* box) const { return Find<QLineEdit>(box).text(); }
  /// Chooses an LED type from the list.
  void Choose(const QString& name) {
    auto& types = Find<QComboBox>("LEDcombo");
    types.setCurrentText(name);
    ASSERT_EQ(types.currentText(), name);
    ASSERT_TRUE(QMetaObject::invokeMethod(&types, "activated", Q_ARG(int, types.currentIndex())));
  }
  /// Types into the box and goes on to the next control.
  void Type(const char* box, const QString& text) {
    auto& edit = Find<QLineEdit>(box);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, text);
    QTest::keyClick(&edit, Qt::Key_Tab);
  }
  [[nodiscard]] int Slider(int channel) const {
    return Find<QSlider>(("SliderLedSet" + std::to_string(channel)).c_str()).value();
  }
  void SetSlider(int channel, int level) const {
    Find<QSlider>(("SliderLedSet" + std::to_string(channel)).c_str()).setValue(level);
  }
  [[nodiscard]] std::vector<int> Sliders(int channels) const {
    std::vector<int> levels;
    for (int channel = 1; channel <= channels; ++channel) levels.push_back(Slider(channel));
    return levels;
  }
  /// The text colour of labels 1 to 4 of that name.
  [[nodiscard]] std::vector<QColor> TextColors(const std::string& name) const {
    std::vector<QColor> colors;
    for (int channel = 1; channel <= 4; ++channel) {
      const auto& label = Find<QLabel>((name + std::to_string(channel)).c_str());
      colors.push_back(label.palette().color(label.foregroundRole()));
    }
    return colors;
  }
};

}  // namespace kestrin::support
