// SPDX-License-Identifier: MIT
#include "sound/board/BoardHistory.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <sstream>
#include <system_error>

#include "base/FileBeside.h"
#include "base/PathText.h"
#include "base/TextLines.h"
#include "sound/ConfigurationFile.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

constexpr const char* kEntryHeadline = "DOWNLOAD-1";
constexpr const char* kEnding = ".lscfg";
constexpr std::int32_t device::AccParam::*kParameters[] = {&device::AccParam::MotionTh, &device::AccParam::MotionDeb,
                                                           &device::AccParam::ImpactTh, &device::AccParam::ImpactDeb,
                                                           &device::AccParam::ImpactTm, &device::AccParam::FOCTime};

/// "2026-11-22T14:45:48Z"; the other way round, for a file's name, "2026-11-22 144548".
std::string TextOf(HistoryEntry::Time time, const char* form) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss hours(time - day);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), form, static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(hours.hours().count()),
                static_cast<int>(hours.minutes().count()), static_cast<int>(hours.seconds().count()));
  return text.data();
}

std::optional<HistoryEntry::Time> TimeOf(const std::string& text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  int hours = 0;
  int minutes = 0;
  int seconds = 0;
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  std::array<char, 6> marks{};
  in >> year >> marks[0] >> month >> marks[1] >> day >> marks[2] >> hours >> marks[3] >> minutes >> marks[4] >>
      seconds >> marks[5];
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
  const bool isClock = hours >= 0 && hours < 24 && minutes >= 0 && minutes < 60 && seconds >= 0 && seconds < 60;
  if (in.fail() || std::string(marks.begin(), marks.end()) != "--T::Z" || !date.ok() || !isClock) return std::nullopt;
  return std::chrono::sys_days(date) + std::chrono::hours(hours) + std::chrono::minutes(minutes) +
         std::chrono::seconds(seconds);
}

std::optional<SetSound> SoundOf(const std::string& text) {
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  std::string slot;
  SetSound sound;
  std::uint16_t checksum = 0;
  in >> slot >> sound.place.position >> sound.volume >> sound.length >> checksum;
  std::string path;
  std::getline(in.ignore(), path);
  const auto found = std::ranges::find(kSlots, slot, &Slot::name);
  if (in.fail() || path.empty() || found == kSlots.end() || sound.length <= 0) return std::nullopt;
  sound.place.kind = found->kind;
  sound.path = base::PathOf(path);
  sound.checksum = checksum;
  return sound;
}

std::optional<device::AccParam> ParametersOf(const std::string& text) {
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  device::AccParam parameters;
  for (const auto field : kParameters) in >> parameters.*field;
  return in.fail() ? std::nullopt : std::optional(parameters);
}

/// Takes one line behind the headline. False when it says nothing.
bool Take(HistoryEntry& entry, const std::string& line) {
  const std::size_t blank = line.find(' ');
  if (blank == line.npos) return false;
  const std::string key = line.substr(0, blank);
  const std::string value = line.substr(blank + 1);
  if (key == "time") {
    const auto time = TimeOf(value);
    entry.time = time.value_or(HistoryEntry::Time());
    return time.has_value();
  }
  if (key == "sound") {
    const auto sound = SoundOf(value);
    if (sound) entry.set.sounds.push_back(*sound);
    return sound.has_value();
  }
  if (key == "parameters") {
    entry.parameters = ParametersOf(value);
    return entry.parameters.has_value();
  }
  if (key == "board")
    entry.serialNumber = value;
  else if (key == "set")
    entry.set.path = base::PathOf(value);
  else if (key == "name")
    entry.set.name = value;
  // What a later program may have to say is not for this one.
  return true;
}

std::optional<HistoryEntry> Read(const fs::path& file) {
  base::TextLines lines;
  if (!lines.Read(file)) return std::nullopt;
  std::size_t number = 1;
  while (number <= lines.Count() && lines.Line(number) != kEntryHeadline) ++number;
  HistoryEntry entry;
  entry.file = file;
  while (++number <= lines.Count())
    if (!lines.Line(number).empty() && !Take(entry, lines.Line(number))) return std::nullopt;
  const bool isWhole = entry.time != HistoryEntry::Time() && !entry.serialNumber.empty() && !entry.set.sounds.empty();
  return isWhole ? std::optional(std::move(entry)) : std::nullopt;
}

