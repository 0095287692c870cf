// SPDX-License-Identifier: MIT
#include "ui/stage/SoundReader.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "core/saber/FileSamples.h"
#include "ui/kit/LatestJob.h"

namespace kestrin::ui::stage {

using core::saber::SaberSounds;
using core::saber::SharedSamples;
using core::sound::SoundPlace;

SoundReader::SoundReader(QObject* parent) : QObject(parent), m_job(new kit::LatestJob(this)) {}

SoundReader::~SoundReader() = default;

SoundReader::Entries SoundReader::EntriesOf(const core::sound::SoundSet& set, bool asOnBoard) {
  Entries entries;
  for (const core::sound::Slot& slot : core::sound::kSlots)
    for (int row = 1; row <= set.Rows(slot.kind); ++row)
      if (const SoundPlace place{slot.kind, row}; set.Holds(place))
        entries.push_back({place, set.At(place).WithoutStream(), asOnBoard, nullptr, {}});
  return entries;
}

bool SoundReader::AreAlike(const Entries& a, const Entries& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Entry& one, const Entry& other) {
    return one.place == other.place && one.asOnBoard == other.asOnBoard &&
           one.file.FileNameAndPath() == other.file.FileNameAndPath() && one.file.Peak() == other.file.Peak() &&
           one.file.NrOfSamples() == other.file.NrOfSamples();
  });
}

bool SoundReader::AreSame(const Entries& a, const Entries& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Entry& one, const Entry& other) {
    return one.place == other.place && one.file.FileNameAndPath() == other.file.FileNameAndPath() &&
           one.file.NrOfSamples() == other.file.NrOfSamples() && (one.samples == nullptr) == (other.samples == nullptr);
  });
}

void SoundReader::Read(Entry& entry) {
  core::base::Result<SharedSamples> read =
      entry.asOnBoard ? SaberSounds::Of(entry.file) : core::saber::FileSamples(entry.file);
  entry.samples = read ? *read : nullptr;
  entry.failure = read.Text();
}

void SoundReader::Follow(const core::sound::SoundSet& set, bool asOnBoard) {
  Entries wanted = EntriesOf(set, asOnBoard);
  if (!AreAlike(wanted, m_wanted ? *m_wanted : m_entries)) return ReadAll(std::move(wanted));
  // While all are read their volumes may change once more.
  if (m_wanted) return ReadAll(std::move(wanted));
  ReadVolumes(wanted);
}

void SoundReader::ReadAll(Entries entries) {
  m_isReading = true;
  m_wanted = entries;
  emit progress(0, static_cast<int>(entries.size()));
  m_job->Start([this, entries = std::move(entries)](const kit::LatestJob::GoOn& goOn,
                                                    const kit::LatestJob::Deliver& deliver) mutable {
    int done = 0;
    for (Entry& entry : entries) {
      if (!goOn()) return;
      Read(entry);
      deliver([this, done = ++done, all = static_cast<int>(entries.size())] { emit progress(done, all); });
    }
    deliver([this, entries] {
      // What only sounds otherwise is heard so at once, and the blade stays out.
      const bool isSame = AreSame(entries, m_entries);
      m_entries = entries;
      m_wanted.reset();
      m_isReading = false;
      if (!isSame) return emit ready();
      for (const Entry& entry : m_entries)
        if (entry.samples != nullptr) emit exchanged(entry.place);
      emit kept();
    });
  });
}

void SoundReader::ReadVolumes(const Entries& wanted) {
  Entries changed;
  for (std::size_t i = 0; i < wanted.size(); ++i)
    if (wanted[i].file.Volume() != m_entries[i].file.Volume()) changed.push_back(wanted[i]);
  if (changed.empty()) return m_job->Cancel();
  m_job->Start([this, changed = std::move(changed)](const kit::LatestJob::GoOn& goOn,
                                                    const kit::LatestJob::Deliver& deliver) mutable {
    for (Entry& entry : changed) {
      if (!goOn()) return;
      Read(entry);
      deliver([this, entry] {
        const auto there = std::find_if(m_entries.begin(), m_entries.end(),
                                        [&entry](const Entry& one) { return one.place == entry.place; });
        if (there == m_entries.end()) return;
        // A sound that becomes too loud, or is no longer, changes which sounds the saber has.
        const bool isExchange = (there->samples == nullptr) == (entry.samples == nullptr);
        *there = entry;
        if (!isExchange)
          emit ready();
        else if (entry.samples != nullptr)
          emit exchanged(entry.place);
      });
    }
  });
}

SaberSounds SoundReader::Sounds() const {
  SaberSounds sounds;
  for (const Entry& entry : m_entries)
    if (entry.samples != nullptr) sounds.Add(entry.place.kind, *entry.samples);
  return sounds;
}

SoundPlace SoundReader::InSet(const SoundPlace& ofSaber) const {
  int position = 0;
  for (const Entry& entry : m_entries)
    if (entry.place.kind == ofSaber.kind && entry.samples != nullptr && ++position == ofSaber.position)
      return entry.place;
  return ofSaber;
}

std::optional<SoundPlace> SoundReader::OfSaber(const SoundPlace& inSet) const {
  int position = 0;
  for (const Entry& entry : m_entries) {
    if (entry.place.kind != inSet.kind || entry.samples == nullptr) continue;
    ++position;
    if (entry.place == inSet) return SoundPlace{inSet.kind, position};
  }
  return std::nullopt;
}

SharedSamples SoundReader::SamplesAt(const SoundPlace& inSet) const {
  const auto there =
      std::find_if(m_entries.begin(), m_entries.end(), [&inSet](const Entry& one) { return one.place == inSet; });
  return there == m_entries.end() ? nullptr : there->samples;
}

std::vector<std::string> SoundReader::Failures() const {
  std::vector<std::string> texts;
  for (const Entry& entry : m_entries)
    if (!entry.failure.empty()) texts.push_back(entry.failure);
  return texts;
}

}  // namespace kestrin::ui::stage
