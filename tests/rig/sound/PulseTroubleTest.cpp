// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

#include "platform/speaker/PulseOutput.h"
#include "platform/speaker/SystemSoundOutput.h"
#include "rig/sound/StreamFixture.h"
#include "support/PrivateSoundService.h"

// Sound services that are not there, do not answer, or die. A caller that waits for one of them never comes to the end
// of these tests.

namespace kestrin::rig {
namespace {

using platform::speaker::kLiveBuffer;
using platform::speaker::PulseOutput;
using platform::speaker::PulsePatience;
using std::chrono::milliseconds;
using support::PrivateSoundService;

constexpr const char* kNoService =
    "No sound service answers on this computer, so nothing can be heard. Start PipeWire or PulseAudio and try "
    "again.";

/// Enough for a computer that is busy, and not long for a test.
constexpr PulsePatience kLittle{.connecting = milliseconds(400), .playing = milliseconds(400)};
/// Nothing ends by being waited for.
constexpr PulsePatience kEndless{.connecting = std::chrono::hours(1), .playing = std::chrono::hours(1)};

/// Takes connections and says nothing.
class MuteService {
 public:
  MuteService() : m_path(testing::TempDir() + "kestrin-deaf-" + std::to_string(getpid())) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    EXPECT_LT(m_path.size(), sizeof address.sun_path);
    m_path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(m_socket, 5), 0);
    setenv("PULSE_SERVER", ("unix:" + m_path).c_str(), 1);
  }
  ~MuteService() {
    close(m_socket);
    unlink(m_path.c_str());
  }
  MuteService(const MuteService&) = delete;
  MuteService& operator=(const MuteService&) = delete;

 private:
  std::string m_path;
  int m_socket = socket(AF_UNIX, SOCK_STREAM, 0);
};

TEST(PulseTrouble, NoServiceIsTold) {
  setenv("PULSE_SERVER", "unix:/nonexistent/nobody", 1);
  PulseOutput output(kLiveBuffer, kEndless);
  output.Start(SourceOf(LoudSamples(100)));
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), kNoService);
}

TEST(PulseTrouble, AMuteServiceIsGivenUp) {
  const MuteService mute;
  PulseOutput output(kLiveBuffer, kLittle);
  output.Start(SourceOf(LoudSamples(100)));
  EXPECT_TRUE(output.Look().isPlaying);
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), kNoService);
}

TEST(PulseTrouble, AMuteServiceHoldsUpNobody) {
  const MuteService mute;
  PulseOutput output(kLiveBuffer, kEndless);
  for (int i = 0; i < 5; ++i) output.Start(SourceOf(LoudSamples(100)));
  output.Stop();
  EXPECT_FALSE(output.Look().isPlaying);
  EXPECT_EQ(output.Look().ended.Text(), "");
  output.Start(SourceOf(LoudSamples(100)));
  EXPECT_TRUE(output.Look().isPlaying);
}

TEST(PulseTrouble, AFrozenServiceIsTold) {
  const PrivateSoundService service;
  const Endless endless;
  PulseOutput output(kLiveBuffer, kLittle);
  output.Start(endless.Source());
  ASSERT_TRUE(endless.Plays());
  service.Signal(SIGSTOP);
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(),
            "The sound service does not answer any more. Start PipeWire or PulseAudio anew and try again.");
  // One that has woken up again plays again.
  service.Signal(SIGCONT);
  output.Start(SourceOf(LoudSamples(100)));
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), "");
}

TEST(PulseTrouble, AFrozenServiceHoldsUpNobody) {
  const PrivateSoundService service;
  const Endless endless;
  {
    PulseOutput output(kLiveBuffer, kEndless);
    output.Start(endless.Source());
    ASSERT_TRUE(endless.Plays());
    service.Signal(SIGSTOP);
    output.Stop();
    const std::int64_t given = endless.Given();
    EXPECT_FALSE(output.Look().isPlaying);
    output.Start(endless.Source());
    EXPECT_TRUE(output.Look().isPlaying);
    EXPECT_EQ(endless.Given(), given);
  }
  service.Signal(SIGCONT);
}

TEST(PulseTrouble, AServiceThatFreezesBeforeTheLastSampleIsOutIsTold) {
  const PrivateSoundService service;
  std::atomic<int> parts = 0;
  PulseOutput output(kLiveBuffer, kLittle);
  // The last part is given once the service sleeps already: its end is never told.
  output.Start([&](std::span<std::int16_t> out) -> std::size_t {
    std::fill(out.begin(), out.end(), std::int16_t{1000});
    if (++parts < 10) return out.size();
    service.Signal(SIGSTOP);
    return 1;
  });
  EXPECT_TRUE(IsOver(output));
  EXPECT_NE(output.Look().ended.Text().find("does not answer any more"), std::string::npos);
  service.Signal(SIGCONT);
}

TEST(PulseTrouble, AServiceThatDiesIsTold) {
  const PrivateSoundService service;
  const Endless endless;
  PulseOutput output(kLiveBuffer, kEndless);
  output.Start(endless.Source());
  ASSERT_TRUE(endless.Plays());
  service.Signal(SIGKILL);
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), "The sound service stopped playing (Connection terminated). Try again.");
  output.Start(endless.Source());
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), kNoService);
}

TEST(PulseTrouble, ASinkThatGoesAwayIsTold) {
  const PrivateSoundService service;
  const Endless endless;
  PulseOutput output(kLiveBuffer, kEndless);
  output.Start(endless.Source());
  ASSERT_TRUE(endless.Plays());
  service.RemoveSinks();
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(), "The sound service stopped playing (Entity killed). Try again.");
  output.Start(endless.Source());
  EXPECT_TRUE(IsOver(output));
  EXPECT_EQ(output.Look().ended.Text(),
            "The sound service has nothing to play on (No such entity). Connect a loudspeaker and try again.");
}

TEST(PulseTrouble, AServiceThatAnswersIsNotGivenUp) {
  const PrivateSoundService service;
  const Endless endless;
  PulseOutput output(kLiveBuffer, {.connecting = milliseconds(5000), .playing = milliseconds(1000)});
  output.Start(endless.Source());
  // Two seconds of sound, which are asked for one after the other.
  EXPECT_TRUE(endless.Plays(96000));
  EXPECT_TRUE(output.Look().isPlaying) << output.Look().ended.Text();
}

TEST(PulseTrouble, AProgramThatWasStoppedForLongerThanItsPatiencePlaysOn) {
  const PrivateSoundService service;
  const Endless endless;
  PulseOutput output(kLiveBuffer, {.connecting = milliseconds(5000), .playing = milliseconds(1000)});
  output.Start(endless.Source());
  ASSERT_TRUE(endless.Plays());
  // As when a person presses Ctrl-Z: another process wakes this one after two seconds.
  const pid_t self = getpid();
  const std::string wake = "sleep 2; kill -CONT " + std::to_string(self);
  ASSERT_EQ(std::system(("(" + wake + ") >/dev/null 2>&1 &").c_str()), 0);
  kill(self, SIGSTOP);
  EXPECT_TRUE(endless.Plays());
  EXPECT_TRUE(output.Look().isPlaying) << output.Look().ended.Text();
}

}  // namespace
}  // namespace kestrin::rig
