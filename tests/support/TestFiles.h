// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace kestrin::support {

/// A folder of its own for one test, removed with everything in it at the end. Its name holds a blank, so that code
/// which trips over blanks in paths is found.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    static std::atomic<int> number{0};
    do {
      // The clock keeps test programs that run at the same time apart; create_directory tells when it did not.
      const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
      m_path = std::filesystem::temp_directory_path() /
               ("kestrin test " + std::to_string(ticks) + "-" + std::to_string(++number));
    } while (!std::filesystem::create_directories(m_path));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
  /// A path in the folder; nothing is created.
  [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const { return m_path / name; }

 private:
  std::filesystem::path m_path;
};

/// Writes a file of exactly these bytes, replacing one that is there. Returns the path.
inline std::filesystem::path WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error("the test cannot write " + path.string());
  return path;
}

/// The bytes of a file.
inline std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("the test cannot read " + path.string());
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The bytes of a ".lsu" file: four bytes that no reader looks at, then the samples, little-endian.
inline std::string SoundFileBytes(std::span<const std::int16_t> samples) {
  std::string bytes = "\x11\x22\x33\x44";
  bytes.reserve(4 + 2 * samples.size());
  for (const std::int16_t sample : samples) {
    const auto word = static_cast<std::uint16_t>(sample);
    bytes += static_cast<char>(word & 0xFF);
    bytes += static_cast<char>(word >> 8);
  }
  return bytes;
}

/// Writes a ".lsu" file with these samples. Returns the path.
inline std::filesystem::path WriteSoundFile(const std::filesystem::path& path, std::span<const std::int16_t> samples) {
  return WriteBytes(path, SoundFileBytes(samples));
}

/// Samples that differ from one another, from -`peak` to `peak`, with one of these two (which one depends on `seed`) as
/// the first that is coded. Another seed gives other samples.
inline std::vector<std::int16_t> SomeSamples(std::size_t count, std::int16_t peak = 20000, unsigned seed = 1) {
  std::vector<std::int16_t> samples(count);
  std::uint32_t state = seed * 2654435761U + 1;
  for (std::int16_t& sample : samples) {
    state = state * 1664525U + 1013904223U;
    sample = static_cast<std::int16_t>(static_cast<std::int32_t>(state >> 16) % (2 * peak + 1) - peak);
  }
  if (count > 1) samples[1] = static_cast<std::int16_t>(seed % 2 == 0 ? peak : -peak);
  return samples;
}

}  // namespace kestrin::support
