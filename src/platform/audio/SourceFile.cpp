// SPDX-License-Identifier: MIT
#include "platform/audio/SourceFile.h"

#include <algorithm>
#include <utility>

namespace kestrin::platform::audio {

namespace {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

Failure ForThePerson(Failure why) {
  if (why.kind == FailureKind::NotValid)
    why.text = "This is a folder or a device and no file. Choose a sound file.";
  else if (why.kind == FailureKind::NotFound)
    why.text = "The file is not there. Check its name and its folder.";
  else
    why.text = "The file cannot be opened: " + why.text + ". Check that you may read it.";
  return why;
}

}  // namespace

Result<std::unique_ptr<SourceFile>> SourceFile::Open(const std::filesystem::path& path) {
  Result<files::RegularFile> file = files::RegularFile::Open(path);
  if (!file) return ForThePerson(file.Why());
  return std::unique_ptr<SourceFile>(new SourceFile(std::move(*file)));
}

std::size_t SourceFile::ReadAt(std::uint64_t offset, void* bytes, std::size_t most) {
  if (offset >= Size() || m_failed) return 0;
  const auto inside = static_cast<std::size_t>(std::min<std::uint64_t>(most, Size() - offset));
  const Result<std::size_t> read = m_file.ReadAt(offset, {static_cast<char*>(bytes), inside});
  m_failed = !read;
  return read ? *read : 0;
}

}  // namespace kestrin::platform::audio
