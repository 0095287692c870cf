// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/CommandLine.h"
#include "cli/DoctorPorts.h"
#include "cli/Terminal.h"
#include "support/BoardDescriptors.h"

namespace kestrin::cli {
namespace {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;
using core::doctor::Access;
using core::doctor::LinkFacts;
using core::doctor::LinkNode;
using core::doctor::RuleState;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// What the command did with its ports.
struct Deeds {
  std::vector<std::string> rule;
  std::vector<std::string> questions;
  int looks = 0;
};

class FakeSurvey final : public core::doctor::LinkSurvey {
 public:
  FakeSurvey(const LinkFacts& facts, Deeds& deeds) : m_facts(facts), m_deeds(deeds) {}
  [[nodiscard]] LinkFacts Look() override {
    ++m_deeds.looks;
    return m_facts;
  }

 private:
  const LinkFacts& m_facts;
  Deeds& m_deeds;
};

class FakeRule final : public core::doctor::PermissionRule {
 public:
  FakeRule(bool canChange, Result<> result, Deeds& deeds)
      : m_canChange(canChange), m_result(std::move(result)), m_deeds(deeds) {}
  [[nodiscard]] bool CanChange() const override { return m_canChange; }
  [[nodiscard]] std::string Path() const override { return "/rules/70"; }
  [[nodiscard]] std::string Content() const override { return "a line\nanother\n"; }
  Result<> Install() override { return Note("install"); }
  Result<> Remove() override { return Note("remove"); }

 private:
  Result<> Note(const char* deed) {
    m_deeds.rule.emplace_back(deed);
    return m_result;
  }
  bool m_canChange;
  Result<> m_result;
  Deeds& m_deeds;
};

/// The command over ports that only pretend.
class DoctorRule : public testing::Test {
 protected:
  struct End {
    int code = 0;
    std::string out;
    std::string errors;
  };

  [[nodiscard]] End Run(std::vector<const char*> arguments) {
    DoctorPorts ports;
    ports.survey = std::make_unique<FakeSurvey>(facts, deeds);
    ports.makeRule = [this](const core::base::EventPump&) {
      return std::make_unique<FakeRule>(canChange, result, deeds);
    };
    ports.ask = [this](const std::string& question) {
      deeds.questions.push_back(question);
      return answer;
    };
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(MakeDoctorCommand(std::move(ports)));
    arguments.insert(arguments.begin(), {"kestrinctl", "doctor"});
    Interrupt interrupt;
    std::ostringstream out;
    std::ostringstream errors;
    const int code = CommandLine(std::move(commands), "1")
                         .Run(static_cast<int>(arguments.size()), arguments.data(), interrupt, out, errors);
    return {code, out.str(), errors.str()};
  }
  [[nodiscard]] static LinkNode Node(const std::string& path, Access access) {
    LinkNode node;
    node.path = path;
    node.access = access;
    node.descriptor = support::BoardDescriptor();
    node.hasVariables = true;
    return node;
  }
  [[nodiscard]] static nlohmann::json Parse(const End& end) { return nlohmann::json::parse(end.out, nullptr, false); }

