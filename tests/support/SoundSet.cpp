// SPDX-License-Identifier: MIT
#include "support/SoundSet.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include "core/base/PathText.h"

namespace kestrin::support {

using core::sound::LSU_Configuration;
using core::sound::SlotKind;

namespace {

/// The slots in flash order, with the line before their sounds in a set file; a list's goes on with their number.
struct Row {
  SlotKind kind;
  const char* name;
  const char* keyword;
  bool isList;
};
constexpr std::array<Row, 7> kRows{{
    {SlotKind::Boot, "boot", "BOOT", false},
    {SlotKind::PwrOn, "pwron", "PWRON", false},
    {SlotKind::PwrOff, "pwroff", "PWROFF", false},
    {SlotKind::Idle, "idle", "IDLE", false},
    {SlotKind::Motion, "motion", "MOTION-", true},
    {SlotKind::Impact, "impact", "IMPACT-", true},
    {SlotKind::Lockup, "lockup", "LOCKUP-", true},
}};

const Row& RowOf(SlotKind kind) {
  const auto* const row = std::find_if(kRows.begin(), kRows.end(), [kind](const Row& one) { return one.kind == kind; });
  if (row == kRows.end()) throw std::logic_error("a sound set was given a slot that there is not");
  return *row;
}

}  // namespace

int SoundSet::Sound::Peak() const {
  int peak = 0;
  for (const int sample : samples) peak = std::max(peak, std::abs(sample));
  return peak;
}

const SoundSet::Sound& SoundSet::Add(SlotKind kind, std::size_t samples, const Details& details) {
  const Row& row = RowOf(kind);
  const std::string slot = row.name;
  const auto before =
      std::count_if(sounds.begin(), sounds.end(), [&](const Sound& sound) { return sound.slot == slot; });
  const int position = static_cast<int>(before) + 1;
  const std::string number = row.isList || position > 1 ? " " + std::to_string(position) : "";
  const std::filesystem::path path = m_folder / (details.name.empty() ? slot + number + ".lsu" : details.name);
  sounds.push_back({slot, position, path, details.volume,
                    SomeSamples(samples, details.peak, static_cast<unsigned>(sounds.size()) + 1)});
  WriteSoundFile(path, sounds.back().samples);
  return sounds.back();
}

void SoundSet::AddOneEach(std::size_t samplesEach) {
  for (const Row& row : kRows) Add(row.kind, samplesEach);
}

std::filesystem::path SoundSet::WriteConfiguration(const std::string& name) {
  std::string text;
  for (const Row& row : kRows) {
    std::string entries;
    int count = 0;
    for (const Sound& sound : sounds) {
      if (sound.slot != row.name) continue;
      entries += core::base::TextOf(sound.path) + "\r\n " + std::to_string(sound.volume) + "\r\n";
      ++count;
    }
    if (count > 0) text += row.keyword + (row.isList ? std::to_string(count) : "") + "\r\n" + entries;
  }
  configuration = WriteBytes(m_folder / name, text);
  return configuration;
}

std::int64_t SoundSet::Samples() const {
  std::size_t sum = 0;
  for (const Sound& sound : sounds) sum += sound.samples.size();
  return static_cast<std::int64_t>(sum);
}

std::int64_t SoundSet::CodedBytes() const {
  std::int64_t sum = 0;
  for (const Sound& sound : sounds) sum += sound.CodedBytes();
  return sum;
}

int SoundSet::WriteReports() const {
  int reports = 0;
  for (const Sound& sound : sounds) {
    const auto bytes = static_cast<int>(sound.CodedBytes());
    const int blocks = bytes > 1024 ? bytes / 1024 : 0;
    const int rest = bytes - blocks * 1024;
    reports += blocks + (rest > 1021 ? 2 : rest > 0 ? 1 : 0);
  }
  return reports;
}

SoundSet WriteSoundSet(const std::filesystem::path& folder) {
  SoundSet set(folder);
  set.Add(SlotKind::Boot, 49, {.volume = 100, .peak = 12000});
  set.Add(SlotKind::PwrOn, 682, {.volume = 100, .peak = 32767});  // 1,023 coded bytes: one rest that two reports carry
  set.Add(SlotKind::PwrOff, 2000, {.volume = 50, .peak = 20000});
  set.Add(SlotKind::Idle, 3001, {.volume = 100, .peak = 500});
  set.Add(SlotKind::Motion, 800, {.volume = 80, .peak = 30000});
  set.Add(SlotKind::Motion, 1365, {.volume = 100, .peak = 25000});
  set.Add(SlotKind::Impact, 700, {.volume = 102, .peak = 31000});
  set.Add(SlotKind::Lockup, 4096, {.volume = 100, .peak = 9000});
  set.WriteConfiguration();
  return set;
}

bool AddSound(LSU_Configuration& configuration, const TemporaryFolder& folder, SlotKind kind, const std::string& name,
              std::size_t samples, std::int16_t peak) {
  return configuration.AddFile(SoundSet(folder.Path()).Add(kind, samples, {.peak = peak, .name = name}).path, kind);
}

SoundSet FillEverySlot(LSU_Configuration& configuration, const TemporaryFolder& folder, int entries) {
  SoundSet set(folder.Path());
  for (const Row& row : kRows)
    for (int entry = 1; entry <= (row.isList ? entries : 1); ++entry) {
      const auto samples = static_cast<std::size_t>((row.isList ? 200 : 100) + 2 * static_cast<int>(row.kind));
      if (!configuration.AddFile(set.Add(row.kind, samples).path, row.kind))
        throw std::runtime_error("the test's own sound file is refused");
    }
  return set;
}

CompleteSet::CompleteSet(std::size_t samplesEach) {
  for (const Row& row : kRows) Add(row.kind, samplesEach);
  configuration.SetMaxNrOfSamples(2793120);
}

void CompleteSet::Add(SlotKind kind, std::size_t samples) {
  if (!configuration.AddFile(m_files.Add(kind, samples).path, kind))
    throw std::runtime_error("the test's own sound file is refused");
}

}  // namespace kestrin::support
