// SPDX-License-Identifier: MIT
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/base/PathText.h"
#include "core/update/UpdateFixture.h"

namespace kestrin::core::update {
namespace {

using support::ReadBytes;
using support::WriteBytes;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;
using Outcome = UpdateManager::Outcome;

/// One update at a time in a fonts folder, and what one that was ended by force leaves there.
class UpdateLockTest : public support::UpdateFixture {
 protected:
  [[nodiscard]] bool IsLocked() const { return disk.IsLocked(fonts / ".lock"); }
};

TEST_F(UpdateLockTest, AnotherUpdateInTheFolderIsToldOfAndLeftAlone) {
  support::ScriptedTransfer otherTransfer;
  support::RecordingUpdateView otherView;
  UpdateManager other("fonts.example", fonts, disk);
  other.Initialize(otherView, otherTransfer);
  // In the middle of the first sound.
  bool once = true;
  transfer.onChunk = [&](std::size_t) {
    if (!fs::exists(fonts / "A" / "tmp") || !std::exchange(once, false)) return;
    other.startUpdate();
    EXPECT_TRUE(fs::exists(fonts / "A" / "tmp"));
  };
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu"), File(std::string(20000, 'a')), Text("\r\nb.lsu"), File("b")});
  EXPECT_FALSE(once);
  EXPECT_EQ(otherView.warning,
            "Another update is putting fonts into this folder. Wait until it is done and try again.");
  EXPECT_EQ(other.outcome(), Outcome::Failed);
  EXPECT_THAT(otherTransfer.requests, IsEmpty());
  EXPECT_EQ(manager.outcome(), Outcome::Updated);
  EXPECT_EQ(ReadBytes(fonts / "A" / "a.lsu"), std::string(20000, 'a'));
  // Now it is its turn.
  otherTransfer.answers = {Text("\r\nA\r\nB")};
  other.startUpdate();
  EXPECT_EQ(other.outcome(), Outcome::Nothing);
}

TEST_F(UpdateLockTest, TheFolderIsHeldFromTheFirstRequestToTheLastFileHoweverItEnds) {
  int turns = 0;
  int held = 0;
  const auto count = [&] {
    ++turns;
    if (IsLocked()) ++held;
  };
  atTurn = count;
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu"), File("1"), Text("")});
  EXPECT_GT(turns, 10);
  EXPECT_EQ(held, turns);
  EXPECT_FALSE(IsLocked()) << "after its end";

  UpdateInPart({support::ScriptedTransfer::Whole("")});
  EXPECT_EQ(manager.outcome(), Outcome::Failed);
  EXPECT_FALSE(IsLocked()) << "after a failure";

  atTurn = [&] { manager.cancel(); };
  UpdateInPart({Text("\r\nC\r\nD")});
  EXPECT_EQ(manager.outcome(), Outcome::Cancelled);
  EXPECT_FALSE(IsLocked()) << "after it was cancelled";

  atTurn = [] { throw std::runtime_error("out of luck"); };
  UpdateInPart({Text("\r\nC\r\nD")});
  EXPECT_EQ(manager.outcome(), Outcome::Failed);
  EXPECT_FALSE(IsLocked()) << "after an error";
}

TEST_F(UpdateLockTest, LeftOversGoBeforeAnythingIsAskedFor) {
  fs::create_directories(fonts / "A");
  HaveFont("Done");
  const std::vector<fs::path> left = {fonts / ".trial",
                                      fonts / ".trial2",
                                      fonts / "fnt.new",
                                      fonts / "descriptor.new",
                                      fonts / ".lscfg.new",
                                      fonts / ".kestrin-0123456789abcdef.new",
                                      fonts / "A" / "tmp",
                                      fonts / "A" / "fnt.new",
                                      fonts / "A" / "fnt.new2",
                                      fonts / "A" / "descriptor.new",
                                      fonts / "A" / "A.lscfg.new",
                                      fonts / "A" / ".kestrin-fedcba9876543210.new",
                                      fonts / "Done" / "tmp",
                                      fonts / "Done" / "fnt.new"};
  for (const fs::path& path : left) WriteBytes(path, base::TextOf(path.filename()).starts_with(".trial") ? "" : "half");
  WriteBytes(fonts / "A" / "descriptor", "a.lsu\r\n");
  WriteBytes(fonts / "Done" / "descriptor", "");
  transfer.respond = [&](const support::ScriptedTransfer::Request&) {
    for (const fs::path& path : left) EXPECT_FALSE(fs::exists(path)) << path;
    return support::ScriptedTransfer::Answer{"", 500};
  };
  manager.startUpdate();
  EXPECT_EQ(transfer.requests.size(), 1U);
  EXPECT_EQ(ReadBytes(fonts / "A" / "descriptor"), "a.lsu\r\n");
}

TEST_F(UpdateLockTest, WhatIsThePersonsStays) {
  // No font of this program's; a font that is complete, into which the person saves a set at this moment.
  fs::create_directories(fonts / "mine");
  HaveFont("Done");
  WriteBytes(fonts / "Done" / "descriptor", "");
  const fs::path elsewhere = folder / "elsewhere";
  fs::create_directories(elsewhere);
  WriteBytes(elsewhere / "descriptor", "");
  fs::create_directory_symlink(elsewhere, fonts / "linked");
  const std::vector<fs::path> kept = {fonts / ".trial",         fonts / "tmp",
                                      fonts / "mine" / "tmp",   fonts / "mine" / "fnt.newer",
                                      fonts / "mine" / "a.new", fonts / "Done" / ".kestrin-0123456789abcdef.new",
                                      fonts / "Done" / "a.lsu", elsewhere / "tmp",
                                      elsewhere / "fnt.new"};
  for (const fs::path& path : kept) WriteBytes(path, "mine");
  Update({support::ScriptedTransfer::Whole("")});
  for (const fs::path& path : kept) EXPECT_EQ(ReadBytes(path), "mine") << path;
}

TEST_F(UpdateLockTest, ALinkAmongTheLeftOversGoesAndWhatItLeadsToStays) {
  WriteBytes(folder / "mine", "mine");
  fs::create_directories(fonts / "A");
  WriteBytes(fonts / "A" / "descriptor", "");
  fs::create_symlink(folder / "mine", fonts / "A" / "tmp");
  Update({support::ScriptedTransfer::Whole("")});
  EXPECT_FALSE(fs::exists(fs::symlink_status(fonts / "A" / "tmp")));
  EXPECT_EQ(ReadBytes(folder / "mine"), "mine");
}

TEST_F(UpdateLockTest, WhatIsMarkedAsCompleteIsOnTheDiskBefore) {
  std::vector<std::string> steps;
  disk.onFlush = [&](const fs::path& path) {
    // A sound under its temporary name; the folder with all names; then the marker, which has no name yet.
    const bool marked = fs::exists(fonts / "A" / "fnt");
    if (path == fonts / "A" / "tmp") steps.push_back("sound" + std::to_string(fs::file_size(path)));
    if (path == fonts / "A" && !marked && fs::exists(fonts / "A" / "a.lsu")) steps.push_back("names");
    if (path == fonts / "A" && marked) steps.push_back("marked");
    return std::error_code();
  };
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu"), File(std::string(20000, 'a')), Text("")});
  EXPECT_THAT(steps, ElementsAre("sound20000", "names", "marked"));
}

}  // namespace
}  // namespace kestrin::core::update
