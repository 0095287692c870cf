// SPDX-License-Identifier: MIT
#include "sound/import/SourceList.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

#include "base/NaturalOrder.h"
#include "base/NewFile.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "sound/import/EntryPlace.h"
#include "sound/import/SoundEnding.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

constexpr const char* kNoSounds = "There are no sounds in it.";

/// A name without its ending.
std::string StemOf(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return std::string(dot == name.npos || dot == 0 ? name : name.substr(0, dot));
}

ImportSource SourceOf(const fs::path& file) {
  const std::string text = base::TextOf(file);
  return {file, text, StemOf(base::Shown(base::TextOf(file.filename())))};
}

/// The sounds of a folder and all that is below it.
class Walk {
 public:
  enum class End { Whole, TooLarge, Stopped };

  Walk(const SourceList::Limits& limits, const SourceList::GoOn& goOn) : m_limits(limits), m_goOn(goOn) {}

  End Run(const fs::path& folder) {
    const End end = Look(folder, 0);
    const auto text = [](const fs::path& path) { return base::TextOf(path.generic_u8string()); };
    std::sort(files.begin(), files.end(),
              [&](const fs::path& a, const fs::path& b) { return base::NaturallyBefore(text(a), text(b)); });
    return end;
  }

  std::vector<fs::path> files;
  /// Folders that could not be looked into, with the system's reason.
  std::vector<std::pair<fs::path, std::string>> closed;

 private:
  End Look(const fs::path& folder, int depth) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      if (m_goOn && !m_goOn()) return End::Stopped;
      if (++m_looked > m_limits.entries) return End::TooLarge;
      if (const End end = Take(*entry, depth); end != End::Whole) return end;
    }
    if (error) closed.emplace_back(folder, error.message());
    return End::Whole;
  }

  End Take(const fs::directory_entry& entry, int depth) {
    std::error_code ignored;
    if (IsHiddenName(base::TextOf(entry.path().filename()))) return End::Whole;
    // Links to folders are left alone, so none leads round in a circle.
    if (fs::is_directory(entry.symlink_status(ignored)))
      return depth < m_limits.depth ? Look(entry.path(), depth + 1) : End::TooLarge;
    if (EndingOf(entry.path()) != SoundEnding::None && entry.is_regular_file(ignored)) files.push_back(entry.path());
    return End::Whole;
  }

  const SourceList::Limits& m_limits;
  const SourceList::GoOn& m_goOn;
  std::size_t m_looked = 0;
};

/// An entry of an archive by the folders and the name that it stands under there, as they can be shown.
struct PlacedEntry {
  std::size_t index;
  std::string place;
};

/// The sounds that an archive names, in order.
std::vector<PlacedEntry> SoundsIn(const base::Archive& archive) {
  std::vector<PlacedEntry> sounds;
  for (std::size_t i = 0; i < archive.Entries().size(); ++i) {
    const std::string place = PlaceOf(archive.Entries()[i]);
    if (EndingOfName(place) != SoundEnding::None) sounds.push_back({i, base::Shown(place)});
  }
  std::sort(sounds.begin(), sounds.end(),
            [](const PlacedEntry& a, const PlacedEntry& b) { return base::NaturallyBefore(a.place, b.place); });
  return sounds;
}

/// Writes a readable entry as the new file `file`.
base::Result<> UnpackAs(const fs::path& file, base::Archive& archive, std::size_t entry, std::uint64_t most,
                        const SourceList::GoOn& goOn) {
  base::NewFile out(file);
  if (!out.IsOpen()) return out.Why();
  bool written = true;
  bool stopped = false;
  base::Result<> done = archive.Unpack(
      entry,
      [&](std::string_view piece) {
        stopped = goOn && !goOn();
        if (!stopped) written = out.Write(piece);
        return written && !stopped;
      },
      most);
  if (stopped) return base::Failure{base::FailureKind::Cancelled, "Stopped."};
  if (!written || (!out.Close() && done)) {
    const base::Failure why = out.Why();
    return base::Failure{why.kind, "It could not be unpacked: " + why.text + "."};
  }
  return done;
}

}  // namespace

SourceList::SourceList(base::Archives& archives, fs::path place) : SourceList(archives, std::move(place), Limits()) {}

