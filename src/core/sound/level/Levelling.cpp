// SPDX-License-Identifier: MIT
#include "sound/level/Levelling.h"

#include <algorithm>
#include <span>
#include <utility>

#include "sound/SoundSet.h"
#include "sound/level/BoardSound.h"
#include "sound/level/SampleDecoder.h"

namespace kestrin::core::sound {

namespace {

/// Takes the samples that have been measured; false stops.
using TakeCount = std::function<bool(std::size_t)>;

/// The loudness into `measured`, or the reason why there is none. False: it was stopped.
bool MeasureOne(const LSU_SoundFile& file, LoudnessMeter& meter, const TakeCount& take, MeasuredSound& measured) {
  LSU_SoundFile loudest = file;
  loudest.SetVolume(100);
  BoardSound board(loudest);
  std::vector<double> samples;
  for (std::span<const std::int16_t> block = board.Next(); !block.empty(); block = board.Next()) {
    samples.assign(block.begin(), block.end());
    for (double& sample : samples) sample /= SampleDecoder::kFullScale;
    meter.Add(samples);
    if (!take(samples.size())) return false;
  }
  const base::Result<> ended = board.Ended();
  measured.reason = ended.Text();
  if (ended) measured.lufs = meter.Finish().lufs;
  return true;
}

}  // namespace

std::vector<Levelling::Sound> Levelling::SoundsOf(const SoundSet& set) {
  std::vector<Sound> sounds;
  for (const Slot& slot : kSlots)
    for (int row = 1; row <= set.Rows(slot.kind); ++row)
      if (const SoundPlace place{slot.kind, row}; set.Holds(place))
        sounds.push_back({place, set.At(place).WithoutStream()});
  return sounds;
}

base::Result<std::vector<MeasuredSound>> Levelling::Measure(const std::vector<Sound>& sounds,
                                                            const MakeMeter& makeMeter, const Progress& progress) {
  std::size_t total = 0;
  for (const Sound& sound : sounds) total += static_cast<std::size_t>(sound.file.NrOfSamples());
  std::size_t done = 0;
  const auto take = [&](std::size_t samples) {
    done += samples;
    // A board plays a sample more of every odd sound.
    return !progress || progress(static_cast<int>(std::min<std::size_t>(100, total == 0 ? 100 : 100 * done / total)));
  };

  std::vector<MeasuredSound> measured;
  for (const auto& [place, file] : sounds) {
    MeasuredSound sound{place, file.FileNameAndPath(), file.Volume(), std::nullopt, ""};
    if (!MeasureOne(file, *makeMeter(), take, sound))
      return base::Failure{base::FailureKind::Cancelled, "Levelling was stopped. No volume was changed."};
    measured.push_back(std::move(sound));
  }
  return measured;
}

base::Result<> Levelling::Apply(const LevelPlan& plan, SoundSet& set) {
  if (set.IsLoading()) return base::Failure{base::FailureKind::Busy, "Please wait until the sounds are loaded"};
  for (const LevelledSound& sound : plan.sounds)
    if (!set.Holds(sound.place) || set.PathAt(sound.place) != sound.path)
      return base::Failure{
          base::FailureKind::Changed,
          "The set has changed while its sounds were measured. No volume was changed: level it again."};
  const SoundSet::Group group(set, kUndoText);
  for (const LevelledSound& sound : plan.sounds) set.SetVolume(sound.place.kind, sound.place.position, sound.to);
  return {};
}

}  // namespace kestrin::core::sound
