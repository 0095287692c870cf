// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

#include "base/Result.h"

namespace kestrin::core::base {

/// A file that did not exist before. Whatever has that name already is left alone: nothing is opened, emptied or
/// written through a link, not even when it came a moment ago.
class NewFile {
 public:
  /// Makes the file `path`, empty; IsOpen() tells whether that worked.
  explicit NewFile(const std::filesystem::path& path);

  [[nodiscard]] bool IsOpen() const { return m_file != nullptr; }
  /// Whether it could not be made because something of that name is there.
  [[nodiscard]] bool WasThere() const { return m_error == std::errc::file_exists; }
  /// Appends bytes; false when they could not be written.
  [[nodiscard]] bool Write(std::string_view bytes);
  /// Closes it; false when not all bytes could be written.
  [[nodiscard]] bool Close();
  /// Why the last step failed; the text is the system's reason.
  [[nodiscard]] Failure Why() const;

 private:
  struct Closer {
    void operator()(std::FILE* file) const { (void)std::fclose(file); }
  };

  bool Note(bool success);

  std::unique_ptr<std::FILE, Closer> m_file;
  std::error_code m_error;
};

}  // namespace kestrin::core::base
