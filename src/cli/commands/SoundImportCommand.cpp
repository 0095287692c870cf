// SPDX-License-Identifier: MIT
#include <charconv>
#include <cmath>
#include <cstdio>
#include <system_error>

#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ProgressLine.h"
#include "cli/TextTable.h"
#include "core/base/Clock.h"
#include "core/base/PathText.h"
#include "core/sound/import/ImportCrew.h"
#include "core/sound/import/SourceList.h"
#include "platform/archive/ZipArchives.h"
#include "platform/audio/SystemAudioTools.h"

namespace kestrin::cli {

namespace fs = std::filesystem;

namespace {

using core::sound::ImportCrew;
using core::sound::ImportedSound;
using core::sound::ImportSource;

constexpr double kQuietestLevel = -60;

std::optional<double> ParseLevel(const std::string& text) {
  if (text.empty() || text == "none") return std::nullopt;
  double level = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, level);
  if (error != std::errc{} || stop != end || !(level >= kQuietestLevel && level <= 0))
    throw CommandFailure(ExitCode::WrongUsage, core::base::Quoted(text) +
                                                   " is no loudness. Give --level a number of LUFS from -60 to 0, say "
                                                   "-16, or \"none\".");
  return level;
}

/// With one digit behind the point, whatever the locale.
std::string WithOneDecimal(double number) {
  const auto tenths = static_cast<long long>(std::llround(std::fabs(number) * 10));
  const std::string sign = number < 0 && tenths > 0 ? "-" : "";
  return sign + std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

std::string WithOneDecimal(const std::optional<double>& number) { return number ? WithOneDecimal(*number) : "-"; }

Document NumberOrNull(const std::optional<double>& number) { return number ? Document(*number) : Document(nullptr); }

Document DocumentOf(const ImportedSound& sound) {
  return {{"source", sound.source},
          {"path", core::base::TextOf(sound.path)},
          {"reason", sound.reason},
          {"rate", sound.rate},
          {"channels", sound.channels},
          {"seconds", sound.seconds},
          {"samples", sound.samples},
          {"truePeak", NumberOrNull(sound.truePeak)},
          {"loudness", NumberOrNull(sound.loudness)},
          {"changes", sound.changes}};
}

std::string ChangesOf(const ImportedSound& sound) {
  std::string text;
  for (const std::string& change : sound.changes) text += (text.empty() ? "" : ", ") + change;
  return text.empty() ? "nothing, fits as it is" : text;
}

/// What became of the sounds, as it grows.
class ImportReport {
 public:
  void Add(const ImportedSound& sound) {
    m_files.push_back(DocumentOf(sound));
    if (sound.path.empty()) {
      ++m_failed;
      m_table.Add({sound.source, "not imported"});
      m_reasons += (m_reasons.empty() ? "" : "\n") + core::base::Quoted(sound.source) + ": " + sound.reason;
      return;
    }
    ++m_imported;
    m_table.Add({sound.source, core::base::TextOf(sound.path.filename()), WithOneDecimal(sound.seconds),
                 WithOneDecimal(sound.loudness), WithOneDecimal(sound.truePeak), ChangesOf(sound)});
  }

  [[nodiscard]] Report Finish(const fs::path& folder, bool isStopped) const {
    Report report;
    report.document = {{"files", m_files}, {"imported", m_imported}, {"failed", m_failed}};
    const int all = m_imported + m_failed;
    const std::string count = std::to_string(m_imported) + " of " + std::to_string(all) +
                              (all == 1 ? " sound" : " sounds") + " imported into ";
    report.text = m_table.Text() + count + core::base::Quoted(folder) + "\n";
    report.code = isStopped ? ExitCode::Interrupted : m_failed > 0 ? ExitCode::Failed : ExitCode::Done;
    report.message = isStopped ? "Stopped. The sounds that were imported until then are complete." : m_reasons;
    return report;
  }

 private:
  using Align = TextTable::Align;
  Document m_files = Document::array();
  TextTable m_table{{{"source"},
                     {"sound"},
                     {"seconds", Align::Right},
                     {"LUFS", Align::Right},
                     {"peak dB", Align::Right},
                     {"changes"}}};
  std::string m_reasons;
  int m_imported = 0;
  int m_failed = 0;
};

class SoundImportCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "sound import"; }
  [[nodiscard]] std::string Description() const override { return "Make sounds for the board of any sound files"; }

  void Declare(Syntax& syntax) override {
    syntax.Paths("SOURCE", m_sources, "Sounds (WAV, AIFF, FLAC, Ogg, Opus, MP3 and others), folders and ZIP files",
                 Syntax::Need::Required);
    syntax.Path("--output DIR", m_folder, "The folder for the sounds; nothing in it is overwritten",
                Syntax::Need::Required);
    syntax.Flag("--trim", m_trim, "Take the silence off both ends");
    syntax.Flag("--loop", m_loop, "Join the ends, so that the sound repeats without a click");
    syntax.Text("--level LUFS", m_level, "Bring every sound to this loudness as far as its peaks allow, or \"none\"",
                Syntax::Need::Optional);
  }

  [[nodiscard]] Report Run(Context& context) override {
    core::sound::ImportOptions options;
    options.trim = m_trim;
    options.loop = m_loop;
    options.level = ParseLevel(m_level);
    MakeFolder();

    core::base::SystemClock clock;
    ProgressLine progress(context.options, clock);
    bool isStopped = false;
    ImportReport report;
    {
      const InterruptAction stop(context.interrupt, [&] { isStopped = true; });
      const auto goOn = [&] {
        context.interrupt.Look();
        return !isStopped;
      };
      progress.Phase("Looking for sounds ...");
      platform::archive::ZipArchives archives(context.disk);
      core::sound::SourceList sources(archives);
      for (const fs::path& path : m_sources)
        if (!sources.Add(path, goOn)) break;
      std::vector<ImportCrew::Order> orders;
      for (const ImportSource& source : sources.Sources()) orders.push_back({source, options});

      progress.Phase("Importing ...");
      platform::audio::SystemAudioTools tools;
      ImportCrew crew(tools, context.disk);
      crew.Import(
          orders, m_folder,
          [&](std::size_t number, const ImportedSound& sound) {
            report.Add(sound);
            progress.Percent(static_cast<int>((number + 1) * 100 / orders.size()));
          },
          goOn);
    }
    progress.End();
    RemoveFolderIfNew();
    return report.Finish(m_folder, isStopped);
  }

 private:
  void MakeFolder() {
    std::error_code error;
    m_isNew = fs::create_directories(m_folder, error);
    if (!error && fs::is_directory(m_folder, error)) return;
    const std::string why = error ? error.message() : "there is a file of that name";
    throw CommandFailure(ExitCode::Failed, "The folder " + core::base::Quoted(m_folder) + " cannot be made: " + why +
                                               ". Choose another place with --output.");
  }

  /// One that was made for nothing goes again.
  void RemoveFolderIfNew() const {
    std::error_code ignored;
    if (m_isNew && fs::is_empty(m_folder, ignored)) fs::remove(m_folder, ignored);
  }

  std::vector<fs::path> m_sources;
  fs::path m_folder;
  bool m_trim = false;
  bool m_loop = false;
  std::string m_level;
  bool m_isNew = false;
};

}  // namespace

std::unique_ptr<Command> MakeSoundImportCommand() { return std::make_unique<SoundImportCommand>(); }

}  // namespace kestrin::cli
