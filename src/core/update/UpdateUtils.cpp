#include "update/UpdateUtils.h"

#include <algorithm>
#include <system_error>

#include "base/FirstThatTakes.h"
#include "base/NewFile.h"
#include "base/PathText.h"
#include "base/Text.h"
#include "base/WholeFile.h"
#include "update/DiskAdvice.h"
#include "update/HttpRequest.h"
#include "update/LeftOvers.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSoundEnding = ".lsu";

std::string Quoted(const fs::path& path) { return "\"" + base::TextOf(path) + "\""; }

/// What stands where a folder or one of those above it should be; "" when there is nothing but folders.
std::string InTheWay(const fs::path& folder) {
  for (fs::path path = folder; path.has_relative_path(); path = path.parent_path()) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    if (!fs::exists(status)) continue;
    // The first that is there: a link counts as what it leads to, if it leads anywhere.
    if (fs::is_directory(path, error)) return "";
    const std::string kind = fs::is_symlink(status) ? "link" : "file";
    return path == folder ? "a " + kind + " of that name is in the way"
                          : "the " + kind + " " + Quoted(path) + " is in the way";
  }
  return "";
}

/// Makes a folder; "" or why there is none.
std::string MakeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (fs::is_directory(folder, error)) return "";
  const std::string inTheWay = InTheWay(folder);
  fs::create_directories(folder, error);
  return "The folder " + Quoted(folder) + " could not be made: " + (inTheWay.empty() ? error.message() : inTheWay);
}

std::string Remove(const fs::path& path) {
  std::error_code error;
  fs::remove(path, error);
  if (!error) return "";
  const std::string reason = error.message();
  const bool folder = fs::is_directory(path, error);
  return Quoted(path) + " could not be removed: " + (folder ? "a folder of that name is in the way" : reason);
}

bool TakesFonts(const fs::path& place) {
  const fs::path folder = place / UpdateUtils::kFolderName;
  if (!MakeFolder(folder).empty()) return false;
  // No font can have such a name. What is there already is the person's, or another program's own trial.
  const std::string name = UpdateUtils::kTrial;
  fs::path trial = folder / name;
  for (int number = 2;; ++number) {
    base::NewFile file(trial);
    if (file.IsOpen()) return file.Close() && Remove(trial).empty();
    // A full disk is still the place where the fonts are: elsewhere all of them would be fetched again.
    if (!file.WasThere()) return IsDiskFull(file.Why().text);
    trial = folder / (name + std::to_string(number));
  }
}

bool IsFile(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

}  // namespace

fs::path UpdateUtils::PlaceIn(std::span<const fs::path> folders) {
  const fs::path place = base::FirstThatTakes(folders, TakesFonts);
  return (place.empty() ? folders.back() : place) / kFolderName;
}

UpdateUtils::UpdateUtils(const fs::path& fontsFolder, base::Disk& disk) : m_fontsFolder(fontsFolder), m_disk(disk) {
  std::error_code failed;
  const fs::path absolute = fs::absolute(fontsFolder, failed);
  if (!failed) m_fontsFolder = absolute;
  // When it cannot be made, the first font that is to be written says why.
  (void)MakeFolder(m_fontsFolder);
}

fs::path UpdateUtils::FolderOf(const std::string& item) const {
  return item.empty() ? m_fontsFolder : m_fontsFolder / base::PathOf(item);
}

fs::path UpdateUtils::ConfigurationOf(const std::string& item) const {
  return FolderOf(item) / base::PathOf(item + kConfigurationEnding);
}

