#include "platform/desktop/WavFile.h"

#include <fstream>
#include <iterator>
#include <string_view>

namespace kestrin::desktop {

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

}  // namespace

std::optional<WavFile> WavFile::Read(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const std::string_view text = bytes;
  if (text.size() < kLeadingBytes || text.substr(0, 4) != "RIFF" || text.substr(8, 4) != "WAVE") return std::nullopt;

  WavFile wav;
  for (std::size_t at = kLeadingBytes; at + kChunkHead <= text.size();) {
    const std::string_view name = text.substr(at, 4);
    const std::size_t size = Number(text, at + 4, 4);
    at += kChunkHead;
    if (size > text.size() - at) return std::nullopt;
    if (name == "fmt ") {
      if (size < kFormatBytes || Number(text, at, 2) != kPlainSamples || Number(text, at + 14, 2) != kBits)
        return std::nullopt;
      wav.channels = static_cast<std::uint8_t>(Number(text, at + 2, 2));
      wav.samplesPerSecond = Number(text, at + 4, 4);
    } else if (name == "data") {
      if (wav.channels == 0 || wav.samplesPerSecond == 0) return std::nullopt;
      wav.samples = text.substr(at, size);
      return wav;
    }
    // Chunks begin at even places.
    at += size + size % 2;
  }
  return std::nullopt;
}

}  // namespace kestrin::desktop
