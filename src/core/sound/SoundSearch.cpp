// SPDX-License-Identifier: MIT
#include "sound/SoundSearch.h"

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <unordered_map>

#include "base/PathText.h"
#include "sound/PathEnd.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

/// The name without the case of its letters A to Z.
std::string KeyOf(std::string_view name) {
  std::string key(name);
  for (char& letter : key)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  return key;
}

/// The likeliest file first: the longest end of the path that is the same, then the same letters, then the place
/// nearest to the folder; at last the order of the alphabet, so that the same tree gives the same answer every time.
void SortByLikelihood(std::vector<fs::path>& files, const fs::path& wanted) {
  const std::string text = base::TextOf(wanted);
  const PathEnd end(text);
  const auto rank = [&](const fs::path& file) {
    const std::string other = base::TextOf(file);
    const PathEnd place(other);
    return std::tuple(-static_cast<std::ptrdiff_t>(end.SharedWith(place)), place.Name() != end.Name(),
                      std::distance(file.begin(), file.end()), other);
  };
  std::sort(files.begin(), files.end(), [&](const fs::path& a, const fs::path& b) { return rank(a) < rank(b); });
}

}  // namespace

SoundSearch::Result SoundSearch::Run(const std::vector<fs::path>& wanted, const fs::path& folder,
                                     const std::function<bool()>& goOn, std::size_t mostEntries) {
  std::unordered_multimap<std::string, std::size_t> byName;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const std::string text = base::TextOf(wanted[i]);
    byName.emplace(KeyOf(PathEnd(text).Name()), i);
  }
  Result result;
  result.files.resize(wanted.size());
  std::size_t entries = 0;
  bool stopped = false;
  std::deque<fs::path> folders{folder};
  for (; !folders.empty() && !stopped; folders.pop_front()) {
    std::error_code error;
    fs::directory_iterator entry(folders.front(), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      stopped = ++entries > mostEntries || (goOn && !goOn());
      if (stopped) break;
      std::error_code ignored;
      if (fs::is_directory(entry->symlink_status(ignored))) {
        folders.push_back(entry->path());
        continue;
      }
      const auto [first, last] = byName.equal_range(KeyOf(base::TextOf(entry->path().filename())));
      if (first == last || !entry->is_regular_file(ignored)) continue;
      for (auto match = first; match != last; ++match) result.files[match->second].push_back(entry->path());
    }
  }
  result.complete = !stopped;
  for (std::size_t i = 0; i < wanted.size(); ++i) SortByLikelihood(result.files[i], wanted[i]);
  return result;
}

}  // namespace kestrin::core::sound
