// SPDX-License-Identifier: MIT
#include "core/base/PrivateFolder.h"

#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::core::base {
namespace {

namespace fs = std::filesystem;

TEST(PrivateFolder, GoesWithAllThatIsInIt) {
  const support::TemporaryFolder place;
  {
    const Result<PrivateFolder> folder = PrivateFolder::Make(place.Path());
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->Path().parent_path(), place.Path());
    fs::create_directory(folder->Path() / "below");
    support::WriteBytes(folder->Path() / "below" / "a", "a");
  }
  EXPECT_TRUE(fs::is_empty(place.Path()));
}

TEST(PrivateFolder, BelongsToWhoHasItLast) {
  const support::TemporaryFolder place;
  Result<PrivateFolder> first = PrivateFolder::Make(place.Path());
  Result<PrivateFolder> second = PrivateFolder::Make(place.Path());
  const fs::path kept = first->Path();
  const fs::path lost = second->Path();
  ASSERT_NE(kept, lost);
  *second = std::move(*first);
  EXPECT_TRUE(fs::exists(kept));
  EXPECT_FALSE(fs::exists(lost));
  EXPECT_EQ(second->Path(), kept);
}

TEST(PrivateFolder, SaysWhereNoneCanBeMade) {
  const support::TemporaryFolder place;
  const Result<PrivateFolder> none = PrivateFolder::Make(place / "not there");
  ASSERT_FALSE(none);
  EXPECT_EQ(none.Why().kind, FailureKind::NotFound);
  EXPECT_NE(none.Text().find("not there"), std::string::npos);
}

}  // namespace
}  // namespace kestrin::core::base