SourceList::SourceList(base::Archives& archives, fs::path place, const Limits& limits)
    : m_archives(archives), m_place(std::move(place)), m_limits(limits) {}

bool SourceList::HasArchiveName(const fs::path& path) {
  return base::EqualsIgnoringCase(base::TextOf(path.extension()), ".zip");
}

bool SourceList::Add(const fs::path& named, const GoOn& goOn) {
  if (goOn && !goOn()) return false;
  std::error_code ignored;
  if (fs::is_directory(named, ignored)) return AddFolder(named, goOn);
  if (HasArchiveName(named)) return AddArchive(named, goOn);
  if (HasRoom(named)) m_sources.push_back(SourceOf(named));
  return true;
}

bool SourceList::AddFolder(const fs::path& folder, const GoOn& goOn) {
  Walk walk(m_limits, goOn);
  const Walk::End end = walk.Run(folder);
  for (const fs::path& file : walk.files) {
    if (!HasRoom(folder)) return true;
    m_sources.push_back(SourceOf(file));
  }
  for (const auto& [closed, why] : walk.closed) Refuse(closed, "The folder could not be looked into: " + why + ".");
  if (end == Walk::End::TooLarge)
    Refuse(folder, "There is more in this folder than can be looked at. Import its folders one by one.");
  else if (end == Walk::End::Whole && walk.files.empty() && walk.closed.empty())
    Refuse(folder, kNoSounds);
  return end != Walk::End::Stopped;
}

bool SourceList::AddArchive(const fs::path& file, const GoOn& goOn) {
  base::Result<std::unique_ptr<base::Archive>> archive = m_archives.Open(file);
  if (!archive) {
    Refuse(file, archive.Why().text);
    return true;
  }
  const std::vector<PlacedEntry> sounds = SoundsIn(**archive);
  if (sounds.empty()) Refuse(file, kNoSounds);
  for (const PlacedEntry& sound : sounds) {
    if (goOn && !goOn()) return false;
    if (!HasRoom(file)) return true;
    ImportSource source{{}, base::TextOf(file) + "/" + sound.place, StemOf(base::LastPathPiece(sound.place))};
    if (!Unpack(**archive, sound.index, source, goOn)) return false;
    m_sources.push_back(std::move(source));
  }
  return true;
}

bool SourceList::Unpack(base::Archive& archive, std::size_t entry, ImportSource& source, const GoOn& goOn) {
  const base::ArchiveEntry& about = archive.Entries()[entry];
  if (!about.isReadable) {
    source.reason = about.reason;
    return true;
  }
  const base::Result<fs::path> place = NewPlace(about.name);
  if (!place) {
    source.reason = place.Why().text;
    return true;
  }
  const std::uint64_t most = std::min(m_limits.bytesOfOne, m_limits.bytesInAll - m_unpackedBytes);
  const base::Result<> unpacked = UnpackAs(*place, archive, entry, most, goOn);
  if (unpacked) {
    source.file = *place;
    m_unpackedBytes += about.size;
    return true;
  }
  std::error_code ignored;
  fs::remove(*place, ignored);
  source.reason = unpacked.Why().text;
  return unpacked.Why().kind != base::FailureKind::Cancelled;
}

base::Result<fs::path> SourceList::NewPlace(std::string_view name) {
  if (!m_unpacked) {
    base::Result<base::PrivateFolder> made = base::PrivateFolder::Make(m_place);
    if (!made) return made.Why();
    m_unpacked.emplace(std::move(*made));
  }
  // A name of our own: those in archives may be anything.
  std::string ending(name.substr(name.rfind('.')));
  return m_unpacked->Path() / (std::to_string(++m_unpackedCount) + ending);
}

void SourceList::Refuse(const fs::path& named, std::string_view reason) {
  m_sources.push_back(
      {{}, base::TextOf(named), StemOf(base::Shown(base::TextOf(named.filename()))), std::string(reason)});
}

bool SourceList::HasRoom(const fs::path& named) {
  if (m_sources.size() < m_limits.sounds) return true;
  Refuse(named, "These are more than " + std::to_string(m_limits.sounds) + " sounds. Import the others afterwards.");
  return false;
}

}  // namespace kestrin::core::sound
