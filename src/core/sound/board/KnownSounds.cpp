// SPDX-License-Identifier: MIT
#include "sound/board/KnownSounds.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "base/PathText.h"
#include "base/TextLines.h"
#include "base/WholeFile.h"
#include "sound/ConfigurationFile.h"
#include "sound/QuietView.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

constexpr const char* kMemoryHeadline = "kestrin known sounds 1";
constexpr std::size_t kLargestFile = std::size_t{64} << 20;

/// The rest of a line, behind one blank.
fs::path PathIn(std::istream& line) {
  std::string text;
  std::getline(line.ignore(), text);
  return base::PathOf(text);
}

bool FitsIntoLine(const fs::path& path) {
  return base::TextOf(path).find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
}

}  // namespace

std::optional<KnownSounds::Stamp> KnownSounds::Stamp::Of(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) return std::nullopt;
  const fs::file_time_type time = fs::last_write_time(path, error);
  if (error) return std::nullopt;
  return Stamp{size, static_cast<std::int64_t>(time.time_since_epoch().count())};
}

KnownSounds::Sound* KnownSounds::Find(const fs::path& path, const base::EventPump& pump) {
  Read();
  const std::optional<Stamp> stamp = Stamp::Of(path);
  if (!stamp) return nullptr;
  auto found = m_sounds.find(path);
  if (found == m_sounds.end() || found->second.stamp != *stamp) {
    LSU_SoundFile file;
    const bool isSound = file.ReadFile(path, pump);
    Sound known{*stamp, isSound ? file.NrOfSamples() : 0, isSound ? file.Peak() : 0, {}, false};
    found = m_sounds.insert_or_assign(path, std::move(known)).first;
    m_hasNews = true;
  }
  found->second.isUsed = true;
  return &found->second;
}

std::optional<StreamSums> KnownSounds::Code(Sound& known, LSU_SoundFile sound, const base::EventPump& pump) {
  StreamSums sums;
  try {
    if (sound.Code(pump)) sums = StreamSums::Of(sound);
  } catch (const std::overflow_error&) {
    // Too loud at that volume.
  }
  m_hasNews = true;
  known.sums[{sound.Peak(), sound.Volume()}] = sums;
  return sums.length == 0 ? std::nullopt : std::optional(sums);
}

std::optional<StreamSums> KnownSounds::SumsOf(const LSU_SoundFile& sound, const base::EventPump& pump) {
  Sound* const known = Find(sound.FileNameAndPath(), pump);
  if (known == nullptr || known->samples == 0 || known->samples != sound.NrOfSamples()) return std::nullopt;
  if (const auto found = known->sums.find({sound.Peak(), sound.Volume()}); found != known->sums.end())
    return found->second.length == 0 ? std::nullopt : std::optional(found->second);
  return Code(*known, sound.WithoutStream(), pump);
}

std::optional<StreamSums> KnownSounds::SumsOf(const fs::path& path, std::int16_t volume, const base::EventPump& pump) {
  Sound* const known = Find(path, pump);
  if (known == nullptr || known->samples == 0) return std::nullopt;
  if (const auto found = known->sums.find({known->peak, volume}); found != known->sums.end())
    return found->second.length == 0 ? std::nullopt : std::optional(found->second);
  LSU_SoundFile sound;
  if (!sound.ReadFile(path, pump)) return std::nullopt;
  sound.SetVolume(volume);
  return Code(*known, std::move(sound), pump);
}

std::int32_t KnownSounds::LengthOf(const fs::path& path, const base::EventPump& pump) {
  const Sound* const known = Find(path, pump);
  return known == nullptr ? 0 : static_cast<std::int32_t>(LSU_SoundFile::CodedBytes(known->samples));
}

std::optional<std::vector<KnownSounds::Named>> KnownSounds::SoundsOf(const fs::path& set, const base::EventPump& pump) {
  Read();
  const std::optional<Stamp> stamp = Stamp::Of(set);
  if (!stamp) return std::nullopt;
  if (const auto found = m_sets.find(set); found != m_sets.end() && found->second.stamp == *stamp)
    return found->second.sounds;
  LSU_Configuration configuration;
  QuietView view(pump);
  const LoadResult result = ConfigurationFile::Load(set, configuration, view);
  // Sounds that are missing now may be there the next time.
  if (!result.valid || !result.failed.empty()) return std::nullopt;
  Set known{*stamp, {}};
  for (const SlotFile& entry : configuration.FilesInFlashOrder())
    if (entry.file->NrOfSamples() > 0)
      known.sounds.push_back({{entry.kind, entry.position}, entry.file->FileNameAndPath(), entry.file->Volume()});
  m_hasNews = true;
  return m_sets.insert_or_assign(set, std::move(known)).first->second.sounds;
}

