// SPDX-License-Identifier: MIT
#include "ui/stage/StageSound.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace kestrin::ui::stage {

using core::saber::LiveSaber;
using core::saber::State;

namespace {

constexpr std::int64_t kSamplesPerMillisecond = 48;
/// A window that was busy for long catches up with no more of the silence than this.
constexpr std::int64_t kMostMilliseconds = 1000;

}  // namespace

StageSound::StageSound(core::sound::SoundOutput* output, const core::base::Clock& clock)
    : m_output(output), m_clock(clock), m_saber(std::make_shared<LiveSaber>(m_sounds, m_seed)) {}

StageSound::~StageSound() {
  if (m_isStreaming) m_output->Stop();
}

void StageSound::Use(core::saber::SaberSounds sounds, std::uint32_t seed) {
  m_sounds = std::move(sounds);
  m_seed = seed;
  Stop();
}

void StageSound::Stop() {
  if (m_isStreaming) m_output->Stop();
  m_isStreaming = false;
  m_isSilent = false;
  m_hasTold = false;
  m_saber = std::make_shared<LiveSaber>(m_sounds, m_seed);
}

void StageSound::Exchange(const core::sound::SoundPlace& place, core::saber::SharedSamples samples) {
  // Stop() begins with them anew.
  m_sounds.Exchange(place, samples);
  m_saber->Exchange(place, std::move(samples));
}

void StageSound::Take(core::saber::Event event) {
  const bool wasOff = m_saber->GetState() == State::Off;
  m_saber->Take(event);
  if (wasOff && m_saber->GetState() != State::Off) Start();
}

void StageSound::Start() {
  m_lastTime = m_clock.Now();
  m_lastSample = m_saber->Now();
  // The last stream may not have been heard to its end yet.
  if (m_isStreaming) return;
  // What was missing a moment ago may be there by now.
  m_isSilent = m_output == nullptr;
  if (m_isSilent) return;
  m_isStreaming = true;
  m_output->Start([saber = m_saber](std::span<std::int16_t> out) -> std::size_t {
    return saber->GetState() == State::Off ? 0 : saber->Fill(out);
  });
}

void StageSound::GoSilent(std::string why) {
  m_isStreaming = false;
  m_isSilent = true;
  if (std::exchange(m_hasTold, true)) return;
  m_problem = std::move(why);
}

void StageSound::Tend() {
  const core::base::Clock::Duration now = m_clock.Now();
  if (m_isStreaming) {
    const core::sound::SoundOutput::Status status = m_output->Look();
    const std::int64_t sample = m_saber->Now();
    if (sample != m_lastSample || m_saber->GetState() == State::Off) {
      m_lastSample = sample;
      m_lastTime = now;
    }
    if (!status.isPlaying) {
      m_isStreaming = false;
      if (!status.ended)
        GoSilent(status.ended.Text());
      else if (m_saber->GetState() != State::Off)
        Start();
    } else if (now - m_lastTime >= kPatience) {
      m_output->Stop();
      GoSilent("The computer's sound does not answer.");
    }
  }
  if (!m_isSilent) return;
  using std::chrono::duration_cast;
  const auto passed = duration_cast<std::chrono::milliseconds>(now - m_lastTime);
  m_lastTime += passed;
  std::array<std::int16_t, kSamplesPerMillisecond> block{};
  for (std::int64_t left = std::min<std::int64_t>(passed.count(), kMostMilliseconds); left > 0; --left)
    if (m_saber->GetState() != State::Off) static_cast<void>(m_saber->Fill(block));
}

LiveSaber::View StageSound::Look() {
  Tend();
  return m_saber->Look();
}

std::optional<std::string> StageSound::TakeProblem() { return std::exchange(m_problem, std::nullopt); }

}  // namespace kestrin::ui::stage
