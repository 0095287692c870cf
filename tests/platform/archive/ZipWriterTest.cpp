// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "core/base/PathText.h"
#include "platform/archive/ZipArchives.h"
#include "platform/files/SystemDisk.h"
#include "support/RawZip.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::platform::archive {
namespace {

using core::base::Archive;
using core::base::ArchiveItem;
using core::base::FailureKind;
using core::base::Result;
using testing::ElementsAre;
using testing::HasSubstr;

class ZipWriterTest : public testing::Test {
 protected:
  [[nodiscard]] std::vector<std::string> NamesIn(const std::filesystem::path& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      names.push_back(core::base::TextOf(entry.path().filename()));
    std::sort(names.begin(), names.end());
    return names;
  }

  support::TemporaryFolder m_folder;
  support::RecordingDisk m_disk;
  ZipArchives m_zip{m_disk};
  core::base::Archives& m_archives = m_zip;
  const std::vector<ArchiveItem> m_text{{"set.lscfg", {}, "BOOT\r\n"}};
};

TEST_F(ZipWriterTest, WhatIsWrittenIsReadAgain) {
  const std::string sound = support::SoundFileBytes(support::SomeSamples(200'000));
  const std::string repeated(100'000, 'x');
  const std::vector<ArchiveItem> items{{"set.lscfg", {}, "BOOT\r\n"},
                                       {"\xC3\xBC b.lsu", support::WriteBytes(m_folder / "a", sound), ""},
                                       {"c.lsu", support::WriteBytes(m_folder / "c", repeated), ""},
                                       {"empty", support::WriteBytes(m_folder / "empty", ""), ""}};
  const std::vector<std::string> contents{"BOOT\r\n", sound, repeated, ""};
  ASSERT_EQ(m_archives.Write(m_folder / "out.zip", items).Text(), "");

  Result<std::unique_ptr<Archive>> opened = m_archives.Open(m_folder / "out.zip");
  ASSERT_EQ(opened.Text(), "");
  ASSERT_EQ((*opened)->Entries().size(), items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    EXPECT_EQ((*opened)->Entries()[i].name, items[i].name);
    std::string content;
    const auto append = [&](std::string_view piece) {
      content += piece;
      return true;
    };
    EXPECT_EQ((*opened)->Unpack(i, append, 1'000'000).Text(), "");
    EXPECT_EQ(content, contents[i]);
  }
  EXPECT_LT(std::filesystem::file_size(m_folder / "out.zip"), sound.size() + 2000) << "what can be is packed";
}

TEST_F(ZipWriterTest, TheSameContentMakesTheSameBytes) {
  const std::filesystem::path file = support::WriteBytes(m_folder / "a", "abc");
  ASSERT_EQ(m_archives.Write(m_folder / "1.zip", {{"a", file, ""}, {"b", {}, "text"}}).Text(), "");
  std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() - std::chrono::hours(100'000));
  ASSERT_EQ(m_archives.Write(m_folder / "2.zip", {{"a", file, ""}, {"b", {}, "text"}}).Text(), "");
  const std::string bytes = support::ReadBytes(m_folder / "1.zip");
  EXPECT_EQ(bytes, support::ReadBytes(m_folder / "2.zip"));
  EXPECT_EQ(bytes.substr(10, 4), std::string("\0\0\x21\0", 4)) << "the first minute of 1980, not of today";
}

TEST_F(ZipWriterTest, NeverTakesTheNameOfAFileThatIsThere) {
  support::WriteBytes(m_folder / "out.zip", "mine");
  const Result<> written = m_archives.Write(m_folder / "out.zip", m_text);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::InTheWay);
  EXPECT_THAT(written.Text(), HasSubstr("Choose another name"));
  EXPECT_EQ(support::ReadBytes(m_folder / "out.zip"), "mine");
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("out.zip"));
}

TEST_F(ZipWriterTest, NorThatOfOneThatCameMeanwhile) {
  m_disk.onTakeFreeName = [](const std::filesystem::path& name) {
    support::WriteBytes(name, "mine");
    return std::error_code();
  };
  const Result<> written = m_archives.Write(m_folder / "out.zip", m_text);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::InTheWay);
  EXPECT_EQ(support::ReadBytes(m_folder / "out.zip"), "mine");
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("out.zip"));
}

TEST_F(ZipWriterTest, OfSeveralAtOnceOneGetsTheName) {
  constexpr int kThreads = 8;
  files::SystemDisk disk;
  ZipArchives zip(disk);
  core::base::Archives& archives = zip;
  std::atomic<int> done = 0;
  std::atomic<int> refused = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i)
    threads.emplace_back([&, i] {
      const Result<> written = archives.Write(m_folder / "out.zip", {{std::to_string(i), {}, std::string(1000, 'x')}});
      if (written)
        ++done;
      else if (written.Why().kind == FailureKind::InTheWay)
        ++refused;
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(done, 1);
  EXPECT_EQ(refused, kThreads - 1);
  EXPECT_TRUE(m_archives.Open(m_folder / "out.zip"));
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("out.zip"));
}

TEST_F(ZipWriterTest, IsOnTheDiskBeforeItHasItsName) {
  m_disk.onTakeFreeName = [&](const std::filesystem::path&) {
    EXPECT_EQ(m_disk.flushed.size(), 1U);
    EXPECT_EQ(m_disk.flushed.front().extension(), ".new");
    return std::error_code();
  };
  ASSERT_EQ(m_archives.Write(m_folder / "out.zip", m_text).Text(), "");
  EXPECT_EQ(m_disk.flushed.size(), 2U);
  EXPECT_EQ(m_disk.flushed.back(), m_folder.Path());
}

TEST_F(ZipWriterTest, AnItemThatCannotBeReadLeavesNothing) {
  const auto fails = [&](const std::filesystem::path& file) {
    const Result<> written = m_archives.Write(m_folder / "out.zip", {{"a.lsu", file, ""}});
    EXPECT_THAT(written.Text(), HasSubstr(core::base::TextOf(file.filename())));
    return written ? FailureKind::Failed : written.Why().kind;
  };
  EXPECT_EQ(fails(m_folder / "none.lsu"), FailureKind::NotFound);
  std::filesystem::create_directory(m_folder / "folder.lsu");
  (void)fails(m_folder / "folder.lsu");
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("folder.lsu"));
}

TEST_F(ZipWriterTest, TwoItemsOfOneNameAreRefused) {
  EXPECT_FALSE(m_archives.Write(m_folder / "out.zip", {{"a", {}, "1"}, {"a", {}, "2"}}));
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre());
}

TEST_F(ZipWriterTest, ADiskThatRefusesLeavesNothing) {
  m_disk.onFlush = [](const std::filesystem::path&) { return std::make_error_code(std::errc::no_space_on_device); };
  const Result<> written = m_archives.Write(m_folder / "out.zip", m_text);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Why().kind, FailureKind::DiskFull);
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre());
  EXPECT_FALSE(m_archives.Write(m_folder / "no such folder" / "out.zip", m_text));
}

TEST_F(ZipWriterTest, WhoHasItsTurnOnTheWayMayStopIt) {
  struct Stop {};
  const std::filesystem::path file =
      support::WriteBytes(m_folder / "a", support::SoundFileBytes(support::SomeSamples(500'000)));
  int turns = 0;
  const auto pump = [&] {
    if (++turns == 3) throw Stop();
  };
  EXPECT_THROW((void)m_archives.Write(m_folder / "out.zip", {{"a", file, ""}}, pump), Stop);
  EXPECT_EQ(turns, 3);
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("a"));
}

}  // namespace
}  // namespace kestrin::platform::archive
