// SPDX-License-Identifier: MIT
#include "saber/LiveSaber.h"

#include <utility>

namespace kestrin::core::saber {

LiveSaber::LiveSaber(SaberSounds sounds, std::uint32_t seed)
    : m_sounds(std::move(sounds)),
      m_saber(
          m_sounds, seed,
          [this](std::int64_t sample, const sound::SoundPlace& place) { Tell(News::What::Began, sample, place); },
          [this](std::int64_t sample, const sound::SoundPlace& place, bool isInterrupted) {
            Tell(isInterrupted ? News::What::Interrupted : News::What::Ended, sample, place);
          }) {
  m_news.reserve(kMostNews);
}

void LiveSaber::Tell(News::What what, std::int64_t sample, const sound::SoundPlace& place) {
  if (m_news.size() == kMostNews) m_news.erase(m_news.begin());
  m_news.push_back({what, sample, place});
}

void LiveSaber::Take(Event event) {
  const std::lock_guard lock(m_mutex);
  m_saber.Take(event);
}

std::size_t LiveSaber::Fill(std::span<std::int16_t> out) {
  const std::lock_guard lock(m_mutex);
  m_saber.Render(out);
  return out.size();
}

void LiveSaber::Exchange(const sound::SoundPlace& place, SharedSamples samples) {
  const std::lock_guard lock(m_mutex);
  m_sounds.Exchange(place, std::move(samples));
  m_saber.TakeExchanged(place);
}

std::int64_t LiveSaber::Length(const sound::SoundPlace& place) const {
  const std::lock_guard lock(m_mutex);
  const SharedSamples samples = m_sounds.At(place);
  return samples == nullptr ? 0 : static_cast<std::int64_t>(samples->size());
}

LiveSaber::View LiveSaber::Look() {
  const std::lock_guard lock(m_mutex);
  View view{m_saber.GetState(), m_saber.Now(), m_saber.Clipped(), m_saber.Sounding(), m_news};
  m_news.clear();
  return view;
}

State LiveSaber::GetState() const {
  const std::lock_guard lock(m_mutex);
  return m_saber.GetState();
}

std::int64_t LiveSaber::Now() const {
  const std::lock_guard lock(m_mutex);
  return m_saber.Now();
}

std::int64_t LiveSaber::Clipped() const {
  const std::lock_guard lock(m_mutex);
  return m_saber.Clipped();
}

}  // namespace kestrin::core::saber
