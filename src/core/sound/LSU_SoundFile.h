// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/Disk.h"
#include "base/EventPump.h"
#include "base/WholeFile.h"

namespace kestrin::core::sound {

/// One sound of a configuration: a ".lsu" file on disk and, once coded, its stream in the board's format.
///
/// The ".lsu" file, little-endian: bytes 0-3 a header word that is skipped; from byte 4 on signed 16-bit samples, mono,
/// 48,000 a second, to the end of the file (an odd last byte is no sample).
///
/// The coded stream holds two samples in three bytes, see Code().
class LSU_SoundFile {
 public:
  static constexpr int kSamplesPerSecond = 48000;
  /// The largest magnitude that the ten bits of a coded sample hold.
  static constexpr int kLargestMagnitude = 1023;
  /// The longest coded stream, in bytes: a board's file table has 24 bits for its length.
  static constexpr std::int64_t kLongestStream = 0xFFFFFF;

  /// Bytes in the coded stream of a file with that many samples: three for every two, an odd count getting one more.
  [[nodiscard]] static std::int64_t CodedBytes(std::int32_t samples) { return (std::int64_t{samples} + 1) / 2 * 3; }

  /// Bytes in front of the samples of a ".lsu" file.
  static constexpr std::size_t kHeaderBytes = 4;
  /// Whether a file of that name is taken for a sound: what follows the last "." of its path is "lsu", in any letter
  /// case.
  [[nodiscard]] static bool HasSoundName(const std::filesystem::path& path);
  /// Bytes of a ".lsu" file with that many samples.
  [[nodiscard]] static constexpr std::uintmax_t FileBytes(std::int32_t samples) {
    return kHeaderBytes + kSampleBytes * static_cast<std::uintmax_t>(samples);
  }
  /// The samples that a ".lsu" file of that many bytes holds; whether it is usable only shows when it is read.
  [[nodiscard]] static constexpr std::uintmax_t SamplesIn(std::uintmax_t bytes) {
    return bytes < kHeaderBytes ? 0 : (bytes - kHeaderBytes) / kSampleBytes;
  }

  /// Starts over with the file `FileNameAndPath`: volume 100 %, samples counted, peak measured, no coded stream.
  /// True when the file is usable: HasSoundName(), it reads, it has at least 49 samples and
  /// one of them is not 0. Never creates a file; refuses folders and files of more than 2^31-1 samples. `pump` gets its
  /// turn on the way; when it throws, there is no file.
  [[nodiscard]] bool ReadFile(const std::filesystem::path& FileNameAndPath, const base::EventPump& pump = {});

  /// Why the last ReadFile() was false: a text for the person that names the file, says what is wrong with it and what
  /// to do. "" when it was true, or when there was none.
  [[nodiscard]] std::string WhyNotValid() const;

  /// Builds the coded stream from the file's samples at the current volume; `pump` gets its turn on the way.
  /// False when the file cannot be read any more, no longer has NrOfSamples() samples, or is longer than kLongestStream
  /// once it is coded; the stream is then empty.
  /// Throws std::overflow_error naming the file when the volume lifts a magnitude above 1,023.
  [[nodiscard]] bool Code(const base::EventPump& pump = {});

  /// Reads the file again without building anything: fails when Code() would fail now. The text names the file, says
  /// what is wrong with it and what to do; the kind is NotFound, Changed, NotValid (too long or too loud) or Failed.
  base::Result<> CheckCodable(const base::EventPump& pump = {}) const;

  /// Copies the coded bytes FirstIndex .. FirstIndex + size - 1 into `BytesArray`, which gets that size.
  /// False, and nothing copied, when the slice does not lie inside the coded stream.
  [[nodiscard]] bool GetBytes(std::vector<std::uint8_t>& BytesArray, std::size_t FirstIndex, std::size_t size) const;

  /// The coded stream's checksum: the sum of its bytes modulo 65536.
  [[nodiscard]] std::uint16_t GetFileCRC() const;

  /// Writes the samples as they stand in the file (whatever the volume) as a WAV file: 44 bytes of header, then the
  /// samples. A file of that name is gone in any case, so that nobody hears an older sound in place of this one. True
  /// when the whole file was written.
  bool WriteWav(const std::filesystem::path& WAVFileName) const;

  /// Writes the same WAV file for the person to keep: a file of that name is replaced once the new one is complete, and
  /// stays when it cannot be. `pump` gets its turn on the way. The text of a failure names the file and says what is
  /// wrong.
  base::Result<> SaveWav(const std::filesystem::path& WAVFileName, base::Disk& disk,
                         const base::EventPump& pump = {}) const;

  /// The path as it was given to ReadFile(); empty when there is no file.
  [[nodiscard]] const std::filesystem::path& FileNameAndPath() const { return m_path; }
  /// Samples in the file; 0 until ReadFile() succeeded.
  [[nodiscard]] std::int32_t NrOfSamples() const { return m_nrOfSamples; }
  /// Bytes in the coded stream; 0 until Code() ran. An entry that moved in its list has the length of the file that
  /// moved, and no stream of its own until Code() runs again.
  [[nodiscard]] std::int32_t NrOfBytes() const { return m_nrOfBytes; }
  /// The largest absolute sample value that ReadFile() found, 0 .. 32768.
  [[nodiscard]] std::int32_t Peak() const { return m_peak; }
  /// Playback volume in percent; takes effect in Code().
  [[nodiscard]] std::int16_t Volume() const { return m_volume; }
  void SetVolume(std::int16_t percent) { m_volume = percent; }
  /// Flash byte address at which the coded stream begins; assigned by LSU_Configuration::MakeMemoryMap().
  [[nodiscard]] std::int32_t StartAddress() const { return m_startAddress; }
  void SetStartAddress(std::int32_t address) { m_startAddress = address; }

  /// Takes the file out: no samples, no name. Volume, peak and coded stream stay.
  void Remove();
  /// Takes over the file of the next entry of a list: start address, name, NrOfBytes and NrOfSamples. Volume, peak and
  /// coded stream belong to the position and stay.
  void TakeOver(const LSU_SoundFile& next);

  /// The same sound with an empty coded stream, to remember it by: streams are large, and Code() builds them anew.
  [[nodiscard]] LSU_SoundFile WithoutStream() const;

 private:
  static constexpr std::uintmax_t kSampleBytes = sizeof(std::int16_t);

  /// What ReadFile() found wrong.
  enum class Flaw { None, Ending, Missing, NotAFile, Unreadable, TooLong, TooShort, Silent };

  [[nodiscard]] Flaw Measure(const base::EventPump& pump);
  /// The WAV file, piece by piece.
  [[nodiscard]] base::ContentInPieces WavPieces(const base::EventPump& pump) const;

  std::filesystem::path m_path;
  std::int32_t m_nrOfSamples = 0;
  std::int32_t m_nrOfBytes = 0;
  std::int32_t m_peak = 0;
  std::int16_t m_volume = 100;
  Flaw m_flaw = Flaw::None;
  std::int32_t m_startAddress = 0;
  std::vector<std::uint8_t> m_bytes;
};

}  // namespace kestrin::core::sound
