// SPDX-License-Identifier: MIT
#pragma once

#include <zip.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>

#include "core/base/Result.h"

namespace kestrin::platform::archive {

/// A file into which a ZIP library writes a new archive. Must outlive the library's use of it.
class ZipSink {
 public:
  /// The file is there and empty. `pump` gets its turn with every block that is written.
  ZipSink(const std::filesystem::path& path, std::function<void()> pump);

  /// As ZipSource::Make().
  [[nodiscard]] zip_source_t* Make();
  /// Writes what is still held back and closes the file. False when not all could be written.
  [[nodiscard]] bool Close();
  /// Why something could not be written, the reason alone.
  [[nodiscard]] core::base::Failure Why() const;
  /// What the pump has thrown, which ended the writing; nullptr when it has not. Nothing is thrown through the library.
  [[nodiscard]] const std::exception_ptr& Thrown() const { return m_thrown; }

 private:
  static zip_int64_t Answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) noexcept;
  [[nodiscard]] zip_int64_t Do(void* data, zip_uint64_t length, zip_source_cmd_t command);
  [[nodiscard]] zip_int64_t Write(const char* data, zip_uint64_t length);
  [[nodiscard]] zip_int64_t Seek(void* data, zip_uint64_t length);

  std::ofstream m_file;
  std::function<void()> m_pump;
  std::exception_ptr m_thrown;
  std::uint64_t m_place = 0;
  std::uint64_t m_size = 0;
  int m_reason = 0;
};

}  // namespace kestrin::platform::archive
