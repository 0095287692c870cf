// SPDX-License-Identifier: MIT
#include "sound/pack/SetPacker.h"

#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "base/PathText.h"
#include "sound/ConfigurationFile.h"
#include "sound/pack/PackedNames.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

using base::Failure;
using base::FailureKind;

namespace {

/// The paths of the sounds in use, in flash order.
std::vector<fs::path> SoundsOf(const LSU_Configuration& configuration) {
  std::vector<fs::path> sounds;
  for (const Slot& slot : kSlots)
    for (int position = 1; position <= configuration.Count(slot.kind); ++position)
      sounds.push_back(configuration.FileAt(slot.kind, position).FileNameAndPath());
  return sounds;
}

/// What a file is known by, however its path is spelled.
fs::path Identity(const fs::path& path) {
  std::error_code error;
  fs::path whole = fs::canonical(path, error);
  return error ? path : whole;
}

}  // namespace

base::Result<SetPacker::Packed> SetPacker::Pack(const LSU_Configuration& configuration,
                                                const std::vector<fs::path>& missing, std::string_view name,
                                                const fs::path& file, const base::EventPump& pump) {
  std::string unusable;
  for (const fs::path& path : missing) unusable += "\n" + base::TextOf(path);
  PackedNames names;
  // The first is the configuration file.
  std::vector<base::ArchiveItem> items{{names.Take(std::string(name) + ".lscfg", ".lscfg"), {}, ""}};
  std::map<fs::path, std::string> packedAs;
  for (const fs::path& path : SoundsOf(configuration)) {
    const auto [entry, isNew] = packedAs.try_emplace(Identity(path));
    if (!isNew) continue;
    LSU_SoundFile sound;
    if (!sound.ReadFile(path, pump)) unusable += "\n" + sound.WhyNotValid();
    entry->second = names.Take(base::TextOf(path.filename()), ".lsu");
    items.push_back({entry->second, path, ""});
  }
  if (!unusable.empty())
    return Failure{FailureKind::NotFound,
                   "Nothing was packed, because sounds of the set are missing or not valid any more:" + unusable +
                       "\nPut them back or take them out of the set, then pack it again."};
  if (packedAs.empty())
    return Failure{FailureKind::NotValid, "Nothing was packed: there are no sounds in the set. Add some first."};

  const base::Result<std::string> content = ConfigurationFile::ContentOf(
      configuration, {}, [&](const fs::path& path) { return path.empty() ? "" : packedAs.at(Identity(path)); });
  if (!content) return content.Why();
  items.front().content = *content;
  if (const base::Result<> written = m_archives.Write(file, items, pump); !written) return written.Why();
  std::error_code ignored;
  return Packed{static_cast<int>(items.size()), fs::file_size(file, ignored)};
}

}  // namespace kestrin::core::sound
