// SPDX-License-Identifier: MIT
#include "update/FontCollection.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/PathText.h"
#include "base/Text.h"
#include "base/TextLines.h"
#include "update/HttpRequest.h"
#include "update/PlainName.h"
#include "update/UpdateAnswer.h"
#include "update/UpdateUtils.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;
using base::TextOf;

namespace {

constexpr const char* kNotPlain =
    " is no name that every computer takes. Rename it: none of ? * : \" < > | / \\ & = + %, no blank or dot at either "
    "end, no device name such as NUL, at most 200 bytes.";
/// Leaves room for the answer's first lines.
constexpr std::size_t kLongestConfiguration = HttpRequest::kLongestText - 1024;
constexpr const char* kTwin = " differs from another name in the case of its letters only. Rename one of them.";

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

/// Whether one of the names is another one, but the same where the case of letters does not count.
bool HasTwin(const std::string& name, const std::vector<std::string>& names) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& other) { return other != name && base::EqualsIgnoringCase(other, name); });
}

/// That a font cannot be offered.
base::Failure NoFont(const std::string& why) { return {base::FailureKind::NotValid, why}; }

/// Whether clients take a sound file that a font names. Whether the case of letters counts is up to the disk: where it
/// does not, a set may name a file otherwise than the folder does.
base::Result<> CheckSound(const std::string& name, const fs::path& folder) {
  if (!IsPlainName(name)) return NoFont(ShownName(name) + kNotPlain);
  const fs::path file = folder / base::PathOf(name);
  std::error_code error;
  if (!fs::is_regular_file(fs::symlink_status(file, error)))
    return NoFont(name + " is not in the folder. Copy it there.");
  const std::uintmax_t size = fs::file_size(file, error);
  if (size == 0 || error) return NoFont(name + " is empty or cannot be read. Replace it.");
  if (size > static_cast<std::uintmax_t>(HttpRequest::kLongestFile))
    return NoFont(name + " is larger than 64 MiB, which no client takes. Make it shorter.");
  return {};
}

/// The lines of a configuration file, if any client takes that many.
base::Result<FontCollection::Lines> ReadConfiguration(const fs::path& path) {
  const std::string name = TextOf(path.filename());
  std::error_code unknown;
  if (fs::file_size(path, unknown) > kLongestConfiguration)
    return NoFont(name + " is too long for any client. Save the set again.");
  base::TextLines file;
  if (const base::Result<> read = file.Read(path, kLongestConfiguration); !read) {
    const bool noText = read.Why().kind == base::FailureKind::NotValid;
    return NoFont(name +
                  (noText ? " is no text file. Save the set again." : " cannot be read. Check its permissions."));
  }
  if (UpdateAnswer::kFirstPayloadLine + file.Count() > UpdateAnswer::kMostLines)
    return NoFont(name + " has too many lines for any client. Save the set again.");
  FontCollection::Lines lines;
  for (std::size_t number = 1; number <= file.Count(); ++number) lines.push_back(file.Line(number));
  return lines;
}

/// Turns the names of sound files into bare ones, if every file can be sent.
base::Result<> BareSounds(FontCollection::Lines& lines, const fs::path& folder) {
  std::vector<std::string> sounds;
  for (std::string& line : lines) {
    if (UpdateUtils::NamesSound(line)) {
      // The saver's own folders mean nothing elsewhere, and are nobody's business.
      line = base::LastPathPiece(line);
      if (HasTwin(line, sounds)) return NoFont(line + kTwin);
      if (base::Result<> sound = CheckSound(line, folder); !sound) return sound;
      sounds.push_back(line);
    } else if (line.find_first_of("/\\") != line.npos) {
      return NoFont(base::LastPathPiece(line) + " cannot be sent. Use sound files whose names end in .lsu.");
    }
  }
  return {};
}

