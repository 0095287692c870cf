// SPDX-License-Identifier: MIT
// The built window in the hands of a suite: takes an order a line from standard input, words with a tab behind each,
// and answers each with a line, "ok" or "no" and why.
//   start [ARGUMENT ...]           starts the window program
//   look KIND ROLE TEXT [...]      waits until all of these conditions hold at once
//   click ROLE NAME                waits until it can be clicked, and clicks
//   close                          closes the window and waits for the end of the program, which is to be a good one
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "rig/kernel/window/Condition.h"
#include "rig/window/WindowProgram.h"

namespace {

using kestrin::rig::Condition;
using kestrin::rig::Control;
using kestrin::rig::WindowProgram;
using Words = std::vector<std::string>;

/// One look at the whole window takes seconds in an emulated machine.
constexpr std::chrono::seconds kPatience{60};

Words Split(const std::string& line) {
  Words words;
  std::istringstream stream(line);
  for (std::string word; std::getline(stream, word, '\t');) words.push_back(word);
  return words;
}

void Look(const WindowProgram& window, const Words& words) {
  std::vector<Condition> open;
  for (std::size_t at = 1; at + 2 < words.size(); at += 3) open.push_back({words[at], words[at + 1], words[at + 2]});
  const auto end = std::chrono::steady_clock::now() + kPatience;
  for (;;) {
    const std::vector<Control> shown = window.Shown();
    std::string unmet;
    for (const Condition& condition : open)
      if (!condition.IsMetBy(shown)) unmet += condition.kind + " " + condition.role + " \"" + condition.text + "\"; ";
    if (unmet.empty()) return;
    if (std::chrono::steady_clock::now() < end) continue;
    for (const Control& control : shown)
      if (!control.name.empty())
        unmet += "\n" + control.role + " \"" + control.name + "\" (" + control.description + ")";
    throw std::runtime_error(unmet);
  }
}

void Start(WindowProgram& window, const Words& words) { window.Start(Words(words.begin() + 1, words.end()), {}); }

void Click(WindowProgram& window, const Words& words) { window.Click(words.at(1), words.at(2)); }

void Close(WindowProgram& window, const Words&) {
  const int code = window.Close().code;
  if (code != 0) throw std::runtime_error("the program ended with " + std::to_string(code));
}

struct Order {
  const char* word;
  std::function<void(WindowProgram& window, const Words& words)> obey;
};

std::string Obey(WindowProgram& window, const Words& words) {
  static const Order kOrders[] = {{"start", Start}, {"look", Look}, {"click", Click}, {"close", Close}};
  try {
    for (const Order& order : kOrders) {
      if (!words.empty() && words[0] == order.word) {
        order.obey(window, words);
        return "ok";
      }
    }
    return "no: there is no such order";
  } catch (const std::exception& error) {
    std::string text = std::string("no: ") + error.what();
    for (char& letter : text)
      if (letter == '\n') letter = '\t';
    return text;
  }
}

}  // namespace

int main() {
  // The services of the desktop print what they like, and are not to be taken for answers.
  const int answers = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 10);
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
  const auto say = [answers](const std::string& answer) { ::dprintf(answers, "%s\n", answer.c_str()); };
  try {
    WindowProgram window;
    say("ok");
    for (std::string line; std::getline(std::cin, line);) say(Obey(window, Split(line)));
  } catch (const std::exception& error) {
    say(std::string("no: ") + error.what());
    return 1;
  }
  return 0;
}
