// SPDX-License-Identifier: MIT
#pragma once

#include <zip.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

#include "core/base/Result.h"
#include "platform/files/RegularFile.h"

namespace kestrin::platform::archive {

/// A file that a ZIP library reads. Must outlive the library's use of it and stay where it is.
class ZipSource {
 public:
  /// A file that is open.
  explicit ZipSource(files::RegularFile file) : m_file(std::move(file)) {}
  /// A file that is opened when its turn comes.
  explicit ZipSource(std::filesystem::path path) : m_path(std::move(path)) {}
  ZipSource(const ZipSource&) = delete;
  ZipSource& operator=(const ZipSource&) = delete;
  ~ZipSource() = default;

  /// What the library knows it as: to be freed by zip_source_free() unless the library took it over. nullptr when there
  /// is no memory for it.
  [[nodiscard]] zip_source_t* Make();

  [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
  /// Why it could not be read, the reason alone; nothing when it could.
  [[nodiscard]] const std::optional<core::base::Failure>& Trouble() const { return m_trouble; }

 private:
  static zip_int64_t Answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) noexcept;
  [[nodiscard]] zip_int64_t Do(void* data, zip_uint64_t length, zip_source_cmd_t command);
  [[nodiscard]] zip_int64_t Open();
  [[nodiscard]] zip_int64_t Read(char* data, zip_uint64_t length);
  [[nodiscard]] zip_int64_t Describe(zip_stat_t& about);
  [[nodiscard]] zip_int64_t Seek(void* data, zip_uint64_t length);
  zip_int64_t Fail(core::base::Failure why);

  std::filesystem::path m_path;
  std::optional<files::RegularFile> m_file;
  std::uint64_t m_place = 0;
  std::optional<core::base::Failure> m_trouble;
};

}  // namespace kestrin::platform::archive
