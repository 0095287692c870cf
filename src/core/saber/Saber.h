// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "saber/SaberSounds.h"
#include "saber/SoundDice.h"
#include "saber/Voice.h"

namespace kestrin::core::saber {

/// What happens to a saber.
enum class Event { Boot, On, Off, Swing, Hit, LockupBegin, LockupEnd };

/// What a saber is doing.
enum class State {
  /// The blade is in, and there is silence.
  Off,
  /// The board starts, with its boot sound.
  Boot,
  /// The blade comes out, with the power-on sound.
  Ignition,
  /// The blade is out and hums; swings and hits lie over the hum.
  On,
  /// The same while two blades are pressed together.
  Lockup,
  /// The blade goes in, with the power-off sound.
  Retraction,
};

/// A saber without a saber: makes the sound of what happens to it out of a set. The same events at the same samples and
/// the same seed give the same sound on every computer. How real boards mix their sounds is not known here.
///
///   - The hum begins with the sample behind the power-on sound and repeats without a gap while the blade is out.
///   - One sound at a time lies over it. A hit interrupts a swing and another hit; a swing interrupts a swing, but no
///   hit.
///   - A lock-up interrupts both, repeats one of its sounds while it is held, and lets nothing else through.
///   - Switching on ends the boot sound, switching off everything but the power-off sound.
///   - Of a list, no sound comes twice in a row.
///   - What lies over one another is added. What would be louder than full scale is cut off there, and counted.
class Saber {
 public:
  /// Is told which sound begins, at which sample.
  using Began = std::function<void(std::int64_t sample, const sound::SoundPlace& place)>;

  /// Is told which sound is over, and the sample behind its last. What is interrupted goes on to fade from there.
  using Ended = std::function<void(std::int64_t sample, const sound::SoundPlace& place, bool isInterrupted)>;

  /// The sounds must outlive the saber.
  Saber(const SaberSounds& sounds, std::uint32_t seed, Began began = {}, Ended ended = {});

  /// Something happens before the next sample. Nothing comes of what cannot happen now: swings of a blade that is in,
  /// switching on one that is out.
  void Take(Event event);
  /// The next samples.
  void Render(std::span<std::int16_t> out);
  /// The samples of a sound were exchanged: where it is heard it goes on with the new ones.
  void TakeExchanged(const sound::SoundPlace& place);

  [[nodiscard]] State GetState() const { return m_state; }
  /// What sounds now: of the blade, the hum, and what lies over it. What fades does not count.
  [[nodiscard]] std::vector<sound::SoundPlace> Sounding() const;
  /// Samples rendered so far.
  [[nodiscard]] std::int64_t Now() const { return m_now; }
  /// Samples so far that would have been louder than full scale.
  [[nodiscard]] std::int64_t Clipped() const { return m_clipped; }
  /// Samples until what began last has sounded to its end; 0 when it has. A lock-up counts to the end of its present
  /// turn; the hum does not count.
  [[nodiscard]] std::int64_t Remaining() const;

 private:
  void Begin(Voice& voice, sound::SlotKind kind, bool isLoop);
  /// What sounds fades beside what comes next.
  void Stop(Voice& voice);
  void TellEnded(Voice& voice);
  /// What follows from a sound that has ended.
  void FollowUp();
  [[nodiscard]] bool IsOut() const { return m_state == State::On || m_state == State::Lockup; }

  const SaberSounds& m_sounds;
  Began m_began;
  Ended m_ended;
  SoundDice m_dice;
  State m_state = State::Off;
  /// Boot, power on, power off.
  Voice m_blade;
  Voice m_hum;
  /// Swing, hit, lock-up.
  Voice m_effect;
  bool m_effectIsHit = false;
  /// What was interrupted and fades.
  std::vector<Voice> m_fading;
  std::int64_t m_now = 0;
  std::int64_t m_clipped = 0;
};

}  // namespace kestrin::core::saber
