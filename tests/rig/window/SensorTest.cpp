// SPDX-License-Identifier: MIT
#include "core/base/PathText.h"
#include "rig/window/AccessibleNames.h"

namespace kestrin::rig {
namespace {

using testing::IsSupersetOf;

/// Somebody who swings and taps a saber whose board is simulated, with the script of a person in no hurry.
class Sensor : public AccessibleNames {
 protected:
  Sensor() {
    std::string script = "at 2 0 -20 9\nrest 0.6\n";
    for (const char* const force : {"6", "7", "8", "6", "7"}) script += std::string("swing ") + force + "\nrest 0.4\n";
    for (const char* const force : {"19", "22", "17"}) script += std::string("tap ") + force + "\nrest 0.4\n";
    const auto file = support::WriteBytes(m_folder / "moves.txt", script);
    window.Start(
        {"--board", Board("id=4389,motion=" + core::base::TextOf(file)), "--program-folder", m_folder.Path().string()},
        m_environment);
    window.Await("label", "Kestrin USB2 Serial Number: 4B535401");
  }
  [[nodiscard]] double Threshold() const {
    return window.Value(window.Await("slider", "Threshold, IMPACT DETECTION PARAMETERS"));
  }
  [[nodiscard]] support::Json Held() const { return RunOnBoard(0, {"accel", "get"})["ImpactTh"]; }
};

TEST_F(Sensor, ThePictureIsSaidAndTheSuggestionUsedAndSent) {
  window.Press({"Control_L", "e"});
  window.Await("the picture", [](const Control& control) {
    return control.name == "What the board feels" &&
           control.description == "X 2, Y 0, Z -20, tilt 9. Impact threshold 10.";
  });
  window.Await("label", "done, hardest 8");
  window.Await("the rings",
               [](const Control& control) { return control.name == "Taps" && control.description == "3 of 5 done"; });
  window.Await("label", "two more: tap the blade on your palm");
  window.Await("label", "Suggestion so far: impact threshold 12.");
  window.Await("label", "Between your hardest swing (8) and your softest tap (17).");
  {
    SCOPED_TRACE("suggestion");
    EXPECT_THAT(Controls(kMain),
                IsSupersetOf(std::vector<Said>{
                    {"push button", "Start again"}, {"push button", "Use 12"}, {"push button", "SEND Configuration"}}));
  }
  EXPECT_EQ(Threshold(), 10);
  window.Click("push button", "Use 12");
  window.Await("what is not sent", [](const Control& control) {
    return control.name == "Threshold, IMPACT DETECTION PARAMETERS" &&
           control.description == "Not sent. The board holds 10.";
  });
  EXPECT_EQ(Threshold(), 12);
  window.Await("the line", [](const Control& control) {
    return control.name == "What the board feels" && control.description.ends_with("Impact threshold 12.");
  });
  window.Click("push button", "SEND Configuration");
  window.Await("label", "The board has taken the new values.");
  window.Click("push button", "Start again");
  window.Await("label", "five times: swing the saber through the air");
  window.AwaitGone("push button", "Use 12");
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(Held(), 12);
}

TEST_F(Sensor, NothingIsSentWithoutTheButton) {
  window.Press({"Control_L", "e"});
  window.Click("push button", "Use 12");
  window.Press({"Escape"});
  window.AwaitGone("push button", "CLOSE Window");
  window.Click("push button", "Setup");
  window.Click("push button", "Factory Default");
  window.Press({"Escape"});
  window.AwaitGone("push button", "CLOSE Window");
  EXPECT_EQ(window.Close().code, 0);
  EXPECT_EQ(Held(), 10);
}

}  // namespace
}  // namespace kestrin::rig
