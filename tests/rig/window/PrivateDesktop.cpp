// SPDX-License-Identifier: MIT
#include "rig/window/PrivateDesktop.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <stdexcept>
#include <system_error>

extern char** environ;

namespace kestrin::rig {

namespace {

constexpr int kReadyDescriptor = 3;

bool IsNamedIn(const std::string& variable, const std::vector<std::string>& changes) {
  const auto name = [](const std::string& text) { return text.substr(0, text.find('=')); };
  return std::any_of(changes.begin(), changes.end(),
                     [&](const auto& change) { return name(change) == name(variable); });
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// The first line that comes out of `descriptor`; what there is of it when there is no more.
std::string ReadLine(int descriptor) {
  std::string line;
  char letter = 0;
  while (::read(descriptor, &letter, 1) == 1 && letter != '\n') line += letter;
  return line;
}

}  // namespace

PrivateDesktop::PrivateDesktop()
    : m_folder(std::filesystem::path(testing::TempDir()) / ("kestrin-desktop-" + std::to_string(::getpid()))) {
  std::filesystem::create_directories(m_folder);
  std::filesystem::permissions(m_folder, std::filesystem::perms::owner_all);
  try {
    // Neither belongs to the system with the mocked board.
    const std::vector<std::string> real{"LD_PRELOAD", "UMOCKDEV_DIR"};
    // No other test that runs now has this number. The screen stays as it is when somebody leaves it: one that starts
    // anew turns away whoever comes meanwhile.
    m_display = ":" + std::to_string(1000 + ::getpid() % 50000);
    Start({KESTRIN_XVFB, m_display, "-displayfd", "3", "-screen", "0", "1280x900x24", "-nolisten", "tcp", "-noreset"},
          real);
    std::vector<std::string> session = Environment();
    session.insert(session.end(), real.begin(), real.end());
    m_sessionBus = Start({KESTRIN_DBUS_DAEMON, "--session", "--nofork", "--nopidfile", "--print-address=3"}, session);
  } catch (const std::exception&) {
    Stop();
    throw;
  }
}

PrivateDesktop::~PrivateDesktop() { Stop(); }

std::vector<std::string> PrivateDesktop::Environment() const {
  return {"DISPLAY=" + m_display,
          "DBUS_SESSION_BUS_ADDRESS=" + m_sessionBus,
          "XDG_RUNTIME_DIR=" + m_folder.string(),
          "XDG_CONFIG_HOME=" + m_folder.string(),
          "GSETTINGS_BACKEND=memory",
          "LC_ALL=C.UTF-8",
          "QT_QPA_PLATFORM=xcb",
          "QT_QPA_PLATFORMTHEME",
          "QT_STYLE_OVERRIDE",
          "QT_SCALE_FACTOR",
          "XDG_CURRENT_DESKTOP",
          "WAYLAND_DISPLAY",
          "XAUTHORITY",
          "AT_SPI_BUS_ADDRESS",
          "NO_AT_BRIDGE"};
}

std::string PrivateDesktop::Start(const std::vector<std::string>& command,
                                  const std::vector<std::string>& environment) {
  std::vector<std::string> arguments = command;
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable)
    if (!IsNamedIn(*variable, environment)) variables.emplace_back(*variable);
  for (const std::string& change : environment)
    if (change.find('=') != std::string::npos) variables.push_back(change);
  const std::vector<char*> argv = Pointers(arguments);
  const std::vector<char*> envp = Pointers(variables);

  std::array<int, 2> ready{};
  if (::pipe2(ready.data(), O_CLOEXEC) != 0) throw std::runtime_error("the test cannot open a pipe");
  const pid_t process = ::fork();
  if (process == 0) {
    // Not even a test that crashes leaves it behind.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    // The mock leaves no signal to its children.
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    // One says what it does all the time; its last line counts only when it fails.
    const int nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDERR_FILENO);
    if (ready[1] == kReadyDescriptor)
      ::fcntl(kReadyDescriptor, F_SETFD, 0);
    else
      ::dup2(ready[1], kReadyDescriptor);
    ::execve(argv[0], argv.data(), envp.data());
    ::_exit(127);
  }
  ::close(ready[1]);
  if (process > 0) m_processes.push_back(process);
  std::string line = ReadLine(ready[0]);
  ::close(ready[0]);
  if (line.empty()) throw std::runtime_error(command.front() + " does not start");
  return line;
}

void PrivateDesktop::Stop() {
  for (auto process = m_processes.rbegin(); process != m_processes.rend(); ++process) {
    ::kill(*process, SIGTERM);
    ::waitpid(*process, nullptr, 0);
  }
  std::error_code ignored;
  std::filesystem::remove_all(m_folder, ignored);
}

}  // namespace kestrin::rig