void KnownSounds::Read() {
  if (std::exchange(m_isRead, true) || m_file.empty()) return;
  base::TextLines lines;
  if (!lines.Read(m_file, kLargestFile) || lines.Count() == 0 || lines.Line(1) != kMemoryHeadline) return;
  for (std::size_t number = 2; number <= lines.Count(); ++number) {
    if (lines.Line(number).empty() || ReadLine(lines.Line(number))) continue;
    // Of a damaged file nothing is believed.
    m_sounds.clear();
    m_sets.clear();
    break;
  }
  m_sound = nullptr;
  m_set = nullptr;
}

bool KnownSounds::ReadLine(const std::string& text) {
  std::istringstream line(text);
  line.imbue(std::locale::classic());
  std::string what;
  line >> what;
  Stamp stamp;
  if (what == "sound") {
    Sound sound;
    line >> stamp.size >> stamp.time >> sound.samples >> sound.peak;
    sound.stamp = stamp;
    const fs::path path = PathIn(line);
    m_sound = &m_sounds.insert_or_assign(path, std::move(sound)).first->second;
    return !line.fail() && m_sound->samples >= 0;
  }
  if (what == "sums" && m_sound != nullptr) {
    std::int32_t peak = 0;
    std::int16_t volume = 0;
    StreamSums sums;
    line >> peak >> volume >> sums.length;
    for (std::uint16_t& part : sums.parts) line >> part;
    m_sound->sums[{peak, volume}] = sums;
    return !line.fail() && sums.length >= 0;
  }
  if (what == "set") {
    line >> stamp.size >> stamp.time;
    const fs::path path = PathIn(line);
    m_set = &m_sets.insert_or_assign(path, Set{stamp, {}}).first->second;
    return !line.fail();
  }
  if (what != "holds" || m_set == nullptr) return false;
  std::string slot;
  Named named;
  line >> slot >> named.place.position >> named.volume;
  named.path = PathIn(line);
  const auto found = std::ranges::find(kSlots, slot, &Slot::name);
  const bool isPlace = named.place.position >= 1 && named.place.position <= kListCapacity;
  if (line.fail() || found == kSlots.end() || !isPlace) return false;
  named.place.kind = found->kind;
  m_set->sounds.push_back(std::move(named));
  return true;
}

std::string KnownSounds::Text() const {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << kMemoryHeadline << '\n';
  const bool isTooMany = m_sounds.size() > kMost;
  std::size_t left = kMost;
  for (const auto& [path, sound] : m_sounds) {
    if (!FitsIntoLine(path) || (isTooMany && !sound.isUsed) || left == 0) continue;
    --left;
    text << "sound " << sound.stamp.size << ' ' << sound.stamp.time << ' ' << sound.samples << ' ' << sound.peak << ' '
         << base::TextOf(path) << '\n';
    for (const auto& [how, sums] : sound.sums) {
      text << "sums " << how.first << ' ' << how.second << ' ' << sums.length;
      for (const std::uint16_t part : sums.parts) text << ' ' << part;
      text << '\n';
    }
  }
  for (const auto& [path, set] : m_sets) {
    const auto fits = [](const Named& named) { return FitsIntoLine(named.path); };
    if (!FitsIntoLine(path) || !std::ranges::all_of(set.sounds, fits) || !Stamp::Of(path)) continue;
    text << "set " << set.stamp.size << ' ' << set.stamp.time << ' ' << base::TextOf(path) << '\n';
    for (const Named& named : set.sounds)
      text << "holds " << SlotOf(named.place.kind).name << ' ' << named.place.position << ' ' << named.volume << ' '
           << base::TextOf(named.path) << '\n';
  }
  return text.str();
}

void KnownSounds::Keep() {
  if (!std::exchange(m_hasNews, false) || m_file.empty()) return;
  std::error_code error;
  fs::create_directories(m_file.parent_path(), error);
  static_cast<void>(base::WriteWholeFile(m_file, Text()));
}

}  // namespace kestrin::core::sound
