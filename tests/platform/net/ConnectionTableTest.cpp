// SPDX-License-Identifier: MIT
#include "platform/net/ConnectionTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrin::platform::net {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

/// Ten seconds to ask, a minute to take; five in all, three of an address.
class ConnectionTableTest : public testing::Test {
 protected:
  ConnectionTable table{{10s, 60s, 5, 3}};
};

TEST_F(ConnectionTableTest, WhoAsksForTooLongIsToldOfOnce) {
  EXPECT_EQ(table.Add(1, "a", 0s), std::nullopt);
  EXPECT_EQ(table.Add(2, "a", 4s), std::nullopt);
  EXPECT_THAT(table.Overdue(9999ms), IsEmpty());
  EXPECT_THAT(table.Overdue(10s), ElementsAre(1));
  EXPECT_THAT(table.Overdue(13s), IsEmpty());
  EXPECT_THAT(table.Overdue(14s), ElementsAre(2));
}

TEST_F(ConnectionTableTest, EveryPieceHasItsMinute) {
  EXPECT_EQ(table.Add(1, "a", 0s), std::nullopt);
  table.NoteProgress(1, 9s);
  EXPECT_THAT(table.Overdue(68s), IsEmpty());
  table.NoteProgress(1, 68s);
  EXPECT_THAT(table.Overdue(127s), IsEmpty());
  EXPECT_THAT(table.Overdue(128s), ElementsAre(1));
}

TEST_F(ConnectionTableTest, TheOldestWhoStillAsksMakesRoomForAnotherOfItsAddress) {
  for (int id = 1; id <= 3; ++id) EXPECT_EQ(table.Add(id, "a", 0s), std::nullopt);
  EXPECT_THAT(table.Add(4, "a", 0s), Optional(1)) << "of 2, 3 and 4 there are three";
  EXPECT_EQ(table.Add(5, "b", 0s), std::nullopt);
  table.NoteProgress(2, 1s);
  EXPECT_THAT(table.Add(6, "a", 1s), Optional(3)) << "2 is being answered";
  table.Remove(2);
  EXPECT_EQ(table.Add(7, "a", 1s), std::nullopt);
}

TEST_F(ConnectionTableTest, WhoComesIsSentAwayWhenAllOthersAreAnswered) {
  for (int id = 1; id <= 3; ++id) {
    EXPECT_EQ(table.Add(id, "a", 0s), std::nullopt);
    table.NoteProgress(id, 0s);
  }
  EXPECT_THAT(table.Add(4, "a", 0s), Optional(4));
  EXPECT_EQ(table.Add(5, "b", 0s), std::nullopt) << "another address has its own room";
}

TEST_F(ConnectionTableTest, TheOldestOfAllMakesRoomWhenThereAreTooManyInAll) {
  const char* const addresses[] = {"a", "b", "c", "d", "e"};
  for (int id = 1; id <= 5; ++id) EXPECT_EQ(table.Add(id, addresses[id - 1], 0s), std::nullopt);
  table.NoteProgress(1, 0s);
  EXPECT_THAT(table.Add(6, "f", 0s), Optional(2));
  table.Remove(2);
  EXPECT_THAT(table.Add(7, "g", 0s), Optional(3)) << "1 and 4 to 7 are five";
}

}  // namespace
}  // namespace kestrin::platform::net
