// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/hid/BoardLock.h"
#include "rig/RigFixture.h"
#include "rig/SecondBoard.h"
#include "support/TestFiles.h"

namespace kestrin::rig {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Finding : public RigFixture {};

TEST_F(Finding, NoBoardIsNoBoard) {
  CreateAgent();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "");
  EXPECT_THAT(platform::hid::ListBoards(), IsEmpty());
}

TEST_F(Finding, ABoardIsOpenedWithItsReportLengthsAndBound) {
  mock.Plug(3);
  CreateAgent();
  ASSERT_TRUE(agent->SearchAndOpen()) << agent->AccessProblem();
  EXPECT_EQ(events.lines, Lines{"opened 1 2/1028 /dev/hidraw3"});
  ASSERT_EQ(tls.BindVars(*agent), 0);
  EXPECT_EQ(agent->VendorId(), 0x04D8);
  EXPECT_EQ(agent->ProductId(), 0xFA37);
  EXPECT_EQ(tls.CommandVariable().Attributes().SizeInBits, 8);
  EXPECT_EQ(tls.CommandVariable().Attributes().LogicalMaximum, 255);
  EXPECT_TRUE(tls.HasHandle(1));
  EXPECT_EQ(tls.GetSN(), "4B535401");
}

TEST_F(Finding, ABoardWithReportIdsIsUsedTheSameWay) {
  MockBoard::Description numbered;
  numbered.descriptor = support::NumberedBoardDescriptor();
  numbered.port = 2;
  MockBoard device(host, numbered);
  std::vector<Bytes> received;
  device.onReport = [&](const Bytes& report) {
    received.push_back(report);
    return std::vector<Bytes>{{3, 9, 9, 9, 9}, {2, 0x12, 0x34}, {3, 9, 9, 9, 9}, {2, 0xAB, 0xCD}};
  };
  device.Plug(0);
  CreateAgent();
  ASSERT_TRUE(agent->SearchAndOpen()) << agent->AccessProblem();
  EXPECT_EQ(events.lines, Lines{"opened 1 4/1028 /dev/hidraw0"});
  ASSERT_EQ(tls.BindVars(*agent), 0);
  EXPECT_EQ(tls.GetSN(), "1234ABCD");
  ASSERT_EQ(received.size(), 1U);
  EXPECT_EQ(received[0].size(), 1029U);
  EXPECT_EQ(received[0][0], 1);  // The report's id
  EXPECT_EQ(received[0][1], 1);  // The command
}

TEST_F(Finding, ABoardThatAProgramOffersIsUsedTheSameWay) {
  MockBoard::Description offered;
  offered.virtualBus = true;
  offered.port = 2;
  MockBoard device(host, offered);
  device.AnswerWith(board);
  device.Plug(0);
  CreateAgent();
  ASSERT_TRUE(agent->SearchAndOpen()) << agent->AccessProblem();
  ASSERT_EQ(tls.BindVars(*agent), 0);
  EXPECT_EQ(tls.GetSN(), "4B535401");
}

TEST_F(Finding, AForeignDeviceWithTheSameUsagesIsIgnored) {
  for (const auto& [vendor, product] : {std::pair(0x04D8, 0xFA38), std::pair(0x1209, 0xFA37)}) {
    MockBoard::Description foreign;
    foreign.vendorId = static_cast<std::uint16_t>(vendor);
    foreign.productId = static_cast<std::uint16_t>(product);
    foreign.port = 2;
    MockBoard device(host, foreign);
    device.Plug(0);
    CreateAgent();
    EXPECT_FALSE(agent->SearchAndOpen());
    EXPECT_THAT(platform::hid::ListBoards(), IsEmpty());
    EXPECT_EQ(device.Writes(), 0);
    device.Unplug();
  }
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(Finding, TheArrivalOfAForeignDeviceIsNotTold) {
  CreateAgent();
  MockBoard::Description foreign;
  foreign.productId = 0xFA38;
  foreign.port = 2;
  MockBoard device(host, foreign);
  device.Plug(0);
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
}

TEST_F(Finding, OfTwoBoardsEachAnswersForItself) {
  SecondBoard other(host);
  other.Mock().Plug(10);
  mock.Plug(9);
  CreateAgent();
  ASSERT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines, (Lines{"opened 1 2/1028 /dev/hidraw9", "opened 2 2/1028 /dev/hidraw10"}));
  core::device::TLS otherTls;
  ASSERT_EQ(otherTls.BindVars(*agent), 0);
  EXPECT_EQ(otherTls.GetSN(), SecondBoard::kSerial);
  agent->SelectInterface(0);
  ASSERT_EQ(tls.ReBind(*agent), 0);
  EXPECT_EQ(tls.GetSN(), "4B535401");
}

TEST_F(Finding, OnlyTheBoardAtAGivenPathIsOpened) {
  MockBoard::Description description;
  description.port = 2;
  MockBoard other(host, description);
  other.Plug(1);
  mock.Plug(0);
  CreateAgent("/dev/hidraw1");
  ASSERT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(events.lines, Lines{"opened 1 2/1028 /dev/hidraw1"});
}

