// SPDX-License-Identifier: MIT
#include "platform/doctor/ProgramRun.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <system_error>

#include "core/base/Text.h"

namespace kestrin::platform::doctor {

namespace fs = std::filesystem;

namespace {

constexpr int kSliceMilliseconds = 20;
constexpr int kStatusOfSignals = 128;

/// The two ends of a pipe.
class Pipe {
 public:
  Pipe() {
    if (::pipe2(m_ends.data(), O_CLOEXEC) < 0) m_ends = {-1, -1};
  }
  ~Pipe() {
    for (const int end : m_ends)
      if (end >= 0) ::close(end);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  [[nodiscard]] int ReadEnd() const { return m_ends[0]; }
  [[nodiscard]] int WriteEnd() const { return m_ends[1]; }
  void CloseReadEnd() { Close(m_ends[0]); }
  void CloseWriteEnd() { Close(m_ends[1]); }

 private:
  static void Close(int& end) {
    ::close(end);
    end = -1;
  }

  std::array<int, 2> m_ends{-1, -1};
};

/// How the child begins.
class Preparation {
 public:
  Preparation(bool isAtTerminal, int errors) {
    posix_spawn_file_actions_init(&m_files);
    if (!isAtTerminal) posix_spawn_file_actions_addopen(&m_files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&m_files, errors, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&m_files, errors, STDERR_FILENO);
    // This program ignores them; others do not expect to begin so.
    sigset_t usual;
    sigemptyset(&usual);
    sigaddset(&usual, SIGPIPE);
    sigaddset(&usual, SIGXFSZ);
    posix_spawnattr_init(&m_attributes);
    posix_spawnattr_setsigdefault(&m_attributes, &usual);
    posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF);
  }
  ~Preparation() {
    posix_spawn_file_actions_destroy(&m_files);
    posix_spawnattr_destroy(&m_attributes);
  }
  Preparation(const Preparation&) = delete;
  Preparation& operator=(const Preparation&) = delete;

  [[nodiscard]] pid_t Start(const std::vector<std::string>& command) const {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    pid_t child = -1;
    return ::posix_spawn(&child, arguments[0], &m_files, &m_attributes, arguments.data(), environ) == 0 ? child : -1;
  }

 private:
  posix_spawn_file_actions_t m_files{};
  posix_spawnattr_t m_attributes{};
};

/// Takes over what the child says within that time; false when it says nothing.
bool TakeMore(Pipe& pipe, int milliseconds, bool isShown, std::string& errors) {
  pollfd ready{pipe.ReadEnd(), POLLIN, 0};
  if (::poll(&ready, 1, milliseconds) <= 0) return false;
  std::array<char, 512> block{};
  const ssize_t count = ::read(pipe.ReadEnd(), block.data(), block.size());
  if (count <= 0) {
    if (count == 0 || errno != EINTR) pipe.CloseReadEnd();
    return false;
  }
  const auto length = static_cast<std::size_t>(count);
  if (isShown) static_cast<void>(::write(STDERR_FILENO, block.data(), length) == count);
  errors.append(block.data(), std::min(length, ProgramEnd::kMostErrors - errors.size()));
  return true;
}

}  // namespace

std::optional<fs::path> FindProgram(const std::string& name) {
  const char* const path = std::getenv("PATH");
  const std::string folders = path != nullptr ? path : "/usr/bin:/bin";
  for (const std::string_view folder : core::base::Split(folders, ":")) {
    const fs::path file = fs::path(folder) / name;
    std::error_code error;
    if (!folder.empty() && fs::is_regular_file(file, error) && ::access(file.c_str(), X_OK) == 0) return file;
  }
  return std::nullopt;
}

ProgramEnd Run(const ProgramRun& run) {
  ProgramEnd end;
  Pipe pipe;
  const pid_t child = Preparation(run.isAtTerminal, pipe.WriteEnd()).Start(run.command);
  if (child < 0) return {ProgramEnd::kNotStarted, ""};
  pipe.CloseWriteEnd();

  int status = 0;
  pid_t ended = 0;
  try {
    // Somebody whom it leaves behind may hold the pipe for long, so its own end counts. One that is closed waits alone.
    for (ended = ::waitpid(child, &status, WNOHANG); ended == 0; ended = ::waitpid(child, &status, WNOHANG)) {
      static_cast<void>(TakeMore(pipe, kSliceMilliseconds, run.isAtTerminal, end.errors));
      core::base::Pump(run.pump);
    }
  } catch (const std::exception&) {
    ::kill(child, SIGTERM);
    ::waitpid(child, &status, WNOHANG);
    throw;
  }
  while (TakeMore(pipe, 0, run.isAtTerminal, end.errors)) {
  }
  // Where nobody keeps how children end, it is not known.
  if (ended < 0) return {ProgramEnd::kNotStarted, end.errors};
  end.status = WIFEXITED(status) ? WEXITSTATUS(status) : kStatusOfSignals + WTERMSIG(status);
  return end;
}

}  // namespace kestrin::platform::doctor
