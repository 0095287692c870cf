// SPDX-License-Identifier: MIT
#include "sound/pack/SetUnpacker.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/NameBeside.h"
#include "base/NewFile.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "base/TextLines.h"
#include "sound/ConfigurationFile.h"
#include "sound/QuietView.h"
#include "sound/import/EntryPlace.h"
#include "sound/pack/PackedNames.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

using base::Failure;
using base::FailureKind;
using base::Result;

namespace {

constexpr std::string_view kSetEnding = ".lscfg";
constexpr std::string_view kSoundEnding = ".lsu";
/// What a set holds at most: four single sounds and three lists.
constexpr std::size_t kMostSounds = 4 + 3 * kListCapacity;
/// Of one sound; the longest that a board can hold has a third of it.
constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20;
/// More folders of one name are taken for a mistake.
constexpr int kMostFolders = 1'000;

bool EndsLike(std::string_view name, std::string_view ending) {
  return name.size() > ending.size() && base::EqualsIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

/// A file of the archive and the name that it gets.
struct PlannedFile {
  std::size_t entry;
  std::string name;
};

/// What is to be unpacked.
struct Plan {
  std::string setName;
  std::string setContent;
  std::vector<PlannedFile> sounds;

  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const PlannedFile& sound : sounds) names.push_back(sound.name);
    names.push_back(setName);
    return names;
  }
};

/// The configuration files in an archive.
std::vector<std::size_t> SetsIn(const base::Archive& archive) {
  std::vector<std::size_t> sets;
  for (std::size_t i = 0; i < archive.Entries().size(); ++i)
    if (EndsLike(PlaceOf(archive.Entries()[i]), kSetEnding)) sets.push_back(i);
  return sets;
}

/// Looks through an archive before anything of it is written.
class Planner {
 public:
  explicit Planner(base::Archive& archive) : m_archive(archive) {}

  Result<Plan> Make() {
    const std::vector<std::size_t> sets = SetsIn(m_archive);
    if (sets.size() != 1)
      return Refusal(sets.empty() ? "there is no sound set (.lscfg) in it" : "there are several sound sets in it");
    const base::ArchiveEntry& set = m_archive.Entries()[sets.front()];
    const std::string place = PlaceOf(set);
    m_folder = place.substr(0, place.rfind('/') == place.npos ? 0 : place.rfind('/') + 1);
    m_plan.setName = m_names.Take(base::LastPathPiece(place), kSetEnding);
    std::string text;
    const auto append = [&](std::string_view piece) {
      text += piece;
      return true;
    };
    if (const Result<> read = m_archive.Unpack(sets.front(), append, base::TextLines::kLargestFile); !read)
      return Refusal(base::Quoted(place) + ": " + read.Why().text);
    base::TextLines lines;
    if (const Result<> taken = lines.Take(text, base::Shown(place)); !taken) return Refusal(taken.Why().text);
    for (std::size_t number = 1; number <= lines.Count(); ++number) TakeLine(lines.Line(number));
    if (!m_missing.empty()) return Refusal("these sounds of the set are not in it:" + m_missing);
    if (m_plan.sounds.size() > kMostSounds) return Refusal("the set names more sounds than a set can hold");
    return std::move(m_plan);
  }

 private:
  static Failure Refusal(const std::string& why) { return {FailureKind::NotValid, why}; }

  /// A line of the set as it is to be: sounds under their new names, without the folders that they had elsewhere.
  void TakeLine(std::string_view line) {
    m_plan.setContent += EndsLike(line, kSoundEnding) ? NameOf(base::LastPathPiece(line)) : std::string(line);
    m_plan.setContent += base::kLineEnd;
  }

  std::string NameOf(const std::string& sound) {
    const std::optional<std::size_t> entry = Find(m_folder + sound);
    if (!entry) {
      m_missing += "\n" + base::Shown(sound);
      return sound;
    }
    const auto [name, isNew] = m_nameOf.try_emplace(*entry);
    if (isNew) {
      name->second = m_names.Take(sound, kSoundEnding);
      m_plan.sounds.push_back({*entry, name->second});
    }
    return name->second;
  }

