// SPDX-License-Identifier: MIT
#include "sound/WavStream.h"

#include <bit>

#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

namespace {

void AppendLittle16(std::string& bytes, std::uint32_t value) {
  bytes += static_cast<char>(value & 0xFF);
  bytes += static_cast<char>(value >> 8 & 0xFF);
}

void AppendLittle32(std::string& bytes, std::uint32_t value) {
  AppendLittle16(bytes, value);
  AppendLittle16(bytes, value >> 16);
}

}  // namespace

std::string WavStream::Header(std::int64_t samples) {
  const auto dataBytes = static_cast<std::uint32_t>(2 * samples);
  std::string header;
  header += "RIFF";
  AppendLittle32(header, dataBytes + 36);
  header += "WAVEfmt ";
  AppendLittle32(header, 16);  // bytes of the format that follows
  AppendLittle16(header, 1);   // PCM
  AppendLittle16(header, 1);   // channels
  AppendLittle32(header, LSU_SoundFile::kSamplesPerSecond);
  AppendLittle32(header, 2 * LSU_SoundFile::kSamplesPerSecond);  // bytes a second
  AppendLittle16(header, 2);                                     // bytes a sample frame
  AppendLittle16(header, 16);                                    // bits a sample
  header += "data";
  AppendLittle32(header, dataBytes);
  return header;
}

bool WavStream::Append(std::span<const std::int16_t> samples, const base::AppendBytes& append) {
  if constexpr (std::endian::native == std::endian::little) {
    return append({reinterpret_cast<const char*>(samples.data()), samples.size_bytes()});
  } else {
    std::string swapped;
    for (const std::int16_t sample : samples) AppendLittle16(swapped, static_cast<std::uint16_t>(sample));
    return append(swapped);
  }
}

}  // namespace kestrin::core::sound
