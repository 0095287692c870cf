// SPDX-License-Identifier: MIT
#include <atomic>
#include <iostream>

#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/Keys.h"
#include "cli/SaberKeys.h"
#include "cli/StatusLine.h"
#include "core/base/Clock.h"
#include "core/saber/LiveSaber.h"
#include "core/sound/board/HoldingText.h"
#include "platform/speaker/SystemSoundOutput.h"

namespace kestrin::cli {

namespace {

using core::saber::Event;
using core::saber::LiveSaber;
using core::saber::SaberSounds;
using core::saber::State;

/// How often is looked what sounds, and whether anything else has happened than a key.
constexpr std::chrono::milliseconds kLookInterval{20};

constexpr const char* kIntroduction =
    "Space switches on and off, arrows swing, Enter hits, L locks up while it is held, Q ends.";

const char* NameOf(State state) {
  switch (state) {
    case State::Off:
      return "Off";
    case State::Boot:
      return "Starting";
    case State::Ignition:
      return "Switching on";
    case State::On:
      return "On";
    case State::Lockup:
      return "Lock-up";
    case State::Retraction:
      return "Switching off";
  }
  return "";
}

class SaberPlayCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "saber play"; }
  [[nodiscard]] std::string Description() const override { return "Hear how a set sounds on a saber, by keys"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Configuration file (.lscfg)", Syntax::Need::Required);
    syntax.Number("--seed N", m_seed, 0, 2147483647, "Another order of the sounds of each list");
  }

  [[nodiscard]] Report Run(Context& context) override {
    core::sound::LSU_Configuration set;
    const LoadedFiles loaded = LoadConfiguration(m_file, set, context.interrupt.Pump());
    if (!loaded.failed.empty()) throw CommandFailure(ExitCode::Failed, loaded.message);
    core::base::Result<SaberSounds> sounds = SaberSounds::Of(set, context.interrupt.Pump());
    if (!sounds) throw CommandFailure(ExitCode::Failed, sounds.Text());
    LiveSaber saber(std::move(*sounds), static_cast<std::uint32_t>(m_seed.value_or(1)));
    Play(saber, context);
    Report report;
    if (const std::int64_t clipped = saber.Clipped(); clipped > 0)
      report.message = std::to_string(clipped) + (clipped == 1 ? " sample was" : " samples were") +
                       " louder together than full scale and cut off there. Lower volumes of the set avoid that.";
    return report;
  }

 private:
  static void Play(LiveSaber& saber, Context& context) {
    const std::unique_ptr<Keys> keys = Keys::Take();
    if (keys == nullptr)
      throw CommandFailure(ExitCode::WrongUsage,
                           "A saber is played by keys: run \"saber play\" in a terminal. \"saber render\" writes the "
                           "same into a WAV file, by a script.");
    if (!context.options.quiet && !context.options.json) std::cout << kIntroduction << std::endl;
    std::atomic<bool> isEnding = false;
    const std::unique_ptr<core::sound::SoundOutput> output =
        platform::speaker::MakeSystemSoundOutput(platform::speaker::kLiveBuffer);
    saber.Take(Event::Boot);
    output->Start([&](std::span<std::int16_t> out) { return isEnding && !IsHeard(saber) ? 0 : saber.Fill(out); });
    StatusLine line(context.options);
    SaberKeys fingers;
    const core::base::SystemClock clock;
    for (;;) {
      context.interrupt.Look();
      if (const core::sound::SoundOutput::Status status = output->Look(); !status.isPlaying) {
        if (!status.ended) throw CommandFailure(ExitCode::Failed, status.ended.Text());
        return;
      }
      const std::optional<Key> key = keys->Next(kLookInterval);
      if (key == Key::Gone) return;
      if (key == Key::Q || key == Key::Escape) {
        saber.Take(Event::Off);
        // Who asks twice does not want to hear the blade go in.
        if (isEnding.exchange(true)) return;
      }
      if (key && !isEnding) Happen(saber, fingers.Press(*key, saber.GetState(), clock.Now()));
      Happen(saber, fingers.Pass(clock.Now()));
      line.Show(TextOf(saber.Look()));
    }
  }

  /// Whether there is anything to wait for at the end.
  static bool IsHeard(const LiveSaber& saber) { return saber.GetState() == State::Retraction; }

  static void Happen(LiveSaber& saber, const std::optional<Event>& event) {
    if (event) saber.Take(*event);
  }

  static std::string TextOf(const LiveSaber::View& view) {
    std::string text = NameOf(view.state);
    const char* separator = ": ";
    for (const core::sound::SoundPlace& place : view.sounding) {
      text += separator + core::sound::HoldingText::NameOf(place);
      separator = ", ";
    }
    return text;
  }

  std::filesystem::path m_file;
  std::optional<std::int32_t> m_seed;
};

}  // namespace

std::unique_ptr<Command> MakeSaberPlayCommand() { return std::make_unique<SaberPlayCommand>(); }

}  // namespace kestrin::cli
