// SPDX-License-Identifier: MIT
#include "platform/process/StandardStreams.h"

#if defined(_WIN32)
#include <io.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>
#else
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#endif

namespace kestrin::platform::process {

#if defined(_WIN32)

// The runtime library keeps the three numbers for the standard streams, open or not, and a broken pipe is an error
// here.
void GuardStandardStreams() {}

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
