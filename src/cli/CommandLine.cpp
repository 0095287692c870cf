// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <exception>
#include <map>
#include <ostream>
#include <string_view>
#include <utility>

#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "core/base/PathText.h"
#include "core/base/Text.h"
#include "platform/files/SystemDisk.h"
#include "platform/process/StandardStreams.h"

namespace kestrin::cli {

namespace {

/// Declares arguments at a parser of one command.
class ParserSyntax final : public Syntax {
 public:
  explicit ParserSyntax(CLI::App& parser) : m_parser(parser) {}

  void Text(const std::string& name, std::string& target, const std::string& help, Need need) override {
    const Names names = Split(name);
    Describe(*m_parser.add_option(names.option, target, help), names, need);
  }

  void Texts(const std::string& name, std::vector<std::string>& target, const std::string& help, Need need) override {
    const Names names = Split(name);
    CLI::Option& option = *m_parser.add_option(names.option, target, help);
    Describe(option, names, need);
    // What follows an option's one value belongs to somebody else.
    if (name.starts_with("-")) option.allow_extra_args(false);
  }

  void Path(const std::string& name, std::filesystem::path& target, const std::string& help, Need need) override {
    const Names names = Split(name);
    CLI::Option& option = *m_parser.add_option_function<std::string>(
        names.option, [&target](const std::string& text) { target = core::base::PathOf(text); }, help);
    Describe(option, names, need);
  }

  void Paths(const std::string& name, std::vector<std::filesystem::path>& target, const std::string& help,
             Need need) override {
    const Names names = Split(name);
    CLI::Option& option = *m_parser.add_option_function<std::vector<std::string>>(
        names.option,
        [&target](const std::vector<std::string>& texts) {
          for (const std::string& text : texts) target.push_back(core::base::PathOf(text));
        },
        help);
    Describe(option, names, need);
  }

  void Number(const std::string& name, std::optional<std::int32_t>& target, std::int32_t minimum, std::int32_t maximum,
              const std::string& help) override {
    const Names names = Split(name);
    const Range range{minimum, maximum};
    CLI::Option& option = *m_parser.add_option_function<std::string>(
        names.option, [&target, range](const std::string& text) { target = range.Parse(text); },
        help + " (" + range.Text() + ")");
    range.Check(option);
    Describe(option, names, Need::Optional);
  }

  void Numbers(const std::string& name, std::vector<std::int32_t>& target, std::int32_t minimum, std::int32_t maximum,
               int most, const std::string& help) override {
    const Names names = Split(name);
    const Range range{minimum, maximum};
    CLI::Option& option = *m_parser.add_option_function<std::vector<std::string>>(
        names.option,
        [&target, range](const std::vector<std::string>& texts) {
          for (const std::string& text : texts) target.push_back(range.Parse(text).value_or(0));
        },
        help + " (" + range.Text() + ")");
    range.Check(option);
    Describe(option, names, Need::Required);
    option.expected(1, most);
  }

  void Flag(const std::string& name, bool& target, const std::string& help) override {
    m_parser.add_flag(name, target, help);
  }

 private:
  struct Names {
    std::string option;
    std::string value;
  };

  /// The whole numbers that an option takes.
  struct Range {
    std::int32_t minimum;
    std::int32_t maximum;

    [[nodiscard]] std::string Text() const { return std::to_string(minimum) + " to " + std::to_string(maximum); }
    [[nodiscard]] std::optional<std::int32_t> Parse(const std::string& text) const {
      std::int32_t number = 0;
      const char* const end = text.data() + text.size();
      const auto [stop, error] = std::from_chars(text.data(), end, number);
      if (error != std::errc{} || stop != end || number < minimum || number > maximum) return std::nullopt;
      return number;
    }
    /// What the option refuses.
    void Check(CLI::Option& option) const {
      option.check(
          [range = *this](const std::string& text) -> std::string {
            return range.Parse(text) ? "" : core::base::Quoted(text) + " is no whole number from " + range.Text();
          },
          "");
    }
  };

  static Names Split(const std::string& name) {
    const std::size_t blank = name.find(' ');
    return blank == name.npos ? Names{name, ""} : Names{name.substr(0, blank), name.substr(blank + 1)};
  }

  static void Describe(CLI::Option& option, const Names& names, Need need) {
    option.type_name(names.value);
    option.required(need == Need::Required);
  }

