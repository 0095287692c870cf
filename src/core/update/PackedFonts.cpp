// SPDX-License-Identifier: MIT
#include "update/PackedFonts.h"

#include <string>
#include <system_error>

#include "base/PathText.h"
#include "base/Text.h"

namespace kestrin::core::update {

namespace fs = std::filesystem;

bool PackedFonts::HasPackedName(const fs::path& file) {
  return base::EqualsIgnoringCase(base::TextOf(file.extension()), ".zip");
}

base::Result<fs::path> PackedFonts::FolderOf(const fs::path& file) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  const fs::file_time_type time = error ? fs::file_time_type() : fs::last_write_time(file, error);
  if (error) return base::Failure{base::FailureKind::NotValid, "it cannot be read. Check its permissions."};
  const auto known = m_unpacked.find(file);
  if (known != m_unpacked.end() && known->second.size == size && known->second.time == time)
    return known->second.folder;
  if (known != m_unpacked.end()) {
    if (std::error_code ignored; known->second.folder) fs::remove_all(known->second.folder->parent_path(), ignored);
    m_unpacked.erase(known);
  }
  return m_unpacked.emplace(file, Unpacked{size, time, UnpackAnew(file)}).first->second.folder;
}

base::Result<fs::path> PackedFonts::UnpackAnew(const fs::path& file) {
  // A folder of its own for each, so that only the font's name has to be as it is.
  const fs::path folder = m_folder.Path() / std::to_string(++m_count) / file.stem();
  const base::Result<fs::path> unpacked = m_unpack(file, folder);
  if (!unpacked) return unpacked.Why();
  return folder;
}

}  // namespace kestrin::core::update
