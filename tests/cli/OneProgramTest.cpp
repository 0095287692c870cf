// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <csignal>

#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

using testing::HasSubstr;

constexpr const char* kInUse = "Another program is using this board. Close it and try again.";

/// A simulated board with a folder, and the real program, twice.
class OneProgram : public KestrinctlTest {
 protected:
  /// A download that erases for a day, so that it lasts as long as the test wants.
  [[nodiscard]] std::unique_ptr<ChildProcess> StartDownload() const {
    auto download = Start({"--board", Board("erase=86400"), "download", m_set.configuration.string()});
    download->WaitForOutput("Erasing flash memory ...\n");
    return download;
  }
  SoundSet m_set = WriteSoundSet(m_folder.Path());
};

TEST_F(OneProgram, ASecondOneIsTurnedAwayAndChangesNothing) {
  const auto first = StartDownload();
  const Finished second = Run({"--board", Board("serial=00000007"), "download", m_set.configuration.string()});
  EXPECT_EQ(second.code, 1);
  EXPECT_EQ(second.out, "");
  EXPECT_EQ(second.errors, "kestrinctl: " + std::string(kInUse) + "\n");
  EXPECT_EQ(RunOnBoard(1, {"info"}), Json({{"error", kInUse}}));
  EXPECT_EQ(BoardState()["serial"], "4B535401");
}

TEST_F(OneProgram, AKilledOneLeavesTheBoardFree) {
  const auto first = StartDownload();
  first->Signal(SIGKILL);
  EXPECT_EQ(first->Wait().code, -SIGKILL);
  EXPECT_EQ(RunOnBoard(0, {"download", m_set.configuration.string()})["outcome"], "success");
  EXPECT_EQ(RunOnBoard(0, {"verify", m_set.configuration.string()})["verified"], true);
}

TEST_F(OneProgram, BoardsInOtherFoldersAreFree) {
  const auto first = StartDownload();
  EXPECT_EQ(Run({"--board", "sim:dir=" + (m_folder / "other").string(), "info"}).code, 0);
  EXPECT_EQ(Run({"--board", "sim", "info"}).code, 0);
}

TEST_F(OneProgram, APipeInPlaceOfTheBoardsFilesIsNamedInsteadOfWaitedFor) {
  for (const char* const name : {"board.json", "flash.bin"}) {
    const std::filesystem::path pipe = m_folder / name;
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const Finished info = Run({"--board", "sim:dir=" + m_folder.Path().string(), "info"});
    EXPECT_EQ(info.code, 1);
    EXPECT_THAT(info.errors, HasSubstr(std::string(name) + "\" is no file: move away what has its name"))
        << info.errors;
    std::filesystem::remove(pipe);
  }
}

}  // namespace
}  // namespace kestrin::support
