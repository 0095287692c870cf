// SPDX-License-Identifier: MIT
#include "base/WriteBeside.h"

#include <optional>
#include <string_view>
#include <system_error>

#include "base/NameBeside.h"
#include "base/NewFile.h"

namespace kestrin::core::base {

namespace fs = std::filesystem;

namespace {

/// Names are drawn until one is free; with 64 bits the second is never needed, and a folder that refuses every name
/// says so instead.
constexpr int kDraws = 16;

/// Fills the new file and closes it.
Result<> Fill(NewFile& file, const ContentInPieces& content) {
  bool written = true;
  Result<> filled = content([&](std::string_view piece) { return written = written && file.Write(piece); });
  if (!written) filled = file.Why();
  // Closed in any case: some systems remove no file that is open.
  if (!file.Close() && filled) filled = file.Why();
  return filled;
}

}  // namespace

Result<fs::path> WriteBeside(const fs::path& folder, const ContentInPieces& content) {
  for (int draw = 1;; ++draw) {
    fs::path beside = NameBeside(folder / "file");
    std::optional<NewFile> file(beside);
    if (!file->IsOpen() && file->WasThere() && draw < kDraws) continue;
    if (!file->IsOpen()) return file->Why();
    std::error_code ignored;
    try {
      const Result<> filled = Fill(*file, content);
      if (filled) return beside;
      fs::remove(beside, ignored);
      return filled.Why();
    } catch (...) {
      // Whoever gives the content was stopped by the person.
      file.reset();
      fs::remove(beside, ignored);
      throw;
    }
  }
}

}  // namespace kestrin::core::base
