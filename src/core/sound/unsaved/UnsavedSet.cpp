// SPDX-License-Identifier: MIT
#include "sound/unsaved/UnsavedSet.h"

#include <cstddef>
#include <string_view>
#include <system_error>

#include "base/PathText.h"
#include "base/Text.h"
#include "base/TextLines.h"
#include "sound/ConfigurationFile.h"
#include "sound/SoundSet.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kOriginMark = "UNSAVED CHANGES OF ";
constexpr std::string_view kEndMark = "END OF THE UNSAVED SET";
/// The lines behind those of the configuration.
constexpr std::size_t kMore = 2;

/// The program may be started from another folder next time.
fs::path Whole(const fs::path& path) {
  std::error_code failed;
  fs::path whole = path.empty() ? path : fs::absolute(path, failed);
  return failed ? path : whole;
}

/// Whether a file says what stands in these lines before the last two.
bool SaysTheSame(const base::TextLines& unsaved, const fs::path& file) {
  base::TextLines saved;
  if (file.empty() || !saved.Read(file) || saved.Count() + kMore != unsaved.Count()) return false;
  for (std::size_t line = 1; line <= saved.Count(); ++line)
    if (saved.Line(line) != unsaved.Line(line)) return false;
  return true;
}

}  // namespace

base::Result<std::string> UnsavedSet::ContentOf(const SoundSet& set) {
  const std::string origin = base::TextOf(Whole(set.Path()));
  if (origin.find_first_of("\r\n") != origin.npos)
    return base::Failure{base::FailureKind::NotValid, "the name of " + base::Quoted(origin) + " holds a line break."};
  base::Result<std::string> content = ConfigurationFile::ContentOf(
      set.Configuration(), set.AllMissing(), [](const fs::path& path) { return base::TextOf(Whole(path)); });
  if (content)
    (*content).append(kOriginMark).append(origin).append(base::kLineEnd).append(kEndMark).append(base::kLineEnd);
  return content;
}

base::Result<UnsavedSet> UnsavedSet::Read(const fs::path& file) {
  base::TextLines lines;
  if (base::Result<> read = lines.Read(file); !read) return read.Why();
  const std::size_t count = lines.Count();
  if (count <= kMore || lines.Line(count) != kEndMark || !lines.Line(count - 1).starts_with(kOriginMark))
    return base::Failure{base::FailureKind::NotValid, lines.Place(count) + ": the end of an unsaved set is expected"};
  UnsavedSet unsaved;
  unsaved.m_origin = base::PathOf(std::string_view(lines.Line(count - 1)).substr(kOriginMark.size()));
  unsaved.m_isSaved = SaysTheSame(lines, unsaved.m_origin);
  return unsaved;
}

std::string UnsavedSet::Name() const { return SoundSet::NameOf(m_origin); }

}  // namespace kestrin::core::sound
