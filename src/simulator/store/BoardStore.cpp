#include "simulator/store/BoardStore.h"

#include <algorithm>
#include <system_error>

#include "core/base/WholeFile.h"
#include "core/device/BoardIdentity.h"
#include "core/device/THIDagent.h"
#include "simulator/store/BoardStateJson.h"
#include "simulator/store/Json.h"

namespace kestrin::simulator {

namespace fs = std::filesystem;

namespace {

std::string Quoted(const fs::path& path) {
  const std::u8string text = path.u8string();
  return "\"" + std::string(text.begin(), text.end()) + "\"";
}

/// A pipe would wait for somebody at its other end, a device may never come to an end at all. "" for anything else.
std::string WhyNoFile(const fs::path& path) {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  if (!fs::is_other(status) || status.type() == fs::file_type::unknown) return "";
  return Quoted(path) + " is no file: move away what has its name";
}

/// Reads "board.json" if it is there. Returns "" or what is wrong.
std::string ReadState(const fs::path& path, BoardState& state) {
  std::error_code error;
  if (!fs::exists(path, error) && !error) return "";
  const std::uintmax_t length = fs::file_size(path, error);
  std::string text(error ? 0 : static_cast<std::size_t>(length), '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (error || !file) return Quoted(path) + " could not be read: look at its permissions";
  Json::Parsed parsed = Json::Parse(text);
  if (parsed.value) parsed.problem = FromJson(*parsed.value, state);
  if (parsed.problem.empty()) return "";
  return Quoted(path) + " is damaged: " + parsed.problem + "; repair it, or delete it for a board from the factory";
}

}  // namespace

std::size_t FlashSizeOf(std::uint16_t id) {
  const std::int32_t capacity =
      core::device::Identify(id).memoryCapacity.value_or(core::device::kDefaultMemoryCapacity);
  return static_cast<std::size_t>(core::device::FlashSize(capacity));
}

BoardStore::BoardStore(const fs::path& folder)
    : m_flashPath(folder / "flash.bin"), m_statePath(folder / "board.json") {}

BoardStore::Opened BoardStore::Open(const BoardOptions& options, core::base::Disk* disk) {
  Opened opened;
  std::error_code error;
  fs::create_directories(options.dir, error);
  // Told by the folder rather than by the error: a folder that is there already is fine, however it is spelt.
  std::error_code ignored;
  if (!fs::is_directory(options.dir, ignored)) {
    opened.problem = "The folder " + Quoted(options.dir) + " for the simulated board could not be made" +
                     (error ? ": " + error.message() : "; a file of that name is in the way");
    return opened;
  }
  std::unique_ptr<BoardStore> store(new BoardStore(options.dir));
  if (disk != nullptr) {
    core::base::Disk::LockResult claim = disk->TryLock(options.dir / "board.lock");
    opened.inUse = claim.heldByAnother;
    if (opened.inUse) {
      opened.problem = core::device::kBoardInUse;
    } else if (!claim.lock) {
      opened.problem = "The simulated board in " + Quoted(options.dir) +
                       " could not be kept for this program: " + claim.error.message() +
                       "; look at the permissions of its \"board.lock\"";
    }
    if (!opened.problem.empty()) return opened;
    store->m_lock = std::move(claim.lock);
  }
  for (const fs::path& path : {store->m_flashPath, store->m_statePath})
    if (opened.problem.empty()) opened.problem = WhyNoFile(path);
  if (opened.problem.empty()) opened.problem = ReadState(store->m_statePath, opened.state);
  if (!opened.problem.empty()) return opened;
  opened.state.id = options.id.value_or(opened.state.id);
  opened.state.serial = options.serial.value_or(opened.state.serial);

  opened.flash.assign(FlashSizeOf(opened.state.id), kErased);
  const bool present = fs::exists(store->m_flashPath, error);
  if (present) {
    const std::uintmax_t length = fs::file_size(store->m_flashPath, error);
    if (!error && length > opened.flash.size()) {
      opened.problem = Quoted(store->m_flashPath) + " is larger than the board's flash of " +
                       std::to_string(opened.flash.size()) + " bytes: choose the board's id that it was written for";
      return opened;
    }
    store->m_length = error ? 0 : static_cast<std::size_t>(length);
  }
  store->OpenFlash(present ? std::ios::openmode{} : std::ios::trunc);
  store->m_flash.read(reinterpret_cast<char*>(opened.flash.data()), static_cast<std::streamsize>(store->m_length));
  store->CheckFlash();
  store->WriteState(opened.state);
  opened.problem = store->Problem();
  if (opened.problem.empty()) opened.store = std::move(store);
  return opened;
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

void BoardStore::WriteFlash(std::span<const std::uint8_t> flash, std::size_t address, std::size_t count) {
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

void BoardStore::EraseFlash() {
  if (!m_problem.empty()) return;
  OpenFlash(std::ios::trunc);
  m_length = 0;
  CheckFlash();
}

void BoardStore::WriteState(const BoardState& state) {
  if (m_problem.empty()) m_problem = core::base::WriteWholeFile(m_statePath, ToJson(state).Format()).Text();
}

}  // namespace kestrin::simulator
