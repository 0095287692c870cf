// SPDX-License-Identifier: MIT
#include "platform/archive/ZipWriter.h"

#include <deque>
#include <exception>
#include <memory>
#include <optional>
#include <string>

#include "core/base/PathText.h"
#include "core/base/Text.h"
#include "platform/archive/ZipSink.h"
#include "platform/archive/ZipSource.h"

namespace kestrin::platform::archive {

using core::base::ArchiveItem;
using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

/// The first day that the format knows: the same content makes the same bytes on any day.
constexpr zip_uint16_t kFirstDay = 1 << 5 | 1;

struct Discarder {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Zip = std::unique_ptr<zip_t, Discarder>;

Failure NoMemory() { return {FailureKind::Failed, "there is no memory for it"}; }

/// One archive that is written.
class Writer {
 public:
  Writer(const std::filesystem::path& made, const std::function<void()>& pump) : m_sink(made, pump) {}

  Result<> Begin() {
    zip_source_t* const source = m_sink.Make();
    if (source == nullptr) return NoMemory();
    m_archive.reset(zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, nullptr));
    if (m_archive) return {};
    zip_source_free(source);
    return NoMemory();
  }

  Result<> Add(const ArchiveItem& item) {
    zip_source_t* const source = item.file.empty()
                                     ? zip_source_buffer(m_archive.get(), item.content.data(), item.content.size(), 0)
                                     : m_files.emplace_back(item.file).Make();
    if (source == nullptr) return NoMemory();
    const zip_int64_t index = zip_file_add(m_archive.get(), item.name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
      zip_source_free(source);
      return Failure{
          FailureKind::NotValid,
          core::base::Quoted(item.name) + " is no name for a file in an archive, or " + "another file has it already"};
    }
    (void)zip_file_set_dostime(m_archive.get(), static_cast<zip_uint64_t>(index), 0, kFirstDay, 0);
    return {};
  }

  Result<> End() {
    // The library lets go of an archive that it has written.
    if (zip_close(m_archive.get()) == 0)
      (void)m_archive.release();
    else
      return Why();
    if (!m_sink.Close()) return m_sink.Why();
    return {};
  }

 private:
  Result<> Why() {
    if (m_sink.Thrown()) std::rethrow_exception(m_sink.Thrown());
    for (const ZipSource& file : m_files)
      if (file.Trouble())
        return Failure{file.Trouble()->kind,
                       core::base::Quoted(file.Path()) + " could not be read: " + file.Trouble()->text};
    return m_sink.Why();
  }

  ZipSink m_sink;
  /// They stay where they are while others come.
  std::deque<ZipSource> m_files;
  Zip m_archive;
};

}  // namespace

Result<> WriteZip(const std::filesystem::path& made, const std::vector<ArchiveItem>& items,
                  const std::function<void()>& pump) {
  Writer writer(made, pump);
  Result<> done = writer.Begin();
  for (const ArchiveItem& item : items)
    if (done) done = writer.Add(item);
  return done ? writer.End() : done;
}

}  // namespace kestrin::platform::archive
