#include "cli/Terminal.h"

#include <cstdio>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kestrin::cli {

namespace {

bool IsTerminal(std::FILE* stream) {
#if defined(_WIN32)
  return _isatty(_fileno(stream)) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

}  // namespace

bool OutputIsTerminal() { return IsTerminal(stdout); }

bool ErrorsAreTerminal() { return IsTerminal(stderr); }

}  // namespace kestrin::cli
