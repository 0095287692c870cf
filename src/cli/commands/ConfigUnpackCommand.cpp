// SPDX-License-Identifier: MIT
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "core/sound/pack/SetUnpacker.h"
#include "platform/archive/ZipArchives.h"

namespace kestrin::cli {

namespace {

class ConfigUnpackCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "config unpack"; }
  [[nodiscard]] std::string Description() const override { return "Unpack a set that was packed with its sounds"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("ZIP", m_file, "The packed set (.zip)", Syntax::Need::Required);
    syntax.Path("--output DIR", m_folder, "The folder for its files; nothing there is overwritten",
                Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    platform::archive::ZipArchives archives(context.disk);
    const auto unpacked =
        core::sound::SetUnpacker(archives, context.disk).Unpack(m_file, m_folder, context.interrupt.Pump());
    if (!unpacked) throw CommandFailure(ExitCode::Failed, unpacked.Text());
    core::sound::LSU_Configuration configuration;
    const LoadedFiles loaded = LoadConfiguration(*unpacked, configuration, context.interrupt.Pump());
    return ReportOf(configuration, loaded);
  }

 private:
  std::filesystem::path m_file;
  std::filesystem::path m_folder;
};

}  // namespace

std::unique_ptr<Command> MakeConfigUnpackCommand() { return std::make_unique<ConfigUnpackCommand>(); }

}  // namespace kestrin::cli
