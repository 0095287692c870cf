// SPDX-License-Identifier: MIT
#include "platform/archive/ZipReader.h"

#include <array>
#include <string_view>
#include <utility>

#include "platform/archive/EndRecord.h"

namespace kestrin::platform::archive {

using core::base::Archive;
using core::base::ArchiveEntry;
using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

constexpr const char* kDamaged = "It is damaged in the archive. Fetch or copy the archive again.";

/// The kind of file stands where Unix keeps it, whatever system the archive comes from.
constexpr std::uint32_t kKindShift = 16;
constexpr std::uint32_t kKind = 0170000;
constexpr std::uint32_t kOrdinaryFile = 0100000;
constexpr std::uint32_t kFolder = 0040000;
/// Where only DOS says it.
constexpr std::uint32_t kDosFolder = 0x10;

bool IsFolder(std::string_view name, std::uint32_t attributes) {
  const std::uint32_t kind = attributes >> kKindShift & kKind;
  return name.ends_with('/') || kind == kFolder || (kind == 0 && (attributes & kDosFolder) != 0);
}

std::string_view WhyNotReadable(const zip_stat_t& about, std::uint32_t attributes) {
  const std::uint32_t kind = attributes >> kKindShift & kKind;
  if (kind != 0 && kind != kOrdinaryFile)
    return "It is a link or a device, no file. Put the file itself into the archive.";
  if (about.encryption_method != ZIP_EM_NONE)
    return "It is locked with a password. Unpack the archive with its password, then take the folder.";
  if (about.comp_method != ZIP_CM_STORE && about.comp_method != ZIP_CM_DEFLATE)
    return "It is packed in an unusual way. Unpack the archive, then take the folder.";
  return "";
}

/// What the library says against an archive as a whole.
Failure WhyNotOpened(zip_error_t& error) {
  switch (zip_error_code_zip(&error)) {
    case ZIP_ER_NOZIP:
    case ZIP_ER_EOF:
      return {FailureKind::NotValid, "it is no ZIP file, or only a part of one. Fetch or copy it again"};
    case ZIP_ER_EXISTS:
      return {FailureKind::NotValid, "two of its files have the same name. Unpack it, then take its folder"};
    case ZIP_ER_MULTIDISK:
      return {FailureKind::NotValid,
              "it is one of several pieces. Put them together, or unpack it and take its folder"};
    case ZIP_ER_MEMORY:
      return {FailureKind::Failed, "there is no memory for it"};
    default:
      return {FailureKind::NotValid, "it is damaged or contradicts itself. Fetch or copy it again"};
  }
}

struct ErrorCloser {
  void operator()(zip_error_t* error) const { zip_error_fini(error); }
};

struct FileCloser {
  void operator()(zip_file_t* file) const { (void)zip_fclose(file); }
};

}  // namespace

Result<std::unique_ptr<Archive>> ZipReader::Open(const std::filesystem::path& path) {
  Result<files::RegularFile> file = files::RegularFile::Open(path);
  if (!file) return file.Why();
  if (const Result<> fits = CheckEndRecord(*file); !fits) return fits.Why();
  std::unique_ptr<ZipReader> reader(new ZipReader(std::move(*file)));
  if (const Result<> attached = reader->Attach(); !attached) return attached.Why();
  return std::unique_ptr<Archive>(std::move(reader));
}

Result<> ZipReader::Attach() {
  zip_error_t error;
  zip_error_init(&error);
  const std::unique_ptr<zip_error_t, ErrorCloser> closer(&error);
  zip_source_t* const source = m_source.Make();
  if (source == nullptr) return Failure{FailureKind::Failed, "there is no memory for it"};
  m_archive.reset(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error));
  if (!m_archive) {
    zip_source_free(source);
    return m_source.Trouble() ? *m_source.Trouble() : WhyNotOpened(error);
  }
  const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
  if (count < 0 || static_cast<std::uint64_t>(count) > kMostEntries)
    return Failure{FailureKind::Full, "it holds more than can be taken at once. Unpack it, then take its folder"};
  for (zip_int64_t i = 0; i < count; ++i) m_entries.push_back(Look(static_cast<std::uint64_t>(i)));
  return {};
}

ArchiveEntry ZipReader::Look(std::uint64_t index) const {
  constexpr zip_uint64_t kNeeded = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
  zip_stat_t about;
  zip_stat_init(&about);
  if (zip_stat_index(m_archive.get(), index, ZIP_FL_ENC_GUESS, &about) != 0 || (about.valid & kNeeded) != kNeeded)
    return {"", 0, false, kDamaged};
  ArchiveEntry entry{about.name, about.size, false, ""};
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(m_archive.get(), index, 0, &system, &attributes) != 0) {
    entry.reason = kDamaged;
    return entry;
  }
  if (IsFolder(entry.name, attributes)) return entry;
  entry.reason = WhyNotReadable(about, attributes);
  entry.isReadable = entry.reason.empty();
  return entry;
}

Result<> ZipReader::Unpack(std::size_t entry, const core::base::AppendBytes& append, std::uint64_t most) {
  const ArchiveEntry& about = m_entries.at(entry);
  if (!about.isReadable) return Failure{FailureKind::NotValid, about.reason};
  if (about.size > most)
    return Failure{FailureKind::Full, "It is larger than can be taken. Unpack the archive, then take the folder."};
  const std::unique_ptr<zip_file_t, FileCloser> file(zip_fopen_index(m_archive.get(), entry, 0));
  if (!file) return Failure{FailureKind::NotValid, kDamaged};
  constexpr std::size_t kBlock = std::size_t{64} * 1024;
  std::array<char, kBlock> block;
  std::uint64_t total = 0;
  for (;;) {
    const zip_int64_t read = zip_fread(file.get(), block.data(), block.size());
    if (read < 0) return m_source.Trouble() ? *m_source.Trouble() : Failure{FailureKind::NotValid, kDamaged};
    if (read == 0) break;
    total += static_cast<std::uint64_t>(read);
    // What the archive says of the size, like all else, is only what it says.
    if (total > about.size) break;
    if (!append({block.data(), static_cast<std::size_t>(read)}))
      return Failure{FailureKind::Cancelled, "It was not taken."};
  }
  if (total != about.size) return Failure{FailureKind::NotValid, kDamaged};
  return {};
}

}  // namespace kestrin::platform::archive
