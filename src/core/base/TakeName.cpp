// SPDX-License-Identifier: MIT
#include "base/TakeName.h"

#include <array>
#include <system_error>
#include <thread>

namespace kestrin::core::base {

namespace fs = std::filesystem;

using std::chrono::milliseconds;

namespace {

// Windows' search and scanners of viruses open what was just written, for a few milliseconds each. Elsewhere an open
// file is in nobody's way.
#ifdef _WIN32
constexpr std::array kPauses{milliseconds(10), milliseconds(20), milliseconds(40), milliseconds(80), milliseconds(100)};
#else
constexpr std::array<milliseconds, 0> kPauses{};
#endif

Result<> Attempt(const fs::path& made, const fs::path& name) {
  std::error_code error;
  fs::rename(made, name, error);
  if (!error) return {};
  Failure why = FailureOf(error);
#ifdef _WIN32
  // Of an old file that is open Windows says no more than that it does not permit it. A file could be made in this
  // folder just now, so it is nothing about the folder.
  std::error_code ignored;
  const fs::file_status old = fs::status(name, ignored);
  const bool writable = (old.permissions() & fs::perms::owner_write) != fs::perms::none;
  const bool isOldOpen = why.kind == FailureKind::NotPermitted && fs::is_regular_file(old) && writable;
  // Of a new file that is open it says so, but the compiler's library makes of that, as of most, an error of the disk;
  // on one that is gone the new file would not be seen.
  const bool isNewOpen = error == std::errc::io_error && fs::is_regular_file(made, ignored);
  if (isOldOpen || isNewOpen) why = {FailureKind::InUse, kOpenElsewhere};
#endif
  return why;
}

}  // namespace

Result<> TakeName(const fs::path& made, const fs::path& name, const std::function<void(milliseconds)>& wait) {
  Result<> done = Attempt(made, name);
  for (const milliseconds pause : kPauses) {
    if (done || done.Why().kind != FailureKind::InUse) break;
    if (wait)
      wait(pause);
    else
      std::this_thread::sleep_for(pause);
    done = Attempt(made, name);
  }
  return done;
}

}  // namespace kestrin::core::base
