// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <memory>
#include <string>
#include <thread>

#include "rig/ProgramFixture.h"
#include "rig/SecondBoard.h"

namespace kestrin::rig {
namespace {

using support::Arguments;
using support::Finished;
using support::Json;
using testing::Each;
using testing::HasSubstr;
using testing::StartsWith;

using Program = ProgramFixture;

// --- Finding boards ---

TEST_F(Program, NoBoardEndsWithThreeAndItsText) {
  const Finished info = Run({"info"});
  EXPECT_EQ(info.code, 3);
  EXPECT_EQ(info.out, "");
  const std::string text =
      "A connection with Kuskekpize could not be established.\nPlug the board in and try again. \"kestrinctl devices\" "
      "lists the boards that are found.";
  EXPECT_EQ(info.errors, "kestrinctl: " + text + "\n");
  EXPECT_EQ(RunJson(3, {"info"}), Json({{"error", text}}));

  EXPECT_EQ(RunJson(0, {"devices"}), Json({{"devices", Json::array()}}));
  EXPECT_EQ(Run({"devices"}).out, "No board was found. Plug one in and try again.\n");
}

TEST_F(Program, ABoardIsListed) {
  mock.Plug(4);
  const Json listed = {
      {"path", "/dev/hidraw4"}, {"manufacturer", "Kestrin"}, {"product", "Kestrin Bl\xC3\xA5tt"}, {"accessible", true}};
  EXPECT_EQ(RunJson(0, {"devices"}), Json({{"devices", {listed}}}));
  const Finished text = Run({"devices"});
  EXPECT_EQ(text.code, 0);
  EXPECT_EQ(text.out,
            "path          manufacturer  product        USB serial  access\n"
            "/dev/hidraw4  Kestrin       Kestrin Bl\xC3\xA5tt  SN0001      yes\n");
  EXPECT_EQ(text.errors, "");
  // Looking for boards sends them nothing.
  EXPECT_EQ(mock.Writes(), 0);
}

TEST_F(Program, InfoFindsTheBoardByItselfOrAtItsPath) {
  SecondBoard other(host, 4133);
  other.Mock().Plug(10);
  mock.Plug(9);

  const Json first = {{"id", 0},
                      {"model", "USB"},
                      {"deviceType", 0},
                      {"deviceRevision", 0},
                      {"memoryCapacity", 2793120},
                      {"serial", "4B535401"},
                      {"caption", "Kestrin USB Serial Number: 4B535401"}};
  EXPECT_EQ(RunJson(0, {"info"}), first);
  EXPECT_EQ(RunJson(0, {"--board", "hid:/dev/hidraw9", "info"}), first);
  EXPECT_EQ(other.Firmware().State().byes, 0U);

  const Json second = RunJson(0, {"--board", "hid:/dev/hidraw10", "info"});
  EXPECT_EQ(second["id"], 4133);
  EXPECT_EQ(second["model"], "USB2");
  EXPECT_EQ(second["serial"], "00C0FFEE");
  EXPECT_EQ(other.Firmware().State().byes, 1U);
  EXPECT_EQ(board.State().byes, 2U);

  EXPECT_EQ(Run({"--board", "hid:/dev/hidraw11", "info"}).code, 3);
}

TEST_F(Program, ADeviceThatOnlyHasABoardsIdsIsNamedAndPassedOver) {
  MockBoard::Description other;
  // The page is another: 0xFF01 for 0xFF00.
  ASSERT_EQ(other.descriptor[1], 0x00);
  other.descriptor[1] = 0x01;
  other.port = 2;
  MockBoard odd(host, other);
  odd.Plug(1);
  const std::string passedOver = "The device at /dev/hidraw1 has the numbers of a Kestrin board but not its reports";
  const Finished alone = Run({"info"});
  EXPECT_EQ(alone.code, 3);
  EXPECT_THAT(alone.errors, HasSubstr(passedOver));
  mock.Plug(2);
  EXPECT_EQ(RunJson(0, {"info"})["serial"], "4B535401");
  EXPECT_THAT(Run({"devices"}).out, HasSubstr("\n" + passedOver));
  EXPECT_EQ(odd.Writes(), 0);
}

/// For programs that are started from its own thread, a closed file is closed even if an administrator runs the tests:
/// they get none of the rights by which it would be opened all the same.
class ThreadOfAnOrdinaryUser {
 public:
  template <class Work>
  static void Do(Work work) {
    std::thread([&] {
      if (::geteuid() == 0) {
        for (const int right : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH})
          ASSERT_EQ(::prctl(PR_CAPBSET_DROP, right, 0, 0, 0), 0) << "this machine lets no right be given up";
      }
      work();
    }).join();
  }
};

TEST_F(Program, ABoardThatMayNotBeOpenedIsListedWithTheWayToPermitIt) {
  mock.Plug(5);
  ASSERT_EQ(::chmod(mock.RealNode().c_str(), 0), 0);
  const std::string refused = "A board is connected at /dev/hidraw5, but you are not permitted to open it.";
  const std::string way = "sudo cp 70-kestrin.rules /etc/udev/rules.d/";
  ThreadOfAnOrdinaryUser::Do([&] {
    const Json listed = RunJson(0, {"devices"})["devices"];
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0]["path"], "/dev/hidraw5");
    EXPECT_EQ(listed[0]["manufacturer"], "Kestrin");
    EXPECT_EQ(listed[0]["accessible"], false);
    const Finished devices = Run({"devices"});
    EXPECT_EQ(devices.code, 0);
    EXPECT_THAT(devices.out, HasSubstr("SN0001      no\n"));
    EXPECT_THAT(devices.out, HasSubstr("\n" + refused));
    EXPECT_THAT(devices.out, HasSubstr(way));

    for (const char* path : {"auto", "hid:/dev/hidraw5"}) {
      const Finished info = Run({"--board", path, "info"});
      EXPECT_EQ(info.code, 1) << path;
      EXPECT_THAT(info.errors, StartsWith("kestrinctl: " + refused)) << path;
      EXPECT_THAT(info.errors, HasSubstr(way)) << path;
    }
  });
  EXPECT_EQ(mock.Writes(), 0);

  ASSERT_EQ(::chmod(mock.RealNode().c_str(), 0600), 0);
  ThreadOfAnOrdinaryUser::Do([&] { EXPECT_EQ(RunJson(0, {"info"})["serial"], "4B535401"); });
}

