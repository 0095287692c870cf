// SPDX-License-Identifier: MIT
#include "sound/LSU_Configuration.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <utility>

#include "base/Bytes.h"
#include "base/Numbers.h"

namespace kestrin::core::sound {

namespace {

struct MissingPiece {
  SlotKind kind;
  const char* message;
};

/// From the most important piece to the least.
constexpr std::array<MissingPiece, 7> kMissingPieces{{
    {SlotKind::Boot, "Boot file is missing"},
    {SlotKind::PwrOn, "Power On file is missing"},
    {SlotKind::PwrOff, "Power Off file is missing"},
    {SlotKind::Idle, "Idle file is missing"},
    {SlotKind::Motion, "At least one motion file is required"},
    {SlotKind::Impact, "At least one impact file is required"},
    // Odd, but the text that people know and look for.
    {SlotKind::Lockup, "At least one locku-up file is required"},
}};

/// Place of a single slot among the singles, or of a list among the lists: the order in flash.
std::size_t PlaceOf(const Slot& slot) {
  const auto place = static_cast<std::size_t>(&slot - kSlots.data());
  return slot.isList ? place - 4 : place;
}

}  // namespace

bool LSU_Configuration::AddFile(const std::filesystem::path& FileName, SlotKind FileType, const base::EventPump& pump) {
  for (const Slot& slot : kSlots) {
    if (slot.kind != FileType) continue;
    const int position = slot.isList ? Count(FileType) + 1 : 1;
    LSU_SoundFile& file = FileAt(FileType, position);
    const std::int32_t replaced = slot.isList ? 0 : file.NrOfSamples();
    if (!file.ReadFile(FileName, pump)) return false;
    m_totalNrOfSamples += file.NrOfSamples() - replaced;
    if (slot.isList) m_lists[PlaceOf(slot)].count = position;
    return true;
  }
  return false;
}

void LSU_Configuration::RemoveFile(int FileNumber, SlotKind FileType) {
  const Slot& slot = SlotOf(FileType);
  const int count = Count(FileType);
  if (slot.isList && (FileNumber < 1 || FileNumber > count))
    throw std::out_of_range("there is no file " + std::to_string(FileNumber) + " in a list of " +
                            std::to_string(count));
  LSU_SoundFile& file = FileAt(FileType, FileNumber);
  m_totalNrOfSamples -= file.NrOfSamples();
  file.Remove();
  if (!slot.isList) return;
  for (int later = FileNumber + 1; later <= count; ++later)
    FileAt(FileType, later - 1).TakeOver(FileAt(FileType, later));
  m_lists[PlaceOf(slot)].count = count - 1;
}

void LSU_Configuration::MoveFile(SlotKind FileType, int from, int to) {
  const Slot& slot = SlotOf(FileType);
  const int count = Count(FileType);
  for (const int position : {from, to})
    if (!slot.isList || position < 1 || position > count)
      throw std::out_of_range("there is no file " + std::to_string(position) + " to move in a list of " +
                              std::to_string(count));
  // Positions count from 1.
  const auto first = m_lists[PlaceOf(slot)].files.begin();
  if (from < to)
    std::rotate(first + from - 1, first + from, first + to);
  else
    std::rotate(first + to - 1, first + from - 1, first + from);
}

LSU_Configuration LSU_Configuration::WithoutStreams() const {
  LSU_Configuration copy;
  for (std::size_t single = 0; single < m_singles.size(); ++single)
    copy.m_singles[single] = m_singles[single].WithoutStream();
  for (std::size_t list = 0; list < m_lists.size(); ++list) {
    copy.m_lists[list].count = m_lists[list].count;
    for (std::size_t entry = 0; entry < m_lists[list].files.size(); ++entry)
      copy.m_lists[list].files[entry] = m_lists[list].files[entry].WithoutStream();
  }
  copy.m_totalNrOfSamples = m_totalNrOfSamples;
  copy.m_maxNrOfSamples = m_maxNrOfSamples;
  return copy;
}

int LSU_Configuration::CheckIntegrity() const {
  for (const MissingPiece& piece : kMissingPieces)
    if (Count(piece.kind) == 0) return static_cast<int>(piece.kind);
  return 0;
}

std::string LSU_Configuration::IntegrityMessage(int code) {
  for (const MissingPiece& piece : kMissingPieces)
    if (static_cast<int>(piece.kind) == code) return piece.message;
  return "";
}

base::Result<> LSU_Configuration::MakeMemoryMap(const std::function<bool(int percent)>& progress,
                                                const base::EventPump& pump) {
  if (FlashBytesNeeded() > kAddressSpace)
    return base::Failure{base::FailureKind::NotValid, "The sounds are longer than any board can hold. Take some out."};
  const std::vector<SlotFile> files = FilesInFlashOrder();
  std::int64_t done = 0;
  for (const SlotFile& entry : files) {
    try {
      if (!entry.file->Code(pump)) {
        base::Result<> codable = entry.file->CheckCodable(pump);
        if (!codable) return codable;
        // The file is back by now; this run has missed it all the same.
        return base::Failure{base::FailureKind::Changed, "A sound file changed while it was read. Try again."};
      }
    } catch (const std::overflow_error& tooLoud) {
      return base::Failure{base::FailureKind::NotValid, tooLoud.what()};
    }
    done += entry.file->NrOfSamples();
    const double percent =
        m_totalNrOfSamples == 0 ? 100 : static_cast<double>(done * 100) / static_cast<double>(m_totalNrOfSamples);
    if (progress && !progress(base::RoundTo<int>(percent)))
      return base::Failure{base::FailureKind::Cancelled, "The sounds were not coded to the end."};
  }
  std::int64_t address = kFirstStream;
  for (const SlotFile& entry : files) {
    entry.file->SetStartAddress(static_cast<std::int32_t>(address));
    address += entry.file->NrOfBytes() + 1;
  }
  return {};
}

std::vector<std::uint8_t> LSU_Configuration::GetFileTable() const {
  std::vector<std::uint8_t> table;
  const auto put24 = [&](std::int32_t value) {
    const std::size_t at = table.size();
    table.resize(at + 3);
    base::PutBig24(std::span<std::uint8_t, 3>(table.data() + at, 3), static_cast<std::uint32_t>(value));
  };
  for (const List& list : m_lists) table.push_back(static_cast<std::uint8_t>(list.count));
  table.push_back(0);
  for (const Slot& slot : kSlots) {
    const int entries = slot.isList ? Count(slot.kind) : 1;
    for (int position = 1; position <= entries; ++position) {
      const LSU_SoundFile& file = FileAt(slot.kind, position);
      put24(file.StartAddress());
      put24(file.NrOfBytes());
    }
  }
  const std::uint16_t sum = base::ByteSum(table);
  table.push_back(base::ExtractByte(sum, 1));
  table.push_back(base::ExtractByte(sum, 0));
  return table;
}

LSU_SoundFile& LSU_Configuration::GetMtFile(int index) { return FileAt(SlotKind::Motion, index); }
LSU_SoundFile& LSU_Configuration::GetImpFile(int index) { return FileAt(SlotKind::Impact, index); }
LSU_SoundFile& LSU_Configuration::GetLkFile(int index) { return FileAt(SlotKind::Lockup, index); }

const LSU_SoundFile& LSU_Configuration::FileAt(SlotKind kind, int position) const {
  const Slot& slot = SlotOf(kind);
  if (!slot.isList) return m_singles[PlaceOf(slot)];
  if (position < 1 || position > kListCapacity)
    throw std::out_of_range("a list has no position " + std::to_string(position));
  return m_lists[PlaceOf(slot)].files[static_cast<std::size_t>(position - 1)];
}

LSU_SoundFile& LSU_Configuration::FileAt(SlotKind kind, int position) {
  return const_cast<LSU_SoundFile&>(std::as_const(*this).FileAt(kind, position));
}

std::int16_t LSU_Configuration::GetVolume(SlotKind VolumeType, int VolumeIndex) const {
  return FileAt(VolumeType, VolumeIndex).Volume();
}

void LSU_Configuration::SetVolume(SlotKind VolumeType, int VolumeIndex, std::int16_t Value) {
  FileAt(VolumeType, VolumeIndex).SetVolume(Value);
}

int LSU_Configuration::Count(SlotKind kind) const {
  const Slot& slot = SlotOf(kind);
  return slot.isList ? m_lists[PlaceOf(slot)].count : int{FileAt(kind).NrOfSamples() > 0};
}

std::vector<SlotFile> LSU_Configuration::FilesInFlashOrder() {
  std::vector<SlotFile> files;
  for (const Slot& slot : kSlots) {
    const int entries = slot.isList ? Count(slot.kind) : 1;
    for (int position = 1; position <= entries; ++position)
      files.push_back({slot.kind, position, &FileAt(slot.kind, position)});
  }
  return files;
}

std::int64_t LSU_Configuration::FlashBytesNeeded() const {
  // One byte is left free between two streams, none behind the last.
  std::int64_t end = kFirstStream - 1;
  for (const Slot& slot : kSlots) {
    const int entries = slot.isList ? Count(slot.kind) : 1;
    for (int position = 1; position <= entries; ++position)
      end += LSU_SoundFile::CodedBytes(FileAt(slot.kind, position).NrOfSamples()) + 1;
  }
  return end;
}

}  // namespace kestrin::core::sound
