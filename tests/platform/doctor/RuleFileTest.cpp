// SPDX-License-Identifier: MIT
#include "platform/doctor/RuleFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/TestFiles.h"

namespace kestrin::platform::doctor {
namespace {

namespace fs = std::filesystem;
using core::doctor::RuleState;

class RuleFile : public testing::Test {
 protected:
  RuleFile() { fs::create_directories(root / "etc/udev"); }

  void Put(const std::string& folder, const std::string& content) {
    fs::create_directories(root / folder);
    support::WriteBytes(root / folder / "70-kestrin.rules", content);
  }
  [[nodiscard]] RuleState State() { return FindRule(root.Path()).state; }

  const std::string rule = support::ReadBytes(KESTRIN_RULE_FILE);
  support::TemporaryFolder root;
};

TEST_F(RuleFile, TheRuleIsTheOneThatPackagesTake) { EXPECT_EQ(RuleText(), rule); }

TEST_F(RuleFile, IsMissingUntilItIsPutAnywhereWhereItIsLookedFor) {
  EXPECT_EQ(State(), RuleState::Missing);
  EXPECT_EQ(FindRule(root.Path()).path, "");
  for (const std::string folder :
       {"lib/udev/rules.d", "usr/lib/udev/rules.d", "run/udev/rules.d", "etc/udev/rules.d"}) {
    Put(folder, rule);
    EXPECT_EQ(State(), RuleState::Installed) << folder;
    EXPECT_EQ(FindRule(root.Path()).path, "/" + folder + "/70-kestrin.rules");
    fs::remove(root / folder / "70-kestrin.rules");
  }
}

TEST_F(RuleFile, OneOfTheAdministratorHidesOneOfAPackage) {
  Put("usr/lib/udev/rules.d", rule);
  Put("etc/udev/rules.d", "");
  EXPECT_EQ(State(), RuleState::Different);
  Put("etc/udev/rules.d", rule);
  Put("usr/lib/udev/rules.d", "");
  EXPECT_EQ(State(), RuleState::Installed);
}

TEST_F(RuleFile, CommentsAndBlanksSayNothing) {
  Put("etc/udev/rules.d", "# Another comment.\n\n  " + rule + "\n\t\n# The end");
  EXPECT_EQ(State(), RuleState::Installed);
}

TEST_F(RuleFile, ALineMoreOrLessOrAnotherSaysSomethingElse) {
  std::string changed = rule;
  changed.replace(changed.find("0660"), 4, "0666");
  for (const std::string& text : {rule + "SUBSYSTEM==\"usb\", MODE=\"0666\"\n", rule.substr(0, rule.find("SUBSYSTEMS")),
                                  changed, std::string(), std::string(100000, '#')}) {
    Put("etc/udev/rules.d", text);
    EXPECT_EQ(State(), RuleState::Different) << text.substr(0, 2000);
  }
}

TEST_F(RuleFile, WhatCannotBeReadIsNotTheRule) {
  const fs::path file = root / "etc/udev/rules.d/70-kestrin.rules";
  fs::create_directories(file);
  EXPECT_EQ(State(), RuleState::Different);
  fs::remove(file);
  fs::create_symlink("nowhere", file);
  EXPECT_EQ(State(), RuleState::Different);
  fs::remove(file);
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(State(), RuleState::Different);
}

TEST_F(RuleFile, NoRuleIsNeededWhereNobodyReadsThem) {
  fs::remove_all(root / "etc");
  EXPECT_EQ(State(), RuleState::NotNeeded);
  EXPECT_FALSE(HasRules(root.Path()));
  fs::create_directories(root / "run/udev");
  EXPECT_TRUE(HasRules(root.Path()));
}

}  // namespace
}  // namespace kestrin::platform::doctor
