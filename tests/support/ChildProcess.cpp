// SPDX-License-Identifier: MIT
#include "support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

extern char** environ;

namespace kestrin::support {

namespace {

[[noreturn]] void Fail(const std::string& what) { throw std::runtime_error("the test cannot " + what); }

/// Two ends of a channel: what the child writes into `child` arrives at `test`.
struct Channel {
  int test = -1;
  int child = -1;
};

Channel OpenPipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) Fail("open a pipe");
  return {ends[0], ends[1]};
}

Channel OpenTerminal(unsigned short columns) {
  const int test = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (test < 0 || grantpt(test) != 0 || unlockpt(test) != 0) Fail("open a terminal");
  const int child = open(ptsname(test), O_RDWR | O_NOCTTY | O_CLOEXEC);
  const winsize size{24, columns, 0, 0};
  if (child < 0 || ioctl(child, TIOCSWINSZ, &size) != 0) Fail("open a terminal's other end");
  return {test, child};
}

std::vector<std::string> Environment(const std::vector<std::string>& changes) {
  const auto name = [](const std::string& variable) { return variable.substr(0, variable.find('=')); };
  std::vector<std::string> result;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const bool changed = std::any_of(changes.begin(), changes.end(),
                                     [&](const auto& change) { return name(change) == name(*variable); });
    if (!changed) result.emplace_back(*variable);
  }
  for (const std::string& change : changes)
    if (change.find('=') != change.npos) result.push_back(change);
  return result;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// Makes standard output the terminal that the process belongs to.
void TakeTerminal() {
  setsid();
  ioctl(STDOUT_FILENO, TIOCSCTTY, 0);
}

/// What happens to the child between fork and exec.
void Prepare(const ChildProcess::Surroundings& surroundings) {
  for (const int number : {SIGHUP, SIGINT, SIGPIPE, SIGTERM, SIGXFSZ}) signal(number, SIG_DFL);
  for (const int number : surroundings.ignored) signal(number, SIG_IGN);
  if (surroundings.largestFile != 0) {
    const rlimit limit{surroundings.largestFile, surroundings.largestFile};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  if (surroundings.memory != 0) {
    const rlimit limit{surroundings.memory, surroundings.memory};
    setrlimit(RLIMIT_AS, &limit);
  }
  for (const int descriptor : surroundings.closed) close(descriptor);
}

void Close(int& descriptor) {
  close(descriptor);
  descriptor = -1;
}

/// Closes `descriptor` when nothing more comes out of it.
void Read(int& descriptor, std::string& text) {
  std::array<char, 4096> bytes{};
  const ssize_t count = read(descriptor, bytes.data(), bytes.size());
  if (count > 0) {
    text.append(bytes.data(), static_cast<std::size_t>(count));
  } else if (count == 0 || errno != EINTR) {
    // A terminal whose program has gone gives an error.
    Close(descriptor);
  }
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                           const Surroundings& surroundings) {
  const bool terminal = surroundings.output == Output::Terminal;
  const Channel out = terminal ? OpenTerminal(surroundings.columns) : OpenPipe();
  const Channel errors = OpenPipe();
  m_out = out.test;
  m_errors = errors.test;
  if (terminal) m_terminal = fcntl(m_out, F_DUPFD_CLOEXEC, 0);
  for (const int output : surroundings.unread) Close(output == STDOUT_FILENO ? m_out : m_errors);
  // Everything is made ready before the fork: behind it only a few calls are allowed.
  std::vector<std::string> arguments = command;
  std::vector<std::string> variables = Environment(environment);
  const std::vector<char*> argumentPointers = Pointers(arguments);
  const std::vector<char*> variablePointers = Pointers(variables);
  m_pid = fork();
  if (m_pid < 0) Fail("start a process");
  if (m_pid == 0) {
    dup2(out.child, STDOUT_FILENO);
    dup2(errors.child, STDERR_FILENO);
    if (surroundings.hasKeyboard) dup2(out.child, STDIN_FILENO);
    if (terminal) TakeTerminal();
    Prepare(surroundings);
    execve(argumentPointers[0], argumentPointers.data(), variablePointers.data());
    _exit(127);
  }
  close(out.child);
  close(errors.child);
}

ChildProcess::~ChildProcess() {
  if (m_pid > 0) {
    kill(m_pid, SIGKILL);
    waitpid(m_pid, nullptr, 0);
  }
  if (m_out >= 0) close(m_out);
  if (m_errors >= 0) close(m_errors);
  if (m_terminal >= 0) close(m_terminal);
}

void ChildProcess::WaitForOutput(const std::string& text) {
  while (m_finished.out.find(text) == std::string::npos)
    if (!ReadMore()) throw std::runtime_error("the program ended without printing " + text + ": " + m_finished.errors);
}

void ChildProcess::WaitForErrors(const std::string& text) {
  while (m_finished.errors.find(text) == std::string::npos)
    if (!ReadMore()) throw std::runtime_error("the program ended without the error output " + text);
}

std::string ChildProcess::WaitForLine() {
  WaitForOutput("\n");
  return m_finished.out.substr(0, m_finished.out.find('\n'));
}

void ChildProcess::Signal(int number) const { kill(m_pid, number); }

bool ChildProcess::HasEnded() const {
  siginfo_t ended{};
  return waitid(P_PID, static_cast<id_t>(m_pid), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid == m_pid;
}

#ifdef __linux__
void ChildProcess::WaitUntilItCatches(int number) const {
  const std::string field = "SigCgt:\t";
  for (std::uint64_t caught = 0; (caught >> (number - 1) & 1) == 0;) {
    if (HasEnded()) throw std::runtime_error("the program ended without catching the signal");
    std::ifstream file("/proc/" + std::to_string(m_pid) + "/status");
    const std::string status((std::istreambuf_iterator<char>(file)), {});
    if (const std::size_t at = status.find(field); at != status.npos)
      caught = std::stoull(status.substr(at + field.size()), nullptr, 16);
  }
}

void ChildProcess::WaitUntilItReads(const std::filesystem::path& file) const {
  for (;;) {
    if (HasEnded()) throw std::runtime_error("the program ended without reading " + file.string());
    std::error_code ended;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(m_pid) + "/fd", ended)) {
      std::error_code closed;
      if (std::filesystem::read_symlink(entry.path(), closed) == file) return;
    }
  }
}

