// SPDX-License-Identifier: MIT
#include "platform/archive/ZipSource.h"

#include <cerrno>
#include <span>
#include <system_error>
#include <utility>

namespace kestrin::platform::archive {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

zip_source_t* ZipSource::Make() { return zip_source_function_create(&ZipSource::Answer, this, nullptr); }

zip_int64_t ZipSource::Answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) noexcept {
  return static_cast<ZipSource*>(self)->Do(data, length, command);
}

zip_int64_t ZipSource::Do(void* data, zip_uint64_t length, zip_source_cmd_t command) {
  switch (command) {
    case ZIP_SOURCE_OPEN:
      return Open();
    case ZIP_SOURCE_READ:
      return Read(static_cast<char*>(data), length);
    case ZIP_SOURCE_CLOSE:
      // One that is opened in its turn has had it.
      if (!m_path.empty()) m_file.reset();
      return 0;
    case ZIP_SOURCE_STAT:
      return Describe(*static_cast<zip_stat_t*>(data));
    case ZIP_SOURCE_SEEK:
      return Seek(data, length);
    case ZIP_SOURCE_TELL:
      return static_cast<zip_int64_t>(m_place);
    case ZIP_SOURCE_ERROR: {
      zip_error_t error;
      zip_error_init(&error);
      if (m_trouble) zip_error_set(&error, ZIP_ER_READ, EIO);
      return zip_error_to_data(&error, data, length);
    }
    case ZIP_SOURCE_SUPPORTS:
      return ZIP_SOURCE_SUPPORTS_SEEKABLE;
    case ZIP_SOURCE_FREE:
      return 0;
    default:
      return -1;
  }
}

zip_int64_t ZipSource::Open() {
  m_place = 0;
  if (m_file) return 0;
  Result<files::RegularFile> opened = files::RegularFile::Open(m_path);
  if (!opened) return Fail(opened.Why());
  m_file = std::move(*opened);
  return 0;
}

zip_int64_t ZipSource::Read(char* data, zip_uint64_t length) {
  const Result<std::size_t> read = m_file->ReadAt(m_place, std::span(data, static_cast<std::size_t>(length)));
  if (!read) return Fail(read.Why());
  m_place += *read;
  return static_cast<zip_int64_t>(*read);
}

zip_int64_t ZipSource::Describe(zip_stat_t& about) {
  zip_stat_init(&about);
  std::error_code error;
  about.size = m_file ? m_file->Size() : std::filesystem::file_size(m_path, error);
  if (error) return Fail(core::base::FailureOf(error));
  about.valid |= ZIP_STAT_SIZE;
  return sizeof about;
}

zip_int64_t ZipSource::Seek(void* data, zip_uint64_t length) {
  const zip_int64_t place = zip_source_seek_compute_offset(m_place, m_file->Size(), data, length, nullptr);
  if (place < 0) return Fail({FailureKind::Failed, "it is damaged"});
  m_place = static_cast<std::uint64_t>(place);
  return 0;
}

zip_int64_t ZipSource::Fail(Failure why) {
  m_trouble = std::move(why);
  return -1;
}

}  // namespace kestrin::platform::archive
