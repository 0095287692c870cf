#include <algorithm>
#include <string>
#include <vector>

#include "unit/update/HostileNames.h"
#include "unit/update/SmallDisk.h"
#include "unit/update/UpdateFixture.h"
#include "update/PlainName.h"

namespace kestrin::update {
namespace {

using support::ReadBytes;
using support::ScriptedTransfer;
using support::WriteBytes;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
namespace fs = std::filesystem;
using Outcome = UpdateManager::Outcome;

constexpr const char* kDiskAdvice = "Make room on the disk or permit writing there and update again.";

class UpdateFailuresTest : public support::UpdateFixture {
 protected:
  /// What an answer that is no good leads to, as the catalogue and as a font's query.
  void ExpectHeaderWarning(const std::string& answer, const std::string& warning) {
    Update({ScriptedTransfer::Whole(answer)});
    EXPECT_EQ(view.warning, warning) << answer;
    EXPECT_EQ(view.message, "") << answer;
    EXPECT_EQ(view.overall, 10) << answer;
    EXPECT_THAT(Store(), IsEmpty()) << answer;

    Update({Text("\r\nA\r\nB"), ScriptedTransfer::Whole(answer)});
    EXPECT_EQ(view.warning, warning) << answer;
    EXPECT_EQ(view.message, "") << answer;
    EXPECT_THAT(Store(), IsEmpty()) << "nothing is made for a font that was not described";
    EXPECT_EQ(manager.outcome(), Outcome::Failed);
    EXPECT_EQ(manager.message(), warning);
  }
};

TEST_F(UpdateFailuresTest, TheFirstTwoLinesOfEveryAnswerAreChecked) {
  struct Row {
    const char* answer;
    const char* warning;
  };
  const char* const refused = "Update failed! The server refused the request. Please try again later.";
  const char* const oneLine = "Error : 0001 Update failed! Please try again later.";
  const char* const noVerdict = "Error : 0002 Update failed! Please try again later.";
  const char* const old = "Update stopped. Please install a new version of this app.";
  const Row table[] = {
      {"", "Update failed! Connection error. Please try again later."},
      {"status:OK", oneLine},
      {"status:ok\r\nclientv:1\r\nA\r\nB", refused},
      {"Status:OK\r\nclientv:1\r\nA\r\nB", refused},
      {"status:OK \r\nclientv:1\r\nA\r\nB", refused},
      {"status: OK\r\nclientv:1\r\nA\r\nB", refused},
      {"status:ERROR", refused},
      {"status", refused},
      {":OK", refused},
      {"\r\n", refused},
      {"<html>Not found</html>", refused},
      {"status:OK\nclientv:1\nA\nB", refused},
      {"status:OK\r\n", noVerdict},
      {"status:OK\r\nclientv", noVerdict},
      {"status:OK\r\nCLIENTV:1\r\nA\r\nB", noVerdict},
      {"status:OK\r\nClientv:1\r\nA\r\nB", noVerdict},
      {"status:OK\r\n clientv:1\r\nA\r\nB", noVerdict},
      {"status:OK\r\nA\r\nclientv:1\r\nB", noVerdict},
      {"status:OK\r\nclientv:2\r\nA\r\nB", old},
      {"status:OK\r\nclientv:1 \r\nA\r\nB", old},
      {"status:OK\r\nclientv:\r\nA\r\nB", old},
      {"status:OK\r\nclientv:11\r\nA\r\nB", old},
      {"status:OK\r\nclientv:1:1\r\nA\r\nB", old},
      {"status:OK\r\nclientv: 1\r\nA\r\nB", old},
  };
  for (const Row& row : table) ExpectHeaderWarning(row.answer, row.warning);
}

TEST_F(UpdateFailuresTest, EveryRequestThatFailsHasItsWarning) {
  ScriptedTransfer::Answer broken = File("12345");
  broken.breakAt = 2;
  ScriptedTransfer::Answer missing = File("not here");
  missing.status = 404;
  ScriptedTransfer::Answer refused;
  refused.refused = true;
  const auto catalogue = Text("\r\nA\r\nB");
  for (const ScriptedTransfer::Answer& failed : {broken, missing, refused}) {
    Update({failed});
    EXPECT_EQ(view.warning, "Failed! Connection error 0002.  Please try again later.");
    EXPECT_EQ(view.overall, 0);
    Update({catalogue, failed});
    EXPECT_EQ(view.warning, "Failed! Connection error 0003.  Please try again later.");
    EXPECT_THAT(Store(), IsEmpty());
    Update({catalogue, Text("\r\na.lsu"), failed});
    EXPECT_EQ(view.warning, "Failed! Connection error 0004.  Please try again later.");
    EXPECT_EQ(Store().count("A/fnt"), 0U);
    EXPECT_EQ(Store().count("A/a.lsu"), 0U);
    EXPECT_EQ(Store().count("A/tmp"), 0U);
    EXPECT_EQ(Store().count("B/"), 0U) << "later fonts are not tried";
    EXPECT_EQ(view.message, "");
    EXPECT_EQ(manager.outcome(), Outcome::Failed);
    fs::remove_all(fonts / "A");
  }
}

TEST_F(UpdateFailuresTest, FontsBeforeTheFailureStay) {
  ScriptedTransfer::Answer missing = File("not here");
  missing.status = 404;
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu"), File("1"), missing});
  EXPECT_EQ(view.warning, "Failed! Connection error 0003.  Please try again later.");
  EXPECT_THAT(manager.installed(), ElementsAre("A"));
  EXPECT_EQ(Store().count("A/fnt"), 1U);
}

TEST_F(UpdateFailuresTest, AHostileFontNameIsRefusedBeforeAnythingIsWritten) {
  for (const std::string& name : support::HostileNames()) {
    // A line break splits the name: its pieces are names of their own.
    if (name.find("\r\n") != name.npos) continue;
    Update({Text("\r\nGood\r\n" + name + "\r\nOther")});
    EXPECT_EQ(view.warning, "Update failed! The server sent a font name that cannot be used: \"" + ShownName(name) +
                                "\". Nothing of it was written. Please try again later.");
    EXPECT_EQ(view.message, "");
    EXPECT_THAT(Store(), IsEmpty()) << name;
    EXPECT_EQ(transfer.requests.size(), 1U) << name;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 1) << "beside the fonts";
}

TEST_F(UpdateFailuresTest, AHostileFileNameIsRefusedBeforeAnythingIsWritten) {
  int refused = 0;
  for (std::string name : support::HostileNames()) {
    if (!UpdateUtils::NamesSound(name)) name = "a.lsu/" + name;
    Update({Text("\r\nA\r\nB"), Text("\r\nfirst.lsu\r\n" + name)});
    EXPECT_EQ(view.warning, "Update failed! The server sent a sound file name that cannot be used: \"" +
                                ShownName(name) + "\". Nothing of it was written. Please try again later.");
    EXPECT_THAT(Store(), IsEmpty()) << name;
    EXPECT_EQ(transfer.requests.size(), 2U) << "nothing is downloaded";
    ++refused;
  }
  EXPECT_GE(refused, 40);
}

TEST_F(UpdateFailuresTest, LinesThatNameNoSoundMayHoldAnything) {
  Update({Text("\r\nA\r\nB"), Text("\r\n../up\r\n/etc/passwd\r\nC:\\x"), Text("")});
  EXPECT_EQ(view.warning, "");
  EXPECT_EQ(ReadBytes(fonts / "A" / "A.lscfg"), "../up\r\n/etc/passwd\r\nC:\\x\r\n");
}

TEST_F(UpdateFailuresTest, WhatIsInTheWayIsNamed) {
  WriteBytes(fonts / "A", "mine");
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu")});
  EXPECT_THAT(view.warning, AllOf(StartsWith("Update failed! The folder \""),
                                  HasSubstr("A\" could not be made: a file"), HasSubstr(kDiskAdvice)));
  EXPECT_EQ(ReadBytes(fonts / "A"), "mine");

  for (const char* const name : {"descriptor", "B.lscfg", "b.lsu", "fnt", "tmp"}) {
    fs::remove_all(fonts / "B");
    fs::create_directories(fonts / "B" / name / "full");
    UpdateInPart({Text("\r\nB\r\nC"), Text("\r\nb.lsu"), File("1")});
    EXPECT_THAT(view.warning, AllOf(HasSubstr(std::string(name) + "\" could not be "), HasSubstr(kDiskAdvice))) << name;
    EXPECT_FALSE(fs::is_regular_file(fonts / "B" / "fnt")) << name;
    EXPECT_EQ(manager.outcome(), Outcome::Failed);
  }
}

TEST_F(UpdateFailuresTest, NothingLeavesTheFontsOwnFolderThroughLinks) {
  const fs::path elsewhere = folder / "elsewhere";
  fs::create_directories(elsewhere);
  fs::create_directory_symlink(elsewhere, fonts / "A");
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu")});
  EXPECT_THAT(view.warning, HasSubstr("A\" is a link to another place, into which nothing is written"));
  EXPECT_TRUE(fs::is_empty(elsewhere));

  fs::create_directories(fonts / "B");
  for (const char* const name : {"descriptor", "B.lscfg", "fnt", "tmp", "b.lsu"})
    fs::create_symlink(elsewhere / name, fonts / "B" / name);
  Update({Text("\r\nB\r\n"), Text("\r\nb.lsu"), File("12345"), Text("")});
  EXPECT_EQ(view.warning, "");
  EXPECT_TRUE(fs::is_empty(elsewhere));
  EXPECT_EQ(ReadBytes(fonts / "B" / "b.lsu"), "12345");
  EXPECT_FALSE(fs::is_symlink(fonts / "B" / "b.lsu"));
}

TEST_F(UpdateFailuresTest, AFontsFolderThatBecomesALinkMeanwhileGetsNothing) {
  const fs::path elsewhere = folder / "elsewhere";
  fs::create_directories(elsewhere);
  // Before the request for its first file, before that for its second one, and before the mark behind the last.
  for (const char* const last : {"descriptor", "a.lsu", "b.lsu"}) {
    bool once = true;
    atTurn = [&] {
      if (!fs::exists(fonts / "A" / last) || !std::exchange(once, false)) return;
      fs::rename(fonts / "A", folder / "moved");
      fs::create_directory_symlink(elsewhere, fonts / "A");
    };
    UpdateInPart({Text("\r\nA\r\nB"), Text("\r\na.lsu\r\nb.lsu"), File("1"), File("2")});
    EXPECT_FALSE(once) << last;
    EXPECT_THAT(view.warning, AllOf(StartsWith("Update failed! \""), HasSubstr("A\" "), HasSubstr(kDiskAdvice)));
    EXPECT_EQ(manager.outcome(), Outcome::Failed) << last;
    EXPECT_TRUE(fs::is_empty(elsewhere)) << last;
    fs::remove(fonts / "A");
    fs::remove_all(folder / "moved");
  }
}

TEST_F(UpdateFailuresTest, AnAnswerOfMoreLinesThanAnyFontHasIsRefused) {
  const auto lines = [](int count) {
    std::string text = "status:OK\r\nclientv:1";
    for (int line = 2; line < count; ++line) text += "\r\nx";
    return ScriptedTransfer::Whole(text);
  };
  Update({lines(10001)});
  EXPECT_EQ(view.warning, "Failed! Connection error 0002.  Please try again later.");
  EXPECT_EQ(transfer.requests.size(), 1U);
  Update({Text("\r\nA\r\nB"), lines(10001)});
  EXPECT_EQ(view.warning, "Failed! Connection error 0003.  Please try again later.");
  EXPECT_THAT(Store(), IsEmpty());
  Update({Text("\r\nA\r\nB"), lines(10000), Text("")});
  EXPECT_EQ(view.warning, "");
  EXPECT_EQ(ReadBytes(fonts / "A" / "descriptor").size(), 9998U * 3);
}

TEST_F(UpdateFailuresTest, AnEndlessCatalogueOfNothingIsRefusedAtOnce) {
  std::string empty = "status:OK\r\nclientv:1";
  while (empty.size() < HttpRequest::kLongestText - 1) empty += "\r\n";
  Update({ScriptedTransfer::Whole(empty)});
  EXPECT_EQ(view.warning, "Failed! Connection error 0002.  Please try again later.");
  EXPECT_EQ(transfer.requests.size(), 1U);
}

#ifdef __linux__
TEST_F(UpdateFailuresTest, ADiskThatTakesNoMoreIsToldOf) {
  const std::string sound(20000, 's');
  {
    const support::SmallDisk disk(10000);
    Update({Text("\r\nA\r\nB"), Text("\r\na.lsu"), File(sound)});
  }
  EXPECT_THAT(view.warning, AllOf(HasSubstr("tmp\" could not be written: File too large"), HasSubstr(kDiskAdvice)));
  EXPECT_EQ(Store().count("A/a.lsu"), 0U);
  EXPECT_EQ(Store().count("A/fnt"), 0U);
  // With room it goes on, and nothing of the failure is left.
  Update({Text("\r\nA\r\n"), Text("\r\na.lsu"), File(sound), Text("")});
  EXPECT_EQ(ReadBytes(fonts / "A" / "a.lsu"), sound);
  EXPECT_EQ(Store().count("A/tmp"), 0U);

  {
    const support::SmallDisk disk(100);
    Update({Text("\r\nB\r\nC"), Text("\r\n" + std::string(200, 'x'))});
  }
  EXPECT_THAT(view.warning, AllOf(HasSubstr("descriptor\" could not be written: File too large")));
  EXPECT_EQ(std::distance(fs::directory_iterator(fonts / "B"), fs::directory_iterator()), 0) << "half a file";
}

TEST(UpdatePlaceTest, AFolderThatTakesNothingIsToldOf) {
  // No one may make folders there, not even the administrator.
  ScriptedTransfer transfer;
  support::RecordingUpdateView view;
  UpdateManager manager("fonts.example", "/proc/fonts");
  manager.Initialize(view, transfer);
  transfer.answers = {ScriptedTransfer::Whole("status:OK\r\nclientv:1\r\nA\r\nB"),
                      ScriptedTransfer::Whole("status:OK\r\nclientv:1\r\na.lsu")};
  manager.startUpdate();
  EXPECT_THAT(view.warning,
              AllOf(HasSubstr("The folder \"/proc/fonts/A\" could not be made: "), HasSubstr(kDiskAdvice)));
}
#endif

TEST_F(UpdateFailuresTest, AnErrorThatNobodyExpectedIsAWarning) {
  bool once = true;
  atTurn = [&] {
    if (view.step.starts_with("(2/3)") && std::exchange(once, false)) throw std::runtime_error("out of luck");
  };
  Update({Text("\r\nA\r\nB")});
  EXPECT_EQ(view.warning, "Update failed! out of luck. Please try again later.");
}

}  // namespace
}  // namespace kestrin::update