std::vector<UpdateUtils::Font> UpdateUtils::FontsIn(const fs::path& fontsFolder) {
  std::vector<Font> fonts;
  std::error_code error;
  for (fs::directory_iterator entry(fontsFolder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code unknown;
    if (!entry->is_directory(unknown)) continue;
    Font font{base::TextOf(entry->path().filename()), false, {}};
    font.complete = IsFile(entry->path() / kCompleteMarker);
    for (fs::directory_iterator file(entry->path(), unknown); !unknown && file != end; file.increment(unknown)) {
      const std::string name = base::TextOf(file->path().filename());
      if (NamesSound(name) && IsFile(file->path())) font.files.push_back(name);
    }
    std::sort(font.files.begin(), font.files.end());
    fonts.push_back(std::move(font));
  }
  std::sort(fonts.begin(), fonts.end(), [](const Font& a, const Font& b) { return a.name < b.name; });
  return fonts;
}

base::Disk::LockResult UpdateUtils::Lock(std::string& problem) const {
  problem = MakeFolder(m_fontsFolder);
  if (!problem.empty()) return {};
  const fs::path path = m_fontsFolder / kLock;
  base::Disk::LockResult result = m_disk.TryLock(path);
  if (!result.error) return result;
  std::error_code ignored;
  const fs::file_status there = fs::symlink_status(path, ignored);
  problem = Quoted(path) + " could not be locked: ";
  if (fs::is_symlink(there) || fs::is_directory(there))
    problem += std::string("a ") + (fs::is_directory(there) ? "folder" : "link") + " of that name is in the way";
  else
    problem += result.error.message();
  return result;
}

void UpdateUtils::RemoveLeftOvers() const { update::RemoveLeftOvers(m_fontsFolder); }

std::vector<std::string> UpdateUtils::SliceText(std::string_view text) {
  if (text.empty()) return {};
  const std::vector<std::string_view> pieces = base::Split(text, base::kLineEnd);
  return {pieces.begin(), pieces.end()};
}

std::size_t UpdateUtils::CountLines(std::string_view text) {
  if (text.empty()) return 0;
  std::size_t lines = 1;
  for (std::size_t at = text.find(base::kLineEnd); at != text.npos;
       at = text.find(base::kLineEnd, at + base::kLineEnd.size()))
    ++lines;
  return lines;
}

Association UpdateUtils::ExtractPair(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == line.npos || colon == 0) return {};
  return {std::string(line.substr(0, colon)), std::string(line.substr(colon + 1))};
}

bool UpdateUtils::NamesSound(std::string_view line) {
  for (std::size_t at = 0; at + kSoundEnding.size() <= line.size(); ++at)
    if (base::EqualsIgnoringCase(line.substr(at, kSoundEnding.size()), kSoundEnding)) return true;
  return false;
}

bool UpdateUtils::FontExists(const std::string& item) const {
  std::error_code ignored;
  return fs::is_directory(FolderOf(item), ignored);
}

bool UpdateUtils::FontExistsAndCompleted(const std::string& item) const {
  return FontExists(item) && IsFile(FolderOf(item) / kCompleteMarker);
}

std::string UpdateUtils::CreateFont(const std::string& item) const {
  std::string problem = ProblemOfLink(item);
  return problem.empty() ? MakeFolder(FolderOf(item)) : problem;
}

std::string UpdateUtils::CompleteFont(const std::string& item) const {
  std::string problem = ProblemOfLink(item);
  return problem.empty() ? WriteFile(FolderOf(item) / kCompleteMarker, "") : problem;
}

std::string UpdateUtils::WriteDescriptor(const std::string& item, std::span<const std::string> lines) const {
  const std::string folder = base::TextOf(FolderOf(item) / "");
  std::string descriptor;
  std::string configuration;
  for (std::size_t number = kFirstPayloadLine; number < lines.size(); ++number) {
    const std::string& line = lines[number];
    descriptor.append(line).append(base::kLineEnd);
    if (NamesSound(line)) configuration += folder;
    configuration.append(line).append(base::kLineEnd);
  }
  std::string problem = ProblemOfLink(item);
  if (problem.empty()) problem = WriteFile(FolderOf(item) / kDescriptor, descriptor);
  return problem.empty() ? WriteFile(ConfigurationOf(item), configuration) : problem;
}

bool UpdateUtils::FontItemExists(const std::string& item, const std::string& fileName) const {
  return IsFile(FolderOf(item) / base::PathOf(fileName));
}

std::string UpdateUtils::RemoveTemporary(const std::string& item) const {
  std::string problem = ProblemOfLink(item);
  // Of a link the link itself goes, not the file that it leads to.
  return problem.empty() ? Remove(FolderOf(item) / HttpRequest::kTemporaryName) : problem;
}

std::string UpdateUtils::ProblemOfLink(const std::string& item) const {
  const fs::path folder = FolderOf(item);
  std::error_code ignored;
  // Where the fonts folder itself lies is the person's own choice.
  if (item.empty() || !fs::is_symlink(folder, ignored)) return "";
  return Quoted(folder) + " is a link to another place, into which nothing is written";
}

std::string UpdateUtils::WriteFile(const fs::path& path, const std::string& content) const {
  std::error_code ignored;
  const fs::file_status there = fs::symlink_status(path, ignored);
  if (fs::exists(there) && !fs::is_regular_file(there) && !fs::is_directory(there)) {
    std::string problem = Remove(path);
    if (!problem.empty()) return problem;
  }
  return base::WriteWholeFile(path, content, m_disk).Text();
}

}  // namespace kestrin::core::update
