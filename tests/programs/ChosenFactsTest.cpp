// SPDX-License-Identifier: MIT
#include "programs/ChosenFacts.h"

#include <gtest/gtest.h>

#include "core/device/THIDagent.h"

namespace kestrin::programs {
namespace {

using core::doctor::Access;
using core::doctor::LinkFacts;
using platform::boards::BoardChoice;

/// Two boards on the bus, each with an interface.
LinkFacts TwoBoards() {
  LinkFacts facts;
  facts.bus.resize(2);
  facts.nodes.resize(2);
  facts.nodes[0].path = "/dev/hidraw0";
  facts.nodes[1].path = "/dev/hidraw1";
  return facts;
}

LinkFacts Narrowed(const std::string& board, const std::string& accessProblem = "") {
  LinkFacts facts = TwoBoards();
  NarrowToChoice(facts, *BoardChoice::Parse(board), accessProblem);
  return facts;
}

TEST(ChosenFacts, AreAllForAnyBoard) {
  const LinkFacts facts = Narrowed("auto");
  EXPECT_EQ(facts.bus.size(), 2U);
  EXPECT_EQ(facts.nodes.size(), 2U);
  EXPECT_EQ(facts.onlyPath, "");
  EXPECT_FALSE(facts.isSimulated);
}

TEST(ChosenFacts, AreThoseOfTheChosenPath) {
  const LinkFacts facts = Narrowed("hid:/dev/hidraw1");
  ASSERT_EQ(facts.nodes.size(), 1U);
  EXPECT_EQ(facts.nodes[0].path, "/dev/hidraw1");
  EXPECT_EQ(facts.onlyPath, "/dev/hidraw1");
}

TEST(ChosenFacts, AreNoneWhereNothingIsAtTheChosenPath) {
  const LinkFacts facts = Narrowed("hid:/dev/hidraw7");
  EXPECT_TRUE(facts.nodes.empty());
  EXPECT_TRUE(facts.bus.empty());
  EXPECT_EQ(facts.onlyPath, "/dev/hidraw7");
}

TEST(ChosenFacts, AreThoseOfTheSimulatedBoardAndNoOther) {
  const LinkFacts facts = Narrowed("sim");
  EXPECT_TRUE(facts.isSimulated);
  EXPECT_TRUE(facts.bus.empty());
  ASSERT_EQ(facts.nodes.size(), 1U);
  EXPECT_TRUE(facts.nodes[0].isOurs);
  EXPECT_TRUE(facts.nodes[0].hasVariables);
}

TEST(ChosenFacts, TellWhoHasTheSimulatedBoard) {
  EXPECT_EQ(Narrowed("sim", core::device::kBoardInUse).nodes.at(0).access, Access::InUse);
  const LinkFacts failed = Narrowed("sim", "Its folder cannot be written.");
  EXPECT_EQ(failed.nodes.at(0).access, Access::Failed);
  EXPECT_EQ(failed.nodes.at(0).why, "Its folder cannot be written.");
  EXPECT_FALSE(failed.nodes.at(0).isOurs);
}

}  // namespace
}  // namespace kestrin::programs
