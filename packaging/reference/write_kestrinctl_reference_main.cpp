// SPDX-License-Identifier: MIT
// write_kestrinctl_reference FOLDER: writes the manual page of "kestrinctl" and its completions, made of what the
// commands themselves declare.

#include <algorithm>
#include <exception>
#include <iostream>
#include <limits>

#include "cli/Commands.h"
#include "cli/GlobalOptions.h"
#include "reference/WriteReference.h"

namespace {

using namespace kestrin;
using reference::OptionText;

/// Writes down what is declared.
class Recorder final : public cli::Syntax {
 public:
  explicit Recorder(std::vector<OptionText>& options) : m_options(options) {}

  void Text(const std::string& name, std::string& target, const std::string& help, Need need) override {
    static_cast<void>(target);
    Add(name, help, need);
  }
  void Texts(const std::string& name, std::vector<std::string>& target, const std::string& help, Need need) override {
    static_cast<void>(target);
    Add(name + kMore, help, need);
  }
  void Path(const std::string& name, std::filesystem::path& target, const std::string& help, Need need) override {
    static_cast<void>(target);
    Add(name, help, need);
  }
  void Paths(const std::string& name, std::vector<std::filesystem::path>& target, const std::string& help,
             Need need) override {
    static_cast<void>(target);
    Add(name + kMore, help, need);
  }
  void Number(const std::string& name, std::optional<std::int32_t>& target, std::int32_t minimum, std::int32_t maximum,
              const std::string& help) override {
    static_cast<void>(target);
    Add(name, help + Range(minimum, maximum), Need::Optional);
  }
  void Numbers(const std::string& name, std::vector<std::int32_t>& target, std::int32_t minimum, std::int32_t maximum,
               int most, const std::string& help) override {
    static_cast<void>(target);
    Add(name + kMore, help + "; up to " + std::to_string(most) + Range(minimum, maximum), Need::Required);
  }
  void Flag(const std::string& name, bool& target, const std::string& help) override {
    static_cast<void>(target);
    Add(name, help, Need::Optional);
  }

 private:
  static constexpr const char* kMore = "...";

  static std::string Range(std::int32_t minimum, std::int32_t maximum) {
    if (maximum == std::numeric_limits<std::int32_t>::max()) return " (at least " + std::to_string(minimum) + ")";
    return " (" + std::to_string(minimum) + " to " + std::to_string(maximum) + ")";
  }

  void Add(const std::string& name, const std::string& help, Need need) {
    OptionText option;
    const std::size_t blank = name.find(' ');
    option.name = name.substr(0, blank);
    if (blank != std::string::npos) option.value = name.substr(blank + 1);
    option.help = help;
    option.isRequired = need == Need::Required;
    m_options.push_back(option);
  }

  std::vector<OptionText>& m_options;
};

reference::ProgramText Kestrinctl() {
  reference::ProgramText program;
  program.name = "kestrinctl";
  program.version = KESTRIN_VERSION;
  program.title = "command line for Kestrin light-saber sound boards";
  program.description =
      "Gets sounds onto Kestrin light-saber boards and sets the boards up: what the window of kestrin(1) does, for the "
      "terminal and for scripts. The options may stand before the command or behind it. Failures are told on standard "
      "error, with what to do next.";
  cli::GlobalOptions options;
  Recorder recorder(program.options);
  cli::DeclareGlobalOptions(recorder, options);
  program.options.push_back({"--help", "", "Tell the commands, or of a command what it takes", false});
  program.options.push_back({"--version", "", "Tell the program's version", false});

  for (const auto& command : cli::AllCommands()) {
    reference::CommandText text{command->Name(), command->Description(), {}};
    Recorder own(text.options);
    command->Declare(own);
    program.commands.push_back(text);
    const std::string group = text.name.substr(0, text.name.find(' '));
    const bool isNew = std::none_of(program.groups.begin(), program.groups.end(),
                                    [&group](const auto& known) { return known.first == group; });
    if (group != text.name && isNew) program.groups.emplace_back(group, cli::GroupDescription(group));
  }
  program.chapters = {{"Exit status",
                       {{"0", "Done."},
                        {"1", "The operation failed; the message says why."},
                        {"2", "Wrong usage."},
                        {"3", "There is no board."},
                        {"130", "Stopped by Ctrl-C; a download stopped so counts as cancelled."},
                        {"129, 143", "The same by a terminal that was closed, or by a request to end."}}},
                      {"Environment", {{"KESTRIN_UPDATE_SERVER", "The server that sound fonts are fetched from."}}},
                      {"See also", {{"", "kestrin(1)"}}}};
  return program;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: write_kestrinctl_reference FOLDER\n";
    return 2;
  }
  try {
    reference::WriteReference(Kestrinctl(), argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "write_kestrinctl_reference: " << error.what() << '\n';
    return 1;
  }
}
