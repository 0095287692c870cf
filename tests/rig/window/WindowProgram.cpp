// SPDX-License-Identifier: MIT
#include "rig/window/WindowProgram.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <thread>

namespace kestrin::rig {

namespace {

constexpr std::chrono::seconds kPatience{60};

/// Looks again and again until `found` gives something.
template <class Result>
std::optional<Result> Until(const std::function<std::optional<Result>()>& found) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (std::chrono::steady_clock::now() < end) {
    if (std::optional<Result> result = found()) return result;
    // Asking takes the time of the program that is asked.
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return std::nullopt;
}

WindowProgram::Wanted Named(const std::string& role, const std::string& name) {
  return [role, name](const Control& control) { return control.role == role && control.name == name; };
}

WindowProgram::Wanted ItemOf(const std::string& list, const std::string& beginning) {
  return [list, beginning](const Control& control) {
    return control.role == "list item" && control.parent == list && control.name.starts_with(beginning);
  };
}

std::string Quoted(const std::string& role, const std::string& name) { return role + " \"" + name + "\""; }

}  // namespace

void WindowProgram::Start(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) {
  m_program.reset();
  m_program = Another(arguments, environment);
}

std::unique_ptr<support::ChildProcess> WindowProgram::Another(const std::vector<std::string>& arguments,
                                                              const std::vector<std::string>& environment) const {
  std::vector<std::string> command{KESTRIN};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<std::string> variables = m_desktop.Environment();
  variables.insert(variables.end(), environment.begin(), environment.end());
  return std::make_unique<support::ChildProcess>(command, variables);
}

support::Finished WindowProgram::Close() {
  const Control window = Await("the window", [](const Control& control) { return control.role == "frame"; });
  m_person.CloseWindowAt(m_bus.Middle(window).value());
  return Wait();
}

Control WindowProgram::Await(const std::string& what, const Wanted& wanted) const {
  const std::function<std::optional<Control>()> look = [&]() -> std::optional<Control> {
    for (const Control& control : Shown())
      if (wanted(control)) return control;
    return std::nullopt;
  };
  if (const auto found = Until(look)) return *found;
  throw std::runtime_error("there is no " + what + "; there are:\n" + EverythingShown());
}

Control WindowProgram::Await(const std::string& role, const std::string& name) const {
  return Await(Quoted(role, name), Named(role, name));
}

Control WindowProgram::AwaitItem(const std::string& list, const std::string& beginning) const {
  return Await(Quoted("line", beginning) + " in " + list, ItemOf(list, beginning));
}

void WindowProgram::AwaitGone(const std::string& role, const std::string& name) const {
  const std::function<std::optional<bool>()> look = [&]() -> std::optional<bool> {
    return IsShown(role, name) ? std::nullopt : std::optional(true);
  };
  if (!Until(look)) throw std::runtime_error(Quoted(role, name) + " does not go away");
}

bool WindowProgram::IsShown(const std::string& role, const std::string& name) const {
  const std::vector<Control> shown = Shown();
  return std::any_of(shown.begin(), shown.end(), Named(role, name));
}

std::vector<std::string> WindowProgram::ItemsOf(const std::string& list) const {
  std::vector<std::string> names;
  for (const Control& control : Shown())
    if (control.parent == list && control.role == "list item") names.push_back(control.name);
  return names;
}

void WindowProgram::Click(const std::string& role, const std::string& name, int times) const {
  ClickOn(Quoted(role, name), Named(role, name), times);
}

void WindowProgram::ClickItem(const std::string& list, const std::string& beginning, int times) const {
  ClickOn(Quoted("line", beginning) + " in " + list, ItemOf(list, beginning), times);
}

void WindowProgram::ClickOn(const std::string& what, const Wanted& wanted, int times) const {
  // A window is told to screen readers a moment before it is on the screen.
  std::optional<Spot> spot;
  Await(what + " that can be clicked", [&](const Control& control) {
    if (!wanted(control) || !control.Is(Control::State::Enabled)) return false;
    spot = m_bus.Middle(control);
    return spot && m_person.WindowAt(*spot) == control.window;
  });
  m_person.Click(spot.value(), times);
}

void WindowProgram::ChooseFile(const std::string& title, const std::string& path) const {
  Await("dialog", title);
  Click("text", "File name:");
  Press({"Control_L", "a"});
  Type(path);
  Press({"Return"});
  AwaitGone("dialog", title);
}

std::string WindowProgram::EverythingShown() const {
  std::string all;
  for (const Control& control : Shown())
    all += Quoted(control.role, control.name) + " in \"" + control.parent + "\" of \"" + control.window + "\"\n";
  return all;
}

}  // namespace kestrin::rig
