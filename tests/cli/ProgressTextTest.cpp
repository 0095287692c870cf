// SPDX-License-Identifier: MIT
#include "cli/ProgressText.h"

#include <gtest/gtest.h>

namespace kestrin::cli {
namespace {

const std::string kErase = "Erasing flash memory ...";

TEST(ProgressText, ShrinksItsBarWithTheTerminal) {
  struct Row {
    std::size_t columns;
    const char* text;
  };
  // 24 characters of the phase, 5 of the percentage, 11 of the time and 4 around the bar; the last column stays free.
  for (const Row& row : {Row{200, "Erasing flash memory ... [###---------------------------]  10 %  0:27 left"},
                         {75, "Erasing flash memory ... [###---------------------------]  10 %  0:27 left"},
                         {74, "Erasing flash memory ... [##---------------------------]  10 %  0:27 left"},
                         {55, "Erasing flash memory ... [#---------]  10 %  0:27 left"},
                         {54, "Erasing flash memory ...  10 %  0:27 left"},
                         {42, "Erasing flash memory ...  10 %  0:27 left"},
                         {41, "Erasing flash memory ...  10 %"},
                         {31, "Erasing flash memory ...  10 %"},
                         {30, "Erasing flash memory ..  10 %"},
                         {8, "E  10 %"},
                         {7, "  10 %"},
                         {4, "  1"},
                         {1, ""},
                         {0, ""}})
    EXPECT_EQ(ProgressText({kErase, 10, 27}, row.columns), row.text) << row.columns;
}

TEST(ProgressText, WithoutATimeThereIsMoreRoom) {
  EXPECT_EQ(ProgressText({"Coding data...", 100, {}}, 44), "Coding data...           [##########] 100 %");
  EXPECT_EQ(ProgressText({"Coding data...", 0, {}}, 43), "Coding data...   0 %");
}

TEST(ProgressText, WithoutAPercentageThereIsOnlyThePhase) {
  EXPECT_EQ(ProgressText({kErase, {}, {}}, 80), kErase);
  EXPECT_EQ(ProgressText({kErase, {}, {}}, 8), "Erasing");
}

TEST(ProgressText, CountsCharactersAndCutsNoneInTwo) {
  // 26 characters, three of them of two bytes.
  const std::string phase = "Downloading: \u00FCbergr\u00F6\u00DFe.lsu";
  EXPECT_EQ(ProgressText({phase, 50, {}}, 200), phase + " [###############---------------]  50 %");
  EXPECT_EQ(ProgressText({phase, {}, {}}, 15), "Downloading: \u00FC");
}

}  // namespace
}  // namespace kestrin::cli
