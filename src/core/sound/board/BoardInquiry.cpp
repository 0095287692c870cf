// SPDX-License-Identifier: MIT
#include "sound/board/BoardInquiry.h"

#include <span>
#include <stdexcept>

#include "base/Bytes.h"
#include "sound/LSU_Configuration.h"
#include "sound/board/FileTable.h"

namespace kestrin::core::sound {

namespace {

using base::Failure;
using base::FailureKind;

constexpr std::int32_t kTable = LSU_Configuration::Nr_Base;
constexpr std::uint8_t kErased = 0xFF;

Failure AnswersOtherwise() {
  return {FailureKind::NotValid, "This board does not tell what it holds. Download a set to be sure of it."};
}

}  // namespace

base::Result<std::uint16_t> BoardInquiry::Sum(std::int32_t address, std::int32_t count) {
  if (const auto known = m_sums.find({address, count}); known != m_sums.end()) return known->second;
  if (m_goOn && !m_goOn()) return Failure{FailureKind::Cancelled, "The board was not asked to the end."};
  if (!m_board.CheckCRC(address, count))
    return Failure{FailureKind::NoAnswer, "The board does not answer. Unplug it, plug it in and try again."};
  const auto sum = static_cast<std::uint16_t>(m_board.Get_LS_Response(0) << 8 | m_board.Get_LS_Response(1));
  m_sums[{address, count}] = sum;
  return sum;
}

base::Result<bool> BoardInquiry::Holds(const SetImage& set) {
  const std::span table(set.table);
  const auto covered = static_cast<std::int32_t>(table.size() - FileTable::kChecksumBytes);
  struct Range {
    std::int32_t address;
    std::int32_t count;
    std::uint16_t sum;
  };
  // A sum does not tell two counts apart that have changed places; each of them alone does.
  std::vector<Range> ranges = {{kTable, covered, base::ByteSum(table.first(static_cast<std::size_t>(covered)))},
                               {kTable, 1, table[0]},
                               {kTable + 1, 1, table[1]},
                               {kTable + 2, 1, table[2]}};
  ranges.push_back({kTable + covered, FileTable::kChecksumBytes, base::ByteSum(table.last(FileTable::kChecksumBytes))});
  for (const FlashSound& sound : set.sounds) ranges.push_back({sound.address, sound.length, sound.checksum});
  for (const Range& range : ranges) {
    const base::Result<std::uint16_t> sum = Sum(range.address, range.count);
    if (!sum) return sum.Why();
    if (*sum != range.sum) return false;
  }
  return true;
}

base::Result<> BoardInquiry::ReadUpTo(std::vector<std::uint8_t>& table, std::size_t size) {
  while (table.size() < size) {
    const base::Result<std::uint16_t> byte = Sum(kTable + static_cast<std::int32_t>(table.size()), 1);
    if (!byte) return byte.Why();
    if (*byte > 0xFF) return AnswersOtherwise();
    table.push_back(static_cast<std::uint8_t>(*byte));
  }
  return {};
}

base::Result<std::vector<std::uint8_t>> BoardInquiry::ReadTable() {
  std::vector<std::uint8_t> table;
  if (base::Result<> head = ReadUpTo(table, FileTable::kHeadBytes); !head) return head.Why();
  const std::optional<std::size_t> size = FileTable::BytesOf(std::span(table).first<FileTable::kHeadBytes>());
  if (!size) {
    // The shortest table that there can be would be erased as a whole.
    constexpr std::int32_t kShortest = 30;
    const base::Result<std::uint16_t> sum = Sum(kTable, kShortest);
    if (!sum) return sum.Why();
    if (*sum != kShortest * kErased) return AnswersOtherwise();
    return std::vector<std::uint8_t>();
  }
  if (base::Result<> rest = ReadUpTo(table, *size); !rest) return rest.Why();
  return table;
}

base::Result<std::vector<FlashSound>> BoardInquiry::Read(std::int32_t flash) {
  const base::Result<std::vector<std::uint8_t>> table = ReadTable();
  if (!table) return table.Why();
  if (table->empty()) return std::vector<FlashSound>();
  std::optional<std::vector<FlashSound>> sounds = FileTable::Read(*table, flash);
  if (!sounds) return AnswersOtherwise();
  for (FlashSound& sound : *sounds) {
    const base::Result<std::uint16_t> sum = Sum(sound.address, sound.length);
    if (!sum) return sum.Why();
    sound.checksum = *sum;
  }
  // A board that counts otherwise than this program thinks gives itself away here at the latest, and so does one that
  // another program has written to meanwhile.
  const base::Result<std::uint16_t> whole = Sum(kTable, static_cast<std::int32_t>(table->size()));
  if (!whole) return whole.Why();
  if (*whole != base::ByteSum(*table)) return AnswersOtherwise();
  return std::move(*sounds);
}

base::Result<std::optional<std::int16_t>> BoardInquiry::VolumeOf(const LSU_SoundFile& file, const FlashSound& onBoard) {
  if (LSU_SoundFile::CodedBytes(file.NrOfSamples()) != onBoard.length) return std::optional<std::int16_t>();
  LSU_SoundFile coded = file.WithoutStream();
  for (std::int16_t volume = 1; volume <= StreamSums::kLoudest; ++volume) {
    if (m_goOn && !m_goOn()) return Failure{FailureKind::Cancelled, "The board was not asked to the end."};
    coded.SetVolume(volume);
    try {
      // A file that has changed is not what the board holds.
      if (!coded.Code()) return std::optional<std::int16_t>();
    } catch (const std::overflow_error&) {
      break;
    }
    if (coded.GetFileCRC() != onBoard.checksum) continue;
    const base::Result<bool> matches = Matches(onBoard, StreamSums::Of(coded));
    if (!matches) return matches.Why();
    if (*matches) return std::optional(volume);
  }
  return std::optional<std::int16_t>();
}

base::Result<bool> BoardInquiry::Matches(const FlashSound& onBoard, const StreamSums& sums) {
  if (sums.length != onBoard.length) return false;
  for (std::size_t part = 0; part < StreamSums::kParts; ++part) {
    const auto [begin, end] = StreamSums::Part(onBoard.length, part);
    const base::Result<std::uint16_t> sum = Sum(onBoard.address + begin, end - begin);
    if (!sum) return sum.Why();
    if (*sum != sums.parts[part]) return false;
  }
  return true;
}

}  // namespace kestrin::core::sound
