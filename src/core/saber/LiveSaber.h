// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>
#include <vector>

#include "saber/Saber.h"
#include "saber/SaberSounds.h"

namespace kestrin::core::saber {

/// A saber that is heard while things happen to it: one thread makes them happen, another one takes the samples. Every
/// method may be called on any thread, and none waits for longer than a block of samples takes to be made.
class LiveSaber {
 public:
  /// One sound that began or is over.
  struct News {
    enum class What {
      Began,
      /// It was heard to its last sample.
      Ended,
      /// Something else took its place, or it was let go: it fades within 5 ms.
      Interrupted,
    };
    What what = What::Began;
    /// The first one of the sound, or the one behind its last, counted from the first that was ever taken.
    std::int64_t sample = 0;
    sound::SoundPlace place;

    friend bool operator==(const News&, const News&) = default;
  };
  /// How things stand, all of it at one and the same sample.
  struct View {
    State state = State::Off;
    /// Samples that were taken so far. What is heard now is behind by what the loudspeaker's buffer holds.
    std::int64_t now = 0;
    /// Samples so far that would have been louder than full scale.
    std::int64_t clipped = 0;
    /// What sounds, in the order of its slots' voices: blade, hum, swing or hit or lock-up.
    std::vector<sound::SoundPlace> sounding;
    /// What began and ended since the last look, in order; the newest `kMostNews` of it.
    std::vector<News> news;
  };
  static constexpr std::size_t kMostNews = 1024;

  /// The same events at the same samples and the same seed give the same sound.
  LiveSaber(SaberSounds sounds, std::uint32_t seed);
  LiveSaber(const LiveSaber&) = delete;
  LiveSaber& operator=(const LiveSaber&) = delete;

  /// Something happens before the next sample that is taken. Nothing comes of what cannot happen now.
  void Take(Event event);
  /// The next samples, always as many as there is room for: with the blade in there is silence. For
  /// `sound::SoundOutput::Source`.
  std::size_t Fill(std::span<std::int16_t> out);
  /// A sound has other samples from now on, for example with another volume (`SaberSounds::Of`). Where it is heard just
  /// now it goes on at the same place with them. Nothing happens when there is no such sound.
  void Exchange(const sound::SoundPlace& place, SharedSamples samples);
  /// How long a sound is, in samples; 0 when there is none.
  [[nodiscard]] std::int64_t Length(const sound::SoundPlace& place) const;

  /// How things stand. The news are forgotten with it, so one alone should look.
  [[nodiscard]] View Look();
  [[nodiscard]] State GetState() const;
  /// Samples that were taken so far.
  [[nodiscard]] std::int64_t Now() const;
  /// Samples so far that would have been louder than full scale.
  [[nodiscard]] std::int64_t Clipped() const;

 private:
  void Tell(News::What what, std::int64_t sample, const sound::SoundPlace& place);

  mutable std::mutex m_mutex;
  SaberSounds m_sounds;
  /// Has room from the beginning, so that nothing is allocated while samples are made.
  std::vector<News> m_news;
  Saber m_saber;
};

}  // namespace kestrin::core::saber
