// SPDX-License-Identifier: MIT
#include <array>
#include <cstdio>

#include "cli/CodedSound.h"
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "core/base/PathText.h"
#include "core/sound/LSU_SoundFile.h"

namespace kestrin::cli {

namespace {

std::string WithTwoDecimals(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.2f", number);
  return text.data();
}

class SoundInfoCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "sound info"; }
  [[nodiscard]] std::string Description() const override { return "Measure sound files"; }

  void Declare(Syntax& syntax) override {
    syntax.Paths("FILE", m_files, "Sound files (.lsu)", Syntax::Need::Required);
    DeclareVolume(syntax, m_volume);
  }

  [[nodiscard]] Report Run(Context& context) override {
    using Align = TextTable::Align;
    Document files = Document::array();
    TextTable table({{"file"},
                     {"samples", Align::Right},
                     {"seconds", Align::Right},
                     {"peak", Align::Right},
                     {"coded bytes", Align::Right},
                     {"checksum", Align::Right}});
    Report report;
    for (const std::filesystem::path& path : m_files) {
      const std::string name = core::base::TextOf(path);
      context.interrupt.Look();
      core::sound::LSU_SoundFile file;
      if (!file.ReadFile(path, context.interrupt.Pump())) {
        files.push_back({{"path", name}, {"valid", false}});
        table.Add({name, "not valid"});
        report.code = ExitCode::Failed;
        report.message += (report.message.empty() ? "" : "\n") + file.WhyNotValid();
        continue;
      }
      const double seconds = static_cast<double>(file.NrOfSamples()) / core::sound::LSU_SoundFile::kSamplesPerSecond;
      Document document = {{"path", name},       {"valid", true},       {"samples", file.NrOfSamples()},
                           {"seconds", seconds}, {"peak", file.Peak()}, {"codedBytes", nullptr},
                           {"checksum", nullptr}};
      std::vector<std::string> row = {name, std::to_string(file.NrOfSamples()), WithTwoDecimals(seconds),
                                      std::to_string(file.Peak())};
      try {
        CodeSound(file, m_volume, context.interrupt.Pump());
        document["codedBytes"] = file.NrOfBytes();
        document["checksum"] = file.GetFileCRC();
        row.insert(row.end(), {std::to_string(file.NrOfBytes()), std::to_string(file.GetFileCRC())});
      } catch (const CommandFailure& failure) {
        // Too loud at this volume, say: what was measured is worth showing all the same, and so are the other files.
        report.code = failure.Code();
        report.message += (report.message.empty() ? "" : "\n") + std::string(failure.what());
      }
      files.push_back(std::move(document));
      table.Add(std::move(row));
    }
    report.document = {{"files", files}};
    report.text = table.Text();
    return report;
  }

 private:
  std::vector<std::filesystem::path> m_files;
  std::optional<std::int32_t> m_volume;
};

}  // namespace

std::unique_ptr<Command> MakeSoundInfoCommand() { return std::make_unique<SoundInfoCommand>(); }

}  // namespace kestrin::cli
