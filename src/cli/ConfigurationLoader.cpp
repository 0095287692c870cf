// SPDX-License-Identifier: MIT
#include "cli/ConfigurationLoader.h"

#include <system_error>

#include "cli/CommandFailure.h"
#include "cli/TextTable.h"
#include "core/base/PathText.h"
#include "core/sound/QuietView.h"

namespace kestrin::cli {

using core::sound::LSU_Configuration;
using core::sound::LSU_SoundFile;

namespace {

Document DocumentOf(const LSU_SoundFile& file) {
  return {
      {"path", core::base::TextOf(file.FileNameAndPath())}, {"volume", file.Volume()}, {"samples", file.NrOfSamples()}};
}

Document DocumentOf(const LSU_Configuration& configuration, const core::sound::Slot& slot) {
  if (!slot.isList) return DocumentOf(configuration.FileAt(slot.kind));
  Document files = Document::array();
  for (int position = 1; position <= configuration.Count(slot.kind); ++position)
    files.push_back(DocumentOf(configuration.FileAt(slot.kind, position)));
  return files;
}

}  // namespace

LoadedFiles LoadConfiguration(const std::filesystem::path& path, LSU_Configuration& configuration,
                              const core::base::EventPump& pump) {
  core::sound::QuietView view(pump);
  return LoadedFilesOf(core::sound::ConfigurationFile::Load(path, configuration, view));
}

LoadedFiles LoadedFilesOf(const core::sound::LoadResult& result) {
  if (!result.valid) throw CommandFailure(ExitCode::Failed, result.Message() + "\n" + result.valid.Text());
  LoadedFiles loaded{{}, result.Message()};
  for (const auto& failed : result.failed) loaded.failed.push_back(core::base::TextOf(failed.path));
  return loaded;
}

void LoadMemoryMap(const std::filesystem::path& path, LSU_Configuration& configuration,
                   const core::base::EventPump& pump) {
  const LoadedFiles loaded = LoadConfiguration(path, configuration, pump);
  if (const int missing = configuration.CheckIntegrity(); missing != 0)
    throw CommandFailure(ExitCode::Failed, LSU_Configuration::IntegrityMessage(missing) +
                                               (loaded.message.empty() ? "" : "\n" + loaded.message));
  // Without some of its sounds everything behind them would lie elsewhere.
  if (!loaded.failed.empty()) throw CommandFailure(ExitCode::Failed, loaded.message);
  const core::base::Result<> map = configuration.MakeMemoryMap([](int) { return true; }, pump);
  if (!map) throw CommandFailure(ExitCode::Failed, map.Text());
}

void RequireOutputOfItsOwn(const std::filesystem::path& output, LSU_Configuration& configuration) {
  for (const core::sound::SlotFile& entry : configuration.FilesInFlashOrder()) {
    std::error_code error;
    if (std::filesystem::equivalent(output, entry.file->FileNameAndPath(), error))
      throw CommandFailure(ExitCode::WrongUsage, core::base::TextOf(output) +
                                                     " is one of the sounds. Choose another name for the output file.");
  }
}

Report ReportOf(const LSU_Configuration& configuration, const LoadedFiles& loaded) {
  Document slots = Document::object();
  TextTable table({{"slot"},
                   {"#", TextTable::Align::Right},
                   {"volume", TextTable::Align::Right},
                   {"samples", TextTable::Align::Right},
                   {"file"}});
  // Here the slots stand in the order of their keywords in the file, which is the flash's too.
  for (const core::sound::Slot& slot : core::sound::kSlots) {
    slots[std::string(slot.name)] = DocumentOf(configuration, slot);
    const int entries = slot.isList ? configuration.Count(slot.kind) : 1;
    for (int position = 1; position <= entries; ++position) {
      const LSU_SoundFile& file = configuration.FileAt(slot.kind, position);
      table.Add({std::string(slot.title), std::to_string(position), std::to_string(file.Volume()) + " %",
                 std::to_string(file.NrOfSamples()), core::base::TextOf(file.FileNameAndPath())});
    }
  }

  const int missing = configuration.CheckIntegrity();
  const std::string missingMessage = LSU_Configuration::IntegrityMessage(missing);
  Report report;
  report.document = {{"slots", slots},
                     {"totalSamples", configuration.TotalNrOfSamples()},
                     {"missing", {{"code", missing}, {"message", missingMessage}}},
                     {"failed", loaded.failed}};
  report.text = table.Text() + "\n" + std::to_string(configuration.TotalNrOfSamples()) + " samples in all\n" +
                (missing == 0 ? "" : missingMessage + "\n");
  report.message = loaded.message;
  return report;
}

}  // namespace kestrin::cli
