// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/base/Clock.h"
#include "core/saber/LiveSaber.h"
#include "core/sound/SoundOutput.h"

namespace kestrin::ui::stage {

/// The saber of the stage, which is heard where there is an output. Where there is none, where it fails or does not go
/// on, the saber goes on in silence, by the clock: nothing ever waits for sound.
class StageSound {
 public:
  /// An output that has taken no sample for so long does not go on.
  static constexpr core::base::Clock::Duration kPatience = std::chrono::milliseconds(700);

  /// `output` may be nullptr. Both must outlive the object.
  StageSound(core::sound::SoundOutput* output, const core::base::Clock& clock);
  ~StageSound();
  StageSound(const StageSound&) = delete;
  StageSound& operator=(const StageSound&) = delete;

  /// Another set's sounds: a saber with its blade in.
  void Use(core::saber::SaberSounds sounds, std::uint32_t seed);
  void Exchange(const core::sound::SoundPlace& place, core::saber::SharedSamples samples);
  void Take(core::saber::Event event);
  [[nodiscard]] core::saber::State GetState() const { return m_saber->GetState(); }
  [[nodiscard]] std::int64_t Length(const core::sound::SoundPlace& place) const { return m_saber->Length(place); }
  /// How things stand now; to be called often while the saber does anything.
  [[nodiscard]] core::saber::LiveSaber::View Look();
  /// Silence at once; the saber has its blade in.
  void Stop();
  /// Why there is no sound, once; nothing when there is some or that was told.
  [[nodiscard]] std::optional<std::string> TakeProblem();

 private:
  void Start();
  /// Looks after the output; the saber goes on in silence when it must.
  void Tend();
  void GoSilent(std::string why);

  core::sound::SoundOutput* m_output;
  const core::base::Clock& m_clock;
  core::saber::SaberSounds m_sounds;
  std::uint32_t m_seed = 0;
  /// Also the output's thread has it, for as long as it takes samples.
  std::shared_ptr<core::saber::LiveSaber> m_saber;
  bool m_isStreaming = false;
  /// The saber goes by the clock.
  bool m_isSilent = false;
  /// When the saber went on last, and to which sample.
  core::base::Clock::Duration m_lastTime{};
  std::int64_t m_lastSample = 0;
  std::optional<std::string> m_problem;
  bool m_hasTold = false;
};

}  // namespace kestrin::ui::stage
