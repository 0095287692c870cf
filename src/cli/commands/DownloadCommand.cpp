// SPDX-License-Identifier: MIT
#include <chrono>

#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/ConsoleDownloadView.h"
#include "cli/KeptParametersPlace.h"
#include "cli/OnlineBoard.h"
#include "core/device/BoardIdentity.h"
#include "core/sound/Download.h"
#include "core/sound/board/BoardHistory.h"
#include "platform/desktop/DataFolder.h"

namespace kestrin::cli {

namespace {

std::string_view NameOf(core::sound::DownloadOutcome outcome) {
  switch (outcome) {
    case core::sound::DownloadOutcome::Success:
      return "success";
    case core::sound::DownloadOutcome::Incomplete:
      return "incomplete";
    case core::sound::DownloadOutcome::TooLarge:
      return "too-large";
    case core::sound::DownloadOutcome::ConnectionLost:
      return "connection-lost";
    case core::sound::DownloadOutcome::MemoryCheckError:
      return "memory-check-error";
    case core::sound::DownloadOutcome::Cancelled:
      return "cancelled";
  }
  return "";
}

ExitCode CodeOf(core::sound::DownloadOutcome outcome) {
  if (outcome == core::sound::DownloadOutcome::Success) return ExitCode::Done;
  return outcome == core::sound::DownloadOutcome::Cancelled ? ExitCode::Interrupted : ExitCode::Failed;
}

class DownloadCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "download"; }
  [[nodiscard]] std::string Description() const override { return "Write a set of sounds into the board"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    core::sound::LSU_Configuration configuration;
    const LoadedFiles loaded = LoadConfiguration(m_file, configuration, context.interrupt.Pump());
    // A set that lost some of its sounds is not the set that was asked for. What is missing altogether has its own
    // message.
    if (!loaded.failed.empty() && configuration.CheckIntegrity() == 0) return Refused(loaded.message);
    core::motion::KeptParametersFolder kept = OpenKeptParameters(context.disk);
    OnlineBoard online(context);
    // One that said nothing has its own ending.
    if (online.State().knowsId) online.RequireSoundBoard();
    const core::device::SessionState& state = online.State();
    configuration.SetMaxNrOfSamples(state.memoryCapacity);

    core::base::SystemClock clock;
    ProgressLine progress(context.options, clock);
    ConsoleDownloadView view(progress);
    core::sound::Download download(configuration, view, kept, clock, context.interrupt.Pump());
    const InterruptAction cancel(context.interrupt, [&] {
      progress.Phase("Stopping ...");
      download.Cancel();
      online.Hurry();
    });
    const core::base::Clock::Duration start = clock.Now();
    const bool identified = online.EnsureIdentified();
    const core::sound::DownloadOutcome outcome =
        download.Send({online.Board(), state.serialNumber, core::device::FlashSize(state.memoryCapacity), identified});
    const std::chrono::duration<double> time = clock.Now() - start;
    progress.End();

    Report report;
    report.code = CodeOf(outcome);
    report.document = {{"outcome", NameOf(outcome)},
                       {"information", download.Information()},
                       {"seconds", time.count()},
                       {"bytes", download.BytesWritten()}};
    std::string ending = download.Information() + (view.BoardHolds().empty() ? "" : "\n" + view.BoardHolds());
    if (outcome == core::sound::DownloadOutcome::Success) {
      // The board has the set, whether that can be remembered or not.
      if (const auto entry = Remember(context.disk, configuration, state.serialNumber, download.Parameters()); !entry)
        ending += "\n" + entry.Text();
      report.text = ending + "\n";
    } else {
      report.message = (loaded.message.empty() ? "" : loaded.message + "\n") + ending;
    }
    return report;
  }

 private:
  /// Leaves an entry in the board's history.
  core::base::Result<> Remember(core::base::Disk& disk, core::sound::LSU_Configuration& sent,
                                const std::string& serialNumber,
                                const std::optional<core::device::AccParam>& parameters) const {
    const std::filesystem::path data = platform::desktop::DataFolder();
    core::sound::BoardHistory history(data.empty() ? data : data / core::sound::BoardHistory::kFolderName, disk);
    return history.Add(sent, m_file, serialNumber, parameters,
                       std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
  }

  /// Nothing was sent.
  static Report Refused(const std::string& why) {
    Report report;
    report.code = ExitCode::Failed;
    report.document = {{"outcome", NameOf(core::sound::DownloadOutcome::Incomplete)},
                       {"information", why},
                       {"seconds", 0.0},
                       {"bytes", 0}};
    report.message = why;
    return report;
  }

  std::filesystem::path m_file;
};

}  // namespace

std::unique_ptr<Command> MakeDownloadCommand() { return std::make_unique<DownloadCommand>(); }

}  // namespace kestrin::cli
