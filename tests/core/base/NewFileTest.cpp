// SPDX-License-Identifier: MIT
#include "core/base/NewFile.h"

#include <gtest/gtest.h>

#include "core/base/PathText.h"
#include "support/TestFiles.h"

namespace kestrin::core::base {
namespace {

TEST(NewFile, HoldsWhatIsWritten) {
  const support::TemporaryFolder folder;
  NewFile file(folder / "new.bin");
  ASSERT_TRUE(file.IsOpen());
  // Line ends are bytes like all others.
  EXPECT_TRUE(file.Write("one\n"));
  EXPECT_TRUE(file.Write("two\r\n"));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(support::ReadBytes(folder / "new.bin"), "one\ntwo\r\n");
}

TEST(NewFile, LeavesAFileAloneThatIsThere) {
  const support::TemporaryFolder folder;
  support::WriteBytes(folder / "old.bin", "the person's own");
  const NewFile file(folder / "old.bin");
  EXPECT_FALSE(file.IsOpen());
  EXPECT_TRUE(file.WasThere());
  EXPECT_EQ(file.Why().kind, FailureKind::InTheWay);
  EXPECT_EQ(support::ReadBytes(folder / "old.bin"), "the person's own");
}

TEST(NewFile, MayHaveAnyLettersInItsName) {
  const support::TemporaryFolder folder;
  const std::filesystem::path path = folder / PathOf("\u00C5sa \u041E\u0440\u0442 \u5263.bin");
  NewFile file(path);
  ASSERT_TRUE(file.IsOpen());
  EXPECT_TRUE(file.Write("x"));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(support::ReadBytes(path), "x");
}

TEST(NewFile, SaysThatTheFolderIsMissing) {
  const support::TemporaryFolder folder;
  const NewFile file(folder / "missing" / "new.bin");
  EXPECT_FALSE(file.IsOpen());
  EXPECT_FALSE(file.WasThere());
  EXPECT_EQ(file.Why().kind, FailureKind::NotFound);
}

}  // namespace
}  // namespace kestrin::core::base
