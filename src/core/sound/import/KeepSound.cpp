// SPDX-License-Identifier: MIT
#include "sound/import/KeepSound.h"

#include <array>
#include <fstream>
#include <system_error>

#include "base/NameBeside.h"
#include "base/PathText.h"
#include "base/WholeFile.h"
#include "sound/import/FreeName.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

base::ContentInPieces ContentOf(const fs::path& file) {
  return [file](const base::AppendBytes& append) -> base::Result<> {
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 1 << 16> bytes{};
    while (stream.read(bytes.data(), bytes.size()) || stream.gcount() > 0)
      if (!append({bytes.data(), static_cast<std::size_t>(stream.gcount())})) return {};
    if (stream.eof()) return {};
    return base::Failure{base::FailureKind::Failed, "what was made ready cannot be read any more; import it again"};
  };
}

}  // namespace

base::Result<fs::path> KeepSound(const fs::path& made, const fs::path& folder, base::Disk& disk) {
  const fs::path copy = base::NameBeside(folder / made.filename());
  if (const base::Result<> written = base::WriteWholeFile(copy, ContentOf(made), disk); !written) return written.Why();
  FreeName names(folder, base::TextOf(made.stem()));
  fs::path name;
  std::error_code error;
  do {
    name = names.Next();
    error = disk.TakeFreeName(copy, name);
    if (!error) return name;
    // Somebody was faster.
  } while (error == std::errc::file_exists && names.MayGoOn());
  std::error_code ignored;
  fs::remove(copy, ignored);
  const base::Failure why = base::FailureOf(error);
  return base::Failure{why.kind, base::Quoted(name) + " cannot be written: " + why.text + "."};
}

}  // namespace kestrin::core::sound