// --- Two programs at one board ---

TEST_F(Program, ASecondProgramIsTurnedAwayUntilTheFirstHasEndedEvenByForce) {
  const std::string inUse = "Another program is using this board. Close it and try again.";
  mock.Plug(4);
  HoldTheAnswersTo(4);
  auto first = Start({"download", Configuration()});
  WaitUntilHeld();
  const int writes = mock.Writes();

  for (const char* path : {"auto", "hid:/dev/hidraw4"}) {
    const Finished second = Run({"--board", path, "download", Configuration()});
    EXPECT_EQ(second.code, 1) << path;
    EXPECT_EQ(second.out, "") << path;
    EXPECT_EQ(second.errors, "kestrinctl: " + inUse + "\n") << path;
  }
  EXPECT_EQ(RunJson(1, {"info"}), Json({{"error", inUse}}));
  const Json listed = RunJson(0, {"devices"})["devices"];
  ASSERT_EQ(listed.size(), 1U);
  EXPECT_EQ(listed[0]["accessible"], true);
  EXPECT_THAT(Run({"devices"}).out, HasSubstr("SN0001      in use\n"));
  EXPECT_EQ(mock.Writes(), writes) << "the board was disturbed";

  first->Signal(SIGKILL);
  EXPECT_EQ(first->Wait().code, -SIGKILL);
  EXPECT_EQ(RunJson(0, {"info"})["serial"], "4B535401");
}

TEST_F(Program, TwoProgramsUseTwoBoardsAtTheSameTime) {
  SecondBoard other(host);
  other.Mock().Plug(10);
  mock.Plug(9);
  HoldTheAnswersTo(4);
  const auto first = Start({"--board", "hid:/dev/hidraw9", "download", Configuration()});
  WaitUntilHeld();
  EXPECT_EQ(RunJson(0, {"--board", "hid:/dev/hidraw10", "info"})["serial"], SecondBoard::kSerial);
  EXPECT_EQ(RunJson(0, {"info"})["serial"], SecondBoard::kSerial) << "the one that is free";
  EXPECT_EQ(Run({"--board", "hid:/dev/hidraw9", "info"}).code, 1);
  LetTheAnswersThrough();
  EXPECT_EQ(first->Wait().code, 0);
}

