// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/device/TLS.h"
#include "support/ScriptedAgent.h"

namespace kestrin::core::device {
namespace {

using support::ScriptedAgent;
using ::testing::ElementsAre;

/// A board whose variables sit behind a foreign one, so that numbers 0 and 1 would be wrong.
ScriptedAgent::Interface Board(std::int32_t handle) {
  return {handle,
          support::kVendorId,
          support::kProductId,
          {{ReportType::Feature, 5, 0xFF00, 9, {}},
           {ReportType::Input, 2, 0xFF00, 3, {}},
           {ReportType::Output, 1, 0xFF00, 2, {}}}};
}

TEST(TLSBinding, StartsWithTwoUnboundVariables) {
  const TLS board;
  EXPECT_EQ(board.CommandVariable().VarName(), "LS_Command'");
  EXPECT_EQ(board.CommandVariable().RptType(), ReportType::Output);
  EXPECT_EQ(board.CommandVariable().UsagePage(), 65280);
  EXPECT_EQ(board.CommandVariable().Usage(), 1);
  EXPECT_EQ(board.CommandVariable().VarIdentity(), 1);
  EXPECT_EQ(board.ResponseVariable().VarName(), "LS_Response'");
  EXPECT_EQ(board.ResponseVariable().RptType(), ReportType::Input);
  EXPECT_EQ(board.ResponseVariable().Usage(), 2);
  EXPECT_EQ(board.DeviceIdentity(), 0);
  EXPECT_FALSE(board.IsBoundFlag());
  EXPECT_FALSE(board.CommandVariable().IsBound());
}

TEST(TLSBinding, BindsBothVariablesOfTheLastInterface) {
  ScriptedAgent agent;
  agent.Open({1, support::kVendorId, support::kProductId, {}});
  agent.Open(Board(2));
  agent.SelectInterface(0);
  TLS board;
  EXPECT_EQ(board.BindVars(agent), 0);
  EXPECT_TRUE(board.IsBoundFlag());
  EXPECT_EQ(board.DeviceIdentity(), 1);
  EXPECT_TRUE(board.HasHandle(2));
  EXPECT_FALSE(board.HasHandle(1));
  EXPECT_EQ(board.UnboundVarCount(), 0);
  EXPECT_EQ(board.VariableCount(), 2);
  EXPECT_FALSE(board.IsAllUnbound());
  EXPECT_THAT(agent.variableNames, ElementsAre("LS_Command'", "LS_Response'"));
}

TEST(TLSBinding, BindingTwiceLeavesBoundVariablesAlone) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  EXPECT_EQ(board.BindVars(agent), 0);
  EXPECT_EQ(agent.variableNames.size(), 2u);
}

TEST(TLSBinding, IgnoresOtherDevicesEvenWithTheSameUsages) {
  ScriptedAgent::Interface foreign = Board(2);
  foreign.vendorId = 0x04D9;
  ScriptedAgent::Interface otherProduct = Board(3);
  otherProduct.productId = 0xFA38;
  for (const auto& interface : {foreign, otherProduct}) {
    ScriptedAgent agent;
    agent.Open(interface);
    TLS board;
    EXPECT_EQ(board.BindVars(agent), -1);
    EXPECT_FALSE(board.CommandVariable().IsBound());
    EXPECT_FALSE(board.ResponseVariable().IsBound());
  }
}

TEST(TLSBinding, WithoutAnyInterfaceThereIsNoBoard) {
  ScriptedAgent agent;
  TLS board;
  EXPECT_EQ(board.BindVars(agent), -1);
}

TEST(TLSBinding, CountsTheVariablesThatItCouldNotFind) {
  ScriptedAgent agent;
  agent.Open({4, support::kVendorId, support::kProductId, {{ReportType::Output, 1, 0xFF00, 0, {}}}});
  TLS board;
  EXPECT_EQ(board.BindVars(agent), 1);
  EXPECT_EQ(board.UnboundVarCount(), 1);
  agent.Close(4);
  agent.Open({5, support::kVendorId, support::kProductId, {}});
  TLS empty;
  EXPECT_EQ(empty.BindVars(agent), 2);
}

TEST(TLSBinding, AnErrorWhileBindingLeavesTheVariablesUnbound) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  agent.throwWhileBinding = true;
  TLS board;
  EXPECT_EQ(board.BindVars(agent), 2);
}

