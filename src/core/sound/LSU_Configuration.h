// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/EventPump.h"
#include "base/Result.h"
#include "sound/LSU_SoundFile.h"
#include "sound/SlotKind.h"

namespace kestrin::core::sound {

/// A file in use, with the place it has in the configuration.
struct SlotFile {
  SlotKind kind;
  /// 1 .. count in a list; 1 in a single slot.
  int position;
  LSU_SoundFile* file;
};

/// The set of sounds that is written to the board: one file in each single slot, up to 12 in each list.
///
/// Layout of the board's flash: bytes 0-11 are not written; from 12 on the file table; from 512 on the coded streams
/// in the order of kSlots, each starting one (unwritten) byte after the end of the one before.
class LSU_Configuration {
 public:
  /// Flash address of the file table.
  static constexpr std::int32_t Nr_Base = 12;
  /// Flash address of the first coded stream.
  static constexpr std::int32_t kFirstStream = 512;
  /// Flash addresses have 24 bits: nothing lies behind this many bytes.
  static constexpr std::int64_t kAddressSpace = std::int64_t{1} << 24;

  /// Reads the file into the slot (single) or behind the last file of the list. True when it is usable. A single slot
  /// whose new file is refused has no samples, yet the total keeps counting the old ones. False for a number that is no
  /// slot. Throws std::out_of_range when the list is full: callers look first. `pump` gets its turn while the file is
  /// read.
  [[nodiscard]] bool AddFile(const std::filesystem::path& FileName, SlotKind FileType,
                             const base::EventPump& pump = {});

  /// Empties a single slot, or takes list entry `FileNumber` (from 1) out and closes the gap; volumes and peaks stay
  /// with their positions. Throws std::out_of_range when the list has no such entry.
  void RemoveFile(int FileNumber, SlotKind FileType);

  /// Moves list entry `from` to `to`; those in between close up. Unlike RemoveFile() this takes each sound along whole,
  /// with volume and peak. Throws std::out_of_range when the list has no such entries.
  void MoveFile(SlotKind FileType, int from, int to);

  /// The same configuration without coded streams, to remember it by.
  [[nodiscard]] LSU_Configuration WithoutStreams() const;

  /// The most important missing piece as its slot number, 0 when the configuration is complete.
  [[nodiscard]] int CheckIntegrity() const;
  /// The message for a code of CheckIntegrity(); "" for 0.
  [[nodiscard]] static std::string IntegrityMessage(int code);

  /// Codes every file in flash order, then gives each its address. After each file `progress` gets the percentage of
  /// samples done and may stop everything by returning false; the addresses are then unassigned. Fails with Cancelled
  /// when it was stopped, at once with NotValid when the streams do not fit into kAddressSpace, else as
  /// LSU_SoundFile::CheckCodable() does; the text says what to do.
  base::Result<> MakeMemoryMap(const std::function<bool(int percent)>& progress, const base::EventPump& pump = {});

  /// The file table, see docs/file-formats.md; 30 bytes and 6 for each list file. What it holds needs MakeMemoryMap()
  /// before, its size does not.
  [[nodiscard]] std::vector<std::uint8_t> GetFileTable() const;

  /// The file of a slot; `position` (from 1) counts for lists only. Throws std::out_of_range outside 1 .. 12.
  [[nodiscard]] LSU_SoundFile& FileAt(SlotKind kind, int position = 1);
  [[nodiscard]] const LSU_SoundFile& FileAt(SlotKind kind, int position = 1) const;

  /// Volume of a file in percent; `VolumeIndex` counts for lists only.
  [[nodiscard]] std::int16_t GetVolume(SlotKind VolumeType, int VolumeIndex) const;
  void SetVolume(SlotKind VolumeType, int VolumeIndex, std::int16_t Value);

  /// Files in use in a list; for a single slot 1 when it holds samples, else 0.
  [[nodiscard]] int Count(SlotKind kind) const;

  // The lists one by one, under the names that belong to this class. The programs go through FileAt() and Count(),
  // which take every slot.
  /// The file at list position 1 .. 12. Throws std::out_of_range beyond.
  [[nodiscard]] LSU_SoundFile& GetMtFile(int index);
  [[nodiscard]] LSU_SoundFile& GetImpFile(int index);
  [[nodiscard]] LSU_SoundFile& GetLkFile(int index);
  /// The files in use in a list.
  [[nodiscard]] int NrOfMt() const { return Count(SlotKind::Motion); }
  [[nodiscard]] int NrOfImp() const { return Count(SlotKind::Impact); }
  [[nodiscard]] int NrOfLk() const { return Count(SlotKind::Lockup); }

  /// The four single slots (filled or not) and the files of the lists, in flash order.
  [[nodiscard]] std::vector<SlotFile> FilesInFlashOrder();

  /// Samples of all files in use.
  [[nodiscard]] std::int64_t TotalNrOfSamples() const { return m_totalNrOfSamples; }
  /// The samples that the board holds; set by the owner.
  [[nodiscard]] std::int32_t MaxNrOfSamples() const { return m_maxNrOfSamples; }
  void SetMaxNrOfSamples(std::int32_t samples) { m_maxNrOfSamples = samples; }

  /// The flash bytes from address 0 to the end of the last stream as MakeMemoryMap() will lay it out; computed from the
  /// sample counts, so no coding is needed.
  [[nodiscard]] std::int64_t FlashBytesNeeded() const;

 private:
  struct List {
    std::array<LSU_SoundFile, kListCapacity> files;
    int count = 0;
  };
  std::array<LSU_SoundFile, 4> m_singles;
  std::array<List, 3> m_lists;
  std::int64_t m_totalNrOfSamples = 0;
  std::int32_t m_maxNrOfSamples = 0;
};

}  // namespace kestrin::core::sound
