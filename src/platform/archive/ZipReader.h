// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "core/base/Archives.h"
#include "platform/archive/ZipSource.h"

namespace kestrin::platform::archive {

/// A ZIP file that is open for reading.
class ZipReader final : public core::base::Archive {
 public:
  /// The text of a failure is the reason alone, with the next step.
  [[nodiscard]] static core::base::Result<std::unique_ptr<core::base::Archive>> Open(const std::filesystem::path& path);

  [[nodiscard]] const std::vector<core::base::ArchiveEntry>& Entries() const override { return m_entries; }
  [[nodiscard]] core::base::Result<> Unpack(std::size_t entry, const core::base::AppendBytes& append,
                                            std::uint64_t most) override;

 private:
  struct Discarder {
    void operator()(zip_t* archive) const { zip_discard(archive); }
  };

  explicit ZipReader(files::RegularFile file) : m_source(std::move(file)) {}
  /// Hands the file to the library.
  [[nodiscard]] core::base::Result<> Attach();
  [[nodiscard]] core::base::ArchiveEntry Look(std::uint64_t index) const;

  /// Outlives the archive.
  ZipSource m_source;
  std::unique_ptr<zip_t, Discarder> m_archive;
  std::vector<core::base::ArchiveEntry> m_entries;
};

}  // namespace kestrin::platform::archive
