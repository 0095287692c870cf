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
#include "simulator/BoardOptions.h"
#include "simulator/BoardState.h"

namespace kestrin::simulator {

/// The flash of a board of that model in bytes.
[[nodiscard]] std::size_t FlashSizeOf(std::uint16_t id);

/// Keeps a board's state in a folder, so that it outlives the process: "flash.bin", the raw flash image from address 0
/// up to the highest address written or further, and "board.json", everything else. Both are written as the commands
/// arrive, so that also a process that is killed leaves what a real board would hold. One board at a time may use a
/// folder: "board.lock" stands for that, and is nothing but a place for the lock.
class BoardStore {
 public:
  struct Opened;
  /// Opens the folder, makes it when it is absent, and reads what is there. A file or member that is missing means the
  /// factory's state; `id` and `serial` of the options go before those that are kept. What is damaged is left as it is.
  /// Nothing is read or written while another holds the folder's lock; without a disk nobody looks.
  [[nodiscard]] static Opened Open(const BoardOptions& options, core::base::Disk* disk = nullptr);

  /// The flash holds other bytes from `address` on.
  void WriteFlash(std::span<const std::uint8_t> flash, std::size_t address, std::size_t count);
  /// All of the flash is erased: the image becomes empty.
  void EraseFlash();
  void WriteState(const BoardState& state);

  /// "" while everything could be kept, else a text that names the file; nothing is kept any more then.
  [[nodiscard]] const std::string& Problem() const { return m_problem; }

 private:
  explicit BoardStore(const std::filesystem::path& folder);

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

/// A store and what it held, or a text that names the file or folder and what is wrong with it.
struct BoardStore::Opened {
  std::unique_ptr<BoardStore> store;
  BoardState state;
  std::vector<std::uint8_t> flash;
  /// Another program has the folder; the problem says so.
  bool inUse = false;
  /// "" when everything is well.
  std::string problem;
};

}  // namespace kestrin::simulator