  LinkFacts facts;
  Deeds deeds;
  bool canChange = true;
  Result<> result;
  std::optional<bool> answer;
};

// --- Consent ---

TEST_F(DoctorRule, WhoAgreesGetsIt) {
  answer = true;
  const End end = Run({"--install-rule"});
  EXPECT_EQ(end.code, 0);
  EXPECT_THAT(deeds.rule, ElementsAre("install"));
  ASSERT_EQ(deeds.questions.size(), 1U);
  EXPECT_THAT(deeds.questions[0],
              HasSubstr("This writes the file /rules/70 as the administrator:\n\na line\nanother\n"));
  EXPECT_THAT(end.out, HasSubstr("/rules/70 permits the people at this computer"));
  EXPECT_EQ(end.errors, "");
}

TEST_F(DoctorRule, WhoDeclinesDoesNot) {
  answer = false;
  for (const char* change : {"--install-rule", "--remove-rule"}) {
    const End end = Run({change});
    EXPECT_EQ(end.code, 1);
    EXPECT_EQ(end.errors, "kestrinctl: Nothing was changed.\n");
  }
  EXPECT_THAT(deeds.rule, IsEmpty());
}

TEST_F(DoctorRule, WhoCannotBeAskedIsShownWhatWouldBeDone) {
  const End install = Run({"--install-rule"});
  EXPECT_EQ(install.code, 2);
  EXPECT_THAT(install.errors, HasSubstr("This writes the file /rules/70 as the administrator:\n\na line\nanother\n"));
  EXPECT_THAT(install.errors, EndsWith("Nothing was changed. Repeat the command with --yes if you agree.\n"));
  const End remove = Run({"--remove-rule"});
  EXPECT_EQ(remove.code, 2);
  EXPECT_THAT(remove.errors, HasSubstr("This removes the file /rules/70 as the administrator.\n"));
  EXPECT_THAT(deeds.rule, IsEmpty());
}

TEST_F(DoctorRule, WhoHasSaidYesIsNotAsked) {
  const End end = Run({"--remove-rule", "--yes", "--json"});
  EXPECT_EQ(end.code, 0);
  EXPECT_THAT(deeds.rule, ElementsAre("remove"));
  EXPECT_THAT(deeds.questions, IsEmpty());
  EXPECT_EQ(Parse(end), (nlohmann::json{{"installed", false}, {"path", "/rules/70"}}));
  EXPECT_EQ(deeds.looks, 0);
}

TEST_F(DoctorRule, WhatFailsIsTold) {
  for (const FailureKind kind : {FailureKind::Cancelled, FailureKind::Failed}) {
    result = Failure{kind, "the reason"};
    const End end = Run({"--install-rule", "--yes"});
    EXPECT_EQ(end.code, 1);
    EXPECT_EQ(end.out, "");
    EXPECT_EQ(end.errors, "kestrinctl: the reason\n");
  }
}

TEST_F(DoctorRule, WhereThereAreNoRulesNobodyIsAsked) {
  canChange = false;
  answer = true;
  EXPECT_EQ(Run({"--install-rule"}).code, 1);
  EXPECT_THAT(deeds.questions, IsEmpty());
  EXPECT_THAT(deeds.rule, IsEmpty());
}

TEST(AskYesOrNo, TakesNothingButAYesForAYes) {
  const int person = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_GE(person, 0);
  ASSERT_EQ(::grantpt(person), 0);
  ASSERT_EQ(::unlockpt(person), 0);
  const int terminal = ::open(::ptsname(person), O_RDWR | O_NOCTTY);
  ASSERT_GE(terminal, 0);
  const int before = ::dup(STDIN_FILENO);
  ASSERT_EQ(::dup2(terminal, STDIN_FILENO), STDIN_FILENO);
  // The last one ends the input.
  struct {
    std::string typed;
    bool agreed;
  } const rows[] = {{"y\n", true},     {"YES\n", true}, {"n\n", false}, {"\n", false},
                    {"yess\n", false}, {" y\n", false}, {"\x04", false}};
  for (const auto& row : rows) {
    ASSERT_EQ(::write(person, row.typed.data(), row.typed.size()), static_cast<ssize_t>(row.typed.size()));
    EXPECT_EQ(AskYesOrNo("Go on?"), row.agreed) << row.typed;
  }
  std::cin.clear();
  std::clearerr(stdin);
  const int nobody = ::open("/dev/null", O_RDONLY);
  ASSERT_EQ(::dup2(nobody, STDIN_FILENO), STDIN_FILENO);
  EXPECT_EQ(AskYesOrNo("Go on?"), std::nullopt);
  ASSERT_EQ(::dup2(before, STDIN_FILENO), STDIN_FILENO);
  for (const int file : {person, terminal, before, nobody}) ::close(file);
}

// --- What the survey sees, as the command tells it ---

TEST_F(DoctorRule, AMissingPermissionNamesTheCommandThatGivesIt) {
  facts.nodes = {Node("/dev/hidraw77", Access::NotPermitted)};
  facts.rule = RuleState::Missing;
  const End end = Run({});
  EXPECT_EQ(end.code, 1);
  EXPECT_THAT(end.out, HasSubstr("[!!] May this person open it?  No\n"));
  EXPECT_THAT(end.out, HasSubstr("\n     kestrinctl doctor --install-rule\n"));
  EXPECT_EQ(deeds.looks, 1);
  EXPECT_THAT(deeds.rule, IsEmpty());
}

TEST_F(DoctorRule, AProgramThatHasTheBoardIsNamed) {
  facts.nodes = {Node("/dev/hidraw77", Access::InUse)};
  facts.nodes[0].user = "kestrin (4711)";
  const End end = Run({});
  EXPECT_EQ(end.code, 1);
  EXPECT_THAT(end.out,
              HasSubstr("[!!] Is another program using it?  Yes\n     Another program is using it: kestrin (4711).\n"
                        "     Do this next: Close kestrin (4711).\n"));
  EXPECT_EQ(end.errors, "kestrinctl: Another program is using it: kestrin (4711).\n");
}

TEST_F(DoctorRule, ABoardThatIsThereButHasNoInterfaceIsNoMissingBoard) {
  facts.bus = {{"1-2", "Corvent", "Kestrin", "", false, std::nullopt}};
  EXPECT_EQ(Run({"--board", "hid:/no/such"}).code, 3) << "at that path there is none";
  facts.nodes = {Node("/dev/hidraw77", Access::Open)};
  facts.nodes[0].hasVariables = false;
  const End end = Run({});
  EXPECT_EQ(end.code, 1);
  EXPECT_THAT(end.out, HasSubstr("The device at /dev/hidraw77 has the ids of a board but not its reports."));
}

TEST_F(DoctorRule, APathStandsForNoOtherBoard) {
  facts.nodes = {Node("/dev/hidraw77", Access::NotPermitted), Node("/dev/hidraw78", Access::InUse)};
  const End end = Run({"--board", "hid:/dev/hidraw78", "--json"});
  EXPECT_EQ(end.code, 1);
  EXPECT_EQ(Parse(end)["findings"][1]["state"], "ok");
  EXPECT_EQ(Parse(end)["findings"][2]["state"], "problem");
}

TEST_F(DoctorRule, ABoardThatIsSeenButNeverOpensIsLookedAtAgainAndThenHasAProblem) {
  facts.nodes = {Node("/no/such/board", Access::Open)};
  const End end = Run({"--board", "hid:/no/such/board", "--json"});
  EXPECT_EQ(end.code, 1);
  EXPECT_EQ(deeds.looks, 3);
  EXPECT_EQ(Parse(end)["findings"][3]["state"], "problem");
  EXPECT_THAT(end.errors, Not(IsEmpty()));
}

}  // namespace
}  // namespace kestrin::cli