TEST_F(Finding, BoardsAreListedWithTheTextsOfTheirUsbDescriptors) {
  MockBoard::Description description;
  description.port = 2;
  MockBoard other(host, description);
  other.Plug(11);
  mock.Plug(4);
  const std::vector<platform::hid::BoardListing> boards = platform::hid::ListBoards();
  ASSERT_EQ(boards.size(), 2U);
  EXPECT_EQ(boards[0].path, "/dev/hidraw4");
  EXPECT_EQ(boards[0].manufacturer, "Kestrin");
  EXPECT_EQ(boards[0].product, "Kestrin Bl\xC3\xA5tt");
  EXPECT_EQ(boards[0].serialNumber, "SN0001");
  EXPECT_TRUE(boards[0].accessible);
  EXPECT_EQ(boards[0].advice, "");
  EXPECT_EQ(boards[1].path, "/dev/hidraw11");
  EXPECT_EQ(boards[1].serialNumber, "SN0002");
}

TEST_F(Finding, ABoardWhoseDescriptorIsDamagedIsNamed) {
  MockBoard::Description damaged;
  damaged.descriptor = {0x06, 0x00, 0xFF, 0xA1, 0x01};
  damaged.port = 2;
  MockBoard device(host, damaged);
  device.Plug(0);
  CreateAgent();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_THAT(agent->AccessProblem(), HasSubstr("/dev/hidraw0"));
  EXPECT_THAT(agent->AccessProblem(), HasSubstr("the report descriptor ends inside a collection"));
}

/// Takes away this process's right to open everything, as long as it lives.
class OrdinaryUser {
 public:
  OrdinaryUser() : m_user(::geteuid()) {
    if (m_user == 0) m_changed = ::seteuid(65534) == 0;
  }
  ~OrdinaryUser() {
    if (m_changed) m_changed = ::seteuid(m_user) != 0;
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  uid_t m_user;
  bool m_changed = false;
};

TEST_F(Finding, ABoardWithoutPermissionIsToldApartUntilItIsPermitted) {
  mock.Plug(5);
  // The mocked tree is readable for all as the real one is, and the socket behind a mocked node is asked for before the
  // node is opened. Only the node itself is closed.
  ASSERT_EQ(::chmod(host.RealPath("").c_str(), 0755), 0);
  ASSERT_EQ(::chmod(host.RealPath("/ioctl" + mock.Node()).c_str(), 0777), 0);
  ASSERT_EQ(::chmod(mock.RealNode().c_str(), 0), 0);
  CreateAgent();
  {
    const OrdinaryUser user;
    EXPECT_FALSE(agent->SearchAndOpen());
    EXPECT_THAT(agent->AccessProblem(), HasSubstr("/dev/hidraw5, but you are not permitted to open it"));
    EXPECT_THAT(agent->AccessProblem(), HasSubstr("sudo cp 70-kestrin.rules /etc/udev/rules.d/"));
    EXPECT_THAT(events.lines, IsEmpty());

    const std::vector<platform::hid::BoardListing> boards = platform::hid::ListBoards();
    ASSERT_EQ(boards.size(), 1U);
    EXPECT_EQ(boards[0].path, "/dev/hidraw5");
    EXPECT_FALSE(boards[0].accessible);
    EXPECT_EQ(boards[0].advice, agent->AccessProblem());
  }
  ASSERT_EQ(::chmod(mock.RealNode().c_str(), 0600), 0);
  agent->Refresh();
  EXPECT_EQ(events.lines, std::vector<std::string>{"arrival /dev/hidraw5"});
  EXPECT_TRUE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), "");
}

// --- A board that goes while it is looked at ---

/// A board of which something is gone already, or cut, while the rest is still there.
class Vanishing : public RigFixture {
 protected:
  Vanishing() { mock.Plug(5); }

  [[nodiscard]] std::filesystem::path Real(const std::string& path) const { return host.RealPath(path); }
  [[nodiscard]] std::filesystem::path OfDevice(const std::string& file) const {
    return Real("/sys/class/hidraw/hidraw5/device/" + file);
  }
  /// What is said of the board, by the list and by the agent alike; "" when neither knows one.
  std::string Advice() {
    CreateAgent();
    EXPECT_FALSE(agent->SearchAndOpen());
    const std::vector<platform::hid::BoardListing> boards = platform::hid::ListBoards();
    EXPECT_LE(boards.size(), 1U);
    return agent->AccessProblem();
  }
};

TEST_F(Vanishing, WithoutItsIdsItIsNone) {
  for (const char* const left : {"", "DRIVER=hid-generic\n", "HID_ID=0003:0000", "HID_ID=0003:000004D8:0000FA37"}) {
    std::ofstream(OfDevice("uevent"), std::ios::trunc) << left;
    EXPECT_EQ(Advice(), "") << left;
  }
  std::filesystem::remove(OfDevice("uevent"));
  EXPECT_EQ(Advice(), "");
  EXPECT_TRUE(platform::hid::ListBoards().empty());
}

