// SPDX-License-Identifier: MIT
#include "platform/hid/BoardLock.h"

#if defined(__linux__)
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#elif defined(_WIN32)
#include <windows.h>

#include <algorithm>

#include "core/base/PathText.h"
#endif

#include <utility>

namespace kestrin::platform::hid {

namespace {

#if defined(__linux__)

/// A lock of the whole device file. It belongs to the open file and not to the process: two parts of one program keep
/// each other off as two programs do, and the HID library's own closing of the node lets go of nothing.
struct flock WholeFile() {
  struct flock range {};
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  return range;
}

/// An open device file.
class NodeFile final : public BoardClaim {
 public:
  explicit NodeFile(const std::string& path) : m_file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK)) {}
  ~NodeFile() override {
    if (m_file >= 0) ::close(m_file);
  }
  NodeFile(const NodeFile&) = delete;
  NodeFile& operator=(const NodeFile&) = delete;

  [[nodiscard]] int File() const override { return m_file; }
  [[nodiscard]] bool IsOpen() const { return m_file >= 0; }
  [[nodiscard]] bool Lock() const {
    struct flock range = WholeFile();
    return ::fcntl(m_file, F_OFD_SETLK, &range) == 0;
  }
  [[nodiscard]] bool IsLocked() const {
    struct flock range = WholeFile();
    return ::fcntl(m_file, F_OFD_GETLK, &range) == 0 && range.l_type != F_UNLCK;
  }

 private:
  int m_file;
};

/// Whether the system lists such a lock of that file. It is asked first because it opens nothing: while a board takes
/// nothing from the program that has it, the kernel holds whoever opens one as well. The list may have the file under
/// another number than this program, so it proves no absence.
bool IsListed(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return false;
  std::array<char, 64> place{};
  std::snprintf(place.data(), place.size(), " %02x:%02x:%ju ", major(status.st_dev), minor(status.st_dev),
                static_cast<std::uintmax_t>(status.st_ino));
  std::ifstream list("/proc/locks");
  for (std::string line; std::getline(list, line);) {
    if (line.find(" OFDLCK ") != line.npos && line.find(place.data()) != line.npos) return true;
  }
  return false;
}

#elif defined(_WIN32)

struct ObjectCloser {
  using pointer = HANDLE;
  void operator()(HANDLE object) const { ::CloseHandle(object); }
};
/// A named object is there for as long as somebody has it open.
using Object = std::unique_ptr<void, ObjectCloser>;

/// The claim for everybody, and one that only this program looks for.
class Names final : public BoardClaim {
 public:
  Names(Object&& everybodys, Object&& own) : m_everybodys(std::move(everybodys)), m_own(std::move(own)) {}

 private:
  Object m_everybodys;
  Object m_own;
};

/// A path as a name of an object has it: no backslash, in letters of one case, since paths are told apart without it.
std::wstring Named(const std::string& path) {
  std::wstring name = core::base::PathOf(path).native();
  std::replace(name.begin(), name.end(), L'\\', L'/');
  ::CharLowerW(name.data());
  return L"Kestrin board " + name;
}

/// The same for all who are logged in.
std::wstring NameFor(const std::string& path) { return L"Global\\" + Named(path); }

/// This program's own.
std::wstring OwnNameFor(const std::string& path) {
  return L"Local\\" + Named(path) + L" of " + std::to_wstring(::GetCurrentProcessId());
}

Object MakeObject(const std::wstring& name) { return Object(::CreateMutexW(nullptr, FALSE, name.c_str())); }
Object FindObject(const std::wstring& name) { return Object(::OpenMutexW(SYNCHRONIZE, FALSE, name.c_str())); }

#endif

}  // namespace

#if defined(__linux__)

BoardLock LockBoard(const std::string& path, const std::function<bool()>& isStill) {
  BoardLock result;
  result.heldByAnother = IsListed(path);
  if (result.heldByAnother) return result;
  if (isStill && !isStill()) {
    result.error = std::make_error_code(std::errc::no_such_device);
    return result;
  }
  auto file = std::make_unique<NodeFile>(path);
  if (file->IsOpen() && file->Lock()) {
    result.lock = std::move(file);
  } else {
    result.heldByAnother = file->IsOpen() && (errno == EAGAIN || errno == EACCES);
    if (!result.heldByAnother) result.error = {errno, std::generic_category()};
  }
  return result;
}

bool IsBoardLocked(const std::string& path, const std::function<bool()>& isStill) {
  if (IsListed(path)) return true;
  if (isStill && !isStill()) return false;
  const NodeFile file(path);
  return file.IsOpen() && file.IsLocked();
}

#elif defined(_WIN32)

BoardLock LockBoard(const std::string& path, const std::function<bool()>&) {
  BoardLock result;
  Object object = MakeObject(NameFor(path));
  const DWORD error = ::GetLastError();
  // One that another user made may not even be opened.
  result.heldByAnother = error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
  if (object && !result.heldByAnother)
    result.lock = std::make_unique<Names>(std::move(object), MakeObject(OwnNameFor(path)));
  else if (!result.heldByAnother)
    result.error = {static_cast<int>(error), std::system_category()};
  return result;
}

bool IsBoardLocked(const std::string& path, const std::function<bool()>&) {
  return FindObject(NameFor(path)) || ::GetLastError() == ERROR_ACCESS_DENIED;
}

bool IsBoardOurs(const std::string& path) { return static_cast<bool>(FindObject(OwnNameFor(path))); }

#else

// Elsewhere hidapi itself opens a device for one program alone.
BoardLock LockBoard(const std::string&, const std::function<bool()>&) {
  return {std::make_unique<BoardClaim>(), false, {}};
}

bool IsBoardLocked(const std::string&, const std::function<bool()>&) { return false; }

#endif

}  // namespace kestrin::platform::hid
