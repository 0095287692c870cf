// SPDX-License-Identifier: MIT
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "cli/CodedSound.h"
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/ProgressLine.h"
#include "cli/TextTable.h"
#include "core/base/PlainNumber.h"
#include "core/base/Text.h"
#include "core/sound/SoundSet.h"
#include "core/sound/level/Levelling.h"
#include "platform/audio/SystemAudioTools.h"

namespace kestrin::cli {

namespace fs = std::filesystem;

namespace {

using core::sound::Balance;
using core::sound::LevelPlan;
using core::sound::Slot;

/// What a balance may look like.
std::string BalanceHelp() {
  std::string names;
  for (const Slot& slot : core::sound::kSlots) names += (names.empty() ? "" : ", ") + std::string(slot.name);
  return "SLOT=LU with one of " + names + " and a number from " + core::base::PlainNumber(Balance::kLowest) + " to " +
         core::base::PlainNumber(Balance::kHighest);
}

[[noreturn]] void RefuseBalance(const std::string& text) {
  throw CommandFailure(ExitCode::WrongUsage, "--balance " + core::base::Shown(text) + ": give " + BalanceHelp() + ".");
}

/// Takes "idle=-9" into the balance.
void Take(const std::string& text, Balance& balance) {
  const std::size_t equals = text.find('=');
  if (equals == text.npos) RefuseBalance(text);
  for (const Slot& slot : core::sound::kSlots) {
    if (std::string_view(text).substr(0, equals) != slot.name) continue;
    double units = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + equals + 1, end, units, std::chars_format::fixed);
    const bool isInside = units >= Balance::kLowest && units <= Balance::kHighest;
    if (error != std::errc{} || stop != end || !isInside) RefuseBalance(text);
    return balance.Set(slot.kind, units);
  }
  RefuseBalance(text);
}

class ConfigLevelCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "config level"; }
  [[nodiscard]] std::string Description() const override {
    return "Make the sounds of a set equally loud by their volumes alone";
  }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
    syntax.Path("--output OUT", m_output, "Configuration file to write in place of FILE", Syntax::Need::Optional);
    syntax.Texts("--balance SLOT=LU", m_balance,
                 "How much louder than the others the sounds of a slot shall be, below 0 quieter: " + BalanceHelp() +
                     "; may be repeated for other slots",
                 Syntax::Need::Optional);
  }

  [[nodiscard]] Report Run(Context& context) override {
    Balance balance;
    for (const std::string& text : m_balance) Take(text, balance);
    core::sound::LSU_Configuration configuration;
    core::sound::SoundSet set(configuration);
    const LoadedFiles loaded = LoadedFilesOf(set.Load(m_file, context.interrupt.Pump()));
    const fs::path& output = m_output.empty() ? m_file : m_output;
    RequireOutputOfItsOwn(output, configuration);

    const LevelPlan plan = LevelPlan::Of(Measured(set, context), balance);
    const core::base::Result<> applied = core::sound::Levelling::Apply(plan, set);
    if (!applied) throw CommandFailure(ExitCode::Failed, applied.Text());
    // A set that is level already stays the file that it is.
    if (plan.Changes() > 0 || !m_output.empty()) RequireWritten(set.Save(output, context.disk));
    return ReportOf(plan, set, loaded);
  }

 private:
  static std::vector<core::sound::MeasuredSound> Measured(const core::sound::SoundSet& set, Context& context) {
    const core::base::SystemClock clock;
    ProgressLine progress(context.options, clock);
    progress.Phase("Measuring ...");
    platform::audio::SystemAudioTools audio;
    // A signal throws, so nothing else stops it.
    auto measured = core::sound::Levelling::Measure(
        core::sound::Levelling::SoundsOf(set), [&audio] { return audio.MakeMeter(); },
        [&](int percent) {
          context.interrupt.Look();
          progress.Percent(percent);
          return true;
        });
    progress.End();
    return *std::move(measured);
  }

  /// As `config show` has it, with the changes.
  static Report ReportOf(const LevelPlan& plan, const core::sound::SoundSet& set, const LoadedFiles& loaded) {
    Report report = cli::ReportOf(set.Configuration(), loaded);
    Document changed = Document::array();
    TextTable table(
        {{"slot"}, {"#", TextTable::Align::Right}, {"from", TextTable::Align::Right}, {"to", TextTable::Align::Right}});
    for (const core::sound::LevelledSound& sound : plan.sounds) {
      if (sound.from == sound.to) continue;
      const Slot& slot = core::sound::SlotOf(sound.place.kind);
      // Counted like the sounds in "slots", where those that are missing have no place.
      const int position = sound.place.position - set.AllMissing().Above(sound.place);
      changed.push_back({{"slot", slot.name}, {"position", position}, {"from", sound.from}, {"to", sound.to}});
      table.Add({std::string(slot.title), std::to_string(position), std::to_string(sound.from) + " %",
                 std::to_string(sound.to) + " %"});
    }
    report.document["changed"] = changed;
    report.text += "\n" + plan.Headline() + "\n" + (changed.empty() ? "" : table.Text());
    for (const std::string& text : plan.OutOfReach()) report.message += (report.message.empty() ? "" : "\n") + text;
    return report;
  }

  fs::path m_file;
  fs::path m_output;
  std::vector<std::string> m_balance;
};

}  // namespace

std::unique_ptr<Command> MakeConfigLevelCommand() { return std::make_unique<ConfigLevelCommand>(); }

}  // namespace kestrin::cli
