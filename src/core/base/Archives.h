// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "base/WholeFile.h"

namespace kestrin::core::base {

/// What an archive says of one of the files in it. All of it is the archive's word.
struct ArchiveEntry {
  /// As it stands in the archive, in UTF-8: no path to use, only to show and to compare.
  std::string name;
  /// Bytes when unpacked.
  std::uint64_t size = 0;
  /// An ordinary file that can be unpacked here: no folder, no link, not encrypted, packed in a known way.
  bool isReadable = false;
  /// Why it is not readable, a text for the person; "" for a folder.
  std::string reason;
};

/// A ZIP file that is open for reading.
class Archive {
 public:
  virtual ~Archive() = default;
  [[nodiscard]] virtual const std::vector<ArchiveEntry>& Entries() const = 0;
  /// Gives the content of a readable entry piece by piece. Fails when it is damaged, when its length is not what the
  /// archive says, when it has more than `most` bytes, or when `append` refuses a piece.
  [[nodiscard]] virtual Result<> Unpack(std::size_t entry, const AppendBytes& append, std::uint64_t most) = 0;
};

/// A file to put into an archive.
struct ArchiveItem {
  /// Its name in the archive, in UTF-8.
  std::string name;
  /// The file to read, or else `content` is what it holds.
  std::filesystem::path file;
  std::string content;
};

/// The port to the library that reads and writes ZIP files.
class Archives {
 public:
  virtual ~Archives() = default;
  /// Opens a ZIP file. Refuses, with a text for the person: what is none, one that contradicts itself, one with more
  /// than 10,000 entries or a directory too large to be one of sounds.
  [[nodiscard]] virtual Result<std::unique_ptr<Archive>> Open(const std::filesystem::path& path) = 0;
  /// Writes a new ZIP file whole or not at all. Fails when there is a file of that name, or when one of the items
  /// cannot be read. `pump` gets its turn on the way.
  [[nodiscard]] virtual Result<> Write(const std::filesystem::path& path, const std::vector<ArchiveItem>& items,
                                       const std::function<void()>& pump = {}) = 0;
};

}  // namespace kestrin::core::base
