// SPDX-License-Identifier: MIT
#include "sound/ConfigurationFile.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Numbers.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "base/TextLines.h"
#include "base/WholeFile.h"
#include "sound/PathEnd.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

/// Ends a load; what() says what is wrong with the file, and where.
class NotValid : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One load, from the first line to the last.
class Loader {
 public:
  /// `folder` is where the configuration file lies.
  Loader(const base::TextLines& lines, fs::path folder, LSU_Configuration& configuration, ConfigurationView& view,
         LoadResult& result)
      : m_lines(lines), m_folder(std::move(folder)), m_configuration(configuration), m_view(view), m_result(result) {}

  /// Throws NotValid.
  void Run() {
    for (const Slot& slot : kSlots) {
      const int entries = slot.isList ? ReadListLine(slot) : ReadKeywordLine(slot);
      Empty(slot);
      for (int entry = 0; entry < entries; ++entry) ReadEntry(slot);
    }
  }

 private:
  /// The next line; `expected` says what is awaited there.
  const std::string& Next(std::string_view expected) {
    if (++m_number > m_lines.Count()) Fail("the file ends where " + std::string(expected) + " is expected");
    return m_lines.Line(m_number);
  }

  /// About the line that Next() gave last.
  [[noreturn]] void Fail(const std::string& reason) const { throw NotValid(m_lines.Place(m_number) + ": " + reason); }

  /// The line of a single slot, which has one entry.
  int ReadKeywordLine(const Slot& slot) {
    const std::string expected = base::Quoted(slot.keyword);
    if (!base::EqualsIgnoringCase(Next(expected), slot.keyword)) Fail(expected + " is expected");
    return 1;
  }

  /// The line of a list; returns its count of entries.
  int ReadListLine(const Slot& slot) {
    const std::string expected =
        "\"" + std::string(slot.keyword) + "-\" and a number from 0 to " + std::to_string(kListCapacity);
    const auto pieces = base::Split(Next(expected), "-");
    if (pieces.size() == 2 && base::EqualsIgnoringCase(pieces[0], slot.keyword))
      if (const std::optional<int> count = CountOf(pieces[1])) return *count;
    Fail(expected + " is expected");
  }

  /// A whole number that a list can hold, blanks around it ignored.
  static std::optional<int> CountOf(std::string_view text) {
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc{} || end != text.data() + text.size() || count < 0 || count > kListCapacity)
      return std::nullopt;
    return count;
  }

  void Empty(const Slot& slot) {
    m_view.EmptySlot(slot.kind);
    if (!slot.isList) m_configuration.RemoveFile(1, slot.kind);
    while (slot.isList && m_configuration.Count(slot.kind) > 0)
      m_configuration.RemoveFile(m_configuration.Count(slot.kind), slot.kind);
  }

  /// A path line and a volume line.
  void ReadEntry(const Slot& slot) {
    const std::string_view path = Next("a path");
    // The position whose volume follows; none when there is no file to have one.
    int position = slot.isList ? 0 : 1;
    const std::size_t failedBefore = m_result.failed.size();
    if (!path.empty()) position = Add(slot, path);

    const std::string_view number = Next("a volume");
    try {
      const auto volume = base::RoundTo<std::int16_t>(base::LeadingNumber(number));
      if (position > 0) m_configuration.SetVolume(slot.kind, position, volume);
      if (m_result.failed.size() > failedBefore) m_result.failed.back().volume = volume;
    } catch (const std::overflow_error&) {
      Fail("a volume from -32768 to 32767 is expected");
    }
    m_view.UpdateMemoryStatus();
  }

  /// Takes the file into the slot. Returns its position, 0 when it cannot be used.
  int Add(const Slot& slot, std::string_view text) {
    const fs::path path = PlaceOf(text);
    if (const bool found = AddAt(slot, path); !found && !AddBeside(slot, path, text)) {
      const auto failed = std::count_if(m_result.failed.begin(), m_result.failed.end(),
                                        [&slot](const MissingSound& sound) { return sound.place.kind == slot.kind; });
      const int row = m_configuration.Count(slot.kind) + static_cast<int>(failed) + 1;
      m_result.failed.push_back({{slot.kind, row}, base::PathOf(text)});
      return 0;
    }
    const int position = m_configuration.Count(slot.kind);
    m_view.ShowFile(slot.kind, position, base::LastPathPiece(text));
    return position;
  }

  /// Where a path leads. One that names no folder from the root on is meant from the set's folder, wherever the program
  /// was started.
  fs::path PlaceOf(std::string_view text) const {
    fs::path path = base::PathOf(text);
    if (m_folder.empty() || !path.is_relative()) return path;
    std::error_code error;
    fs::path beside = m_folder / path;
    return fs::exists(beside, error) ? beside : path;
  }

  /// Takes the file of just this path into the slot, if there is one and it can be used.
  bool AddAt(const Slot& slot, const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error)) return false;
    if (m_configuration.AddFile(path, slot.kind, [this] { m_view.Pump(); })) return true;
    // A single slot holds the name of the file that it refused.
    if (!slot.isList) m_configuration.RemoveFile(1, slot.kind);
    return false;
  }

  /// Takes the file into the slot that has moved together with the set, when nothing lies where it was.
  bool AddBeside(const Slot& slot, const fs::path& path, std::string_view text) {
    std::error_code error;
    if (m_folder.empty() || fs::exists(path, error)) return false;
    const std::vector<fs::path> places = PathEnd(text).PlacesAround(m_folder);
    const bool found =
        std::any_of(places.begin(), places.end(), [&](const fs::path& place) { return AddAt(slot, place); });
    m_result.foundBeside += static_cast<int>(found);
    return found;
  }

  const base::TextLines& m_lines;
  /// The line that is being read.
  std::size_t m_number = 0;
  fs::path m_folder;
  LSU_Configuration& m_configuration;
  ConfigurationView& m_view;
  LoadResult& m_result;
};

}  // namespace

