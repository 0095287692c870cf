// SPDX-License-Identifier: MIT
#include <csignal>

#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

class StandardStreamsTest : public KestrinctlTest {
 protected:
  void ExpectVerified() const {
    EXPECT_EQ(RunOnBoard(0, {"verify", m_set.configuration.string()})["verified"], true);
    EXPECT_EQ(KeptFiles(), 0U);
  }

  SoundSet m_set = WriteSoundSet(m_folder.Path());
  Arguments m_download{"--board", Board(), "download", m_set.configuration.string()};
};

TEST_F(StandardStreamsTest, AReaderThatGoesAwayAfterOneLineDoesNotEndADownload) {
  const auto download = Start({"--board", Board("erase=1"), "download", m_set.configuration.string()});
  EXPECT_EQ(download->WaitForLine(), "Erasing flash memory ...");
  download->CloseOutput();
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 0);
  EXPECT_EQ(finished.errors, "");
  ExpectVerified();
}

TEST_F(StandardStreamsTest, NorDoesOneThatWasNeverThere) {
  for (const std::vector<int>& unread : {std::vector{1}, std::vector{2}, std::vector{1, 2}}) {
    EXPECT_EQ(Run(m_download, {.unread = unread}).code, 0);
    ExpectVerified();
    Arguments asDocument = m_download;
    asDocument.emplace_back("--json");
    EXPECT_EQ(Run(asDocument, {.unread = unread}).code, 0);
    ExpectVerified();
  }
}

TEST_F(StandardStreamsTest, WithoutAReaderTheStatusIsThatOfTheWork) {
  const std::string sound = m_set.sounds[0].path.string();
  const Finished done = Run({"sound", "info", sound}, {.unread = {1}});
  EXPECT_EQ(done.code, 0);
  EXPECT_EQ(done.errors, "");
  EXPECT_EQ(Run({"sound", "info", "none.lsu"}, {.unread = {1, 2}}).code, 1);
  EXPECT_EQ(Run({"nonsense"}, {.unread = {2}}).code, 2);
  EXPECT_EQ(Run({"--help"}, {.unread = {1}}).code, 0);
}

#ifdef __linux__
TEST_F(StandardStreamsTest, AClosedStreamLeadsNowhere) {
  for (const int closed : {0, 1, 2}) {
    const auto download =
        Start({"--board", Board("erase=30"), "download", m_set.configuration.string()}, {.closed = {closed}});
    download->WaitUntilItCatches(SIGTERM);
    EXPECT_EQ(download->TargetOf(closed), "/dev/null");
    download->Signal(SIGTERM);
    EXPECT_EQ(download->Wait().code, 143);
  }
}

TEST_F(StandardStreamsTest, AResultThatADiskDidNotTakeIsAFailure) {
  const Finished finished = ChildProcess({"/bin/sh", "-c", "exec \"$0\" sound info \"$1\" > /dev/full", KESTRINCTL,
                                          m_set.sounds[0].path.string()},
                                         m_environment)
                                .Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_EQ(finished.errors, "kestrinctl: the result could not be written\n");
}
#endif

TEST_F(StandardStreamsTest, NoFileTakesThePlaceOfAClosedStream) {
  static_cast<void>(RunOnBoard(0, {"download", m_set.configuration.string()}));
  const std::string flash = Flash();
  for (const std::vector<int>& closed :
       std::vector<std::vector<int>>{{0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}}) {
    EXPECT_EQ(Run({"--board", Board(), "verify", m_set.configuration.string()}, {.closed = closed}).code, 0);
    EXPECT_EQ(Flash(), flash);
    EXPECT_EQ(BoardState()["serial"], "4B535401");

    // What fails is told where nobody listens, and nowhere else.
    const Arguments wrong{"--board", Board("fault=read:5"), "verify", m_set.configuration.string()};
    EXPECT_EQ(Run(wrong, {.closed = closed}).code, 1);
    EXPECT_EQ(Flash(), flash);

    EXPECT_EQ(Run(m_download, {.closed = closed}).code, 0);
    EXPECT_EQ(Flash(), flash);
    ExpectVerified();

    const std::string wav = (m_folder / "a.wav").string();
    const std::string sound = m_set.sounds[4].path.string();
    EXPECT_EQ(Run({"sound", "wav", sound, "--output", wav}, {.closed = closed}).code, 0);
    EXPECT_EQ(ReadBytes(wav).substr(44), ReadBytes(sound).substr(4));
  }
}

}  // namespace
}  // namespace kestrin::support
