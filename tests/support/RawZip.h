// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrin::support {

/// The checksum that ZIP files carry of each content.
inline std::uint32_t Crc32(std::string_view bytes) {
  std::uint32_t rest = 0xFFFFFFFFU;
  for (const char byte : bytes) {
    rest ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) rest = (rest >> 1) ^ ((rest & 1U) != 0 ? 0xEDB88320U : 0U);
  }
  return ~rest;
}

/// An entry of a ZIP file as a test wants it, true or not. What is not said is what would be right.
struct RawZipEntry {
  std::string name;
  /// As it stands in the archive.
  std::string packed;
  std::uint16_t method = 0;
  std::uint16_t flags = 0;
  /// The kind of file and who may do what, as Unix has it.
  std::uint32_t mode = 0100644;
  std::optional<std::uint32_t> size = std::nullopt;
  std::optional<std::uint32_t> crc = std::nullopt;
  /// What the entry says of itself where it stands, other than in the directory.
  std::optional<std::uint32_t> localSize = std::nullopt;
  std::optional<std::uint32_t> packedSize = std::nullopt;
  /// Further fields, in both places.
  std::string extra = {};
  /// Where the directory says that it begins.
  std::optional<std::uint32_t> place = std::nullopt;
};

/// The bytes of a ZIP file with these entries. A test that wants it damaged changes them.
class RawZip {
 public:
  explicit RawZip(const std::vector<RawZipEntry>& entries) {
    std::string directory;
    for (const RawZipEntry& entry : entries) Add(entry, directory);
    const std::size_t place = m_bytes.size();
    m_bytes += directory;
    m_end = m_bytes.size();
    m_bytes += "PK\5\6";
    Number(m_bytes, 0, 4);
    Number(m_bytes, entries.size(), 2);
    Number(m_bytes, entries.size(), 2);
    Number(m_bytes, directory.size(), 4);
    Number(m_bytes, place, 4);
    Number(m_bytes, 0, 2);
  }

  [[nodiscard]] const std::string& Bytes() const { return m_bytes; }
  /// Where the end record begins.
  [[nodiscard]] std::size_t End() const { return m_end; }

  /// Appends a number of `size` bytes, least significant first.
  static void Number(std::string& bytes, std::uint64_t number, int size) {
    for (int i = 0; i < size; ++i, number >>= 8) bytes += static_cast<char>(number & 0xFF);
  }

 private:
  void Add(const RawZipEntry& entry, std::string& directory) {
    const std::size_t place = m_bytes.size();
    const std::uint32_t crc = entry.crc.value_or(Crc32(entry.packed));
    const std::uint32_t size = entry.size.value_or(static_cast<std::uint32_t>(entry.packed.size()));
    m_bytes += "PK\3\4";
    Common(m_bytes, entry, crc, entry.localSize.value_or(size));
    m_bytes += entry.name + entry.extra + entry.packed;

    directory += "PK\1\2";
    // Made on Unix, so that the mode counts.
    Number(directory, 3 << 8 | 20, 2);
    Common(directory, entry, crc, size);
    Number(directory, 0, 6);
    Number(directory, std::uint64_t{entry.mode} << 16, 4);
    Number(directory, entry.place.value_or(static_cast<std::uint32_t>(place)), 4);
    directory += entry.name + entry.extra;
  }

  /// What both places say alike: from the version that is needed to the length of the further fields.
  static void Common(std::string& bytes, const RawZipEntry& entry, std::uint32_t crc, std::uint32_t size) {
    Number(bytes, 20, 2);
    Number(bytes, entry.flags, 2);
    Number(bytes, entry.method, 2);
    Number(bytes, 0x00210000, 4);
    Number(bytes, crc, 4);
    Number(bytes, entry.packedSize.value_or(static_cast<std::uint32_t>(entry.packed.size())), 4);
    Number(bytes, size, 4);
    Number(bytes, entry.name.size(), 2);
    Number(bytes, entry.extra.size(), 2);
  }

  std::string m_bytes;
  std::size_t m_end = 0;
};

/// So many zeros, deflated: one zero and then repetitions of 258 of them, each of 13 bits.
inline std::string DeflatedZeros(std::uint64_t repetitions) {
  std::string bytes;
  unsigned held = 0;
  int bits = 0;
  const auto put = [&](unsigned value, int count) {
    held |= value << bits;
    for (bits += count; bits >= 8; bits -= 8, held >>= 8) bytes += static_cast<char>(held & 0xFF);
  };
  // One block, the last, with the fixed codes; codes are written from their most significant bit on.
  put(1, 1);
  put(1, 2);
  put(0b00001100, 8);  // the letter 0: 00110000
  for (std::uint64_t i = 0; i < repetitions; ++i) {
    put(0b10100011, 8);  // the length 258: 11000101
    put(0, 5);           // from one letter before
  }
  put(0, 7);  // the end: 0000000
  put(0, 7);
  return bytes;
}

}  // namespace kestrin::support
