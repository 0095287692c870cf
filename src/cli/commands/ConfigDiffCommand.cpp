// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/OnlineBoard.h"
#include "cli/SetDifferences.h"
#include "core/base/PathText.h"

namespace kestrin::cli {

namespace {

using core::sound::LSU_Configuration;
using core::sound::SetDifference;

/// Loads a set of which every sound has to be there: of one that is missing nobody can say whether it differs.
void LoadWhole(const std::filesystem::path& path, LSU_Configuration& configuration, Interrupt& interrupt) {
  const LoadedFiles loaded = LoadConfiguration(path, configuration, interrupt.Pump());
  if (!loaded.failed.empty()) throw CommandFailure(ExitCode::Failed, loaded.message);
}

class ConfigDiffCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "config diff"; }
  [[nodiscard]] std::string Description() const override {
    return "Compare two sets, or a set and what the board holds, slot by slot";
  }

  void Declare(Syntax& syntax) override {
    syntax.Path("A", m_first, "Configuration file (.lscfg)", Syntax::Need::Required);
    syntax.Path("B", m_second, "Configuration file to compare with, or \"board\" for what the board holds",
                Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    const bool withBoard = m_second == "board";
    const std::vector<SetDifference> differences = withBoard ? WithBoard(context) : WithSet(context);
    const std::string first = core::base::TextOf(m_first.filename());
    const std::string second = withBoard ? "the board" : core::base::TextOf(m_second.filename());
    Report report;
    report.document = {{"same", differences.empty()}, {"differences", DocumentOf(differences)}};
    if (differences.empty()) {
      report.text = "No differences.\n";
    } else {
      report.code = ExitCode::Failed;
      report.text = TableOf(differences, first, second);
      report.message = first + " and " + second + " differ in " + std::to_string(differences.size()) +
                       (differences.size() == 1 ? " place." : " places.");
    }
    return report;
  }

 private:
  [[nodiscard]] std::vector<SetDifference> WithSet(Context& context) const {
    LSU_Configuration first;
    LSU_Configuration second;
    LoadWhole(m_first, first, context.interrupt);
    LoadWhole(m_second, second, context.interrupt);
    return core::sound::SetComparison::Of(first, second, context.interrupt.Pump());
  }

  [[nodiscard]] std::vector<SetDifference> WithBoard(Context& context) const {
    LSU_Configuration set;
    LoadWhole(m_first, set, context.interrupt);
    const core::base::Result<> map = set.MakeMemoryMap([](int) { return true; }, context.interrupt.Pump());
    if (!map) throw CommandFailure(ExitCode::Failed, map.Text());
    OnlineBoard online(context);
    online.RequireSoundBoard();
    core::sound::BoardInquiry inquiry(online.Board(), [&context] {
      context.interrupt.Look();
      return true;
    });
    const std::vector<core::sound::FlashSound> onBoard = RequireTold(inquiry.Read(online.State().MostFlash()));
    return RequireTold(core::sound::SetComparison::WithBoard(set, onBoard, inquiry));
  }

  std::filesystem::path m_first;
  std::filesystem::path m_second;
};

}  // namespace

std::unique_ptr<Command> MakeConfigDiffCommand() { return std::make_unique<ConfigDiffCommand>(); }

}  // namespace kestrin::cli