TEST(TLSBinding, WritesThroughTheCommandVariableAndReadsThroughTheResponse) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  agent.Answers({{0x12, 0x34}});
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  board.Set_LS_Command(0, 77);
  EXPECT_TRUE(board.WriteOutputRptA());
  EXPECT_EQ(agent.currentReport, 2);
  ASSERT_EQ(agent.written.size(), 1u);
  EXPECT_EQ(agent.written[0].size(), 1028u);
  EXPECT_EQ(agent.written[0][0], 77);
  EXPECT_TRUE(board.ReadInputRptB());
  EXPECT_EQ(agent.currentReport, 3);
  EXPECT_EQ(board.Get_LS_Response(0), 0x12);
  EXPECT_EQ(board.Get_LS_Response(1), 0x34);
}

TEST(TLSBinding, OwesAnAnswerFromTheWrittenCommandToTheRead) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  agent.failWrites = {2};
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  EXPECT_FALSE(board.OwesAnswer());
  ASSERT_TRUE(board.WriteOutputRptA());
  EXPECT_TRUE(board.OwesAnswer());
  EXPECT_FALSE(board.ReadInputRptB());
  EXPECT_TRUE(board.OwesAnswer()) << "it may still come";
  agent.Answers({{1, 2}});
  EXPECT_TRUE(board.ReadInputRptB());
  EXPECT_FALSE(board.OwesAnswer());
  EXPECT_FALSE(board.WriteOutputRptA());
  EXPECT_FALSE(board.OwesAnswer()) << "nothing was asked";
  ASSERT_TRUE(board.WriteOutputRptA());
  board.HidClosed(2);
  EXPECT_FALSE(board.WriteOutputRptA());
  EXPECT_FALSE(board.OwesAnswer()) << "nobody is there to answer";
}

TEST(TLSBinding, WriteAllAndReadAllAreTheSame) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  agent.Answers({{5, 6}});
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  EXPECT_TRUE(board.WriteAllReports());
  EXPECT_TRUE(board.ReadAllReports());
  EXPECT_EQ(agent.written.size(), 1u);
  EXPECT_EQ(board.Get_LS_Response(1), 6);
}

TEST(TLSBinding, AFailedReadStillTakesWhatTheAgentHolds) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  agent.heldInput = {9, 8};
  EXPECT_FALSE(board.ReadInputRptB());
  EXPECT_EQ(board.Get_LS_Response(0), 9);
  EXPECT_EQ(board.Get_LS_Response(1), 8);
}

TEST(TLSBinding, UnboundItSendsAndReadsNothing) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  board.Set_LS_Response(0, 55);
  board.HidClosed(2);
  EXPECT_FALSE(board.HasHandle(2));
  EXPECT_FALSE(board.WriteOutputRptA());
  EXPECT_FALSE(board.ReadInputRptB());
  EXPECT_EQ(board.Get_LS_Response(0), 55);
  EXPECT_EQ(agent.writesTried, 0);
  EXPECT_EQ(agent.readsTried, 0);
}

TEST(TLSBinding, ClosingAnotherInterfaceChangesNothing) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  board.HidClosed(99);
  EXPECT_TRUE(board.HasHandle(2));
  EXPECT_TRUE(board.WriteOutputRptA());
}

TEST(TLSBinding, UnBindRptLeavesTheIndexOfAnotherReportAlone) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  agent.Answers({{1, 1}});
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  TOneHidVar other;
  other.DoCreate(ReportType::Input, 0xFF00, 7, 1, "other");
  ScriptedAgent::Interface interface {
    8, support::kVendorId, support::kProductId, {
      {
        ReportType::Input, 7, 0xFF00, 6, {}
      }
    }
  };
  agent.Open(interface);
  ASSERT_TRUE(other.Bind(agent));
  board.UnBindRpt(other);
  agent.SelectInterface(0);
  EXPECT_TRUE(board.ReadInputRptB());
}

TEST(TLSBinding, UnBindRptOfAnOutputOfAnotherReportLeavesTheIndexAlone) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  agent.Open({8, support::kVendorId, support::kProductId, {{ReportType::Output, 7, 0xFF00, 6, {}}}});
  TOneHidVar other;
  other.DoCreate(ReportType::Output, 0xFF00, 7, 1, "other");
  ASSERT_TRUE(other.Bind(agent));
  board.UnBindRpt(other);
  EXPECT_TRUE(board.WriteOutputRptA());
  EXPECT_EQ(agent.currentReport, 2);
}