  CLI::App& m_parser;
};

/// The parser of the whole command line.
class Parser {
 public:
  Parser(const std::vector<std::unique_ptr<Command>>& commands, const std::string& version, GlobalOptions& options)
      : m_app("Gets sounds onto Kestrin light-saber boards and sets the boards up.", "kestrinctl") {
    m_app.set_version_flag("--version", "kestrinctl " + version);
    m_app.fallthrough();
    // On Windows whatever begins with a slash would be an option otherwise: "/sets/a.lscfg" is a file.
    m_app.allow_windows_style_options(false);
    m_app.footer("--board, --program-folder, --json and --quiet may stand before the command or behind it.");
    m_app.require_subcommand(1);
    ParserSyntax syntax(m_app);
    DeclareGlobalOptions(syntax, options);
    for (const auto& command : commands) Add(*command);
  }

  /// The command that the arguments name. Throws CLI::ParseError.
  Command& Parse(int argc, const char* const* argv) {
    m_app.parse(argc, argv);
    const auto named =
        std::find_if(m_parsers.begin(), m_parsers.end(), [](const auto& entry) { return entry.first->parsed(); });
    return *named->second;
  }

  [[nodiscard]] std::string Help() const { return m_app.help(); }

 private:
  void Add(Command& command) {
    const std::string name = command.Name();
    const std::size_t blank = name.find(' ');
    CLI::App* const parent = blank == name.npos ? &m_app : &Group(name.substr(0, blank));
    CLI::App* const parser =
        parent->add_subcommand(blank == name.npos ? name : name.substr(blank + 1), command.Description());
    ParserSyntax syntax(*parser);
    command.Declare(syntax);
    m_parsers.emplace_back(parser, &command);
  }

  CLI::App& Group(const std::string& name) {
    CLI::App*& group = m_groups[name];
    if (group == nullptr) {
      group = m_app.add_subcommand(name, std::string(GroupDescription(name)));
      group->require_subcommand(1);
    }
    return *group;
  }

  CLI::App m_app;
  std::map<std::string, CLI::App*> m_groups;
  std::vector<std::pair<CLI::App*, Command*>> m_parsers;
};

Report RunCommand(Command& command, const GlobalOptions& options, Interrupt& interrupt, const std::string& program) {
  try {
    const auto board = platform::boards::BoardChoice::Parse(options.board);
    if (!board) throw CommandFailure(ExitCode::WrongUsage, board.Text());
    platform::files::SystemDisk disk;
    Context context{options, *board, interrupt, disk, program};
    return command.Run(context);
  } catch (const CommandFailure& failure) {
    const std::string& detail = failure.Detail();
    // A signal breaks off what waits, which then fails.
    const bool stopped = failure.Code() == ExitCode::Failed && Interrupt::Requested();
    const ExitCode code = stopped ? ExitCode::Interrupted : failure.Code();
    if (detail.empty()) return {code, nullptr, "", failure.what()};
    return {code, {{"error", failure.what()}, {"detail", detail}}, "", failure.what() + ("\n" + detail)};
  } catch (const std::exception& error) {
    return {ExitCode::Failed, nullptr, "", error.what()};
  }
}

}  // namespace

CommandLine::CommandLine(std::vector<std::unique_ptr<Command>> commands, std::string version)
    : m_commands(std::move(commands)), m_version(std::move(version)) {}

int CommandLine::Run(int argc, const char* const* argv, Interrupt& interrupt, std::ostream& out,
                     std::ostream& errors) noexcept {
  try {
    GlobalOptions options;
    Parser parser(m_commands, m_version, options);
    Report report;
    try {
      Command& command = parser.Parse(argc, argv);
      report = RunCommand(command, options, interrupt, "kestrinctl " + m_version);
    } catch (const CLI::CallForHelp&) {
      out << parser.Help();
      return static_cast<int>(ExitCode::Done);
    } catch (const CLI::CallForVersion& version) {
      out << version.what() << '\n';
      return static_cast<int>(ExitCode::Done);
    } catch (const CLI::ParseError& error) {
      // The options count as given only once everything was parsed.
      options.json = std::find(argv, argv + argc, std::string_view("--json")) != argv + argc;
      report = {ExitCode::WrongUsage, nullptr, "", error.what() + std::string("\nRun \"kestrinctl --help\" for help.")};
    }
    // Progress that could not be written is no reason to hold back the result.
    out.clear();
    Output(out, errors, options.json).Print(report);
    // Who reads no more has seen enough. But a disk that is full has lost the result.
    if (!out.good() && platform::process::OutputHasReader()) {
      errors << "kestrinctl: the result could not be written\n";
      if (report.code == ExitCode::Done) report.code = ExitCode::Failed;
    }
    if (report.code == ExitCode::Interrupted && Interrupt::Requested()) return Interrupt::Status();
    return static_cast<int>(report.code);
  } catch (const std::exception& error) {
    errors << "kestrinctl: " << core::base::ShownLines(error.what()) << '\n';
    return static_cast<int>(ExitCode::Failed);
  }
}

}  // namespace kestrin::cli
