// SPDX-License-Identifier: MIT
#include "simulator/store/BoardStore.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "core/base/PathText.h"
#include "core/base/WholeFile.h"
#include "core/device/THIDagent.h"
#include "simulator/VirtualBoard.h"
#include "simulator/store/BoardStateJson.h"

namespace kestrin::simulator::store {

namespace fs = std::filesystem;

namespace {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

std::string Quoted(const fs::path& path) { return "\"" + core::base::TextOf(path) + "\""; }

/// Makes the folder unless it is there.
Result<> MakeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  // Told by the folder rather than by the error: a folder that is there already is fine, however it is spelt.
  std::error_code ignored;
  if (fs::is_directory(folder, ignored)) return {};
  return Failure{error ? core::base::KindOf(error) : FailureKind::InTheWay,
                 "The folder " + Quoted(folder) + " for the simulated board could not be made" +
                     (error ? ": " + error.message() : "; a file of that name is in the way")};
}

/// A pipe would wait for somebody at its other end, a device may never come to an end at all.
Result<> CheckThatItIsNoDevice(const fs::path& path) {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  if (!fs::is_other(status) || status.type() == fs::file_type::unknown) return {};
  return Failure{FailureKind::InTheWay, Quoted(path) + " is no file: move away what has its name"};
}

/// What "board.json" holds; the factory's state when it is not there.
Result<BoardState> ReadState(const fs::path& path) {
  std::error_code error;
  if (!fs::exists(path, error) && !error) return BoardState{};
  const std::uintmax_t length = fs::file_size(path, error);
  std::string text(error ? 0 : static_cast<std::size_t>(length), '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (error || !file) return Failure{FailureKind::Failed, Quoted(path) + " could not be read: look at its permissions"};
  Result<BoardState> state = FromJson(text);
  if (state) return state;
  return Failure{state.Why().kind, Quoted(path) + " is damaged: " + state.Text() +
                                       "; repair it, or delete it for a board from the factory"};
}

}  // namespace

BoardStore::BoardStore(const fs::path& folder)
    : m_flashPath(folder / "flash.bin"), m_statePath(folder / "board.json") {}

Result<BoardStore::Opened> BoardStore::Open(const BoardOptions& options, core::base::Disk* disk) {
  if (const Result<> made = MakeFolder(options.dir); !made) return made.Why();
  std::unique_ptr<BoardStore> store(new BoardStore(options.dir));
  if (disk != nullptr) {
    if (const Result<> locked = store->Lock(options.dir, *disk); !locked) return locked.Why();
  }
  for (const fs::path& path : {store->m_flashPath, store->m_statePath})
    if (const Result<> checked = CheckThatItIsNoDevice(path); !checked) return checked.Why();
  const Result<BoardState> kept = ReadState(store->m_statePath);
  if (!kept) return kept.Why();
  const BoardState state = options.Applied(*kept);
  Result<std::vector<std::uint8_t>> flash = store->ReadFlash(VirtualBoard::FlashSize(state.id));
  if (!flash) return flash.Why();
  store->KeepState(state);
  if (!store->Problem().empty()) return Failure{FailureKind::Failed, store->Problem()};
  return Opened{std::move(store), state, *std::move(flash)};
}

Result<> BoardStore::Lock(const fs::path& folder, core::base::Disk& disk) {
  core::base::Disk::LockResult claim = disk.TryLock(folder / "board.lock");
  if (claim.heldByAnother) return Failure{FailureKind::InUse, core::device::kBoardInUse};
  if (!claim.lock)
    return Failure{core::base::KindOf(claim.error),
                   "The simulated board in " + Quoted(folder) + " could not be kept for this program: " +
                       claim.error.message() + "; look at the permissions of its \"board.lock\""};
  m_lock = std::move(claim.lock);
  return {};
}

Result<std::vector<std::uint8_t>> BoardStore::ReadFlash(std::size_t size) {
  std::vector<std::uint8_t> flash(size, kErased);
  std::error_code error;
  const bool present = fs::exists(m_flashPath, error);
  if (present) {
    const std::uintmax_t length = fs::file_size(m_flashPath, error);
    if (!error && length > size)
      return Failure{FailureKind::NotValid, Quoted(m_flashPath) + " is larger than the board's flash of " +
                                                std::to_string(size) +
                                                " bytes: choose the board's id that it was written for"};
    m_length = error ? 0 : static_cast<std::size_t>(length);
  }
  OpenFlash(present ? std::ios::openmode{} : std::ios::trunc);
  m_flash.read(reinterpret_cast<char*>(flash.data()), static_cast<std::streamsize>(m_length));
  CheckFlash();
  if (!m_problem.empty()) return Failure{FailureKind::Failed, m_problem};
  return flash;
}

void BoardStore::OpenFlash(std::ios::openmode mode) {
  m_flash.close();
  m_flash.clear();
  m_flash.open(m_flashPath, std::ios::in | std::ios::out | std::ios::binary | mode);
}

void BoardStore::CheckFlash() {
  if (!m_flash && m_problem.empty())
    m_problem = Quoted(m_flashPath) + " could not be read or written: look at the folder's permissions and free space";
}

void BoardStore::KeepFlash(std::span<const std::uint8_t> flash, std::size_t address, std::size_t count) {
  if (!m_problem.empty() || count == 0) return;
  // The range begins where the file ends at the latest: what lies between is erased, and written as such.
  const std::size_t start = std::min(address, m_length);
  m_flash.seekp(static_cast<std::streamoff>(start));
  m_flash.write(reinterpret_cast<const char*>(flash.data() + start),
                static_cast<std::streamsize>(address + count - start));
  m_flash.flush();
  m_length = std::max(m_length, address + count);
  CheckFlash();
}

void BoardStore::KeepErased() {
  if (!m_problem.empty()) return;
  OpenFlash(std::ios::trunc);
  m_length = 0;
  CheckFlash();
}

void BoardStore::KeepState(const BoardState& state) {
  if (m_problem.empty()) m_problem = core::base::WriteWholeFile(m_statePath, ToJson(state)).Text();
}

}  // namespace kestrin::simulator::store
