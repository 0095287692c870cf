#include "platform/net/FontCollection.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "base/PathText.h"
#include "base/Text.h"
#include "update/HttpRequest.h"
#include "update/PlainName.h"
#include "update/UpdateManager.h"
#include "update/UpdateUtils.h"

namespace kestrin::net {

namespace fs = std::filesystem;
using base::TextOf;
using update::HttpRequest;
using update::UpdateUtils;

namespace {

constexpr const char* kNotPlain =
    " is no name that every computer takes. Rename it: no special characters, no blank or dot at either end.";

/// What lies in a client's fonts folder itself: a font has no place there under one of these names.
constexpr const char* kNamesTaken[] = {UpdateUtils::kCompleteMarker, UpdateUtils::kDescriptor,
                                       HttpRequest::kTemporaryName};

bool IsTaken(const std::string& name) {
  return std::any_of(std::begin(kNamesTaken), std::end(kNamesTaken),
                     [&](const char* taken) { return base::EqualsIgnoringCase(name, taken); });
}

/// The entries of a folder whose kind is `type`; links are of no kind but their own, so nothing outside is reached.
std::vector<fs::path> Entries(const fs::path& folder, fs::file_type type) {
  std::vector<fs::path> paths;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator(); entry.increment(error))
    if (std::error_code ignored; entry->symlink_status(ignored).type() == type) paths.push_back(entry->path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

/// The configuration file that describes a font: the one of the folder's name, or the only one.
std::optional<fs::path> ConfigurationOf(const fs::path& folder, const std::vector<fs::path>& files) {
  std::vector<fs::path> found;
  for (const fs::path& file : files) {
    if (!base::EqualsIgnoringCase(TextOf(file.extension()), ".lscfg")) continue;
    if (file.stem() == folder.filename()) return file;
    found.push_back(file);
  }
  return found.size() == 1 ? std::optional(found.front()) : std::nullopt;
}

std::optional<std::vector<std::string>> LinesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::vector<std::string> lines;
  std::string line;
  while (std::getline(file, line)) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return file.eof() ? std::optional(std::move(lines)) : std::nullopt;
}

/// What is wrong with a sound file that a font names; "" when nothing is.
std::string ProblemOfSound(const std::string& name, const std::vector<fs::path>& files) {
  if (!update::IsPlainName(name)) return update::ShownName(name) + kNotPlain;
  const auto file =
      std::find_if(files.begin(), files.end(), [&](const auto& path) { return TextOf(path.filename()) == name; });
  if (file == files.end()) return name + " is not in the folder. Copy it there.";
  std::error_code error;
  const std::uintmax_t size = fs::file_size(*file, error);
  if (size == 0 || error) return name + " is empty or cannot be read. Replace it.";
  if (size > static_cast<std::uintmax_t>(HttpRequest::kLongestFile))
    return name + " is larger than 64 MiB, which no client takes. Make it shorter.";
  return "";
}

FontCollection::Font ReadFont(const fs::path& folder) {
  FontCollection::Font font{TextOf(folder.filename()), {}, ""};
  if (!update::IsPlainName(font.name)) {
    font.problem = "this" + std::string(kNotPlain);
    return font;
  }
  if (IsTaken(font.name)) {
    font.problem = "clients keep a file of that name beside the fonts. Rename it.";
    return font;
  }
  const std::vector<fs::path> files = Entries(folder, fs::file_type::regular);
  const std::optional<fs::path> configuration = ConfigurationOf(folder, files);
  if (!configuration) {
    font.problem = "the folder needs one configuration file, best named " + font.name + ".lscfg. Save the set there.";
    return font;
  }
  std::optional<std::vector<std::string>> lines = LinesOf(*configuration);
  if (!lines) {
    font.problem = TextOf(configuration->filename()) + " cannot be read. Check its permissions.";
    return font;
  }
  if (UpdateUtils::kFirstPayloadLine + lines->size() > update::UpdateManager::kMostLines) {
    font.problem = TextOf(configuration->filename()) + " has too many lines for any client. Save the set again.";
    return font;
  }
  for (std::string& line : *lines) {
    if (UpdateUtils::NamesSound(line)) {
      // The saver's own folders mean nothing elsewhere, and are nobody's business.
      line = base::LastPathPiece(line);
      font.problem = ProblemOfSound(line, files);
    } else if (line.find_first_of("/\\") != line.npos) {
      font.problem = base::LastPathPiece(line) + " cannot be sent. Use sound files whose names end in .lsu.";
    }
    if (!font.problem.empty()) return font;
  }
  font.lines = std::move(*lines);
  return font;
}

}  // namespace

std::vector<FontCollection::Font> FontCollection::Fonts() const {
  std::vector<Font> fonts;
  for (const fs::path& folder : Entries(m_folder, fs::file_type::directory)) fonts.push_back(ReadFont(folder));
  return fonts;
}

std::optional<FontCollection::Font> FontCollection::Find(std::string_view name) const {
  for (const fs::path& folder : Entries(m_folder, fs::file_type::directory)) {
    if (TextOf(folder.filename()) != name) continue;
    Font font = ReadFont(folder);
    return font.problem.empty() ? std::optional(std::move(font)) : std::nullopt;
  }
  return std::nullopt;
}

std::optional<fs::path> FontCollection::SoundFile(std::string_view font, std::string_view name) const {
  const std::optional<Font> found = Find(font);
  if (!found || !UpdateUtils::NamesSound(name) ||
      std::find(found->lines.begin(), found->lines.end(), name) == found->lines.end())
    return std::nullopt;
  return m_folder / base::PathOf(font) / base::PathOf(name);
}

}  // namespace kestrin::net
