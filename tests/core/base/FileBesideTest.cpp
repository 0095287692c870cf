// SPDX-License-Identifier: MIT
#include "core/base/FileBeside.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::core::base {
namespace {

namespace fs = std::filesystem;
using support::ReadBytes;
using support::WriteBytes;

class FileBesideTest : public ::testing::Test {
 protected:
  Result<FileBeside> Write(const std::string& content) {
    return FileBeside::Write(
        m_folder.Path(),
        [content](const AppendBytes& append) {
          static_cast<void>(append(content));
          return Result<>();
        },
        m_disk);
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(m_folder.Path())) names.push_back(entry.path().filename().string());
    return names;
  }

  support::TemporaryFolder m_folder;
  support::RecordingDisk m_disk;
};

TEST_F(FileBesideTest, TakesANameThatNobodyHas) {
  Result<FileBeside> file = Write("content");
  ASSERT_TRUE(file) << file.Text();
  const fs::path name = m_folder / "hum.lsu";
  EXPECT_FALSE(fs::exists(name));
  EXPECT_TRUE(file->TakeNewName(name, m_disk));
  EXPECT_EQ(ReadBytes(name), "content");
  EXPECT_EQ(Names(), std::vector<std::string>{"hum.lsu"});
  // The content was safe before it got its name.
  ASSERT_EQ(m_disk.flushed.size(), 1U);
  EXPECT_NE(m_disk.flushed[0], name);
}

TEST_F(FileBesideTest, StaysWhenItsNameWasTaken) {
  {
    Result<FileBeside> file = Write("content");
    ASSERT_TRUE(file && file->TakeNewName(m_folder / "hum.lsu", m_disk));
  }
  EXPECT_EQ(ReadBytes(m_folder / "hum.lsu"), "content");
}

TEST_F(FileBesideTest, GoesWithTheObjectOtherwise) {
  {
    Result<FileBeside> file = Write("content");
    ASSERT_TRUE(file);
    EXPECT_EQ(Names().size(), 1U);
    std::optional<FileBeside> moved(*std::move(file));
    EXPECT_EQ(Names().size(), 1U);
  }
  EXPECT_TRUE(Names().empty());
}

TEST_F(FileBesideTest, NothingIsEverReplaced) {
  WriteBytes(m_folder / "hum.lsu", "older");
  fs::create_directory(m_folder / "folder.lsu");
#ifndef _WIN32
  fs::create_symlink(m_folder / "nowhere", m_folder / "link.lsu");
#endif
  Result<FileBeside> file = Write("content");
  ASSERT_TRUE(file);
  EXPECT_EQ(file->TakeNewName(m_folder / "hum.lsu", m_disk).Why().kind, FailureKind::InTheWay);
  EXPECT_EQ(ReadBytes(m_folder / "hum.lsu"), "older");
  EXPECT_FALSE(file->TakeNewName(m_folder / "folder.lsu", m_disk));
#ifndef _WIN32
  EXPECT_EQ(file->TakeNewName(m_folder / "link.lsu", m_disk).Why().kind, FailureKind::InTheWay);
  EXPECT_FALSE(fs::exists(m_folder / "nowhere"));
#endif
  EXPECT_TRUE(file->TakeNewName(m_folder / "hum 2.lsu", m_disk));
  EXPECT_EQ(ReadBytes(m_folder / "hum 2.lsu"), "content");
}

TEST_F(FileBesideTest, WhatFailsOnTheWayLeavesNothing) {
  const auto fails = [](const AppendBytes& append) -> Result<> {
    static_cast<void>(append("half"));
    return Failure{FailureKind::Changed, "it changed"};
  };
  EXPECT_EQ(FileBeside::Write(m_folder.Path(), fails, m_disk).Text(), "it changed");
  EXPECT_TRUE(Names().empty());

  const auto throws = [](const AppendBytes&) -> Result<> { throw 7; };
  EXPECT_THROW(static_cast<void>(FileBeside::Write(m_folder.Path(), throws, m_disk)), int);
  EXPECT_TRUE(Names().empty());

  m_disk.onFlush = [](const fs::path&) { return std::make_error_code(std::errc::no_space_on_device); };
  EXPECT_EQ(Write("content").Why().kind, FailureKind::DiskFull);
  EXPECT_TRUE(Names().empty());
}

TEST_F(FileBesideTest, AFolderThatIsNotThereIsTold) {
  const auto nothing = [](const AppendBytes&) { return Result<>(); };
  EXPECT_EQ(FileBeside::Write(m_folder / "nowhere", nothing, m_disk).Why().kind, FailureKind::NotFound);
}

}  // namespace
}  // namespace kestrin::core::base