std::filesystem::path ChildProcess::TargetOf(int descriptor) const {
  return std::filesystem::read_symlink("/proc/" + std::to_string(m_pid) + "/fd/" + std::to_string(descriptor));
}
#endif

void ChildProcess::StopTerminal() const {
  if (write(m_out, "\x13", 1) != 1) Fail("stop the terminal");
}

void ChildProcess::Type(const std::string& keys) const {
  if (write(m_out, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) Fail("press keys");
}

bool ChildProcess::IsTerminalAsUsual() const {
  termios state{};
  if (tcgetattr(m_terminal, &state) != 0) Fail("look at the terminal");
  return (state.c_lflag & ECHO) != 0 && (state.c_lflag & ICANON) != 0 && (state.c_iflag & IXON) != 0 &&
         state.c_cc[VSUSP] != _POSIX_VDISABLE;
}

void ChildProcess::UseTerminalAsUsual() const {
  termios state{};
  if (tcgetattr(m_terminal, &state) != 0) Fail("look at the terminal");
  state.c_lflag |= ECHO | ICANON;
  state.c_iflag |= IXON;
  if (tcsetattr(m_terminal, TCSANOW, &state) != 0) Fail("put the terminal back");
}

void ChildProcess::BlockTerminal() const {
  const int child = open(ptsname(m_out), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (child < 0 || tcflow(child, TCOOFF) != 0) Fail("block the terminal");
  close(child);
}

void ChildProcess::CloseOutput() {
  Close(m_out);
  // It hangs up when the last one has gone.
  if (m_terminal >= 0) Close(m_terminal);
}

Finished ChildProcess::Wait() {
  while (ReadMore()) {
  }
  // Who asks again is not to wait for some other child.
  if (m_pid < 0) return m_finished;
  int status = 0;
  while (waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
  }
  m_pid = -1;
  m_finished.code = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return m_finished;
}

bool ChildProcess::ReadMore() {
  if (m_out < 0 && m_errors < 0) return false;
  // poll() passes over descriptors that are negative.
  std::array<pollfd, 2> waiting{{{m_out, POLLIN, 0}, {m_errors, POLLIN, 0}}};
  if (poll(waiting.data(), waiting.size(), -1) < 0) return true;
  if (waiting[0].revents != 0) Read(m_out, m_finished.out);
  if (waiting[1].revents != 0) Read(m_errors, m_finished.errors);
  return true;
}

}  // namespace kestrin::support
