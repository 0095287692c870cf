// SPDX-License-Identifier: MIT
#include "cli/Terminal.h"

#include <cstdio>
#include <iostream>

#include "core/base/Text.h"

#if defined(_WIN32)
#include <io.h>
#include <windows.h>

#include <cstdint>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace kestrin::cli {

namespace {

constexpr std::size_t kUsualWidth = 80;

#if defined(_WIN32)

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

std::size_t Columns(std::FILE* stream) {
  CONSOLE_SCREEN_BUFFER_INFO info;
  const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  if (GetConsoleScreenBufferInfo(console, &info) == 0) return 0;
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

#else

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

std::size_t Columns(std::FILE* stream) {
  winsize size{};
  return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

#endif

}  // namespace

std::size_t TerminalWidth(Stream stream) {
  std::FILE* const file = stream == Stream::Output ? stdout : stderr;
  if (!IsTerminal(file)) return 0;
  const std::size_t columns = Columns(file);
  return columns == 0 ? kUsualWidth : columns;
}

std::optional<bool> AskYesOrNo(const std::string& question) {
  if (!IsTerminal(stdin)) return std::nullopt;
  // Not where the result goes.
  std::cerr << core::base::ShownLines(question) << " [y/N] " << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  return core::base::EqualsIgnoringCase(answer, "y") || core::base::EqualsIgnoringCase(answer, "yes");
}

}  // namespace kestrin::cli