/// Why clients take no font of that name.
base::Result<> CheckFontName(const std::string& name) {
  if (!IsPlainName(name)) return NoFont("this" + std::string(kNotPlain));
  if (!IsFontName(name)) return NoFont("clients keep a file of that name beside the fonts. Rename it.");
  return {};
}

/// The lines of the font in that folder, or why it cannot be offered.
base::Result<FontCollection::Lines> ReadLines(const fs::path& folder) {
  const std::string name = TextOf(folder.filename());
  if (const base::Result<> named = CheckFontName(name); !named) return named.Why();
  const std::vector<fs::path> files = Entries(folder, fs::file_type::regular);
  const std::optional<fs::path> configuration = ConfigurationOf(folder, files);
  if (!configuration)
    return NoFont("the folder needs one configuration file, best named " + name + ".lscfg. Save the set there.");
  base::Result<FontCollection::Lines> lines = ReadConfiguration(*configuration);
  if (!lines) return lines;
  if (const base::Result<> sounds = BareSounds(*lines, folder); !sounds) return sounds.Why();
  return lines;
}

}  // namespace

std::vector<fs::path> FontCollection::Places() const {
  std::vector<fs::path> places = Entries(m_folder, fs::file_type::directory);
  if (m_packed)
    for (const fs::path& file : Entries(m_folder, fs::file_type::regular))
      if (PackedFonts::HasPackedName(file)) places.push_back(file);
  std::stable_sort(places.begin(), places.end(),
                   [this](const fs::path& a, const fs::path& b) { return NameAt(a) < NameAt(b); });
  return places;
}

std::string FontCollection::NameAt(const fs::path& place) const {
  return TextOf(IsPacked(place) ? place.stem() : place.filename());
}

bool FontCollection::IsPacked(const fs::path& place) const {
  std::error_code error;
  return m_packed && PackedFonts::HasPackedName(place) && !fs::is_directory(place, error);
}

FontCollection::Font FontCollection::Read(const fs::path& place) const {
  Font font{NameAt(place), place, Lines{}};
  if (IsPacked(place)) {
    font.folder.clear();
    // A name that no client takes may be one that cannot be unpacked under.
    if (const base::Result<> named = CheckFontName(font.name); !named) {
      font.lines = named.Why();
      return font;
    }
    const base::Result<fs::path> folder = m_packed->FolderOf(place);
    if (!folder) {
      font.lines = folder.Why();
      return font;
    }
    font.folder = *folder;
  }
  font.lines = ReadLines(font.folder);
  return font;
}

std::vector<FontCollection::Font> FontCollection::Fonts() const {
  std::vector<Font> fonts;
  std::vector<std::string> offered;
  for (const fs::path& place : Places()) {
    Font font = Read(place);
    if (font.lines && HasTwin(font.name, offered)) font.lines = NoFont("this" + std::string(kTwin));
    if (font.lines && std::find(offered.begin(), offered.end(), font.name) != offered.end())
      font.lines = NoFont("there is another font of that name. Rename " + TextOf(place.filename()) + ".");
    if (font.lines) offered.push_back(font.name);
    fonts.push_back(std::move(font));
  }
  return fonts;
}

std::optional<FontCollection::Font> FontCollection::Find(std::string_view name) const {
  for (const fs::path& place : Places()) {
    if (!base::EqualsIgnoringCase(NameAt(place), name)) continue;
    Font font = Read(place);
    if (!font.lines) continue;
    // Of names that differ in the case of their letters only, the first that can be is offered.
    return font.name == name ? std::optional(std::move(font)) : std::nullopt;
  }
  return std::nullopt;
}

std::optional<fs::path> FontCollection::SoundFile(std::string_view font, std::string_view name) const {
  const std::optional<Font> found = Find(font);
  if (!found || !UpdateUtils::NamesSound(name)) return std::nullopt;
  const Lines& lines = *found->lines;
  if (std::find(lines.begin(), lines.end(), name) == lines.end()) return std::nullopt;
  return found->folder / base::PathOf(name);
}

}  // namespace kestrin::core::update
