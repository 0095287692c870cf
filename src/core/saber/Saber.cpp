// SPDX-License-Identifier: MIT
#include "saber/Saber.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kestrin::core::saber {

using sound::SlotKind;

Saber::Saber(const SaberSounds& sounds, std::uint32_t seed, Began began, Ended ended)
    : m_sounds(sounds), m_began(std::move(began)), m_ended(std::move(ended)), m_dice(seed) {}

void Saber::Begin(Voice& voice, SlotKind kind, bool isLoop) {
  Stop(voice);
  const int count = m_sounds.Count(kind);
  if (count == 0) return;
  const sound::SoundPlace place{kind, m_dice.Throw(kind, count)};
  voice = Voice(place, m_sounds.At(place), isLoop);
  if (m_began) m_began(m_now, place);
}

void Saber::Stop(Voice& voice) {
  if (!voice.HasEnded()) {
    if (voice.IsHeard()) {
      m_fading.push_back(voice);
      m_fading.back().Stop();
    }
    if (m_ended) m_ended(m_now, voice.Place(), true);
  }
  voice = Voice();
}

void Saber::Take(Event event) {
  switch (event) {
    case Event::Boot:
      if (m_state != State::Off) return;
      m_state = State::Boot;
      Begin(m_blade, SlotKind::Boot, false);
      break;
    case Event::On:
      if (m_state != State::Off && m_state != State::Boot) return;
      m_state = State::Ignition;
      Begin(m_blade, SlotKind::PwrOn, false);
      break;
    case Event::Off:
      if (m_state != State::Ignition && !IsOut()) return;
      m_state = State::Retraction;
      Stop(m_hum);
      Stop(m_effect);
      Begin(m_blade, SlotKind::PwrOff, false);
      break;
    case Event::Swing:
      if (m_state != State::On || (m_effectIsHit && !m_effect.HasEnded())) return;
      m_effectIsHit = false;
      Begin(m_effect, SlotKind::Motion, false);
      break;
    case Event::Hit:
      if (m_state != State::On) return;
      m_effectIsHit = true;
      Begin(m_effect, SlotKind::Impact, false);
      break;
    case Event::LockupBegin:
      if (m_state != State::On) return;
      m_state = State::Lockup;
      Begin(m_effect, SlotKind::Lockup, true);
      break;
    case Event::LockupEnd:
      if (m_state != State::Lockup) return;
      m_state = State::On;
      m_effectIsHit = false;
      Stop(m_effect);
      break;
  }
  FollowUp();
}

void Saber::TellEnded(Voice& voice) {
  if (!voice.IsSound() || !voice.HasEnded()) return;
  if (m_ended) m_ended(m_now, voice.Place(), false);
  voice = Voice();
}

void Saber::FollowUp() {
  for (Voice* const voice : {&m_blade, &m_hum, &m_effect}) TellEnded(*voice);
  if (!m_blade.HasEnded()) return;
  if (m_state == State::Ignition) {
    m_state = State::On;
    Begin(m_hum, SlotKind::Idle, true);
  } else if ((m_state == State::Boot || m_state == State::Retraction) && m_fading.empty()) {
    // Whoever takes the samples takes none of a blade that is in: the hum has faded before, also without a sound.
    m_state = State::Off;
  }
}

void Saber::Render(std::span<std::int16_t> out) {
  constexpr double kMost = std::numeric_limits<std::int16_t>::max();
  for (std::int16_t& sample : out) {
    double sum = m_blade.Next() + m_hum.Next() + m_effect.Next();
    for (Voice& voice : m_fading) sum += voice.Next();
    std::erase_if(m_fading, [](const Voice& voice) { return voice.HasEnded(); });
    const double rounded = std::nearbyint(sum);
    const double kept = std::clamp(rounded, -kMost, kMost);
    if (kept != rounded) ++m_clipped;
    sample = static_cast<std::int16_t>(kept);
    ++m_now;
    FollowUp();
  }
}

void Saber::TakeExchanged(const sound::SoundPlace& place) {
  const SharedSamples samples = m_sounds.At(place);
  for (Voice* const voice : {&m_blade, &m_hum, &m_effect})
    if (voice->IsSound() && voice->Place() == place) voice->Exchange(samples);
}

std::vector<sound::SoundPlace> Saber::Sounding() const {
  std::vector<sound::SoundPlace> places;
  for (const Voice* const voice : {&m_blade, &m_hum, &m_effect})
    if (!voice->HasEnded()) places.push_back(voice->Place());
  return places;
}

std::int64_t Saber::Remaining() const {
  std::size_t remaining = std::max(m_blade.Remaining(), m_effect.Remaining());
  // What fades is heard a little longer.
  if (!m_fading.empty()) remaining = std::max(remaining, static_cast<std::size_t>(Voice::kFade));
  return static_cast<std::int64_t>(remaining);
}

}  // namespace kestrin::core::saber
