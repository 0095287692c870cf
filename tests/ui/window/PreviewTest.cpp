// SPDX-License-Identifier: MIT
#include <QTest>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class PlayLsuFile : public MainFixture {
 protected:
  void Play(const std::filesystem::path& sound) {
    const std::size_t before = player.played.size();
    window->PlayLsuFile(sound);
    ASSERT_TRUE(Until([&] { return player.played.size() > before; }));
  }
  /// The samples of a WAV file as it must be: 44 bytes of header, then the samples.
  static std::string SamplesOf(const std::filesystem::path& wav) { return support::ReadBytes(wav).substr(44); }
  static std::string SamplesOfSound(const std::filesystem::path& sound) { return support::ReadBytes(sound).substr(4); }
};

TEST_F(PlayLsuFile, WritesTempWavIntoTheProgramsFolderAndPlaysIt) {
  StartOffline();
  const auto sound = Sound("hum.lsu", 500);
  Play(sound);
  EXPECT_EQ(player.played, std::vector<std::filesystem::path>{program / "temp.wav"});
  EXPECT_EQ(SamplesOf(program / "temp.wav"), SamplesOfSound(sound));
}

TEST_F(PlayLsuFile, WritesOverTheLastOne) {
  StartOffline();
  Play(Sound("long.lsu", 500));
  const auto other = Sound("short.LSU", 60, 2);
  Play(other);
  EXPECT_EQ(SamplesOf(program / "temp.wav"), SamplesOfSound(other));
}

TEST_F(PlayLsuFile, UsesThePersonsFolderWhereTheProgramsIsNotWritable) {
  // A folder in the file's place keeps even the administrator from writing it.
  std::filesystem::create_directories(program / "temp.wav");
  StartOffline();
  Play(Sound("hum.lsu"));
  EXPECT_EQ(player.played.back(), data / "temp.wav");
}

TEST_F(PlayLsuFile, IgnoresWhatIsNoSoundFile) {
  StartOffline();
  window->PlayLsuFile("");
  window->PlayLsuFile(support::WriteBytes(folder / "letter.txt", "Dear Sir"));
  EXPECT_FALSE(Shown("WaitFrame"));
}

TEST_F(PlayLsuFile, AsksForPatienceWhileItReads) {
  StartOffline();
  window->PlayLsuFile(Sound("hum.lsu"));
  EXPECT_TRUE(Shown("WaitFrame"));
  EXPECT_TRUE(Until([this] { return !player.played.empty(); }));
  EXPECT_FALSE(Shown("WaitFrame"));
}

TEST_F(PlayLsuFile, SaysInTheHelpLineThatAFileIsNoSound) {
  StartOffline();
  window->PlayLsuFile(support::WriteBytes(folder / "noise.lsu", "too short"));
  EXPECT_TRUE(Until([this] { return LabelText("HelpLabel").contains("noise.lsu"); }));
  EXPECT_FALSE(Shown("WaitFrame"));
  EXPECT_TRUE(player.played.empty());
}

TEST_F(PlayLsuFile, SaysInTheHelpLineWhyNothingIsHeard) {
  StartOffline();
  player.status.ended = core::base::Failure{core::base::FailureKind::Failed, "No loudspeaker."};
  Play(Sound("hum.lsu"));
  EXPECT_TRUE(Until([this] { return LabelText("HelpLabel") == "No loudspeaker."; }));
}

TEST_F(PlayLsuFile, StopsWithEscape) {
  StartOffline();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  Play(Sound("hum.lsu"));
  ASSERT_TRUE(Until([this] { return player.status.playing; }));
  const int stops = player.stops;
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_EQ(player.stops, stops + 1);
  EXPECT_FALSE(player.status.playing);
  // With silence there is nothing to stop.
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_EQ(player.stops, stops + 1);
}

TEST_F(PlayLsuFile, EscapeAlsoKeepsASoundFromBeginning) {
  StartOffline();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  window->PlayLsuFile(Sound("unwanted.lsu", 100, 1));
  ASSERT_TRUE(Shown("WaitFrame"));
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(Shown("WaitFrame"));
  // The copy that was under way comes to its end before the next one begins, so it would be heard first.
  const auto wanted = Sound("wanted.lsu", 100, 2);
  Play(wanted);
  EXPECT_EQ(player.played.size(), 1U);
  EXPECT_EQ(SamplesOf(program / "temp.wav"), SamplesOfSound(wanted));
}

TEST_F(PlayLsuFile, TakesTheLatestOfSeveral) {
  StartOffline();
  const auto last = Sound("last.lsu", 200, 3);
  window->PlayLsuFile(Sound("first.lsu", 100, 1));
  window->PlayLsuFile(Sound("second.lsu", 100, 2));
  window->PlayLsuFile(last);
  ASSERT_TRUE(Until([this] { return !player.played.empty(); }));
  EXPECT_EQ(player.played.size(), 1U);
  EXPECT_EQ(SamplesOf(program / "temp.wav"), SamplesOfSound(last));
}

}  // namespace
}  // namespace kestrin::support
