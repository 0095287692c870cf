// SPDX-License-Identifier: MIT
// Programs that come one after the other to a board that erases, each through the real HID library.

#include <gmock/gmock.h>

#include <csignal>

#include "rig/ProgramFixture.h"
#include "rig/TimedFirmware.h"

namespace kestrin::rig {
namespace {

using support::Finished;
using support::Json;
using testing::HasSubstr;

constexpr std::array<std::uint8_t, 6> kParameters{77, 2, 10, 50, 100, 13};

class EraseLeftBehind : public ProgramFixture, public testing::WithParamInterface<int> {
 protected:
  EraseLeftBehind() {
    mock.Plug();
    static_cast<void>(RunJson(0, {"accel", "set", "--MotionTh", "77", "--ImpactTm", "100"}));
    EXPECT_EQ(erasing.State().accelerometer, kParameters);
  }
  /// A download that is ended by that signal while the board erases.
  void StopADownload(int signal) {
    const auto download = Start({"download", Configuration()});
    firmware.WaitForErase();
    download->Signal(signal);
    static_cast<void>(download->Wait());
    ASSERT_EQ(KeptFiles(), 1U);
  }
  void ExpectTheNextDownloadToWork() {
    EXPECT_EQ(RunJson(0, {"download", Configuration()})["outcome"], "success");
    EXPECT_EQ(erasing.State().accelerometer, kParameters);
    EXPECT_EQ(KeptFiles(), 0U);
    const Bytes expected = ExpectedFlash();
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), erasing.Flash().begin(), erasing.Flash().end()));
  }

  simulator::VirtualBoard erasing{simulator::BoardState{}, std::chrono::seconds(GetParam())};
  TimedFirmware firmware{mock, erasing};
};

using ShortErase = EraseLeftBehind;

TEST_P(ShortErase, OfAKilledProgramIsWaitedForByTheNext) {
  StopADownload(SIGKILL);
  const Finished info = Run({"info"});
  EXPECT_EQ(info.code, 0) << info.errors;
  EXPECT_THAT(info.out, HasSubstr("Kestrin USB Serial Number: 4B535401\n"));
  EXPECT_FALSE(firmware.IsErasing());
  ExpectTheNextDownloadToWork();
}

INSTANTIATE_TEST_SUITE_P(Seconds, ShortErase, testing::Values(1));

TEST_P(EraseLeftBehind, OfACancelledDownloadIsWaitedForByTheNextDownload) {
  StopADownload(SIGINT);
  ExpectTheNextDownloadToWork();
}

INSTANTIATE_TEST_SUITE_P(Seconds, EraseLeftBehind, testing::Values(4));

using LongErase = EraseLeftBehind;

TEST_P(LongErase, IsWaitedForAlsoBehindAProgramThatGaveUp) {
  StopADownload(SIGKILL);
  const auto first = Start({"info"});
  first->WaitForOutput("The board is still busy, please wait ...\n");
  first->Signal(SIGINT);
  EXPECT_EQ(first->Wait().code, 130);
  EXPECT_EQ(RunJson(0, {"info"})["serial"], "4B535401");
  // Nothing is left over for the program that comes then.
  EXPECT_EQ(RunJson(0, {"accel", "restore"})["MotionTh"], 77);
  EXPECT_EQ(erasing.State().accelerometer, kParameters);
}

INSTANTIATE_TEST_SUITE_P(Seconds, LongErase, testing::Values(8));

}  // namespace
}  // namespace kestrin::rig