  /// The file of that place; where the case of letters differs, the first.
  std::optional<std::size_t> Find(const std::string& place) const {
    std::optional<std::size_t> like;
    for (std::size_t i = 0; i < m_archive.Entries().size(); ++i) {
      const std::string other = PlaceOf(m_archive.Entries()[i]);
      if (other == place) return i;
      if (!like && base::EqualsIgnoringCase(other, place)) like = i;
    }
    return like;
  }

  base::Archive& m_archive;
  Plan m_plan;
  PackedNames m_names;
  /// The folder of the set in the archive, with the separator behind it.
  std::string m_folder;
  std::map<std::size_t, std::string> m_nameOf;
  std::string m_missing;
};

/// A folder beside the place where its content is to be, which goes unless it has got another name.
class Staging {
 public:
  explicit Staging(const fs::path& beside) : m_path(base::NameBeside(beside)) {}
  ~Staging() {
    std::error_code ignored;
    if (m_isMade) fs::remove_all(m_path, ignored);
  }
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;

  Result<> Make() {
    std::error_code error;
    if (m_path.has_parent_path()) fs::create_directories(m_path.parent_path(), error);
    if (!error) m_isMade = fs::create_directory(m_path, error);
    if (error) return base::FailureOf(error);
    return m_isMade ? Result<>() : Failure{FailureKind::InTheWay, "its name is taken"};
  }
  [[nodiscard]] const fs::path& Path() const { return m_path; }

 private:
  fs::path m_path;
  bool m_isMade = false;
};

/// Fills a folder by plan, and checks what has come of it.
class Filler {
 public:
  Filler(base::Archive& archive, const Plan& plan, base::Disk& disk, const base::EventPump& pump)
      : m_archive(archive), m_plan(plan), m_disk(disk), m_pump(pump) {}

  Result<> Fill(const fs::path& folder) const {
    for (const PlannedFile& sound : m_plan.sounds) {
      const auto content = [&](const base::AppendBytes& append) {
        const auto next = [&](std::string_view piece) {
          base::Pump(m_pump);
          return append(piece);
        };
        return m_archive.Unpack(sound.entry, next, kMostBytes);
      };
      if (Result<> written = Write(folder / base::PathOf(sound.name), content); !written) return written;
    }
    const auto content = [&](const base::AppendBytes& append) {
      return append(m_plan.setContent) ? Result<>() : Failure{FailureKind::Failed, ""};
    };
    if (Result<> written = Write(folder / base::PathOf(m_plan.setName), content); !written) return written;
    return Check(folder / base::PathOf(m_plan.setName));
  }

 private:
  Result<> Write(const fs::path& path, const base::ContentInPieces& content) const {
    const auto failed = [&](const Failure& why) {
      return Failure{why.kind, base::Quoted(path.filename()) + ": " + why.text};
    };
    base::NewFile file(path);
    if (!file.IsOpen()) return failed(file.Why());
    bool written = true;
    const Result<> given = content([&](std::string_view piece) { return written = written && file.Write(piece); });
    if (!written) return failed(file.Why());
    const bool closed = file.Close();
    if (!given) return failed(given.Why());
    if (!closed) return failed(file.Why());
    if (const std::error_code error = m_disk.Flush(path)) return failed(base::FailureOf(error));
    return {};
  }

  Result<> Check(const fs::path& set) const {
    LSU_Configuration configuration;
    QuietView view(m_pump);
    const LoadResult loaded = ConfigurationFile::Load(set, configuration, view);
    if (!loaded.valid) return Failure{FailureKind::NotValid, "the sound set in it is not valid"};
    std::string flawed;
    for (const MissingSound& sound : loaded.failed) flawed += "\n" + base::Shown(base::TextOf(sound.path));
    if (flawed.empty()) return {};
    return Failure{FailureKind::NotValid, "these sounds in it are none that a board can play:" + flawed};
  }

  base::Archive& m_archive;
  const Plan& m_plan;
  base::Disk& m_disk;
  const base::EventPump& m_pump;
};

Failure TakenName(const fs::path& path) {
  return {FailureKind::InTheWay, base::Quoted(path) + " is there already. Choose another folder"};
}

