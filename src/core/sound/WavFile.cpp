// SPDX-License-Identifier: MIT
#include "sound/WavFile.h"

#include <algorithm>
#include <fstream>
#include <string_view>

namespace kestrin::core::sound {

namespace {

constexpr std::size_t kLeadingBytes = 12;
constexpr std::size_t kChunkHead = 8;
constexpr std::size_t kFormatBytes = 16;
constexpr std::uint32_t kPlainSamples = 1;
constexpr std::uint32_t kBits = 16;

/// `bytes` bytes at `offset`, the least significant first.
std::uint32_t Number(std::string_view text, std::size_t offset, std::size_t bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = bytes; i-- > 0;) number = number << 8 | static_cast<std::uint8_t>(text[offset + i]);
  return number;
}

/// The `bytes` bytes of the file at `offset`; fewer where it ends.
std::string Piece(std::istream& file, std::uint64_t offset, std::size_t bytes) {
  std::string piece(bytes, '\0');
  file.seekg(static_cast<std::streamoff>(offset));
  file.read(piece.data(), static_cast<std::streamsize>(bytes));
  piece.resize(static_cast<std::size_t>(file.gcount()));
  return piece;
}

}  // namespace

std::optional<WavFile> WavFile::Read(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return Read(file);
}

std::optional<WavFile> WavFile::Read(std::istream& file) {
  file.seekg(0, std::ios::end);
  const std::streamoff end = file.tellg();
  const auto total = static_cast<std::uint64_t>(std::max(end, std::streamoff{0}));
  const std::string leading = Piece(file, 0, kLeadingBytes);
  if (leading.size() < kLeadingBytes || leading.compare(0, 4, "RIFF") != 0 || leading.compare(8, 4, "WAVE") != 0)
    return std::nullopt;

  WavFile wav;
  for (std::uint64_t at = kLeadingBytes; at + kChunkHead <= total;) {
    const std::string head = Piece(file, at, kChunkHead);
    if (head.size() < kChunkHead) return std::nullopt;
    const std::uint32_t size = Number(head, 4, 4);
    at += kChunkHead;
    if (size > total - at) return std::nullopt;
    if (head.compare(0, 4, "fmt ") == 0) {
      const std::string format = Piece(file, at, kFormatBytes);
      if (size < kFormatBytes || format.size() < kFormatBytes || Number(format, 0, 2) != kPlainSamples ||
          Number(format, 14, 2) != kBits)
        return std::nullopt;
      wav.channels = static_cast<std::uint8_t>(Number(format, 2, 2));
      wav.samplesPerSecond = Number(format, 4, 4);
    } else if (head.compare(0, 4, "data") == 0) {
      if (wav.channels == 0 || wav.samplesPerSecond == 0) return std::nullopt;
      wav.samples = Piece(file, at, size);
      if (wav.samples.size() < size) return std::nullopt;
      return wav;
    }
    // Chunks begin at even places.
    at += std::uint64_t{size} + size % 2;
  }
  return std::nullopt;
}

}  // namespace kestrin::core::sound
