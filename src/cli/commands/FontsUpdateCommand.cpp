// SPDX-License-Identifier: MIT
#include <optional>
#include <string>

#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ConsoleUpdateView.h"
#include "cli/FontsFolder.h"
#include "cli/OnlineBoard.h"
#include "core/base/Clock.h"
#include "core/base/Text.h"
#include "core/update/UpdateManager.h"
#include "core/update/UpdateServer.h"
#include "platform/net/CurlTransfer.h"
#include "platform/process/Environment.h"

namespace kestrin::cli {

namespace {

using Outcome = core::update::UpdateManager::Outcome;

std::string_view NameOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Updated:
      return "updated";
    case Outcome::Nothing:
      return "nothing";
    case Outcome::None:
    case Outcome::Failed:
    case Outcome::Cancelled:
      break;
  }
  return "failed";
}

ExitCode CodeOf(Outcome outcome) {
  if (outcome == Outcome::Updated || outcome == Outcome::Nothing) return ExitCode::Done;
  return outcome == Outcome::Cancelled ? ExitCode::Interrupted : ExitCode::Failed;
}

class FontsUpdateCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "fonts update"; }
  [[nodiscard]] std::string Description() const override { return "Fetch the sound fonts that are missing here"; }

  void Declare(Syntax& syntax) override {
    syntax.Text("--server HOST[:PORT]", m_server,
                "The update server to ask, with https:// in front where the connection is encrypted",
                Syntax::Need::Optional);
  }

  [[nodiscard]] Report Run(Context& context) override {
    const std::optional<std::string> environment =
        platform::process::EnvironmentText(core::update::UpdateServer::kEnvironment);
    const std::string server =
        core::update::UpdateServer::Choose(m_server, environment ? environment->c_str() : nullptr);
    if (!core::update::UpdateServer::IsValid(server))
      throw CommandFailure(ExitCode::WrongUsage, core::base::Quoted(server) + " is no server. Name it as " +
                                                     core::update::UpdateServer::kForm + ".");
    OnlineBoard online(context);
    online.RequireSoundBoard();
    // The server wants to know which board it is for.
    static_cast<void>(online.EnsureIdentified());
    online.RequireIdentified();

    core::base::SystemClock clock;
    ProgressLine progress(context.options, clock);
    ConsoleUpdateView view(progress);
    const core::base::EventPump pump = context.interrupt.Pump();
    platform::net::CurlTransfer transfer(pump);
    transfer.Trust(platform::process::EnvironmentText(core::update::UpdateServer::kCertificates).value_or(""));
    core::update::UpdateManager manager(server, FontsFolder(context.options), context.disk, pump);
    manager.Initialize(view, transfer);
    manager.deviceSerial(online.State().serialNumber);
    {
      const InterruptAction cancel(context.interrupt, [&] { manager.cancel(); });
      manager.startUpdate();
    }
    progress.End();
    return ReportOn(manager);
  }

 private:
  static Report ReportOn(const core::update::UpdateManager& manager) {
    const bool stopped = manager.outcome() == Outcome::Cancelled;
    const std::string message =
        stopped ? "Stopped. What was fetched is kept, the next update goes on from there." : manager.message();
    Report report;
    report.code = CodeOf(manager.outcome());
    report.document = {
        {"outcome", NameOf(manager.outcome())}, {"message", message}, {"installed", manager.installed()}};
    for (const std::string& item : manager.installed()) report.text += "Installed: " + item + "\n";
    (report.code == ExitCode::Done ? report.text : report.message) += message;
    if (report.code == ExitCode::Done) report.text += "\n";
    return report;
  }

  std::string m_server;
};

}  // namespace

std::unique_ptr<Command> MakeFontsUpdateCommand() { return std::make_unique<FontsUpdateCommand>(); }

}  // namespace kestrin::cli