std::string LoadResult::Message() const {
  if (!valid) return "Not a valid configuration file";
  if (failed.empty()) return "";
  std::string message = kFailedHeadline;
  for (const MissingSound& sound : failed) message += "\n" + base::TextOf(sound.path);
  return message;
}

base::Result<std::string> ConfigurationFile::ContentOf(const LSU_Configuration& configuration,
                                                       const MissingSounds& missing, const NameOf& nameOf) {
  std::string content;
  const auto line = [&](std::string_view text) { content.append(text).append(base::kLineEnd); };
  for (const Slot& slot : kSlots) {
    const int entries = slot.isList ? configuration.Count(slot.kind) + missing.Count(slot.kind) : 1;
    line(std::string(slot.keyword) + (slot.isList ? "-" + std::to_string(entries) : ""));
    for (int row = 1; row <= entries; ++row) {
      const SoundPlace place{slot.kind, row};
      const MissingSound* const gone = missing.At(place);
      const int position = row - missing.Above(place);
      const fs::path& path = gone != nullptr ? gone->path : configuration.FileAt(slot.kind, position).FileNameAndPath();
      const std::string file = nameOf ? nameOf(path) : base::TextOf(path);
      if (file.find_first_of(std::string_view("\r\n")) != file.npos)
        return base::Failure{
            base::FailureKind::NotValid,
            "the name of " + base::Quoted(file) + " holds a line break. Rename that file and add it again."};
      line(file);
      const int volume = gone != nullptr ? gone->volume : configuration.GetVolume(slot.kind, position);
      // A blank stands where a negative number has its sign.
      line((volume < 0 ? "" : " ") + std::to_string(volume));
    }
  }
  return content;
}

base::Result<> ConfigurationFile::Save(const LSU_Configuration& configuration, const fs::path& path, base::Disk& disk,
                                       const MissingSounds& missing) {
  const base::Result<std::string> content = ContentOf(configuration, missing);
  if (!content)
    return base::Failure{content.Why().kind, base::Quoted(path) + " could not be written: " + content.Why().text};
  return base::WriteWholeFile(path, *content, disk);
}

LoadResult ConfigurationFile::Load(const fs::path& path, LSU_Configuration& configuration, ConfigurationView& view) {
  LoadResult result;
  base::TextLines lines;
  result.valid = lines.Read(path);
  std::error_code error;
  try {
    if (result.valid) Loader(lines, fs::absolute(path, error).parent_path(), configuration, view, result).Run();
  } catch (const NotValid& reason) {
    result.valid = base::Failure{base::FailureKind::NotValid, reason.what()};
  }
  // Lists may have been emptied since the last entry was read.
  view.UpdateMemoryStatus();
  return result;
}

}  // namespace kestrin::core::sound