TEST_F(Vanishing, WithoutItsNodeItIsNone) {
  std::filesystem::remove(mock.RealNode());
  EXPECT_EQ(Advice(), "");
  EXPECT_TRUE(platform::hid::ListBoards().empty());
}

TEST_F(Vanishing, WithoutItsDescriptorItIsNamed) {
  std::filesystem::remove(OfDevice("report_descriptor"));
  const std::string advice = Advice();
  EXPECT_THAT(advice, HasSubstr("A board is connected at /dev/hidraw5, but it could not be opened: "));
  EXPECT_THAT(advice, Not(HasSubstr("Success")));
}

TEST_F(Vanishing, WithHalfOfItsDescriptorItIsNamed) {
  std::filesystem::resize_file(OfDevice("report_descriptor"), 27);
  EXPECT_THAT(Advice(), HasSubstr("the report descriptor ends inside a collection"));
}

TEST_F(Vanishing, WithoutItsEntryItIsNone) {
  std::filesystem::remove(Real("/sys/class/hidraw/hidraw5"));
  EXPECT_EQ(Advice(), "");
}

// --- A board for one program at a time ---

constexpr const char* kInUse = "Another program is using this board. Close it and try again.";

/// Another part of this program is to the system what another program is: the claim belongs to the opened file.
class Claimed : public RigFixture {
 protected:
  Claimed() {
    mock.Plug(3);
    claim = platform::hid::LockBoard(mock.Node()).lock;
  }
  std::unique_ptr<core::base::Disk::Lock> claim;
};

TEST_F(Claimed, IsNotOpenedAndNotWrittenTo) {
  ASSERT_NE(claim, nullptr);
  CreateAgent();
  EXPECT_FALSE(agent->SearchAndOpen());
  EXPECT_EQ(agent->AccessProblem(), kInUse);
  EXPECT_THAT(events.lines, IsEmpty());
  EXPECT_EQ(mock.Writes(), 0);
}

TEST_F(Claimed, ArrivesWhenItIsLetGo) {
  CreateAgent();
  EXPECT_FALSE(agent->SearchAndOpen());
  agent->Refresh();
  EXPECT_THAT(events.lines, IsEmpty());
  claim.reset();
  agent->Refresh();
  EXPECT_EQ(events.lines, Lines{"arrival /dev/hidraw3"});
  EXPECT_TRUE(agent->SearchAndOpen()) << agent->AccessProblem();
  EXPECT_EQ(agent->AccessProblem(), "");
}

TEST_F(Claimed, IsListedAsTheUsersAndInUse) {
  const std::vector<platform::hid::BoardListing> boards = platform::hid::ListBoards();
  ASSERT_EQ(boards.size(), 1U);
  EXPECT_TRUE(boards[0].accessible);
  EXPECT_TRUE(boards[0].inUse);
  EXPECT_EQ(boards[0].manufacturer, "Kestrin");
}

TEST(BoardLock, TheNextDeviceFileAtTheSamePathIsFree) {
  // Any file does for that.
  const support::TemporaryFolder folder;
  const std::string path = support::WriteBytes(folder / "node", "").string();
  const auto claim = platform::hid::LockBoard(path);
  ASSERT_NE(claim.lock, nullptr);
  EXPECT_TRUE(platform::hid::IsBoardLocked(path));
  // The first one is kept, so that the next cannot be taken for it.
  std::filesystem::rename(path, folder / "gone");
  support::WriteBytes(path, "");
  EXPECT_FALSE(platform::hid::IsBoardLocked(path));
  EXPECT_NE(platform::hid::LockBoard(path).lock, nullptr);
}

TEST_F(Finding, AnOpenBoardIsClaimedAsLongAsItIsOpen) {
  GoOnline(3);
  EXPECT_TRUE(platform::hid::IsBoardLocked(mock.Node()));
  EXPECT_TRUE(platform::hid::LockBoard(mock.Node()).heldByAnother);
  // The question and the attempt have taken nothing from it.
  EXPECT_EQ(tls.GetSN(), "4B535401");
  EXPECT_TRUE(platform::hid::IsBoardLocked(mock.Node()));
  agent->Stop();
  EXPECT_FALSE(platform::hid::IsBoardLocked(mock.Node()));
  EXPECT_NE(platform::hid::LockBoard(mock.Node()).lock, nullptr);
}

TEST_F(Finding, AskingWhetherABoardIsClaimedClaimsNothing) {
  mock.Plug(3);
  EXPECT_FALSE(platform::hid::IsBoardLocked(mock.Node()));
  ASSERT_EQ(platform::hid::ListBoards().size(), 1U);
  EXPECT_FALSE(platform::hid::IsBoardLocked(mock.Node()));
  EXPECT_FALSE(platform::hid::IsBoardLocked("/dev/hidraw4"));
  const platform::hid::BoardLock none = platform::hid::LockBoard("/dev/hidraw4");
  EXPECT_FALSE(none.heldByAnother);
  EXPECT_EQ(none.error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(none.lock, nullptr);
}

}  // namespace
}  // namespace kestrin::rig
