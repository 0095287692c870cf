// SPDX-License-Identifier: MIT
// What a screen reader says of the LED driver's page, its colour picker and the update.

#include "rig/window/AccessibleNames.h"
#include "rig/window/SilentServer.h"

namespace kestrin::rig {
namespace {

using testing::IsSupersetOf;
using testing::Not;

class PanelNames : public AccessibleNames {
 protected:
  /// An LED driver with an LED type of a red, a green and a blue channel.
  void StartLedDriver() {
    std::filesystem::create_symlink(std::filesystem::path(KESTRIN_PROGRAM_FOLDER) / "KestrinLEDS.ldcfg",
                                    m_folder / "KestrinLEDS.ldcfg");
    std::filesystem::create_directories(m_board);
    support::WriteBytes(m_board / "board.json",
                        R"({"id":512,"ledConfig":{"code":20,"voltage":6.0,"overdrive":100},"ledPulses":[
{"low":[1,2,3,0],"high":[4,5,6,0],"Trise":1000,"Ton":800,"Tfall":500,"Toff":1500,"NRep":0},
{"low":[1,2,3,0],"high":[7,8,9,0],"Trise":0,"Ton":40,"Tfall":0,"Toff":60,"NRep":3}]})");
    Start(std::vector<std::string>{});
  }
  /// Expects that there is one of that role and name, and that it says this number.
  void ExpectValue(const std::string& role, const std::string& name, double value) const {
    EXPECT_EQ(window.Value(window.Await(role, name)), value) << role << " " << name;
  }
};

TEST_F(PanelNames, OfTheLedDriversPageAndItsColourPicker) {
  StartLedDriver();
  window.Await("label", "LED DRIVER SETUP");
  {
    SCOPED_TRACE("page");
    EXPECT_THAT(Controls(kMain),
                IsSupersetOf(std::vector<Said>{{"page tab", "Sounds"},
                                               {"page tab", "LED driver"},
                                               {"combo box", "Prism RGB 9W"},
                                               {"slider", "Overdrive, in percent"},
                                               {"spin box", "Overdrive, in percent"},
                                               {"push button", "Update LED: write LED type and overdrive to the board"},
                                               {"push button", "Idle pulse: choose the high level"},
                                               {"push button", "Idle pulse: choose the low level"},
                                               {"text", "Seconds at the high level, up to 10000"},
                                               {"text", "Seconds at the low level, up to 10000"},
                                               {"text", "Seconds from low to high, up to 10"},
                                               {"text", "Seconds from high to low, up to 10000"},
                                               {"push button", "Send the idle pulse to the board and start it"},
                                               {"push button", "Flash on clash: choose the level of the flash"},
                                               {"text", "Seconds that a flash lasts, up to 10000"},
                                               {"text", "Seconds between two flashes, up to 10000"},
                                               {"text", "Number of flashes, 1 to 10"},
                                               {"push button", "Send the flash to the board and start it"},
                                               {"push button", "Open LED settings"},
                                               {"push button", "Save the LED settings"}}));
    // The name of a list that opens is what is chosen in it.
    window.Await("the list of LED types", [](const Control& control) {
      return control.role == "combo box" && control.description == "LED type";
    });
    ExpectValue("slider", "Overdrive, in percent", 100);
    ExpectValue("spin box", "Overdrive, in percent", 100);
  }
  window.Click("push button", "Idle pulse: choose the high level");
  window.Await("push button", "Pick color");
  {
    SCOPED_TRACE("picker");
    const std::vector<Said> controls = Controls(kMain);
    EXPECT_THAT(controls, IsSupersetOf(std::vector<Said>{{"slider", "Level of LED 1, 0 to 255"},
                                                         {"spin box", "Level of LED 1, 0 to 255"},
                                                         {"slider", "Level of LED 2, 0 to 255"},
                                                         {"spin box", "Level of LED 2, 0 to 255"},
                                                         {"slider", "Level of LED 3, 0 to 255"},
                                                         {"spin box", "Level of LED 3, 0 to 255"},
                                                         {"push button", "Pick color"},
                                                         {"check box", "Color Fidelity"},
                                                         {"push button", "Apply"},
                                                         {"push button", "Cancel"},
                                                         {"push button", "OK"}}));
    EXPECT_THAT(controls, Not(testing::Contains(Said{"slider", "Level of LED 4, 0 to 255"}))) << "it has three";
    for (int channel = 1; channel <= 3; ++channel) {
      const std::string name = "Level of LED " + std::to_string(channel) + ", 0 to 255";
      ExpectValue("slider", name, 3 + channel);
      ExpectValue("spin box", name, 3 + channel);
    }
    window.Await("what it is for", [](const Control& control) {
      return control.name == "LED setting" && control.description == "Idle Pulse, high level";
    });
  }
  window.Press({"Right"});
  window.Press({"Return"});
  window.AwaitGone("push button", "Pick color");
  const auto isUnsent = [](const Control& control) {
    return control.name == "Send the idle pulse to the board and start it" && control.description == "not sent";
  };
  window.Await("the idle pulse, not sent", isUnsent);
}

TEST_F(PanelNames, OfTheUpdateWhileItRunsAndWhenItHasFailed) {
  constexpr const char* kUpdate = "Update of sound fonts";
  SilentServer server;
  Start(std::vector<std::string>{"--update-server", server.Address()});
  window.Await("label", "Kestrin USB Serial Number: 4B535401");
  window.Click("push button", "Update");
  window.Await("label", "Close this window or press Esc to cancel; what has arrived is kept.");
  {
    SCOPED_TRACE("running");
    EXPECT_THAT(Controls(kUpdate), testing::IsEmpty()) << "Escape is all that there is to do";
    window.Await("the dialog", [&](const Control& control) { return control.window == kUpdate; });
  }
  server.Close();
  window.Await("label", "Warning!");
  {
    SCOPED_TRACE("failed");
    EXPECT_THAT(Controls(kUpdate), IsSupersetOf(std::vector<Said>{{"push button", "OK"}}));
    window.Await("the sign", [](const Control& control) { return control.name == "Warning"; });
  }
}

}  // namespace
}  // namespace kestrin::rig
