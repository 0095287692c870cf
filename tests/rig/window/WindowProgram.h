// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "rig/window/AccessibilityBus.h"
#include "rig/window/Person.h"
#include "rig/window/PrivateDesktop.h"
#include "support/ChildProcess.h"

namespace kestrin::rig {

/// The built window program, unchanged, as somebody uses it who has a mouse, a keyboard and a screen reader. Whatever
/// is waited for is waited for as long as a busy machine may need, and no longer; in vain, it throws with all that is
/// shown.
class WindowProgram {
 public:
  using Wanted = std::function<bool(const Control&)>;

  /// Starts the program; `environment` as for ChildProcess, on top of the desktop's.
  void Start(const std::vector<std::string>& arguments, const std::vector<std::string>& environment);
  /// Starts it once more on the same desktop; whoever holds that start waits for its end.
  [[nodiscard]] std::unique_ptr<support::ChildProcess> Another(const std::vector<std::string>& arguments,
                                                               const std::vector<std::string>& environment) const;
  /// Closes the window by its title bar and waits for the program's end.
  support::Finished Close();
  /// Waits for the end of a program that has been told to end.
  support::Finished Wait() { return m_program->Wait(); }
  [[nodiscard]] const support::ChildProcess& Program() const { return *m_program; }

  // --- What is there ---

  /// Returns when something that is `wanted` is shown; `what` is for the message when it never is.
  Control Await(const std::string& what, const Wanted& wanted) const;
  Control Await(const std::string& role, const std::string& name) const;
  /// The same for the line of a list that begins so.
  Control AwaitItem(const std::string& list, const std::string& beginning) const;
  void AwaitGone(const std::string& role, const std::string& name) const;
  [[nodiscard]] bool IsShown(const std::string& role, const std::string& name) const;
  /// Everything that is shown.
  [[nodiscard]] std::vector<Control> Shown() const { return m_bus.Shown(); }
  /// The names of all parts of the list of that name.
  [[nodiscard]] std::vector<std::string> ItemsOf(const std::string& list) const;
  /// Number of a slider or bar; 0 when it has none.
  [[nodiscard]] double Value(const Control& control) const { return m_bus.Value(control).value_or(0); }

  // --- What the person does ---

  /// Waits until it is there, can be used and is in front, and clicks into its middle.
  void Click(const std::string& role, const std::string& name, int times = 1) const;
  void ClickItem(const std::string& list, const std::string& beginning, int times = 1) const;
  void Press(const std::vector<std::string>& keys) const { m_person.Press(keys); }
  void Type(const std::string& text) const { m_person.Type(text); }
  /// Types the path into the file dialog of that title and takes it.
  void ChooseFile(const std::string& title, const std::string& path) const;

 private:
  void ClickOn(const std::string& what, const Wanted& wanted, int times) const;
  [[nodiscard]] std::string EverythingShown() const;

  PrivateDesktop m_desktop;
  AccessibilityBus m_bus{m_desktop.SessionBus()};
  Person m_person{m_desktop.Display()};
  std::unique_ptr<support::ChildProcess> m_program;
};

}  // namespace kestrin::rig
