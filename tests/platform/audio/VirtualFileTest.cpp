// SPDX-License-Identifier: MIT
#include "platform/audio/VirtualFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include "support/TestFiles.h"

namespace kestrin::platform::audio {
namespace {

class VirtualFileTest : public ::testing::Test {
 protected:
  VirtualFileTest() {
    support::WriteBytes(m_folder / "file", std::string(2'999'999, 'x') + "y");
    m_file = *SourceFile::Open(m_folder / "file");
    m_virtual = std::make_unique<VirtualFile>(*m_file);
  }
  sf_count_t Read(std::string& bytes) {
    return m_calls.read(bytes.data(), static_cast<sf_count_t>(bytes.size()), m_virtual.get());
  }
  sf_count_t Seek(sf_count_t offset, int whence) { return m_calls.seek(offset, whence, m_virtual.get()); }

  support::TemporaryFolder m_folder;
  std::unique_ptr<SourceFile> m_file;
  std::unique_ptr<VirtualFile> m_virtual;
  SF_VIRTUAL_IO m_calls = VirtualFile::Calls();
};

TEST_F(VirtualFileTest, IsReadFromAnyPlace) {
  EXPECT_EQ(m_calls.get_filelen(m_virtual.get()), 3'000'000);
  std::string bytes(4, '?');
  EXPECT_EQ(Seek(-2, SEEK_END), 2'999'998);
  EXPECT_EQ(Read(bytes), 2);
  EXPECT_EQ(bytes, "xy??");
  EXPECT_EQ(m_calls.tell(m_virtual.get()), 3'000'000);
  EXPECT_EQ(Read(bytes), 0);
  EXPECT_EQ(Seek(10, SEEK_SET), 10);
  EXPECT_EQ(Seek(-4, SEEK_CUR), 6);
  EXPECT_EQ(m_calls.write("z", 1, m_virtual.get()), 0);
}

TEST_F(VirtualFileTest, PlacesThatThereAreNotAreRefused) {
  for (const int whence : {SEEK_SET, SEEK_CUR, SEEK_END}) {
    EXPECT_EQ(Seek(-3'000'001, whence), -1) << whence;
    EXPECT_EQ(Seek(std::numeric_limits<sf_count_t>::min(), whence), -1) << whence;
  }
  EXPECT_EQ(Seek(SF_COUNT_MAX, SEEK_END), -1);
  EXPECT_EQ(Seek(SF_COUNT_MAX, SEEK_SET), SF_COUNT_MAX);
  EXPECT_EQ(Seek(1, SEEK_CUR), -1);
  std::string bytes(4, '?');
  EXPECT_EQ(Read(bytes), 0);
}

TEST_F(VirtualFileTest, IsAtItsEndForAReaderThatGoesRoundInCircles) {
  std::string all(3'000'000, '?');
  int readings = 0;
  for (; readings < 100; ++readings) {
    ASSERT_EQ(Seek(0, SEEK_SET), 0);
    if (Read(all) == 0) break;
  }
  // Four times its length and four mebibytes more.
  EXPECT_EQ(readings, 6);
  EXPECT_TRUE(m_virtual->IsUsedUp());
}

TEST_F(VirtualFileTest, EvenReadingNothingIsWork) {
  for (int call = 0; call < 3'000'000 && !m_virtual->IsUsedUp(); ++call) static_cast<void>(Seek(0, SEEK_SET));
  EXPECT_TRUE(m_virtual->IsUsedUp());
}

}  // namespace
}  // namespace kestrin::platform::audio
