// SPDX-License-Identifier: MIT
// Any bytes as a ".lsu" file: read, coded at several volumes, copied as a WAV file.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include "MemoryFolder.h"
#include "core/sound/LSU_SoundFile.h"

using kestrin::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const kestrin::fuzz::MemoryFolder folder;
  kestrin::core::sound::LSU_SoundFile file;
  const bool usable = file.ReadFile(folder.Write("input.lsu", data, size));
  Require(usable == (file.NrOfSamples() >= 49));
  Require(usable == (file.Peak() > 0));
  if (!usable) return 0;
  Require(static_cast<std::size_t>(file.NrOfSamples()) == (size - 4) / 2);

  // The header word, which nobody reads, chooses a volume of its own.
  const auto chosen = static_cast<std::int16_t>(data[0] | data[1] << 8);
  for (const std::int16_t volume : {std::int16_t{100}, std::int16_t{-102}, chosen}) {
    file.SetVolume(volume);
    const bool codable = static_cast<bool>(file.CheckCodable());
    try {
      Require(file.Code() == codable);
      Require(file.NrOfBytes() == kestrin::core::sound::LSU_SoundFile::CodedBytes(file.NrOfSamples()));
      std::vector<std::uint8_t> stream;
      Require(file.GetBytes(stream, 0, static_cast<std::size_t>(file.NrOfBytes())));
      Require(stream[0] == 0 && stream[1] == 0 && stream[2] == 0);
      std::uint32_t sum = 0;
      for (const std::uint8_t byte : stream) sum += byte;
      Require(file.GetFileCRC() == sum % 65536);
    } catch (const std::overflow_error&) {
      Require(!codable && file.NrOfBytes() == 0);
      Require(volume > 102 || volume < -102);
    }
  }
  Require(file.WriteWav(folder.Path() / "copy.wav"));
  Require(std::filesystem::file_size(folder.Path() / "copy.wav") ==
          44 + 2 * static_cast<std::uintmax_t>(file.NrOfSamples()));
  return 0;
}
