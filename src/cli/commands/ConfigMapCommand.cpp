// SPDX-License-Identifier: MIT
#include <span>

#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/TextTable.h"
#include "core/base/Bytes.h"
#include "core/base/PathText.h"

namespace kestrin::cli {

namespace {

std::string Hexadecimal(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

class ConfigMapCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "config map"; }
  [[nodiscard]] std::string Description() const override { return "Show where a set lies in the board's flash"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    using Align = TextTable::Align;
    core::sound::LSU_Configuration configuration;
    Report report;
    LoadMemoryMap(m_file, configuration, context.interrupt.Pump());

    Document files = Document::array();
    TextTable lines({{"slot"},
                     {"#", Align::Right},
                     {"address", Align::Right},
                     {"length", Align::Right},
                     {"checksum", Align::Right},
                     {"file"}});
    for (const core::sound::SlotFile& entry : configuration.FilesInFlashOrder()) {
      const core::sound::Slot& slot = core::sound::SlotOf(entry.kind);
      const core::sound::LSU_SoundFile& file = *entry.file;
      const std::string path = core::base::TextOf(file.FileNameAndPath());
      files.push_back({{"slot", slot.name},
                       {"position", entry.position},
                       {"path", path},
                       {"address", file.StartAddress()},
                       {"length", file.NrOfBytes()},
                       {"checksum", file.GetFileCRC()}});
      lines.Add({std::string(slot.title), std::to_string(entry.position), std::to_string(file.StartAddress()),
                 std::to_string(file.NrOfBytes()), std::to_string(file.GetFileCRC()), path});
    }
    const std::vector<std::uint8_t> table = configuration.GetFileTable();
    const std::uint16_t checksum = core::base::GetBig16(std::span(table).last<2>());
    const std::string bytes = Hexadecimal(table);
    report.document = {
        {"files", files},
        {"table", {{"address", core::sound::LSU_Configuration::Nr_Base}, {"bytes", bytes}, {"checksum", checksum}}}};
    report.text = lines.Text() + "\nTable at address " + std::to_string(core::sound::LSU_Configuration::Nr_Base) +
                  ", " + std::to_string(table.size()) + " bytes, checksum " + std::to_string(checksum) + ":\n" + bytes +
                  "\n";
    return report;
  }

 private:
  std::filesystem::path m_file;
};

}  // namespace

std::unique_ptr<Command> MakeConfigMapCommand() { return std::make_unique<ConfigMapCommand>(); }

}  // namespace kestrin::cli
