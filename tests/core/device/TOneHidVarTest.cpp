// SPDX-License-Identifier: MIT
#include "core/device/TOneHidVar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ScriptedAgent.h"

namespace kestrin::core::device {
namespace {

using support::ScriptedAgent;
using ::testing::ElementsAre;

TOneHidVar Created(ReportType type = ReportType::Output, std::int32_t usage = 1) {
  TOneHidVar variable;
  variable.DoCreate(type, 0xFF00, usage, 1, "LS_Command'");
  return variable;
}

ScriptedAgent AgentWith(const ScriptedAgent::Variable& variable) {
  ScriptedAgent agent;
  agent.Open({7, support::kVendorId, support::kProductId, {{ReportType::Input, 9, 0x000C, 0, {}}, variable}});
  return agent;
}

TEST(TOneHidVar, IsUnboundAfterItsCreation) {
  const TOneHidVar variable = Created();
  EXPECT_FALSE(variable.IsBound());
  EXPECT_EQ(variable.VarName(), "LS_Command'");
  EXPECT_EQ(variable.RptType(), ReportType::Output);
  EXPECT_EQ(variable.UsagePage(), 0xFF00);
  EXPECT_EQ(variable.Usage(), 1);
  EXPECT_EQ(variable.VarIdentity(), 1);
  EXPECT_EQ(variable.VarIndex(), -1);
  EXPECT_EQ(variable.RptIndex(), -1);
  EXPECT_EQ(variable.HidHandle(), 0);
}

TEST(TOneHidVar, CopiesEverythingThatTheAgentKnowsWhenItIsBound) {
  VariableAttributes attributes;
  attributes.IsButton = true;
  attributes.NoWrap = true;
  attributes.AbsoluteNotRelative = true;
  attributes.PhysicalMinimum = -5;
  attributes.PhysicalMaximum = 50;
  attributes.LogicalMinimum = -1;
  attributes.LogicalMaximum = 255;
  attributes.SizeInBits = 8;
  attributes.StringDescriptor = "Command";
  ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 4, attributes});
  TOneHidVar variable = Created();
  ASSERT_TRUE(variable.Bind(agent));
  EXPECT_TRUE(variable.IsBound());
  EXPECT_EQ(variable.VarIndex(), 1);
  EXPECT_EQ(variable.RptIndex(), 4);
  EXPECT_EQ(variable.HidHandle(), 7);
  EXPECT_TRUE(variable.Attributes().IsButton);
  EXPECT_FALSE(variable.Attributes().Volatile);
  EXPECT_TRUE(variable.Attributes().NoWrap);
  EXPECT_TRUE(variable.Attributes().AbsoluteNotRelative);
  EXPECT_EQ(variable.Attributes().PhysicalMinimum, -5);
  EXPECT_EQ(variable.Attributes().PhysicalMaximum, 50);
  EXPECT_EQ(variable.Attributes().LogicalMinimum, -1);
  EXPECT_EQ(variable.Attributes().LogicalMaximum, 255);
  EXPECT_EQ(variable.Attributes().SizeInBits, 8);
  EXPECT_EQ(variable.Attributes().StringDescriptor, "Command");
  EXPECT_THAT(agent.variableNames, ElementsAre("LS_Command'"));
  EXPECT_THAT(agent.variableOptions, ElementsAre(1));
}

TEST(TOneHidVar, CopiesEachFlagOnItsOwn) {
  using Flag = bool VariableAttributes::*;
  constexpr Flag kFlags[] = {&VariableAttributes::IsButton,
                             &VariableAttributes::Volatile,
                             &VariableAttributes::NoWrap,
                             &VariableAttributes::NoPrefState,
                             &VariableAttributes::Linear,
                             &VariableAttributes::HasNullState,
                             &VariableAttributes::BitsNotBuffer,
                             &VariableAttributes::ArrayNotVariable,
                             &VariableAttributes::AbsoluteNotRelative};
  for (const Flag set : kFlags) {
    VariableAttributes attributes;
    attributes.*set = true;
    ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 4, attributes});
    TOneHidVar variable = Created();
    ASSERT_TRUE(variable.Bind(agent));
    for (const Flag flag : kFlags) EXPECT_EQ(variable.Attributes().*flag, flag == set);
  }
}

TEST(TOneHidVar, TransfersAndValuesAreThoseOfItsOwnInterface) {
  ScriptedAgent agent;
  agent.Open({1, support::kVendorId, support::kProductId, {}});
  agent.Open({7, support::kVendorId, support::kProductId, {{ReportType::Input, 1, 0xFF00, 4, {}}}});
  agent.Answers({{1, 2}});
  agent.unScaledValue = 43;
  TOneHidVar variable = Created(ReportType::Input);
  ASSERT_TRUE(variable.Bind(agent));
  agent.SelectInterface(0);
  EXPECT_TRUE(variable.update(true));
  EXPECT_THAT(agent.readFrom, ElementsAre(7));
  agent.SelectInterface(0);
  EXPECT_EQ(variable.UnScaledValue(), 43);
  EXPECT_EQ(agent.InterfaceHandle(), 7);
}

TEST(TOneHidVar, StaysUnboundWhenTypeUsageOrPageDiffer) {
  const ScriptedAgent::Variable others[] = {{ReportType::Feature, 1, 0xFF00, 0, {}},
                                            {ReportType::Output, 2, 0xFF00, 0, {}},
                                            {ReportType::Output, 1, 0xFF01, 0, {}}};
  for (const auto& other : others) {
    ScriptedAgent agent = AgentWith(other);
    TOneHidVar variable = Created();
    EXPECT_FALSE(variable.Bind(agent));
    EXPECT_FALSE(variable.IsBound());
    EXPECT_TRUE(agent.variableNames.empty());
  }
}

