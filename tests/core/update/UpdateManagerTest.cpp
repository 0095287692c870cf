// SPDX-License-Identifier: MIT
#include "core/update/UpdateManager.h"

#include <algorithm>

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

constexpr const char* kFinished = "Update finished. New fonts installed successfully.";
constexpr const char* kNothing = "Update process finished. No updates available or required.";

class UpdateManagerTest : public support::UpdateFixture {};

TEST_F(UpdateManagerTest, FetchesTheOneFontThatIsMissing) {
  HaveFont("A");
  Update({Text("\r\nA\r\nB"), Text("\r\nBOOT\r\nboot.lsu\r\n 100"), File("12345")});
  EXPECT_THAT(view.log, ElementsAre("reset", "shown",                                                                //
                                    "step:(1/3) Checking for updates", "element:Retrieving item catalogue", "A:10",  //
                                    "step:(2/3) Validating catalogue items", "element:Checking item: ",              //
                                    "element:Checking item: A", "B:0", "element:Checking item: B", "B:100", "A:30",  //
                                    "B:0", "step:(3/3) Updating item: B", "element:Downloading: ", "A:100",          //
                                    "element:Downloading: boot.lsu", "B:0", "B:100", "B:100",                        //
                                    std::string("message:") + kFinished, "closed"));
  EXPECT_THAT(transfer.Bodies(), ElementsAre("svc=gct&did=4B535401", "svc=fqr&did=4B535401&fid=B",
                                             "svc=dld&did=4B535401&fid=B&ffd=boot.lsu"));
  EXPECT_EQ(transfer.requests[0].url, "http://fonts.example");
  EXPECT_EQ(transfer.requests[1].url, "http://fonts.example");
  EXPECT_EQ(transfer.requests[2].url, "http://fonts.example/tst/gct/");
  const std::string own = base::TextOf(fonts / "B" / "");
  EXPECT_EQ(Store(), (std::map<std::string, std::string>{{"A/", ""},
                                                         {"A/fnt", ""},
                                                         {"B/", ""},
                                                         {"B/B.lscfg", "BOOT\r\n" + own + "boot.lsu\r\n 100\r\n"},
                                                         {"B/boot.lsu", "12345"},
                                                         {"B/descriptor", "BOOT\r\nboot.lsu\r\n 100\r\n"},
                                                         {"B/fnt", ""}}));
  EXPECT_EQ(manager.outcome(), Outcome::Updated);
  EXPECT_EQ(manager.message(), kFinished);
  EXPECT_THAT(manager.installed(), ElementsAre("B"));
}

TEST_F(UpdateManagerTest, ThePersonSeesEveryStepBeforeItsWorkBegins) {
  HaveFont("A");
  std::vector<std::string> seen;
  atTurn = [&] {
    std::string now = view.step + "|" + view.element + "|" + std::to_string(view.overall) + "|" +
                      std::to_string(view.current) + "|" + std::to_string(transfer.requests.size());
    if (seen.empty() || seen.back() != now) seen.push_back(std::move(now));
  };
  Update({Text("\r\nA\r\nB"), Text("\r\nx.lsu"), File(std::string(20000, 'x'))});
  EXPECT_THAT(
      seen,
      ElementsAre(
          "(1/3) Checking for updates|Retrieving item catalogue|0|0|0",
          "(1/3) Checking for updates|Retrieving item catalogue|0|0|1",
          "(1/3) Checking for updates|Retrieving item catalogue|10|0|1",
          "(2/3) Validating catalogue items|Checking item: |10|0|1",
          "(2/3) Validating catalogue items|Checking item: A|10|0|1",
          "(2/3) Validating catalogue items|Checking item: B|10|100|1",
          "(2/3) Validating catalogue items|Checking item: B|30|100|1", "(3/3) Updating item: B|Downloading: |100|0|1",
          "(3/3) Updating item: B|Downloading: |100|0|2", "(3/3) Updating item: B|Downloading: x.lsu|100|0|2",
          "(3/3) Updating item: B|Downloading: x.lsu|100|0|3", "(3/3) Updating item: B|Downloading: x.lsu|100|41|3",
          "(3/3) Updating item: B|Downloading: x.lsu|100|82|3", "(3/3) Updating item: B|Downloading: x.lsu|100|100|3"));
}

TEST_F(UpdateManagerTest, PercentagesAreSharesWithTiesToTheEvenNumber) {
  struct Row {
    int items;
    std::vector<std::string> checking;
    std::vector<std::string> updating;
  };
  // Checking: 100 / (items - 1) apiece. Updating: 30 and 70 / items apiece.
  const Row table[] = {
      {2, {"0", "100"}, {"65", "100"}},
      {3, {"0", "50", "100"}, {"53", "77", "100"}},
      {4, {"0", "33", "67", "100"}, {"48", "65", "82", "100"}},  // 47.5 and 82.5
      {5, {"0", "25", "50", "75", "100"}, {"44", "58", "72", "86", "100"}},
      // 12.5, 37.5, 62.5, 87.5
      {9,
       {"0", "12", "25", "38", "50", "62", "75", "88", "100"},
       {"38", "46", "53", "61", "69", "77", "84", "92", "100"}},
  };
  for (const Row& row : table) {
    std::string catalogue;
    std::vector<support::ScriptedTransfer::Answer> answers{{}};
    for (int item = 1; item <= row.items; ++item) {
      catalogue += "\r\n" + std::to_string(row.items) + "-" + std::to_string(item);
      answers.push_back(Text(""));
    }
    answers[0] = Text(catalogue);
    Update(answers);
    std::vector<std::string> overall;
    std::vector<std::string> current;
    for (const std::string& line : view.log) {
      if (line.starts_with("A:")) overall.push_back(line.substr(2));
      if (line.starts_with("B:")) current.push_back(line.substr(2));
    }
    std::vector<std::string> expected{"10", "30"};
    expected.insert(expected.end(), row.updating.begin(), row.updating.end());
    EXPECT_EQ(overall, expected) << row.items;
    expected = row.checking;
    expected.emplace_back("0");
    EXPECT_EQ(current, expected) << row.items;
  }
}

