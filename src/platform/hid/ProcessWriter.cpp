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
#include <cstring>
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
  int claim;
};

/// Room for one open file beside a message.
union FileRoom {
  cmsghdr header;
  std::array<char, CMSG_SPACE(sizeof(int))> bytes;
};

/// The number that a name in /proc/self/fd is; -1 for none.
[[nodiscard]] int NumberOf(const char* name) {
  int number = 0;
  for (; *name != '\0'; ++name) {
    if (*name < '0' || *name > '9') return -1;
    number = number * 10 + (*name - '0');
  }
  return number;
}

/// Closes all but the channel and what is open of the device; of that, the claim.
void CloseTheRest(const Duty& duty) {
  const int folder = ::open("/proc/self/fd", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  alignas(dirent64) std::array<char, 4096> block;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  for (long size = 0; (size = ::syscall(SYS_getdents64, folder, block.data(), block.size())) > 0;) {
    for (long at = 0; at < size;) {
      const auto* const entry = reinterpret_cast<const dirent64*>(block.data() + at);
      at += entry->d_reclen;
      const int file = NumberOf(entry->d_name);
      const bool kept = file == folder || file == duty.channel || (file != duty.claim && IsOf(file, duty.identity));
      if (file >= 0 && !kept) ::close(file);
    }
  }
  ::close(folder);
}

/// The device file; the negative number of an error when another device has its path by now.
[[nodiscard]] int OpenNode(const Duty& duty) {
  const int file = ::open(duty.path, O_RDWR | O_CLOEXEC);
  if (file < 0) return -errno;
  if (IsOf(file, duty.identity)) return file;
  ::close(file);
  return -ENODEV;
}

/// Waits for the next report, which `bytes` has room for, and for the claim with it. Returns its length, 0 when there
/// will be no more.
[[nodiscard]] std::size_t Receive(int channel, iovec bytes, int& claim) {
  FileRoom room{};
  msghdr message{};
  message.msg_iov = &bytes;
  message.msg_iovlen = 1;
  message.msg_control = room.bytes.data();
  message.msg_controllen = room.bytes.size();
  const ssize_t length = ::recvmsg(channel, &message, MSG_CMSG_CLOEXEC);
  const cmsghdr* const file = CMSG_FIRSTHDR(&message);
  claim = -1;
  if (file != nullptr) std::memcpy(&claim, CMSG_DATA(file), sizeof claim);
  return length > 0 ? static_cast<std::size_t>(length) : 0;
}

[[nodiscard]] int Write(int node, const char* report, std::size_t length) {
  if (node < 0) return node;
  const ssize_t taken = ::write(node, report, length);
  return taken < 0 ? -errno : static_cast<int>(taken);
}

[[noreturn]] void Work(const Duty& duty) {
  const int node = OpenNode(duty);
  std::array<char, kLongestReport> report;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  int claim = -1;
  while (const std::size_t length = Receive(duty.channel, {report.data(), report.size()}, claim)) {
    const int outcome = Write(node, report.data(), length);
    // First that, so that whoever hears of the outcome finds the claim to be his alone.
    if (claim >= 0) ::close(claim);
    if (::send(duty.channel, &outcome, sizeof outcome, MSG_NOSIGNAL) < 0) break;
  }
  ::_exit(0);
}

/// Makes the process that works, in one that ends at once: then nobody is left who would have to wait for the end of
/// the other.
[[noreturn]] void Prepare(const Duty& duty) {
  ::setsid();
  ::prctl(PR_SET_NAME, "kestrin-writer");
  static_cast<void>(::chdir("/") == 0);
  CloseTheRest(duty);
  if (::fork() == 0) Work(duty);
  ::_exit(0);
}

}  // namespace

// --- In the program ---

ProcessWriter::ProcessWriter(std::string path, const NodeIdentity& identity, int claim)
    : m_path(std::move(path)), m_identity(identity), m_claim(claim) {
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
  const Duty duty{m_path.c_str(), m_identity, ends[1], m_claim};
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  const pid_t between = ::fork();
  if (between == 0) Prepare(duty);
  while (between > 0 && ::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
  }
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  ::close(ends[1]);
  m_channel = ends[0];
}

bool ProcessWriter::HandOver(std::span<const std::uint8_t> report) const {
  iovec bytes{const_cast<std::uint8_t*>(report.data()), report.size()};
  FileRoom room{};
  msghdr message{};
  message.msg_iov = &bytes;
  message.msg_iovlen = 1;
  if (m_claim >= 0) {
    message.msg_control = room.bytes.data();
    message.msg_controllen = room.bytes.size();
    cmsghdr* const file = CMSG_FIRSTHDR(&message);
    file->cmsg_level = SOL_SOCKET;
    file->cmsg_type = SCM_RIGHTS;
    file->cmsg_len = CMSG_LEN(sizeof m_claim);
    std::memcpy(CMSG_DATA(file), &m_claim, sizeof m_claim);
  }
  return ::sendmsg(m_channel, &message, MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
}

bool ProcessWriter::Start(std::span<const std::uint8_t> report) {
  if (report.empty() || report.size() > kLongestReport) return false;
  if (m_writing && !Outcome(std::chrono::milliseconds(0))) return false;
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
