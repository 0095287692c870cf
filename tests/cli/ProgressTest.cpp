#include <regex>

#include "KestrinctlTest.h"
#include "SoundSet.h"

namespace kestrin::support {
namespace {

class ProgressTest : public KestrinctlTest {
 protected:
  [[nodiscard]] std::string OnTerminal(const Arguments& arguments) const {
    const Finished finished = Run(arguments, {.output = kTerminal});
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