TEST(TLSBinding, UnBindRptOfAVariableOfTheOtherDirectionLeavesTheIndexAlone) {
  ScriptedAgent agent;
  // One number for both: reports are counted for each direction here.
  agent.Open({2,
              support::kVendorId,
              support::kProductId,
              {{ReportType::Output, 1, 0xFF00, 4, {}},
               {ReportType::Input, 2, 0xFF00, 4, {}},
               {ReportType::Feature, 3, 0xFF00, 4, {}}}});
  agent.Answers({{1, 1}});
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  TOneHidVar feature;
  feature.DoCreate(ReportType::Feature, 0xFF00, 3, 1, "feature");
  ASSERT_TRUE(feature.Bind(agent));
  board.UnBindRpt(feature);
  EXPECT_TRUE(board.WriteOutputRptA());
  board.UnBindRpt(board.CommandVariable());
  EXPECT_TRUE(board.ReadInputRptB());
}

TEST(TLSBinding, ABoardBehindAnotherOneIsWrittenToAndReadFromItself) {
  ScriptedAgent agent;
  // The first has other numbers, and fewer fields.
  agent.Open({1, support::kVendorId, support::kProductId, {{ReportType::Input, 9, 0xFF00, 0, {}}}});
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  agent.Answers({{0x12, 0x34}, {0x56, 0x78}});
  agent.SelectInterface(0);
  EXPECT_TRUE(board.WriteOutputRptA());
  EXPECT_THAT(agent.writtenTo, ElementsAre(2));
  // Whoever gets a turn before the answer is read may have selected another interface.
  agent.SelectInterface(0);
  EXPECT_TRUE(board.ReadInputRptB());
  EXPECT_THAT(agent.readFrom, ElementsAre(2));
  EXPECT_EQ(board.Get_LS_Response(0), 0x12);
  EXPECT_EQ(board.Get_LS_Response(1), 0x34);
}

TEST(TLSBinding, UnBindRptOfItsOwnVariablesStopsEachDirection) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  agent.Answers({{1, 1}});
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  board.UnBindRpt(board.CommandVariable());
  EXPECT_FALSE(board.WriteOutputRptA());
  EXPECT_TRUE(board.ReadInputRptB());
  board.UnBindRpt(board.ResponseVariable());
  EXPECT_FALSE(board.ReadInputRptB());
}

TEST(TLSBinding, ReBindFindsTheVariablesAgainWithoutLookingAtTheIds) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  agent.Close(2);
  ScriptedAgent::Interface moved = ScriptedAgent::BoardInterface(6);
  moved.vendorId = 1;
  agent.Open(moved);
  EXPECT_EQ(board.ReBind(agent), 0);
  EXPECT_TRUE(board.HasHandle(6));
  EXPECT_TRUE(board.WriteOutputRptA());
  EXPECT_EQ(agent.currentReport, 0);
}

TEST(TLSBinding, RebindingTakesTheVariablesOutOfTheCounts) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  agent.Close(2);
  agent.Open({5, support::kVendorId, support::kProductId, {}});
  EXPECT_EQ(board.ReBind(agent), 2);
  EXPECT_EQ(board.DeviceIdentity(), 1);
  EXPECT_EQ(board.VariableCount(), 0);
  EXPECT_EQ(board.UnboundVarCount(), 0);
  EXPECT_TRUE(board.IsAllUnbound());
}

TEST(TLSBinding, ShutdownClearsTheFlag) {
  ScriptedAgent agent;
  agent.Open(Board(2));
  TLS board;
  ASSERT_EQ(board.BindVars(agent), 0);
  board.Shutdown();
  EXPECT_FALSE(board.IsBoundFlag());
}

TEST(TLSBinding, AnIndexOutsideABufferIsAnError) {
  TLS board;
  EXPECT_NO_THROW(board.Set_LS_Command(1027, 1));
  EXPECT_NO_THROW(board.Set_LS_Response(1, 1));
  EXPECT_THROW(board.Set_LS_Command(1028, 1), std::out_of_range);
  EXPECT_THROW(board.Set_LS_Command(-1, 1), std::out_of_range);
  EXPECT_THROW(board.Set_LS_Response(2, 1), std::out_of_range);
  EXPECT_THROW(static_cast<void>(board.Get_LS_Command(1028)), std::out_of_range);
  EXPECT_THROW(static_cast<void>(board.Get_LS_Response(-1)), std::out_of_range);
}

}  // namespace
}  // namespace kestrin::core::device
