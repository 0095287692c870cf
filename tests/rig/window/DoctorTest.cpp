// SPDX-License-Identifier: MIT
// The connection doctor over a board that is well, with mouse, keyboard and screen reader.

#include <algorithm>

#include "rig/window/AccessibleNames.h"

namespace kestrin::rig {
namespace {

using testing::IsSupersetOf;

class Doctor : public AccessibleNames {
 protected:
  void Open() const {
    window.Click("button menu", "Help");
    // "Connection ..." in the menu.
    window.Press({"c"});
    window.Await("label", "All is well. It looks again every second.");
  }
};

TEST_F(Doctor, SaysThatAllIsWellWithASimulatedBoard) {
  Start(std::vector<std::string>{});
  window.Await("label", "Kestrin USB Serial Number: 4B535401");
  Open();
  EXPECT_THAT(Controls(kMain), IsSupersetOf(std::vector<Said>{{"push button", "Copy report"},
                                                              {"check box", "with the board's serial number"},
                                                              {"push button", "Close"}}));
  for (const char* const row :
       {"Is a board plugged in? Yes", "May this person open it? Yes", "Is another program using it? No",
        "Does it answer? Yes", "Is it known which board it is? Yes"})
    window.Await(row, [row](const Control& control) { return control.name == row; });
  // The board was asked through the real agent.
  window.Await("round trips",
               [](const Control& control) { return control.name.find("20 questions answered in ") == 0; });
  window.Click("push button", "Copy report");
  window.Await("label", "Copied. Paste it where you ask; nothing is sent.");
  window.Press({"Escape"});
  window.AwaitGone("push button", "Copy report");
  EXPECT_FALSE(window.IsShown("push button", "Why is no board connected?"));
}

}  // namespace
}  // namespace kestrin::rig
