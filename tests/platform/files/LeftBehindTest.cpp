// SPDX-License-Identifier: MIT
#include "platform/files/LeftBehind.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "core/base/NameBeside.h"
#include "support/TestFiles.h"
#ifndef _WIN32
#include <unistd.h>
#endif

namespace kestrin::platform::files {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;

constexpr const char* kName = ".kestrin-0123456789abcdef.new";

class LeftBehind : public testing::Test {
 protected:
  /// A file that was last written to so long ago.
  fs::path File(const std::string& name, hours age) {
    const fs::path file = support::WriteBytes(folder / name, "half of something");
    fs::last_write_time(file, now - age);
    return file;
  }

  support::TemporaryFolder folder;
  fs::file_time_type now = fs::file_time_type::clock::now();
};

TEST_F(LeftBehind, IsRemovedWhenItIsOlderThanADay) {
  const fs::path old = File(kName, hours(25));
  const fs::path recent = File(".kestrin-fedcba9876543210.new", hours(23));
  RemoveLeftBehind(folder.Path(), now);
  EXPECT_FALSE(fs::exists(old));
  EXPECT_TRUE(fs::exists(recent)) << "somebody may be writing it";
}

TEST_F(LeftBehind, IsWhatHasADrawnNameAndNothingElse) {
  const fs::path drawn = core::base::NameBeside(folder / "set.lscfg");
  EXPECT_TRUE(core::base::IsNameBeside(drawn));
  File(drawn.filename().string(), hours(48));
  const std::vector<std::string> others{"set.lscfg",
                                        "kestrin-0123456789abcdef.new",
                                        ".kestrin-0123456789abcdef.NEW",
                                        ".kestrin-0123456789abcde.new",
                                        ".kestrin-0123456789abcdef0.new",
                                        ".kestrin-0123456789abcdeg.new",
                                        ".kestrin-0123456789ABCDEF.new",
                                        ".kestrin-.new",
                                        ".kestrin-0123456789abcdef.lscfg",
                                        "x.kestrin-0123456789abcdef.new",
                                        ".kestrin-0123456789abcdef.new.bak"};
  // Where letter case does not count two of these are one.
  for (const std::string& name : others) File(name, hours(48));
  RemoveLeftBehind(folder.Path(), now);
  EXPECT_FALSE(fs::exists(drawn));
  for (const std::string& name : others) EXPECT_TRUE(fs::exists(folder / name)) << name;
}

TEST_F(LeftBehind, IsNoFolderAndNothingBelowOne) {
  fs::create_directories(folder / kName);
  support::WriteBytes(folder / kName / "mine.lsu", "a sound");
  fs::last_write_time(folder / kName, now - hours(48));
  fs::create_directories(folder / "below");
  File(std::string("below/") + kName, hours(48));
  RemoveLeftBehind(folder.Path(), now);
  EXPECT_TRUE(fs::exists(folder / kName / "mine.lsu"));
  EXPECT_TRUE(fs::exists(folder / "below" / kName));
}

TEST_F(LeftBehind, MayBeInAFolderThatIsNotThere) {
  RemoveLeftBehind(folder / "nowhere", now);
  EXPECT_FALSE(fs::exists(folder / "nowhere"));
}

#ifndef _WIN32
TEST_F(LeftBehind, IsNoLinkNorWhatOneLeadsTo) {
  const fs::path target = File("mine.lsu", hours(48));
  fs::create_symlink(target, folder / kName);
  RemoveLeftBehind(folder.Path(), now);
  EXPECT_TRUE(fs::exists(target));
  EXPECT_TRUE(fs::is_symlink(folder / kName));
}

TEST_F(LeftBehind, IsNothingOfSomebodyElse) {
  constexpr uid_t kSomebody = 12345;
  const fs::path theirs = File(kName, hours(48));
  if (::chown(theirs.c_str(), kSomebody, static_cast<gid_t>(-1)) != 0) GTEST_SKIP() << "only root can give files away";
  RemoveLeftBehind(folder.Path(), now);
  EXPECT_TRUE(fs::exists(theirs));
}
#endif

}  // namespace
}  // namespace kestrin::platform::files
