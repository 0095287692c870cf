// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"

namespace kestrin::cli {

namespace {

class ConfigShowCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "config show"; }
  [[nodiscard]] std::string Description() const override { return "Load a configuration file and list its sounds"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    core::sound::LSU_Configuration configuration;
    const LoadedFiles loaded = LoadConfiguration(m_file, configuration, context.interrupt.Pump());
    return ReportOf(configuration, loaded);
  }

 private:
  std::filesystem::path m_file;
};

}  // namespace

std::unique_ptr<Command> MakeConfigShowCommand() { return std::make_unique<ConfigShowCommand>(); }

}  // namespace kestrin::cli
