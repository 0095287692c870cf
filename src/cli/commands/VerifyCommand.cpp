// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/OnlineBoard.h"
#include "cli/ProgressLine.h"
#include "cli/TextTable.h"
#include "core/sound/Verification.h"

namespace kestrin::cli {

namespace {

/// The board's sum as JSON; null when it did not answer.
Document BoardSum(const core::sound::ChecksumComparison& sums) {
  return sums.board ? Document(*sums.board) : Document();
}

std::vector<std::string> Cells(const std::string& name, const std::string& position,
                               const core::sound::ChecksumComparison& sums) {
  return {name, position, std::to_string(sums.expected), sums.board ? std::to_string(*sums.board) : "none",
          sums.Ok() ? "ok" : "DIFFERENT"};
}

class VerifyCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "verify"; }
  [[nodiscard]] std::string Description() const override {
    return "Compare what the board holds with a set of sounds, writing nothing";
  }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    using Align = TextTable::Align;
    core::sound::LSU_Configuration configuration;
    Report report;
    LoadMemoryMap(m_file, configuration, context.interrupt.Pump());
    OnlineBoard online(context);
    online.RequireSoundBoard();

    const core::base::SystemClock clock;
    ProgressLine progress(context.options, clock);
    progress.Phase("Comparing ...");
    Document files = Document::array();
    TextTable lines({{"slot"}, {"#", Align::Right}, {"expected", Align::Right}, {"board", Align::Right}, {""}});
    bool verified = true;
    bool received = true;
    const std::vector<core::sound::SlotFile> entries = configuration.FilesInFlashOrder();
    for (const core::sound::SlotFile& entry : entries) {
      context.interrupt.Look();
      const core::sound::Slot& slot = core::sound::SlotOf(entry.kind);
      const auto sums = core::sound::Verification::CheckFile(online.Board(), *entry.file);
      verified = verified && sums.Ok();
      received = received && sums.board.has_value();
      files.push_back({{"slot", slot.name},
                       {"position", entry.position},
                       {"address", entry.file->StartAddress()},
                       {"length", entry.file->NrOfBytes()},
                       {"expected", sums.expected},
                       {"board", BoardSum(sums)},
                       {"ok", sums.Ok()}});
      lines.Add(Cells(std::string(slot.title), std::to_string(entry.position), sums));
      progress.Percent(static_cast<int>(files.size() * 100 / entries.size()));
    }
    const auto sums = core::sound::Verification::CheckTable(online.Board(), configuration);
    verified = verified && sums.Ok();
    received = received && sums.board.has_value();
    lines.Add(Cells("Table", "", sums));
    progress.End();

    report.document = {{"verified", verified},
                       {"files", files},
                       {"table", {{"expected", sums.expected}, {"board", BoardSum(sums)}, {"ok", sums.Ok()}}}};
    report.text = lines.Text() + (verified ? "\nThe board holds exactly these sounds.\n" : "");
    if (!verified) {
      report.code = ExitCode::Failed;
      report.message += (report.message.empty() ? "" : "\n") +
                        (received ? std::string("The board does not hold these sounds. Download them again.")
                                  : core::sound::Verification::kNotReceived);
    }
    return report;
  }

 private:
  std::filesystem::path m_file;
};

}  // namespace

std::unique_ptr<Command> MakeVerifyCommand() { return std::make_unique<VerifyCommand>(); }

}  // namespace kestrin::cli