TEST_F(UpdateManagerTest, ACatalogueOfOneItemWithoutALineBreakIsEmpty) {
  for (const char* const payload : {"\r\nA", "\r\n../x", "\r\n", ""}) {
    Update({Text(payload)});
    EXPECT_EQ(view.message, kNothing) << payload;
    EXPECT_EQ(manager.outcome(), Outcome::Nothing);
    EXPECT_THAT(Store(), IsEmpty());
  }
}

TEST_F(UpdateManagerTest, ALineBreakAtTheEndMakesAnEmptyItem) {
  Update({Text("\r\nA\r\n"), Text("\r\na.lsu\r\n"), File("x"), Text("\r\n")});
  EXPECT_THAT(transfer.Bodies(), ElementsAre("svc=gct&did=4B535401", "svc=fqr&did=4B535401&fid=A",
                                             "svc=dld&did=4B535401&fid=A&ffd=a.lsu", "svc=fqr&did=4B535401&fid="));
  EXPECT_EQ(view.message, kFinished);
  EXPECT_EQ(Store().count("fnt"), 1U);
  EXPECT_EQ(ReadBytes(fonts / "A" / "descriptor"), "a.lsu\r\n\r\n");
  EXPECT_THAT(manager.installed(), ElementsAre("A"));
  // Now everything is there.
  Update({Text("\r\nA\r\n")});
  EXPECT_EQ(view.message, kNothing);
}

TEST_F(UpdateManagerTest, ASecondUpdateRightAfterwardsFindsNothing) {
  const auto catalogue = Text("\r\nA\r\nB");
  Update({catalogue, Text("\r\na.lsu"), File("1"), Text("\r\nb.lsu"), File("2")});
  EXPECT_EQ(view.message, kFinished);
  const auto before = Store();
  Update({catalogue});
  EXPECT_EQ(view.message, kNothing);
  EXPECT_EQ(Store(), before);
  EXPECT_THAT(manager.installed(), IsEmpty());
}

TEST_F(UpdateManagerTest, NamesOfSoundsInCapitalsAreDownloadedAndOtherLinesAreNot) {
  Update({Text("\r\nA\r\nB"), Text("\r\nLOUD.LSU\r\nreadme.txt\r\nquiet.lSu"), File("1"), File("2"), Text("")});
  EXPECT_EQ(view.message, kFinished);
  EXPECT_EQ(ReadBytes(fonts / "A" / "LOUD.LSU"), "1");
  EXPECT_EQ(ReadBytes(fonts / "A" / "quiet.lSu"), "2");
  EXPECT_FALSE(fs::exists(fonts / "A" / "readme.txt"));
}

TEST_F(UpdateManagerTest, AFontThatWasInterruptedKeepsItsFiles) {
  fs::create_directories(fonts / "A");
  WriteBytes(fonts / "A" / "one.lsu", "kept");
  WriteBytes(fonts / "A" / "tmp", "half of something");
  WriteBytes(fonts / "A" / "descriptor", "old");
  Update({Text("\r\nA\r\nB"), Text("\r\none.lsu\r\ntwo.lsu"), File("2"), Text("")});
  EXPECT_EQ(ReadBytes(fonts / "A" / "one.lsu"), "kept");
  EXPECT_EQ(ReadBytes(fonts / "A" / "two.lsu"), "2");
  EXPECT_EQ(ReadBytes(fonts / "A" / "descriptor"), "one.lsu\r\ntwo.lsu\r\n");
  EXPECT_FALSE(fs::exists(fonts / "A" / "tmp"));
  // What is there is shown as done.
  EXPECT_THAT(view.log, testing::IsSupersetOf({"element:Downloading: one.lsu", "B:100"}));
}

TEST_F(UpdateManagerTest, AFontThatTheCatalogueNamesTwiceIsFetchedOnce) {
  Update({Text("\r\nA\r\nA"), Text("\r\na.lsu"), File("1"), Text("\r\na.lsu")});
  EXPECT_EQ(view.message, kFinished);
  EXPECT_THAT(manager.neededItems(), ElementsAre("A", "A"));
  EXPECT_THAT(manager.installed(), ElementsAre("A"));
}

TEST_F(UpdateManagerTest, WithoutADialogNothingHappens) {
  UpdateManager bare("fonts.example", folder / "other", disk);
  bare.startUpdate();
  bare.cancel();
  EXPECT_EQ(bare.outcome(), Outcome::None);
}

TEST_F(UpdateManagerTest, ADialogThatIsClosedBeforeItWasActiveCancels) {
  view.neverActive = true;
  Update({});
  EXPECT_EQ(manager.outcome(), Outcome::Cancelled);
  EXPECT_EQ(manager.message(), "");
}

TEST_F(UpdateManagerTest, NoSecondUpdateStartsInsideOne) {
  atTurn = [&] { manager.startUpdate(); };
  Update({Text("")});
  EXPECT_EQ(std::count(view.log.begin(), view.log.end(), "shown"), 1);
}

}  // namespace
}  // namespace kestrin::core::update
