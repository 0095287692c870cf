// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "rig/ProgramFixture.h"
#include "rig/SecondBoard.h"

namespace kestrin::rig {
namespace {

using support::Arguments;
using support::Finished;
using support::Json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The built command at a mocked board.
class Doctor : public ProgramFixture {
 protected:
  static constexpr const char* kName = "Kestrin Bl\xC3\xA5tt";

  [[nodiscard]] static std::string States(const Json& document) {
    std::string states;
    for (const Json& finding : document["findings"])
      states += (states.empty() ? "" : " ") + finding["state"].get<std::string>();
    return states;
  }
  [[nodiscard]] static std::string Text(const Json& document, std::size_t finding) {
    return document["findings"][finding]["text"];
  }
  /// A device with a board's ids on another port that is none.
  [[nodiscard]] static MockBoard::Description Foreign() {
    MockBoard::Description description;
    description.port = 3;
    // A mouse's first two items, and the end.
    description.descriptor = {0x05, 0x01, 0x09, 0x02, 0xA1, 0x01, 0xC0};
    return description;
  }
};

TEST_F(Doctor, FindsNoBoard) { EXPECT_EQ(States(RunJson(3, {"doctor"})), "problem unknown unknown unknown unknown"); }

TEST_F(Doctor, FindsABoardHealthyAndLeavesItAsItWas) {
  mock.Plug(4);
  const Json document = RunJson(0, {"doctor"});
  EXPECT_EQ(document["healthy"], true);
  EXPECT_EQ(Text(document, 0), std::string(kName) + ", plugged in. The cable carries data.");
  EXPECT_EQ(Text(document, 1), "The system lets you open /dev/hidraw4.");
  EXPECT_THAT(Text(document, 3), StartsWith("20 questions answered in "));
  EXPECT_EQ(Text(document, 4), "Kestrin USB. It told its whole serial number.");
  EXPECT_EQ(board.State().byes, 1U);
  EXPECT_EQ(board.State().resets, 0U);
  EXPECT_EQ(board.State().accelerometer, simulator::BoardState{}.accelerometer);
  EXPECT_EQ(RunJson(0, {"--board", "hid:/dev/hidraw4", "doctor"})["healthy"], true);
  EXPECT_EQ(RunJson(3, {"--board", "hid:/dev/hidraw5", "doctor"})["healthy"], false);
}

TEST_F(Doctor, SaysThatABoardMayNotBeOpened) {
  mock.Plug(5);
  ASSERT_EQ(::chmod(mock.RealNode().c_str(), 0), 0);
  // Programs that this thread starts have none of an administrator's rights over files.
  std::thread([&] {
    if (::geteuid() == 0) {
      for (const int right : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH})
        ASSERT_EQ(::prctl(PR_CAPBSET_DROP, right, 0, 0, 0), 0) << "this machine lets no right be given up";
    }
    const std::string path = (m_folder / "report.txt").string();
    const Json document = RunJson(1, {"doctor", "--report", path});
    EXPECT_EQ(States(document), "ok problem unknown unknown unknown");
    EXPECT_NE(document["findings"][1]["next"], "");
    const std::string report = support::ReadBytes(path);
    EXPECT_THAT(report, HasSubstr("    access: not permitted"));
    EXPECT_THAT(report, HasSubstr("    permissions: c--------- "));
    EXPECT_THAT(report, HasSubstr("      06 00 FF 09 01 A1 01 15 00 26 FF 00 75 08 09 01\n"))
        << "a descriptor needs no permission";
  }).join();
  EXPECT_EQ(mock.Writes(), 0);
}

TEST_F(Doctor, NamesTheProgramThatUsesTheBoardAndDoesNotDisturbIt) {
  mock.Plug(4);
  HoldTheAnswersTo(4);
  const auto first = Start({"download", Configuration()});
  WaitUntilHeld();
  const int writes = mock.Writes();
  const std::string user = "kestrinctl (" + std::to_string(first->Id()) + ")";
  const Json document = RunJson(1, {"doctor"});
  EXPECT_EQ(States(document), "ok ok problem unknown unknown");
  EXPECT_THAT(Text(document, 2), HasSubstr(user));
  EXPECT_THAT(std::string(document["findings"][2]["next"]), StartsWith("Close "));
  EXPECT_EQ(mock.Writes(), writes);
  LetTheAnswersThrough();
  EXPECT_EQ(first->Wait().code, 0);
  EXPECT_TRUE(BoardHoldsTheSet());
}

TEST_F(Doctor, WaitsOnceForABoardThatIsSilent) {
  mock.onReport = [](const Bytes&) { return std::vector<Bytes>{}; };
  mock.Plug();
  const Json document = RunJson(1, {"doctor"});
  EXPECT_EQ(States(document), "ok ok ok problem unknown");
  EXPECT_THAT(Text(document, 3), StartsWith("It took a question but has not answered it."));
  EXPECT_EQ(mock.Writes(), 1) << "not even a good-bye: it may take nothing more";
}

TEST_F(Doctor, StopsAtCtrlCWhileItWaits) {
  mock.Plug();
  HoldTheAnswersTo(1);
  const auto program = Start({"doctor"});
  WaitUntilHeld();
  program->Signal(SIGINT);
  const Finished finished = program->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_EQ(finished.out, "");
}

TEST_F(Doctor, SaysThatABoardTakesNothing) {
  mock.writeError = EIO;
  mock.Plug();
  const Json document = RunJson(1, {"doctor"});
  EXPECT_EQ(States(document), "ok ok ok problem unknown");
  EXPECT_EQ(Text(document, 3), "It does not take what it is asked.");
}

TEST_F(Doctor, SaysThatABoardHasStoppedAnswering) {
  // Identity and serial number for the session, the identity, and three round trips.
  mock.onReport = [this, answer = mock.onReport, taken = 0](const Bytes& report) mutable {
    if (++taken == 6) mock.writeError = EIO;
    return answer(report);
  };
  mock.Plug();
  const Json document = RunJson(1, {"doctor"});
  EXPECT_EQ(Text(document, 3), "It answered 4 questions and then no more.");
}

TEST_F(Doctor, SaysThatABoardIsGoneWhenItGoesWhileItIsAsked) {
  mock.Plug();
  HoldTheAnswersTo(3);
  const auto program = Start({"--json", "doctor"});
  WaitUntilHeld();
  UnplugFrom(*program);
  const Finished finished = program->Wait();
  EXPECT_EQ(finished.code, 3);
  EXPECT_EQ(States(Json::parse(finished.out, nullptr, false)), "problem unknown unknown unknown unknown");
}

TEST_F(Doctor, PassesOverADeviceThatOnlyLooksLikeABoard) {
  MockBoard foreign(host, Foreign());
  foreign.Plug(1);
  const Json alone = RunJson(1, {"doctor"});
  EXPECT_EQ(States(alone), "problem unknown unknown unknown unknown");
  EXPECT_EQ(Text(alone, 0), "What is plugged in at /dev/hidraw1 has the ids of a board but not its reports.");

  mock.Plug(4);
  const Finished both = Run({"doctor"});
  EXPECT_EQ(both.code, 0);
  EXPECT_THAT(both.out,
              HasSubstr("The device at /dev/hidraw1 has the ids of a board but not its reports. It is passed over.\n"));
  EXPECT_EQ(foreign.Writes(), 0);
}

TEST_F(Doctor, IsAboutTheFirstOfTwoBoards) {
  SecondBoard other(host, 4133);
  other.Mock().Plug(10);
  mock.Plug(9);
  const Finished finished = Run({"doctor"});
  EXPECT_EQ(finished.code, 0);
  EXPECT_THAT(finished.out, HasSubstr("2 boards are there. This is about the one at /dev/hidraw9.\n"));
  EXPECT_THAT(finished.out, HasSubstr("Kestrin USB. "));
  EXPECT_EQ(other.Firmware().State().byes, 0U);
  EXPECT_THAT(Run({"--board", "hid:/dev/hidraw10", "doctor"}).out, HasSubstr("Kestrin USB2, revision 37."));
}

TEST_F(Doctor, ItsReportNamesNoSerialNumber) {
  mock.Plug(4);
  const std::string path = (m_folder / "report.txt").string();
  const Finished finished = Run({"doctor", "--report", path});
  EXPECT_EQ(finished.code, 0);
  const std::string report = support::ReadBytes(path);
  for (const char* part : {"  /dev/hidraw4\n", "    USB serial: (left out)\n", "    HID interface: yes\n",
                           "    descriptor: 28 bytes\n", "  GetAccParam: B4 02 0A 32 7D 0D, 6 of 6 bytes, "})
    EXPECT_THAT(report, HasSubstr(part));
  for (const char* spelling : {"4B535401", "4b535401", "4B 53 54 01", "SN0001", "sn0001"}) {
    EXPECT_THAT(report, Not(HasSubstr(spelling)));
    EXPECT_THAT(finished.out, Not(HasSubstr(spelling)));
  }
  EXPECT_EQ(Run({"doctor", "--report", path, "--with-serial"}).code, 0);
  EXPECT_THAT(support::ReadBytes(path), HasSubstr("    USB serial: SN0001\n"));
  EXPECT_THAT(support::ReadBytes(path), HasSubstr("  serial number: 4B535401\n"));
}

}  // namespace
}  // namespace kestrin::rig
