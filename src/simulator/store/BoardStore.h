// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/base/Disk.h"
#include "core/base/Result.h"
#include "simulator/BoardKeeper.h"
#include "simulator/BoardOptions.h"
#include "simulator/BoardState.h"

namespace kestrin::simulator::store {

/// Keeps a board's state in a folder, so that it outlives the process: "flash.bin", the raw flash image from address 0
/// up to the highest address written or further, and "board.json", everything else. Both are written as the commands
/// arrive, so that also a process that is killed leaves what a real board would hold. One board at a time may use a
/// folder: "board.lock" stands for that, and is nothing but a place for the lock.
class BoardStore final : public BoardKeeper {
 public:
  struct Opened;
  /// Opens the options' folder, makes it when it is absent, and reads what is there. A file or member that is missing
  /// means the factory's state; `id` and `serial` of the options go before those that are kept. What is damaged is left
  /// as it is. Nothing is read or written while another holds the folder's lock, which is a failure of the kind InUse;
  /// without a disk nobody looks. The text of a failure names the file or folder and what is wrong with it.
  static core::base::Result<Opened> Open(const BoardOptions& options, core::base::Disk* disk);

  void KeepState(const BoardState& state) override;
  void KeepFlash(std::span<const std::uint8_t> flash, std::size_t address, std::size_t count) override;
  /// The image becomes empty.
  void KeepErased() override;

  [[nodiscard]] const std::string& Problem() const override { return m_problem; }

 private:
  explicit BoardStore(const std::filesystem::path& folder);

  core::base::Result<> Lock(const std::filesystem::path& folder, core::base::Disk& disk);
  /// The flash of that many bytes with what the image holds.
  core::base::Result<std::vector<std::uint8_t>> ReadFlash(std::size_t size);
  void OpenFlash(std::ios::openmode mode);
  void CheckFlash();

  std::unique_ptr<core::base::Disk::Lock> m_lock;
  std::filesystem::path m_flashPath;
  std::filesystem::path m_statePath;
  std::fstream m_flash;
  /// Bytes in the flash image; what lies behind is erased.
  std::size_t m_length = 0;
  std::string m_problem;
};

/// A store and what it held.
struct BoardStore::Opened {
  std::unique_ptr<BoardStore> store;
  BoardState state;
  std::vector<std::uint8_t> flash;
};

}  // namespace kestrin::simulator::store
