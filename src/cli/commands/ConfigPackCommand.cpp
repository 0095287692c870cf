// SPDX-License-Identifier: MIT
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "core/base/PathText.h"
#include "core/sound/pack/SetPacker.h"
#include "platform/archive/ZipArchives.h"

namespace kestrin::cli {

namespace {

class ConfigPackCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "config pack"; }
  [[nodiscard]] std::string Description() const override { return "Pack a set with its sounds as one file"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
    syntax.Path("--output OUT", m_output, "The packed set (.zip), a new file", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    core::sound::LSU_Configuration configuration;
    const LoadedFiles loaded = LoadConfiguration(m_file, configuration, context.interrupt.Pump());
    std::vector<std::filesystem::path> missing;
    for (const std::string& path : loaded.failed) missing.push_back(core::base::PathOf(path));
    platform::archive::ZipArchives archives(context.disk);
    const auto packed = core::sound::SetPacker(archives).Pack(configuration, missing, core::base::TextOf(m_file.stem()),
                                                              m_output, context.interrupt.Pump());
    if (!packed) throw CommandFailure(ExitCode::Failed, packed.Text());
    Report report;
    report.document = {{"files", packed->files}, {"bytes", packed->bytes}};
    report.text = std::to_string(packed->files) + " files packed, " + std::to_string(packed->bytes) + " bytes\n";
    return report;
  }

 private:
  std::filesystem::path m_file;
  std::filesystem::path m_output;
};

}  // namespace

std::unique_ptr<Command> MakeConfigPackCommand() { return std::make_unique<ConfigPackCommand>(); }

}  // namespace kestrin::cli
