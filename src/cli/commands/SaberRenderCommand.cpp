// SPDX-License-Identifier: MIT
#include "cli/CodedSound.h"
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/TextTable.h"
#include "core/base/PathText.h"
#include "core/base/WholeFile.h"
#include "core/saber/SaberScript.h"
#include "core/sound/WavStream.h"
#include "core/sound/board/HoldingText.h"

namespace kestrin::cli {

namespace {

using core::saber::Saber;
using core::saber::SaberScript;
using core::saber::SaberSounds;
using core::sound::WavStream;

/// What was played, beside the samples.
struct Performance {
  struct Begun {
    std::int64_t sample;
    core::sound::SoundPlace place;
  };
  std::vector<Begun> events;
  std::int64_t samples = 0;
  std::int64_t clipped = 0;
};

CommandFailure TooLong() {
  return CommandFailure(ExitCode::Failed, "That is longer than a WAV file can be. Write a shorter script.");
}

class SaberRenderCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "saber render"; }
  [[nodiscard]] std::string Description() const override { return "Write how a set sounds on a saber, as a WAV file"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
    syntax.Text("--script TEXT", m_script,
                "What happens, with \";\" between: boot, on, off, swing, hit, \"lockup SECONDS\", \"wait SECONDS\"",
                Syntax::Need::Required);
    syntax.Number("--seed N", m_seed, 0, 2147483647, "Another order of the sounds of each list");
    syntax.Path("--output OUT", m_output, "WAV file to write", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    const core::base::Result<SaberScript> script = SaberScript::Read(m_script);
    if (!script) throw CommandFailure(ExitCode::WrongUsage, script.Text());
    if (script->LeastSamples() > WavStream::kMostSamples) throw TooLong();
    RequireOtherFile(m_file, m_output, "the set");
    core::sound::LSU_Configuration set;
    const LoadedFiles loaded = LoadConfiguration(m_file, set, context.interrupt.Pump());
    if (!loaded.failed.empty()) throw CommandFailure(ExitCode::Failed, loaded.message);
    RequireOutputOfItsOwn(m_output, set);
    const core::base::Result<SaberSounds> sounds = SaberSounds::Of(set, context.interrupt.Pump());
    if (!sounds) throw CommandFailure(ExitCode::Failed, sounds.Text());

    // A WAV file says at its beginning how long it is: played once to know it, and once more to write it.
    std::int64_t heard = 0;
    const Performance performance = Perform(*script, *sounds, [&](std::span<const std::int16_t> part) {
      context.interrupt.Look();
      heard += static_cast<std::int64_t>(part.size());
      return heard <= WavStream::kMostSamples;
    });
    if (performance.samples > WavStream::kMostSamples) throw TooLong();
    RequireWritten(core::base::WriteWholeFile(
        m_output,
        [&](const core::base::AppendBytes& append) -> core::base::Result<> {
          if (!append(WavStream::Header(performance.samples))) return {};
          static_cast<void>(Perform(*script, *sounds, [&](std::span<const std::int16_t> part) {
            context.interrupt.Look();
            return WavStream::Append(part, append);
          }));
          return {};
        },
        context.disk));
    return ReportOf(performance);
  }

 private:
  [[nodiscard]] Performance Perform(const SaberScript& script, const SaberSounds& sounds,
                                    const SaberScript::Take& take) const {
    Performance performance;
    Saber saber(sounds, static_cast<std::uint32_t>(m_seed.value_or(1)),
                [&performance](std::int64_t sample, const core::sound::SoundPlace& place) {
                  performance.events.push_back({sample, place});
                });
    script.Perform(saber, take);
    performance.samples = saber.Now();
    performance.clipped = saber.Clipped();
    return performance;
  }

  [[nodiscard]] Report ReportOf(const Performance& performance) const {
    Document events = Document::array();
    TextTable table({{"sample", TextTable::Align::Right}, {"sound"}});
    for (const Performance::Begun& begun : performance.events) {
      events.push_back({{"sample", begun.sample},
                        {"slot", core::sound::SlotOf(begun.place.kind).name},
                        {"position", begun.place.position}});
      table.Add({std::to_string(begun.sample), core::sound::HoldingText::NameOf(begun.place)});
    }
    Report report;
    report.document = {{"samples", performance.samples}, {"clipped", performance.clipped}, {"events", events}};
    report.text = (events.empty() ? "" : table.Text() + "\n") +
                  AlignedPairs({{"Samples", std::to_string(performance.samples)},
                                {"Cut off at full scale", std::to_string(performance.clipped)},
                                {"Written to", core::base::TextOf(m_output)}});
    return report;
  }

  std::filesystem::path m_file;
  std::string m_script;
  std::optional<std::int32_t> m_seed;
  std::filesystem::path m_output;
};

}  // namespace

std::unique_ptr<Command> MakeSaberRenderCommand() { return std::make_unique<SaberRenderCommand>(); }

}  // namespace kestrin::cli