/// Gives the whole folder its name.
Result<> Place(const fs::path& made, const fs::path& folder, base::Disk& disk) {
  if (const std::error_code error = disk.Flush(made)) return base::FailureOf(error);
  if (const std::error_code error = disk.TakeFreeName(made, folder))
    return error == std::errc::file_exists ? TakenName(folder) : base::FailureOf(error);
  if (const std::error_code error = disk.Flush(folder.has_parent_path() ? folder.parent_path() : "."))
    return base::FailureOf(error);
  return {};
}

/// Puts the files into a folder that is there, the set last: without it nothing looks whole.
Result<> PlaceEach(const fs::path& made, const std::vector<std::string>& names, const fs::path& folder,
                   base::Disk& disk) {
  std::vector<fs::path> placed;
  for (const std::string& name : names) {
    const fs::path path = folder / base::PathOf(name);
    if (const std::error_code error = disk.TakeFreeName(made / base::PathOf(name), path)) {
      std::error_code ignored;
      for (const fs::path& file : placed) fs::remove(file, ignored);
      return error == std::errc::file_exists ? TakenName(path) : base::FailureOf(error);
    }
    placed.push_back(path);
  }
  if (const std::error_code error = disk.Flush(folder)) return base::FailureOf(error);
  return {};
}

bool IsThere(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

/// Why nothing may be unpacked into that folder, which has to be new or to be there; nothing when it may.
Result<> CheckFree(const Plan& plan, const fs::path& folder, bool isNew) {
  std::error_code error;
  if (isNew) return IsThere(folder) ? TakenName(folder) : Result<>();
  if (!fs::is_directory(folder, error)) return TakenName(folder);
  for (const std::string& name : plan.Names())
    if (IsThere(folder / base::PathOf(name))) return TakenName(folder / base::PathOf(name));
  return {};
}

Failure NotUnpacked(const fs::path& file, const Failure& why) {
  return {why.kind, base::Quoted(file) + " could not be unpacked: " + why.text + (why.text.ends_with('.') ? "" : ".")};
}

}  // namespace

SetUnpacker::Kind SetUnpacker::KindOf(const fs::path& file) const {
  const Result<std::unique_ptr<base::Archive>> archive = m_archives.Open(file);
  if (!archive) return Kind::Unreadable;
  return SetsIn(**archive).empty() ? Kind::NoSet : Kind::Set;
}

Result<fs::path> SetUnpacker::Unpack(const fs::path& file, const fs::path& folder, const base::EventPump& pump) {
  return UnpackInto(file, folder, !IsThere(folder), pump);
}

Result<fs::path> SetUnpacker::UnpackBelow(const fs::path& file, const fs::path& place, const base::EventPump& pump) {
  const std::string name = PackedNames::Plain(base::TextOf(file.filename()));
  for (int number = 1;; ++number) {
    const fs::path folder = place / base::PathOf(number == 1 ? name : name + " " + std::to_string(number));
    if (IsThere(folder) && number < kMostFolders) continue;
    // Another program may take the name meanwhile.
    Result<fs::path> unpacked = UnpackInto(file, folder, true, pump);
    if (unpacked || unpacked.Why().kind != FailureKind::InTheWay || number == kMostFolders) return unpacked;
  }
}

Result<fs::path> SetUnpacker::UnpackInto(const fs::path& file, const fs::path& folder, bool isNew,
                                         const base::EventPump& pump) {
  const Result<std::unique_ptr<base::Archive>> archive = m_archives.Open(file);
  if (!archive) return archive.Why();
  const Result<Plan> plan = Planner(**archive).Make();
  if (!plan) return NotUnpacked(file, plan.Why());
  if (const Result<> isFree = CheckFree(*plan, folder, isNew); !isFree) return NotUnpacked(file, isFree.Why());
  Staging staging(isNew ? folder : folder / "set");
  Result<> done = staging.Make();
  if (done) done = Filler(**archive, *plan, m_disk, pump).Fill(staging.Path());
  if (done)
    done = isNew ? Place(staging.Path(), folder, m_disk) : PlaceEach(staging.Path(), plan->Names(), folder, m_disk);
  if (!done) return NotUnpacked(file, done.Why());
  return folder / base::PathOf(plan->setName);
}

}  // namespace kestrin::core::sound
