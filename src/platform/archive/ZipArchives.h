// SPDX-License-Identifier: MIT
#pragma once

#include "core/base/Archives.h"
#include "core/base/Disk.h"

namespace kestrin::platform::archive {

/// Reads and writes ZIP files. What it refuses, is unable to read or to write, has a text that names the file.
class ZipArchives final : public core::base::Archives {
 public:
  /// The disk must outlive the object and what it opens.
  explicit ZipArchives(core::base::Disk& disk) : m_disk(disk) {}

  [[nodiscard]] core::base::Result<std::unique_ptr<core::base::Archive>> Open(
      const std::filesystem::path& path) override;
  /// The same items make the same bytes, whenever and on whatever system.
  [[nodiscard]] core::base::Result<> Write(const std::filesystem::path& path,
                                           const std::vector<core::base::ArchiveItem>& items,
                                           const std::function<void()>& pump) override;

 private:
  core::base::Disk& m_disk;
};

}  // namespace kestrin::platform::archive
