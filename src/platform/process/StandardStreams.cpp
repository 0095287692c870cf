// SPDX-License-Identifier: MIT
#include "platform/process/StandardStreams.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#else
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#endif

namespace kestrin::platform::process {

#if defined(_WIN32)

namespace {

/// What the console took text for before; 0 where there is none.
UINT s_consoleBefore = 0;

}  // namespace

// The runtime library keeps the three numbers for the standard streams, open or not, and a broken pipe is an error
// here.
void GuardStandardStreams() {
  // What is printed is UTF-8, with lines that end as everywhere else: who reads them is often another program. A
  // program without a console has streams that are none.
  for (std::FILE* const stream : {stdout, stderr})
    if (const int number = _fileno(stream); number >= 0) _setmode(number, _O_BINARY);
  s_consoleBefore = GetConsoleOutputCP();
  if (s_consoleBefore == 0 || s_consoleBefore == CP_UTF8) return;
  SetConsoleOutputCP(CP_UTF8);
  // The console is shared with whoever comes next.
  static_cast<void>(std::atexit([] { SetConsoleOutputCP(s_consoleBefore); }));
}

bool OutputHasReader() {
  const int number = _fileno(stdout);
  if (number < 0) return false;
  // Asked behind a write that failed, which is all that a pipe fails for.
  return GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(number))) != FILE_TYPE_PIPE;
}

#else

void GuardStandardStreams() {
  int number = 0;
  do {
    number = open("/dev/null", O_RDWR);
    if (number < 0) std::_Exit(EXIT_FAILURE);
  } while (number <= STDERR_FILENO);
  close(number);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

bool OutputHasReader() {
  pollfd output{STDOUT_FILENO, POLLOUT, 0};
  return poll(&output, 1, 0) <= 0 || (output.revents & (POLLERR | POLLHUP)) == 0;
}

#endif

}  // namespace kestrin::platform::process