/// A path in one line. The sounds of a set that was sent have no line breaks in their names; its own file may.
std::string LineOf(const fs::path& path) {
  std::string text = base::TextOf(path);
  std::ranges::replace_if(
      text, [](char one) { return one == '\r' || one == '\n'; }, ' ');
  return text;
}

/// What a file's name may hold everywhere.
std::string PlainName(const std::string& serialNumber) {
  std::string name;
  for (const char one : serialNumber)
    if (std::isalnum(static_cast<unsigned char>(one)) != 0) name += one;
  return name;
}

}  // namespace

base::Result<> BoardHistory::Add(LSU_Configuration& sent, const fs::path& path, const std::string& serialNumber,
                                 const std::optional<device::AccParam>& parameters, HistoryEntry::Time time) {
  if (m_folder.empty()) return {};
  const auto failed = [this](const base::Failure& why) {
    return base::Failure{
        why.kind, "What the board has got could not be remembered in " + base::Quoted(m_folder) + ": " + why.text};
  };
  const auto absolute = [](const fs::path& file) {
    std::error_code unknown;
    fs::path whole = fs::absolute(file, unknown);
    return file.empty() || unknown ? file : whole;
  };
  base::Result<std::string> content =
      ConfigurationFile::ContentOf(sent, {}, [&](const fs::path& file) { return base::TextOf(absolute(file)); });
  if (!content) return failed(content.Why());
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << *content << kEntryHeadline << "\ntime " << TextOf(time, "%04d-%02u-%02uT%02d:%02d:%02dZ") << "\nboard "
       << serialNumber << "\nset " << LineOf(absolute(path)) << "\nname "
       << (path.empty() ? "New set" : LineOf(path.stem())) << '\n';
  if (parameters) {
    text << "parameters";
    for (const auto field : kParameters) text << ' ' << (*parameters).*field;
    text << '\n';
  }
  for (const SlotFile& entry : sent.FilesInFlashOrder())
    text << "sound " << SlotOf(entry.kind).name << ' ' << entry.position << ' ' << entry.file->Volume() << ' '
         << entry.file->NrOfBytes() << ' ' << entry.file->GetFileCRC() << ' '
         << base::TextOf(absolute(entry.file->FileNameAndPath())) << '\n';

  std::error_code error;
  fs::create_directories(m_folder, error);
  if (error) return failed({base::KindOf(error), error.message()});
  base::Result<base::FileBeside> file = base::FileBeside::Write(
      m_folder,
      [&text](const base::AppendBytes& append) -> base::Result<> {
        static_cast<void>(append(text.str()));
        return {};
      },
      m_disk);
  if (!file) return failed(file.Why());
  const std::string name = TextOf(time, "%04d-%02u-%02u %02d%02d%02d ") + PlainName(serialNumber);
  // Several in one second are rare, but two programs may be at it at once.
  base::Result<> named;
  fs::path added;
  for (int number = 1; number <= 9; ++number) {
    added = m_folder / base::PathOf(name + (number == 1 ? "" : " " + std::to_string(number)) + kEnding);
    named = file->TakeNewName(added, m_disk);
    if (named || named.Why().kind != base::FailureKind::InTheWay) break;
  }
  if (!named) return failed(named.Why());
  static_cast<void>(m_disk.Flush(m_folder));
  ForgetOldest(added);
  return {};
}

std::vector<HistoryEntry> BoardHistory::Entries() const {
  std::vector<HistoryEntry> entries;
  std::error_code error;
  if (m_folder.empty()) return entries;
  for (fs::directory_iterator file(m_folder, error); !error && file != fs::directory_iterator(); file.increment(error))
    if (file->path().extension() == kEnding)
      if (std::optional<HistoryEntry> entry = Read(file->path())) entries.push_back(*std::move(entry));
  std::ranges::sort(entries, [](const HistoryEntry& one, const HistoryEntry& other) {
    return one.time != other.time ? one.time > other.time : one.file > other.file;
  });
  return entries;
}

void BoardHistory::ForgetOldest(const fs::path& added) const {
  std::vector<HistoryEntry> entries = Entries();
  std::stable_partition(entries.begin(), entries.end(),
                        [&added](const HistoryEntry& entry) { return entry.file == added; });
  for (std::size_t i = kMost; i < entries.size(); ++i) {
    std::error_code error;
    fs::remove(entries[i].file, error);
  }
}

}  // namespace kestrin::core::sound
