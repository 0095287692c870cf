// SPDX-License-Identifier: MIT
#include <algorithm>
#include <regex>
#include <sstream>

#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

class ProgressTest : public KestrinctlTest {
 protected:
  [[nodiscard]] std::string OnTerminal(const Arguments& arguments, unsigned short columns = 0) const {
    const Finished finished = Run(arguments, {.output = kTerminal, .columns = columns});
    EXPECT_EQ(finished.code, 0) << finished.errors;
    return finished.out;
  }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
};

TEST_F(ProgressTest, OnATerminalABarShowsPhasePercentAndTimeLeft) {
  // The first question about the erase waits three seconds in vain; three of thirty seconds are ten percent then, and
  // nine times as long as until now is left.
  const std::string shown = OnTerminal({"--board", Board("erase=4"), "download", m_set.configuration.string()});
  EXPECT_TRUE(
      std::regex_search(shown, std::regex("\rErasing flash memory \\.\\.\\. +\\[###-{27}\\]  10 %  0:2[78] left")))
      << shown;
  EXPECT_TRUE(std::regex_search(shown, std::regex("\rCoding data\\.\\.\\. +\\[#{30}\\] 100 %"))) << shown;
  EXPECT_TRUE(std::regex_search(shown, std::regex("\rDownloading\\.\\.\\. +\\[#{30}\\] 100 %"))) << shown;
  EXPECT_NE(shown.find("\nSUCCESS !"), std::string::npos) << shown;
}

TEST_F(ProgressTest, NoLineIsWiderThanTheTerminal) {
  for (const std::size_t columns : {std::size_t{20}, std::size_t{40}, std::size_t{60}}) {
    // Only work that takes longer than a second shows the time that is left.
    const std::string board = Board(columns == 40 ? "erase=4" : "");
    std::string shown =
        OnTerminal({"--board", board, "download", m_set.configuration.string()}, static_cast<unsigned short>(columns));
    // What stands behind the last bar is the result, which wraps as any text does.
    shown.erase(shown.find("\nSUCCESS"));
    std::replace(shown.begin(), shown.end(), '\r', '\n');
    std::istringstream lines(shown);
    int percents = 0;
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LT(line.size(), columns) << line;
      percents += static_cast<int>(line.find(" %") != line.npos);
    }
    EXPECT_GE(percents, 3) << shown;
  }
}

TEST_F(ProgressTest, QuietShowsNoBar) {
  const std::string shown = OnTerminal({"--quiet", "--board", Board(), "download", m_set.configuration.string()});
  EXPECT_EQ(shown.rfind("SUCCESS !", 0), 0U) << shown;
}

TEST_F(ProgressTest, WithJsonThereIsNothingButTheDocument) {
  const std::string shown = OnTerminal({"--json", "--board", Board(), "download", m_set.configuration.string()});
  EXPECT_EQ(Json::parse(shown)["outcome"], "success");
}

}  // namespace
}  // namespace kestrin::support
