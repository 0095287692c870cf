// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/NewFile.h"
#include "update/FileSink.h"

namespace kestrin::core::base {
class Disk;
}  // namespace kestrin::core::base

namespace kestrin::core::update {

/// A file that comes into a folder of the font store. Until it is whole, and on the disk, it is called "tmp" there.
/// Nothing is written through a link, nor into a folder that was exchanged since this object was made.
class FontDownload final : public FileSink {
 public:
  /// `folder` must be nobody else's while this object lives; the disk must outlive it.
  FontDownload(const std::filesystem::path& folder, const std::string& fileName, base::Disk& disk);

  base::Result<> Begin() override;
  base::Result<> Take(std::string_view bytes) override;
  base::Result<> Finish() override;
  void Drop() override;

 private:
  [[nodiscard]] bool HasMoved() const;
  [[nodiscard]] base::Failure Moved() const;
  base::Result<> WriteGathered();
  base::Result<> GiveName();

  std::filesystem::path m_folder;
  /// Where the folder lay at first, all links followed.
  std::filesystem::path m_place;
  std::filesystem::path m_temporary;
  std::filesystem::path m_target;
  base::Disk& m_disk;
  std::optional<base::NewFile> m_file;
  std::string m_gathered;
  std::uintmax_t m_size = 0;
};

}  // namespace kestrin::core::update
