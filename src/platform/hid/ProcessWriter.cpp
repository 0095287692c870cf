// SPDX-License-Identifier: MIT
#include "platform/hid/ProcessWriter.h"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <limits>
#include <utility>

namespace kestrin::platform::hid {

namespace {

/// The longest report that the kernel takes, with its id.
constexpr std::size_t kLongestReport = 16384;

// --- In the other process: nothing but what a signal handler may call. The program may have had more than one thread,
// --- and whatever another one held when the process was made, such as the memory's lock, is held for ever there.

/// What the process is made for.
struct Duty {
  const char* path;
  NodeIdentity identity;
  int channel;
};

[[nodiscard]] bool IsOf(int file, const NodeIdentity& identity) {
  struct stat status {};
  return ::fstat(file, &status) == 0 && NodeIdentity{status.st_dev, status.st_ino} == identity;
}

/// The number that a name in /proc/self/fd is; -1 for none.
[[nodiscard]] int NumberOf(const char* name) {
  int number = 0;
  for (; *name != '\0'; ++name) {
    if (*name < '0' || *name > '9') return -1;
    number = number * 10 + (*name - '0');
  }
  return number;
}

/// Closes all but the channel and what is open of the device.
void CloseTheRest(const Duty& duty) {
  const int folder = ::open("/proc/self/fd", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  alignas(dirent64) std::array<char, 4096> block;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  for (long size = 0; (size = ::syscall(SYS_getdents64, folder, block.data(), block.size())) > 0;) {
    for (long at = 0; at < size;) {
      const auto* const entry = reinterpret_cast<const dirent64*>(block.data() + at);
      at += entry->d_reclen;
      const int file = NumberOf(entry->d_name);
      if (file >= 0 && file != folder && file != duty.channel && !IsOf(file, duty.identity)) ::close(file);
    }
  }
  ::close(folder);
}

/// The device file; the negative number of an error when another device has its path by now.
[[nodiscard]] int OpenNode(const Duty& duty) {
  const int file = ::open(duty.path, O_RDWR | O_CLOEXEC);
  if (file < 0) return -errno;
  return IsOf(file, duty.identity) ? file : -ENODEV;
}

[[noreturn]] void Work(const Duty& duty) {
  ::setsid();
  ::prctl(PR_SET_NAME, "kestrin-writer");
  static_cast<void>(::chdir("/") == 0);
  CloseTheRest(duty);
  const int node = OpenNode(duty);
  std::array<char, kLongestReport + 1> report;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  for (;;) {
    const ssize_t length = ::recv(duty.channel, report.data(), report.size(), 0);
    if (length <= 0) ::_exit(0);
    int outcome = node;
    if (node >= 0) {
      const ssize_t taken = ::write(node, report.data(), static_cast<std::size_t>(length));
      outcome = taken < 0 ? -errno : static_cast<int>(taken);
    }
    if (::send(duty.channel, &outcome, sizeof outcome, MSG_NOSIGNAL) < 0) ::_exit(0);
  }
}

}  // namespace

// --- In the program ---

ProcessWriter::ProcessWriter(std::string path, const NodeIdentity& identity)
    : m_path(std::move(path)), m_identity(identity) {
  Launch();
}

ProcessWriter::~ProcessWriter() { LetGo(); }

void ProcessWriter::LetGo() {
  if (m_channel >= 0) ::close(std::exchange(m_channel, -1));
  m_writing = false;
}

void ProcessWriter::Launch() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
  const Duty duty{m_path.c_str(), m_identity, ends[1]};
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  // By a process in between, which ends at once: then nobody is left who would have to wait for the end of this one.
  const pid_t between = ::fork();
  if (between == 0) {
    if (::fork() == 0) Work(duty);
    ::_exit(0);
  }
  while (between > 0 && ::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
  }
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  ::close(ends[1]);
  m_channel = ends[0];
}

bool ProcessWriter::HandOver(std::span<const std::uint8_t> report) const {
  return ::send(m_channel, report.data(), report.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
}

bool ProcessWriter::Start(std::span<const std::uint8_t> report) {
  if (report.empty() || report.size() > kLongestReport || IsWriting()) return false;
  m_writing = HandOver(report);
  if (m_writing) return true;
  // Somebody has ended the process.
  LetGo();
  Launch();
  m_writing = HandOver(report);
  return m_writing;
}

std::optional<int> ProcessWriter::Outcome(std::chrono::milliseconds timeout) {
  if (!m_writing) return -EIO;
  const auto wait = std::clamp<std::chrono::milliseconds::rep>(timeout.count(), 0, std::numeric_limits<int>::max());
  pollfd answer{m_channel, POLLIN, 0};
  if (::poll(&answer, 1, static_cast<int>(wait)) <= 0) return std::nullopt;
  int outcome = 0;
  if (::recv(m_channel, &outcome, sizeof outcome, MSG_DONTWAIT) == sizeof outcome) {
    m_writing = false;
    return outcome;
  }
  LetGo();
  return -EIO;
}

}  // namespace kestrin::platform::hid
