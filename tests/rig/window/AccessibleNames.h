// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "rig/window/ProgramFolder.h"
#include "rig/window/WindowProgram.h"
#include "support/KestrinctlTest.h"

namespace kestrin::rig {

/// Role and name, as a screen reader says them.
using Said = std::pair<std::string, std::string>;

/// Everything that a person can get to with the keyboard, as the accessibility bus tells it.
class AccessibleNames : public support::KestrinctlTest {
 protected:
  AccessibleNames() { m_environment.emplace_back("LD_PRELOAD"); }

  void Start(const std::filesystem::path& set) { Start(std::vector<std::string>{set.string()}); }
  void Start(const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"--board", Board(), "--program-folder", m_folder.Path().string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    window.Start(arguments, m_environment);
  }

  /// What can be used in the window of that title now. Expects a name and a known role for each.
  [[nodiscard]] std::vector<Said> Controls(const std::string& title) const {
    static const std::set<std::string> kRoles{"push button",  "button menu", "button with drop down",
                                              "radio button", "slider",      "combo box",
                                              "list",         "list item",   "tree",
                                              "tree item",    "text",        "label",
                                              "spin box",     "check box",   "page tab list",
                                              "page tab",     "graphic"};
    std::vector<Said> controls;
    for (const Control& control : window.Shown()) {
      if (control.window != title || !control.Is(Control::State::Focusable)) continue;
      EXPECT_NE(control.name, "") << "a " << control.role << " in \"" << control.parent << "\" has no name";
      EXPECT_EQ(kRoles.count(control.role), 1U) << "\"" << control.name << "\" is a " << control.role;
      if (control.Is(Control::State::Enabled)) controls.emplace_back(control.role, WithoutFacts(control.name));
    }
    return controls;
  }

  /// Behind the name of a sound stand duration, size and volume.
  [[nodiscard]] static std::string WithoutFacts(const std::string& name) {
    const std::size_t end = name.find(".lsu, ");
    return end == std::string::npos ? name : name.substr(0, end + 4);
  }

  static constexpr const char* kMain = "Corvent Kestrin Launcher v2.2.2";
  static constexpr const char* kMessage = "Kestrin Launcher";

  ProgramFolder program{m_folder.Path()};
  WindowProgram window;
};

}  // namespace kestrin::rig