// --- Work on a board ---

TEST_F(Program, AWholeDownloadArrivesAndIsVerified) {
  mock.Plug();
  const Json document = RunJson(0, {"download", Configuration()});
  EXPECT_EQ(document["outcome"], "success");
  EXPECT_EQ(document["information"], "SUCCESS !");
  // Seven sounds, and the table: 30 bytes and 6 for each of the three listed sounds.
  EXPECT_EQ(document["bytes"], 7 * 2100 + 48);
  EXPECT_TRUE(BoardHoldsTheSet());
  EXPECT_EQ(board.State().accelerometer, simulator::BoardState{}.accelerometer);
  EXPECT_EQ(board.State().resets, 1U);
  EXPECT_EQ(board.State().byes, 1U);
  EXPECT_EQ(KeptFiles(), 0U);

  const Json verified = RunJson(0, {"verify", Configuration()});
  EXPECT_EQ(verified["verified"], true);
  ASSERT_EQ(verified["files"].size(), 7U);
  for (std::size_t sound = 0; sound < 7; ++sound) {
    EXPECT_EQ(verified["files"][sound]["address"], 512 + 2101 * sound);
    EXPECT_EQ(verified["files"][sound]["ok"], true);
  }
  EXPECT_TRUE(BoardHoldsTheSet());
}

TEST_F(Program, VerifyFindsAnErasedBoardEmpty) {
  mock.Plug();
  const Json document = RunJson(1, {"verify", Configuration()});
  EXPECT_EQ(document["verified"], false);
  // 2,100 bytes of 255 are 535,500, modulo 65,536 that is 11,212.
  for (const Json& file : document["files"]) EXPECT_EQ(file["board"], 11212);
}

TEST_F(Program, DetectionParametersAreReadAndChanged) {
  mock.Plug();
  const Json factory = {{"MotionTh", 180}, {"MotionDeb", 2},  {"ImpactTh", 10},
                        {"ImpactDeb", 50}, {"ImpactTm", 125}, {"FOCTime", 52}};
  EXPECT_EQ(RunJson(0, {"accel", "get"}), factory);
  Json changed = factory;
  changed["MotionTh"] = 77;
  changed["ImpactTm"] = 100;
  EXPECT_EQ(RunJson(0, {"accel", "set", "--MotionTh", "77", "--ImpactTm", "100"}), changed);
  EXPECT_EQ(board.State().accelerometer, (std::array<std::uint8_t, 6>{77, 2, 10, 50, 100, 13}));
  EXPECT_EQ(board.State().resets, 1U);
  EXPECT_EQ(RunJson(0, {"accel", "get"}), changed);
}

// A download sends: 1 identity, 2 serial number, 3 detection parameters, 4 erase, 5 parameters back, then three reports
// for each of the seven sounds, 27 table, 28 its checksum, 29 restart, 30 good-bye.

TEST_F(Program, ABoardThatIsGoneWhenAReportIsSentIsLostAndTheNextDownloadWorks) {
  struct Loss {
    int report;
    const char* information;
    std::size_t kept;
  };
  const Loss losses[] = {
      {3, "Connection lost", 0}, {5, "Connection lost", 1}, {7, "Connection lost", 0}, {27, "Memory check error", 0}};
  mock.Plug();
  static_cast<void>(RunJson(0, {"accel", "set", "--ImpactTh", "31"}));
  const auto parameters = board.State().accelerometer;
  for (const Loss& loss : losses) {
    SCOPED_TRACE(loss.report);
    mock.goneAtWrite = mock.Writes() + loss.report;
    const Json document = RunJson(1, {"download", Configuration()});
    EXPECT_EQ(document["information"], loss.information);
    EXPECT_EQ(KeptFiles(), loss.kept);
    mock.goneAtWrite = 0;
    Unplug();

    mock.Plug();
    EXPECT_EQ(RunJson(0, {"download", Configuration()})["outcome"], "success");
    EXPECT_TRUE(BoardHoldsTheSet());
    EXPECT_EQ(board.State().accelerometer, parameters);
    EXPECT_EQ(KeptFiles(), 0U);
  }
}

