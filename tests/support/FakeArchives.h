// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/base/Archives.h"
#include "core/base/PathText.h"
#include "support/TestFiles.h"

namespace kestrin::support {

/// Archives in memory: those that a test prepares, and those that are written. A file stands for each, so that it can
/// be looked for.
class FakeArchives final : public core::base::Archives {
 public:
  /// An entry with what it holds.
  struct Entry {
    core::base::ArchiveEntry about;
    std::string content;
    /// What unpacking it fails with.
    std::string flaw = {};
  };

  /// A file that can be unpacked.
  [[nodiscard]] static Entry File(const std::string& name, const std::string& content) {
    return {{name, content.size(), true, ""}, content};
  }
  /// One that cannot, for this reason.
  [[nodiscard]] static Entry Refused(const std::string& name, const std::string& reason) {
    return {{name, 0, false, reason}, ""};
  }
  [[nodiscard]] static Entry Folder(const std::string& name) { return {{name, 0, false, ""}, ""}; }

  /// Puts an archive there. Returns the path.
  std::filesystem::path Put(const std::filesystem::path& path, std::vector<Entry> entries) {
    WriteBytes(path, "archive");
    m_archives[path] = std::move(entries);
    return path;
  }
  [[nodiscard]] const std::vector<Entry>& At(const std::filesystem::path& path) const { return m_archives.at(path); }

  [[nodiscard]] core::base::Result<std::unique_ptr<core::base::Archive>> Open(
      const std::filesystem::path& path) override {
    using core::base::FailureKind;
    const auto found = m_archives.find(path);
    if (found == m_archives.end())
      return core::base::Failure{FailureKind::NotValid, core::base::Quoted(path) + " is no archive."};
    return std::unique_ptr<core::base::Archive>(new OpenArchive(found->second));
  }

  [[nodiscard]] core::base::Result<> Write(const std::filesystem::path& path,
                                           const std::vector<core::base::ArchiveItem>& items,
                                           const std::function<void()>& pump) override {
    if (pump) pump();
    if (std::filesystem::exists(path))
      return core::base::Failure{core::base::FailureKind::InTheWay, "There is one already."};
    std::vector<Entry> entries;
    for (const core::base::ArchiveItem& item : items)
      entries.push_back(File(item.name, item.file.empty() ? item.content : ReadBytes(item.file)));
    Put(path, std::move(entries));
    return {};
  }

 private:
  class OpenArchive final : public core::base::Archive {
   public:
    explicit OpenArchive(std::vector<Entry> entries) : m_entries(std::move(entries)) {
      for (const Entry& entry : m_entries) m_about.push_back(entry.about);
    }
    [[nodiscard]] const std::vector<core::base::ArchiveEntry>& Entries() const override { return m_about; }
    [[nodiscard]] core::base::Result<> Unpack(std::size_t entry, const core::base::AppendBytes& append,
                                              std::uint64_t most) override {
      using core::base::Failure;
      using core::base::FailureKind;
      const Entry& file = m_entries.at(entry);
      if (!file.about.isReadable) return Failure{FailureKind::NotValid, file.about.reason};
      if (file.content.size() > most) return Failure{FailureKind::Full, "It is too large."};
      // In two pieces, so that something can happen in between.
      const std::string_view content = file.content;
      const std::size_t half = content.size() / 2;
      if (!append(content.substr(0, half))) return Failure{FailureKind::Cancelled, "It was not taken."};
      if (!file.flaw.empty()) return Failure{FailureKind::NotValid, file.flaw};
      if (!append(content.substr(half))) return Failure{FailureKind::Cancelled, "It was not taken."};
      return {};
    }

   private:
    std::vector<Entry> m_entries;
    std::vector<core::base::ArchiveEntry> m_about;
  };

  std::map<std::filesystem::path, std::vector<Entry>> m_archives;
};

}  // namespace kestrin::support
