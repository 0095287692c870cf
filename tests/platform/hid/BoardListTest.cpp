// SPDX-License-Identifier: MIT
#include "platform/hid/BoardList.h"

#include <gmock/gmock.h>

#include "support/BoardDescriptors.h"
#include "support/FakeHidStack.h"

namespace kestrin::platform::hid {
namespace {

using testing::HasSubstr;

TEST(BoardList, ListsBoardsInOrderWithTheirTextsAndWhetherTheyOpen) {
  support::FakeHidBus bus;
  bus.Plug("/dev/hidraw11", support::BoardDescriptor()).node.serialNumber = "SN11";
  bus.Plug("/dev/hidraw2", support::BoardDescriptor()).notPermitted = true;
  bus.Plug("/dev/hidraw3", support::BoardDescriptor(), 0x1234, 0x5678);
  bus.Plug("/dev/hidraw12", support::BoardDescriptor()).openError = "No such device";
  support::FakeHidStack stack(bus);
  const std::vector<BoardListing> boards = ListBoards(stack);
  ASSERT_EQ(boards.size(), 3U);

  EXPECT_EQ(boards[0].path, "/dev/hidraw2");
  EXPECT_FALSE(boards[0].accessible);
  EXPECT_THAT(boards[0].advice, HasSubstr("/dev/hidraw2, but you are not permitted to open it"));

  EXPECT_EQ(boards[1].path, "/dev/hidraw11");
  EXPECT_EQ(boards[1].manufacturer, "Kestrin");
  EXPECT_EQ(boards[1].product, "Board");
  EXPECT_EQ(boards[1].serialNumber, "SN11");
  EXPECT_TRUE(boards[1].accessible);
  EXPECT_EQ(boards[1].advice, "");

  EXPECT_FALSE(boards[2].accessible);
  EXPECT_THAT(boards[2].advice, HasSubstr("No such device"));
}

TEST(BoardList, ABoardThatAnotherProgramUsesIsTheUsersAllTheSame) {
  support::FakeHidBus bus;
  bus.Plug("/dev/hidraw2", support::BoardDescriptor()).inUse = true;
  support::FakeHidStack stack(bus);
  const std::vector<BoardListing> boards = ListBoards(stack);
  ASSERT_EQ(boards.size(), 1U);
  EXPECT_TRUE(boards[0].accessible);
  EXPECT_TRUE(boards[0].inUse);
  EXPECT_EQ(boards[0].advice, "Another program is using this board. Close it and try again.");
}

TEST(BoardList, ADeviceThatOnlyHasABoardsIdsIsListedAsNone) {
  support::FakeHidBus bus;
  // The page is another: 0xFF01 for 0xFF00.
  std::vector<std::uint8_t> other = support::BoardDescriptor();
  ASSERT_EQ(other[1], 0x00);
  other[1] = 0x01;
  bus.Plug("/dev/hidraw2", other);
  bus.Plug("/dev/hidraw3", {0x06, 0x00});
  // Whose descriptor cannot be had may be one.
  bus.Plug("/dev/hidraw4", {});
  bus.Plug("/dev/hidraw5", support::NumberedBoardDescriptor());
  support::FakeHidStack stack(bus);
  const std::vector<BoardListing> boards = ListBoards(stack);
  ASSERT_EQ(boards.size(), 4U);
  for (const std::size_t none : {0U, 1U})
    EXPECT_EQ(boards[none].advice,
              "The device at " + boards[none].path +
                  " has the numbers of a Kestrin board but not its reports, so it is left alone. If it should be a "
                  "board, plug it in again or ask its maker.");
  for (const std::size_t board : {2U, 3U}) EXPECT_EQ(boards[board].advice, "");
}

TEST(BoardList, ListingOpensNothing) {
  support::FakeHidBus bus;
  support::FakeHidDevice& board = bus.Plug("/dev/hidraw2", support::BoardDescriptor());
  support::FakeHidStack stack(bus);
  EXPECT_FALSE(ListBoards(stack).front().inUse);
  EXPECT_EQ(board.timesOpened, 0);
}

TEST(BoardList, IsEmptyWithoutBoards) {
  support::FakeHidBus bus;
  support::FakeHidStack stack(bus);
  EXPECT_TRUE(ListBoards(stack).empty());
}

}  // namespace
}  // namespace kestrin::platform::hid
