// SPDX-License-Identifier: MIT
#include "update/LeftOvers.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/PathText.h"
#include "update/FontFiles.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

namespace {

/// Whether `name` is one that earlier versions of this program gave to the file that was to become `target`: ".new"
/// behind it, and a number where that was taken.
bool WasToBecome(std::string_view name, const std::string& target) {
  const std::string beginning = target + ".new";
  return name.starts_with(beginning) && name.find_first_not_of("0123456789", beginning.size()) == name.npos;
}

/// The names of the files and links in a folder.
std::vector<std::string> FilesIn(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code ignored;
    if (!fs::is_directory(entry->symlink_status(ignored))) names.push_back(base::TextOf(entry->path().filename()));
  }
  return names;
}

/// `item` is the font's name, "" for the fonts folder itself.
void RemoveFrom(const fs::path& folder, const std::string& item) {
  const std::vector<std::string> names = FilesIn(folder);
  const auto has = [&](std::string_view name) { return std::find(names.begin(), names.end(), name) != names.end(); };
  // A font begins with its descriptor and ends with its marker. Without the one, "tmp" is no download; behind the other
  // nothing of an update is unfinished, and a file may be one that the person saves at this moment.
  const bool begun = has(FontFiles::kDescriptor);
  const bool ended = has(FontFiles::kCompleteMarker);
  for (const std::string& name : names) {
    const bool download = begun && name == FontFiles::kTemporaryName;
    const bool unfinished = !ended && name.starts_with(".kestrin-") && name.ends_with(".new");
    const bool older = WasToBecome(name, FontFiles::kDescriptor) || WasToBecome(name, FontFiles::kCompleteMarker) ||
                       WasToBecome(name, item + FontFiles::kConfigurationEnding);
    std::error_code ignored;
    if (download || unfinished || older) fs::remove(folder / base::PathOf(name), ignored);
  }
}

}  // namespace

void RemoveLeftOvers(const fs::path& fontsFolder) {
  RemoveFrom(fontsFolder, "");
  std::error_code ignored;
  for (const std::string& name : FilesIn(fontsFolder)) {
    const fs::path path = fontsFolder / base::PathOf(name);
    const bool trial = name.starts_with(FontFiles::kTrial) && fs::is_regular_file(fs::symlink_status(path, ignored));
    // A trial is empty; it may be another program's that is about to remove it itself.
    if (trial && fs::file_size(path, ignored) == 0) fs::remove(path, ignored);
  }
  std::error_code error;
  for (fs::directory_iterator entry(fontsFolder, error), end; !error && entry != end; entry.increment(error))
    if (fs::is_directory(entry->symlink_status(ignored)))
      RemoveFrom(entry->path(), base::TextOf(entry->path().filename()));
}

}  // namespace kestrin::core::update
