// SPDX-License-Identifier: MIT
#include "platform/archive/ZipSink.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "core/base/EventPump.h"

namespace kestrin::platform::archive {

ZipSink::ZipSink(const std::filesystem::path& path, std::function<void()> pump)
    : m_file(path, std::ios::binary | std::ios::in | std::ios::out), m_pump(std::move(pump)) {}

zip_source_t* ZipSink::Make() { return zip_source_function_create(&ZipSink::Answer, this, nullptr); }

bool ZipSink::Close() {
  errno = 0;
  m_file.close();
  if (!m_file) m_reason = errno;
  return m_file.good();
}

core::base::Failure ZipSink::Why() const {
  const std::error_code error(m_reason, std::generic_category());
  return {core::base::KindOf(error), error ? error.message() : "the disk refused it"};
}

zip_int64_t ZipSink::Answer(void* self, void* data, zip_uint64_t length, zip_source_cmd_t command) noexcept {
  return static_cast<ZipSink*>(self)->Do(data, length, command);
}

zip_int64_t ZipSink::Do(void* data, zip_uint64_t length, zip_source_cmd_t command) {
  switch (command) {
    case ZIP_SOURCE_STAT:
      zip_stat_init(static_cast<zip_stat_t*>(data));
      return sizeof(zip_stat_t);
    case ZIP_SOURCE_BEGIN_WRITE:
    case ZIP_SOURCE_COMMIT_WRITE:
      return m_file.good() ? 0 : -1;
    case ZIP_SOURCE_WRITE:
      return Write(static_cast<const char*>(data), length);
    case ZIP_SOURCE_SEEK_WRITE:
      return Seek(data, length);
    case ZIP_SOURCE_TELL_WRITE:
      return static_cast<zip_int64_t>(m_place);
    case ZIP_SOURCE_ERROR: {
      zip_error_t error;
      zip_error_init(&error);
      zip_error_set(&error, ZIP_ER_WRITE, EIO);
      return zip_error_to_data(&error, data, length);
    }
    case ZIP_SOURCE_SUPPORTS:
      return ZIP_SOURCE_SUPPORTS_WRITABLE;
    // The library opens what it is about to write anew.
    case ZIP_SOURCE_OPEN:
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_ROLLBACK_WRITE:
    case ZIP_SOURCE_FREE:
      return 0;
    default:
      return -1;
  }
}

zip_int64_t ZipSink::Write(const char* data, zip_uint64_t length) {
  try {
    core::base::Pump(m_pump);
  } catch (...) {
    m_thrown = std::current_exception();
    return -1;
  }
  errno = 0;
  m_file.write(data, static_cast<std::streamsize>(length));
  if (!m_file) {
    m_reason = errno;
    return -1;
  }
  m_place += length;
  m_size = std::max(m_size, m_place);
  return static_cast<zip_int64_t>(length);
}

zip_int64_t ZipSink::Seek(void* data, zip_uint64_t length) {
  const zip_int64_t place = zip_source_seek_compute_offset(m_place, m_size, data, length, nullptr);
  if (place < 0) return -1;
  m_place = static_cast<std::uint64_t>(place);
  m_file.seekp(static_cast<std::streamoff>(m_place));
  return m_file.good() ? 0 : -1;
}

}  // namespace kestrin::platform::archive
