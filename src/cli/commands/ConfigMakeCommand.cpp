// SPDX-License-Identifier: MIT
#include <array>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "cli/CodedSound.h"
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "core/base/PathText.h"
#include "core/sound/ConfigurationFile.h"

namespace kestrin::cli {

namespace fs = std::filesystem;

namespace {

/// A sound as the arguments name it: "PATH" or "PATH:VOLUME".
struct SoundArgument {
  fs::path path;
  std::optional<std::int16_t> volume;
};

SoundArgument ParseSound(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  const bool endsInNumber =
      colon != text.npos && colon + 1 < text.size() && text.find_first_not_of("0123456789", colon + 1) == text.npos;
  std::error_code error;
  if (!endsInNumber || fs::exists(core::base::PathOf(text), error)) return {core::base::PathOf(text), std::nullopt};
  std::int32_t volume = 0;
  const auto [end, problem] = std::from_chars(text.data() + colon + 1, text.data() + text.size(), volume);
  if (problem != std::errc{} || volume > kLargestVolume)
    throw CommandFailure(ExitCode::WrongUsage,
                         text + ": the volume is at most " + std::to_string(kLargestVolume) + " %");
  return {core::base::PathOf(text.substr(0, colon)), static_cast<std::int16_t>(volume)};
}

/// The path from the root, so that the set loads from anywhere; as short as that is without becoming another file's.
fs::path FromRoot(const fs::path& path) {
  std::error_code error;
  const fs::path whole = fs::absolute(path, error);
  if (error) return path;
  const fs::path shorter = whole.lexically_normal();
  return fs::equivalent(whole, shorter, error) ? shorter : whole;
}

class ConfigMakeCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "config make"; }
  [[nodiscard]] std::string Description() const override { return "Write a configuration file"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("OUT", m_output, "The configuration file (.lscfg)", Syntax::Need::Required);
    for (std::size_t i = 0; i < core::sound::kSlots.size(); ++i) {
      const core::sound::Slot& slot = core::sound::kSlots[i];
      const std::string name = "--" + std::string(slot.name) + " F";
      const std::string help = std::string(slot.title) + " sound: PATH or PATH:VOLUME";
      if (slot.isList)
        syntax.Texts(name, m_sounds[i], help + "; up to " + std::to_string(core::sound::kListCapacity) + " times",
                     Syntax::Need::Optional);
      else
        syntax.Text(name, m_singles[i], help, Syntax::Need::Optional);
    }
  }

  [[nodiscard]] Report Run(Context& context) override {
    core::sound::LSU_Configuration configuration;
    for (std::size_t i = 0; i < core::sound::kSlots.size(); ++i) {
      const core::sound::Slot& slot = core::sound::kSlots[i];
      if (!m_singles[i].empty()) Add(configuration, slot, m_singles[i], context.interrupt.Pump());
      for (const std::string& text : m_sounds[i]) Add(configuration, slot, text, context.interrupt.Pump());
    }
    RequireOutputOfItsOwn(m_output, configuration);
    const core::base::Result<> saved = core::sound::ConfigurationFile::Save(configuration, m_output, context.disk);
    if (!saved) throw CommandFailure(ExitCode::Failed, saved.Text());
    return ReportOf(configuration, {});
  }

 private:
  static void Add(core::sound::LSU_Configuration& configuration, const core::sound::Slot& slot, const std::string& text,
                  const core::base::EventPump& pump) {
    if (slot.isList && configuration.Count(slot.kind) == core::sound::kListCapacity)
      throw CommandFailure(ExitCode::Failed, "Maximum number of " + std::string(slot.title) + " files reached");
    const SoundArgument argument = ParseSound(text);
    const fs::path path = FromRoot(argument.path);
    const int position = slot.isList ? configuration.Count(slot.kind) + 1 : 1;
    if (!configuration.AddFile(path, slot.kind, pump))
      throw CommandFailure(ExitCode::Failed, configuration.FileAt(slot.kind, position).WhyNotValid());
    if (argument.volume) configuration.SetVolume(slot.kind, position, *argument.volume);
  }

  fs::path m_output;
  /// By the slots' places in kSlots: the one sound of single slots, the sounds of lists.
  std::array<std::string, core::sound::kSlots.size()> m_singles;
  std::array<std::vector<std::string>, core::sound::kSlots.size()> m_sounds;
};

}  // namespace

std::unique_ptr<Command> MakeConfigMakeCommand() { return std::make_unique<ConfigMakeCommand>(); }

}  // namespace kestrin::cli