// --- Stopped in the middle, while it waits for an answer ---

struct Moment {
  const char* name;
  /// The report that was the last to arrive.
  int report;
  /// Whether the board's parameters are lost then.
  bool parametersErased;
};

constexpr Moment kMoments[] = {{"WhileErasing", 4, true},
                               {"WithTheFirstBlock", 6, false},
                               {"WithARest", 8, false},
                               {"WithTheLastSound", 26, false}};

class ProgramStopped : public ProgramFixture, public testing::WithParamInterface<Moment> {
 protected:
  static constexpr std::array<std::uint8_t, 6> kParameters{77, 2, 10, 50, 100, 13};

  ProgramStopped() {
    mock.Plug();
    static_cast<void>(RunJson(0, {"accel", "set", "--MotionTh", "77", "--ImpactTm", "100"}));
  }
  /// Starts a download and returns when it waits for the answer to the moment's report.
  [[nodiscard]] std::unique_ptr<support::ChildProcess> StartDownload() {
    HoldTheAnswersTo(GetParam().report);
    auto download = Start({"download", Configuration()});
    WaitUntilHeld();
    return download;
  }
  /// No table, so that the board finds no sounds; the parameters are on the board or kept on this computer.
  void ExpectNoSetButKeptParameters() const {
    const auto front = board.Flash().first(512);
    EXPECT_THAT(Bytes(front.begin(), front.end()), Each(0xFF));
    if (GetParam().parametersErased) {
      EXPECT_THAT(board.State().accelerometer, Each(255));
      EXPECT_EQ(KeptFiles(), 1U);
    } else {
      EXPECT_EQ(board.State().accelerometer, kParameters);
      EXPECT_EQ(KeptFiles(), 0U);
    }
  }
  void ExpectTheNextDownloadToWork() const {
    EXPECT_EQ(RunJson(0, {"download", Configuration()})["outcome"], "success");
    EXPECT_TRUE(BoardHoldsTheSet());
    EXPECT_EQ(board.State().accelerometer, kParameters);
    EXPECT_EQ(KeptFiles(), 0U);
    EXPECT_EQ(RunJson(0, {"verify", Configuration()})["verified"], true);
  }
};

TEST_P(ProgramStopped, AnUnpluggedBoardIsLostAndTheNextDownloadWorks) {
  const auto download = StartDownload();
  UnplugFrom(*download);
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_THAT(finished.errors, StartsWith("kestrinctl: Connection lost\n"
                                          "The board holds no complete sound set. Repeat the download"));
  EXPECT_THAT(finished.out, testing::Not(HasSubstr("SUCCESS")));
  ExpectNoSetButKeptParameters();
  EXPECT_EQ(Run({"info"}).code, 3);

  mock.Plug(3);
  ExpectTheNextDownloadToWork();
}

TEST_P(ProgramStopped, CtrlCCancelsAndTheNextDownloadWorks) {
  const int writesBefore = mock.Writes();
  const auto download = StartDownload();
  download->Signal(SIGINT);
  download->WaitForOutput("Stopping ...\n");
  LetTheAnswersThrough();
  const Finished finished = download->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_THAT(finished.errors, StartsWith("kestrinctl: Canceled\n"));
  EXPECT_THAT(finished.out, testing::Not(HasSubstr("SUCCESS")));
  ExpectNoSetButKeptParameters();
  // It stopped right there and left in order: nothing came any more but the good-bye. (One went before it, after the
  // parameters were set.)
  EXPECT_EQ(mock.Writes(), writesBefore + GetParam().report + 1);
  EXPECT_EQ(board.State().byes, 2U);

  ExpectTheNextDownloadToWork();
}

INSTANTIATE_TEST_SUITE_P(Moments, ProgramStopped, testing::ValuesIn(kMoments),
                         [](const auto& moment) { return moment.param.name; });

}  // namespace
}  // namespace kestrin::rig
