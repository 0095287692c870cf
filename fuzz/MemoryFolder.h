// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace kestrin::fuzz {

/// Ends the program as a finding unless `expected`.
inline void Require(bool expected) {
  if (!expected) std::abort();
}

/// A folder in memory where the system has such a place, so that thousands of inputs a second can be files. It lasts as
/// long as the object.
class MemoryFolder {
 public:
  MemoryFolder() {
    std::error_code error;
    const std::filesystem::path memory = "/dev/shm";
    const auto base = std::filesystem::is_directory(memory, error) ? memory : std::filesystem::temp_directory_path();
    m_path = base / ("kestrin fuzz " + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::filesystem::create_directories(m_path);
  }
  ~MemoryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  MemoryFolder(const MemoryFolder&) = delete;
  MemoryFolder& operator=(const MemoryFolder&) = delete;

  /// Writes a file of these bytes into the folder. Returns its path.
  std::filesystem::path Write(const char* name, const std::uint8_t* data, std::size_t size) const {
    std::ofstream file(m_path / name, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    file.close();
    Require(static_cast<bool>(file));
    return m_path / name;
  }

  [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace kestrin::fuzz