TEST(TOneHidVar, TakesAnErrorOfTheAgentAsNotFound) {
  ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 0, {}});
  agent.throwWhileBinding = true;
  TOneHidVar variable = Created();
  EXPECT_FALSE(variable.Bind(agent));
}

TEST(TOneHidVar, StaysUnboundWhenTheAgentFailsHalfWay) {
  ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 4, {}});
  agent.throwOnAttributes = true;
  TOneHidVar variable = Created();
  EXPECT_FALSE(variable.Bind(agent));
  EXPECT_FALSE(variable.IsBound());
  EXPECT_EQ(variable.RptIndex(), -1);
  EXPECT_EQ(variable.HidHandle(), 0);
}

TEST(TOneHidVar, ForgetsItsFieldAndTakesNewIdentitiesWhenUnbound) {
  ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 4, {}});
  TOneHidVar variable = Created();
  ASSERT_TRUE(variable.Bind(agent));
  const std::int32_t id = variable.ClassDebugID();
  variable.UnBind();
  EXPECT_EQ(variable.VarIndex(), -1);
  EXPECT_EQ(variable.RptIndex(), -1);
  EXPECT_EQ(variable.HidHandle(), 0);
  EXPECT_NE(variable.VarIdentity(), 1);
  EXPECT_NE(variable.ClassDebugID(), id);
}

TEST(TOneHidVar, HasAnIdThatNoOtherObjectHas) { EXPECT_NE(Created().ClassDebugID(), Created().ClassDebugID()); }

struct UpdateCase {
  ReportType type;
  bool read;
  int reads;
  int writes;
};

TEST(TOneHidVar, UpdateTransfersTheReportThatHoldsIt) {
  const UpdateCase cases[] = {{ReportType::Input, true, 1, 0},   {ReportType::Input, false, 1, 0},
                              {ReportType::Output, true, 0, 1},  {ReportType::Output, false, 0, 1},
                              {ReportType::Feature, true, 1, 0}, {ReportType::Feature, false, 0, 1}};
  for (const UpdateCase& c : cases) {
    ScriptedAgent agent = AgentWith({c.type, 1, 0xFF00, 4, {}});
    agent.Answers({{1, 2}});
    TOneHidVar variable = Created(c.type);
    ASSERT_TRUE(variable.Bind(agent));
    EXPECT_TRUE(variable.update(c.read));
    EXPECT_EQ(agent.currentReport, 4);
    EXPECT_EQ(agent.readsTried, c.reads);
    EXPECT_EQ(agent.writesTried, c.writes);
  }
}

TEST(TOneHidVar, UpdateTellsWhenTheTransferFailed) {
  ScriptedAgent agent = AgentWith({ReportType::Input, 1, 0xFF00, 4, {}});
  TOneHidVar variable = Created(ReportType::Input);
  ASSERT_TRUE(variable.Bind(agent));
  EXPECT_FALSE(variable.update(true));
}

TEST(TOneHidVar, UpdateOfAnUnboundVariableTransfersNothing) {
  TOneHidVar variable = Created();
  EXPECT_FALSE(variable.update(true));
}

TEST(TOneHidVar, ValuesGoThroughTheAgentOnlyWhileBound) {
  ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 0, {}});
  agent.scaledValue = 42;
  agent.unScaledValue = 43;
  TOneHidVar variable = Created();
  EXPECT_EQ(variable.ScaledValue(), 0);
  EXPECT_EQ(variable.UnScaledValue(), 0);
  variable.SetScaledValue(1);
  variable.SetUnScaledValue(2);
  EXPECT_EQ(agent.scaledValue, 42);
  ASSERT_TRUE(variable.Bind(agent));
  EXPECT_EQ(variable.ScaledValue(), 42);
  EXPECT_EQ(variable.UnScaledValue(), 43);
  variable.SetScaledValue(1);
  variable.SetUnScaledValue(2);
  EXPECT_EQ(agent.scaledValue, 1);
  EXPECT_EQ(agent.unScaledValue, 2);
}

TEST(TOneHidVar, AnAgentThatLostTheVariableReadsZero) {
  ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 0, {}});
  agent.scaledValue = 42;
  TOneHidVar variable = Created();
  ASSERT_TRUE(variable.Bind(agent));
  agent.Close(7);
  EXPECT_EQ(variable.ScaledValue(), 0);
  EXPECT_NO_THROW(variable.SetScaledValue(1));
}

TEST(TOneHidVar, BoolValueIsAlwaysFalse) {
  ScriptedAgent agent = AgentWith({ReportType::Output, 1, 0xFF00, 0, {}});
  TOneHidVar variable = Created();
  variable.SetBoolValue(true);
  EXPECT_FALSE(variable.BoolValue());
  ASSERT_TRUE(variable.Bind(agent));
  variable.SetBoolValue(true);
  EXPECT_FALSE(variable.BoolValue());
}

TEST(TOneHidVar, KeepsScaleModeAndTag) {
  TOneHidVar variable = Created();
  variable.SetScaleMode(3);
  variable.SetTag(std::string("mine"));
  EXPECT_EQ(variable.ScaleMode(), 3);
  EXPECT_EQ(std::any_cast<std::string>(variable.Tag()), "mine");
}

}  // namespace
}  // namespace kestrin::core::device
