// SPDX-License-Identifier: MIT
#include "sound/Verification.h"

#include "base/Bytes.h"

namespace kestrin::core::sound {

namespace {

std::optional<std::uint16_t> BoardSum(device::TLS& board, std::int32_t address, std::int32_t count) {
  if (!board.CheckCRC(address, count)) return std::nullopt;
  return static_cast<std::uint16_t>(board.Get_LS_Response(0) << 8 | board.Get_LS_Response(1));
}

}  // namespace

ChecksumComparison Verification::CheckFile(device::TLS& board, const LSU_SoundFile& file) {
  return {file.GetFileCRC(), BoardSum(board, file.StartAddress(), file.NrOfBytes())};
}

ChecksumComparison Verification::CheckTable(device::TLS& board, const LSU_Configuration& configuration) {
  const std::vector<std::uint8_t> table = configuration.GetFileTable();
  const std::span<const std::uint8_t> covered = std::span(table).first(table.size() - 2);
  return {base::ByteSum(covered),
          BoardSum(board, LSU_Configuration::Nr_Base, static_cast<std::int32_t>(covered.size()))};
}

}  // namespace kestrin::core::sound
