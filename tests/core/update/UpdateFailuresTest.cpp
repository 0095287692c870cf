// SPDX-License-Identifier: MIT
#include <algorithm>
#include <string>
#include <vector>

#include "core/base/PathText.h"
#include "core/update/HostileNames.h"
#include "core/update/PlainName.h"
#include "core/update/SmallDisk.h"
#include "core/update/UpdateFixture.h"

namespace kestrin::core::update {
namespace {

using support::ReadBytes;
using support::ScriptedTransfer;
using support::WriteBytes;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
namespace fs = std::filesystem;
using Outcome = UpdateManager::Outcome;

constexpr const char* kMoveAway = "is in the way. Move it away and update again.";

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

TEST_F(UpdateFailuresTest, WhatIsWrongWithTheEncryptionIsToldInPlaceOfANumber) {
  ScriptedTransfer::Answer refused;
  refused.refused = true;
  transfer.trouble = "Its certificate is another's.";
  const auto catalogue = Text("\r\nA\r\nB");
  for (const auto& answers :
       {std::vector{refused}, std::vector{catalogue, refused}, std::vector{catalogue, Text("\r\na.lsu"), refused}}) {
    Update(answers);
    EXPECT_EQ(view.warning, "Its certificate is another's.");
    EXPECT_EQ(manager.message(), "Its certificate is another's.");
    EXPECT_EQ(manager.outcome(), Outcome::Failed);
  }
  // An answer that came is none of its business.
  Update({Text("")});
  EXPECT_EQ(manager.outcome(), Outcome::Nothing);
}

TEST_F(UpdateFailuresTest, FontsBeforeTheFailureStay) {
  ScriptedTransfer::Answer missing = File("not here");
  missing.status = 404;
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu"), File("1"), missing});
  EXPECT_EQ(view.warning, "Failed! Connection error 0003.  Please try again later.");
  EXPECT_THAT(manager.installed(), ElementsAre("A"));
  EXPECT_EQ(Store().count("A/fnt"), 1U);
}

TEST_F(UpdateFailuresTest, AHostileFontNameIsLeftOutAndTheOthersAreFetched) {
  for (const std::string& name : support::HostileNames()) {
    fs::remove_all(fonts);
    Update({Text("\r\nGood\r\n" + name + "\r\nOther"), Text("\r\na.lsu"), File("1"), Text("\r\nb.lsu"), File("2")});
    EXPECT_EQ(view.warning, "");
    EXPECT_EQ(view.message,
              "Update finished. New fonts installed successfully. 1 font was left out, because not every computer can "
              "store its names: \"" +
                  ShownName(name) + "\". Ask whoever runs the update server to rename it.");
    EXPECT_THAT(manager.installed(), ElementsAre("Good", "Other"));
    EXPECT_EQ(Store().size(), 2 * 5U) << name << ": two folders of four files each";
    EXPECT_THAT(transfer.Bodies(), testing::Each(testing::Not(HasSubstr("fid=" + name + "&"))))
        << "it is not asked for";
    for (const std::string& shown : view.log) EXPECT_EQ(shown.find_first_of("\r\n\x1B"), shown.npos) << shown;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 1) << "beside the fonts";
}

TEST_F(UpdateFailuresTest, AHostileFileNameLeavesItsFontOutBeforeAnythingOfItIsWritten) {
  int left = 0;
  for (std::string name : support::HostileNames()) {
    if (!UpdateUtils::NamesSound(name)) name = "a.lsu/" + name;
    fs::remove_all(fonts);
    Update({Text("\r\nA\r\nB"), Text("\r\nfirst.lsu\r\n" + name), Text("\r\nb.lsu"), File("2")});
    EXPECT_EQ(view.warning, "");
    EXPECT_THAT(view.message,
                AllOf(StartsWith("Update finished. New fonts installed successfully. 1 font was left out"),
                      HasSubstr("\"A\" with its sound file \"" + ShownName(name) + "\"")));
    EXPECT_THAT(manager.installed(), ElementsAre("B"));
    EXPECT_EQ(Store().count("A/"), 0U) << name;
    EXPECT_EQ(Store().count("B/fnt"), 1U) << name;
    ++left;
  }
  EXPECT_GE(left, 60);
}

TEST_F(UpdateFailuresTest, OfManyFontsThatAreLeftOutThreeAreNamed) {
  HaveFont("Good");
  Update({Text("\r\na?\r\nb?\r\nGood\r\nc?\r\nd?\r\nfnt")});
  EXPECT_EQ(
      view.message,
      "Update process finished. No updates available or required. 5 fonts were left out, because not every computer "
      "can store their names: \"a?\", \"b?\", \"c?\" and 2 more. Ask whoever runs the update server to rename them.");
  EXPECT_EQ(manager.outcome(), Outcome::Nothing);
  // The next update tells of its own ones only.
  Update({Text("\r\nGood\r\nx?")});
  EXPECT_THAT(view.message, HasSubstr(" 1 font was left out, because not every computer can store its names: \"x?\"."));
}

TEST_F(UpdateFailuresTest, WithoutAnyFontThatCanBeStoredNothingIsSaidToBeInstalled) {
  Update({Text("\r\nA\r\nb?"), Text("\r\nc?.lsu")});
  EXPECT_EQ(manager.outcome(), Outcome::Nothing);
  EXPECT_THAT(view.message, AllOf(StartsWith("Update process finished. No updates"),
                                  HasSubstr(" 2 fonts were left out"), testing::Not(HasSubstr("installed"))));
  EXPECT_THAT(Store(), IsEmpty());
}

TEST_F(UpdateFailuresTest, LinesThatNameNoSoundMayHoldAnything) {
  Update({Text("\r\nA\r\nB"), Text("\r\n../up\r\n/etc/passwd\r\nC:\\x"), Text("")});
  EXPECT_EQ(view.warning, "");
  EXPECT_EQ(ReadBytes(fonts / "A" / "A.lscfg"), "../up\r\n/etc/passwd\r\nC:\\x\r\n");
}

TEST_F(UpdateFailuresTest, WhatIsInTheWayIsNamed) {
  WriteBytes(fonts / "A", "mine");
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu")});
  EXPECT_EQ(view.warning,
            "Update failed! The folder \"" + base::TextOf(fonts / "A") +
                "\" could not be made: a file of that name is in the way. Move it away and update again.");
  EXPECT_EQ(ReadBytes(fonts / "A"), "mine");

  for (const char* const name : {"descriptor", "B.lscfg", "b.lsu", "fnt", "tmp"}) {
    fs::remove_all(fonts / "B");
    fs::create_directories(fonts / "B" / name / "full");
    UpdateInPart({Text("\r\nB\r\nC"), Text("\r\nb.lsu"), File("1")});
    EXPECT_THAT(view.warning, AllOf(HasSubstr(std::string(name) + "\" could not be "), EndsWith(kMoveAway))) << name;
    EXPECT_FALSE(fs::is_regular_file(fonts / "B" / "fnt")) << name;
    EXPECT_EQ(manager.outcome(), Outcome::Failed);
  }
}

TEST_F(UpdateFailuresTest, WhatIsInTheWayOfTheFontsFolderIsNamed) {
  // It leads nowhere.
  fs::remove(fonts);
  fs::create_symlink(folder / "nowhere", fonts);
  Update({});
  EXPECT_EQ(view.warning,
            "Update failed! The folder \"" + base::TextOf(fonts) +
                "\" could not be made: a link of that name is in the way. Move it away and update again.");
  fs::remove(fonts);
  fs::create_directories(fonts / ".lock");
  disk.lockError = std::make_error_code(std::errc::is_a_directory);
  Update({});
  EXPECT_EQ(view.warning,
            "Update failed! \"" + base::TextOf(fonts / ".lock") +
                "\" could not be locked: a folder of that name is in the way. Move it away and update again.");
  fs::remove_all(fonts);
  disk.lockError = std::make_error_code(std::errc::permission_denied);
  Update({});
  EXPECT_EQ(view.warning, "Update failed! \"" + base::TextOf(fonts / ".lock") +
                              "\" could not be locked: Permission denied. Permit writing there and update again.");
}

TEST_F(UpdateFailuresTest, NothingLeavesTheFontsOwnFolderThroughLinks) {
  const fs::path elsewhere = folder / "elsewhere";
  fs::create_directories(elsewhere);
  fs::create_directory_symlink(elsewhere, fonts / "A");
  Update({Text("\r\nA\r\nB"), Text("\r\na.lsu")});
  EXPECT_THAT(view.warning, EndsWith("A\" is a link to another place, into which nothing is written. Move it away and "
                                     "update again."));
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
    EXPECT_THAT(view.warning, AllOf(StartsWith("Update failed! \""), HasSubstr("A\" "), EndsWith("pdate again.")));
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
    const support::SmallDisk small(10000);
    Update({Text("\r\nA\r\nB"), Text("\r\na.lsu"), File(sound)});
  }
  EXPECT_THAT(view.warning, EndsWith("tmp\" could not be written: File too large. Check that disk and update again."));
  EXPECT_EQ(Store().count("A/a.lsu"), 0U);
  EXPECT_EQ(Store().count("A/fnt"), 0U);
  // With room it goes on, and nothing of the failure is left.
  Update({Text("\r\nA\r\n"), Text("\r\na.lsu"), File(sound), Text("")});
  EXPECT_EQ(ReadBytes(fonts / "A" / "a.lsu"), sound);
  EXPECT_EQ(Store().count("A/tmp"), 0U);

  {
    const support::SmallDisk small(100);
    Update({Text("\r\nB\r\nC"), Text("\r\n" + std::string(200, 'x'))});
  }
  EXPECT_THAT(view.warning, AllOf(HasSubstr("descriptor\" could not be written: File too large")));
  EXPECT_EQ(std::distance(fs::directory_iterator(fonts / "B"), fs::directory_iterator()), 0) << "half a file";
}

TEST(UpdatePlaceTest, AFolderThatTakesNothingIsToldOf) {
  // No one may make folders there, not even the administrator.
  ScriptedTransfer transfer;
  support::RecordingUpdateView view;
  support::RecordingDisk disk;
  UpdateManager manager("fonts.example", "/proc/fonts", disk);
  manager.Initialize(view, transfer);
  manager.startUpdate();
  EXPECT_THAT(view.warning, HasSubstr("The folder \"/proc/fonts\" could not be made: "));
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
}  // namespace kestrin::core::update
