// SPDX-License-Identifier: MIT
#include "platform/doctor/UdevRule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "platform/doctor/ProgramRun.h"
#include "support/TestFiles.h"

namespace kestrin::platform::doctor {
namespace {

namespace fs = std::filesystem;
using core::base::FailureKind;
using core::base::Result;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// A system of its own, and stand-ins for the programs that are called, which note what they are called with.
class UdevRuleTest : public testing::Test {
 protected:
  UdevRuleTest() {
    fs::create_directories(root / "etc/udev");
    fs::create_directories(root / "bin");
    Program("udevadm", "exit 0");
    // What the scripts need of the real system; helpers of its own are not to be found.
    for (const char* tool : {"cat", "chmod", "mkdir", "mv", "rm", "sync", "sh"}) {
      const std::optional<fs::path> real = FindProgram(tool);
      if (real) fs::create_symlink(*real, root / "bin" / tool);
    }
    ::setenv("PATH", (root / "bin").c_str(), 1);
  }
  ~UdevRuleTest() override { ::setenv("PATH", m_path.c_str(), 1); }

  /// A program on the search path that notes how it is called and goes on with `script`.
  void Program(const std::string& name, const std::string& script) {
    // Of a script among the arguments the first line does.
    const std::string note = "printf '%s\\n' \"" + name + " $*\" | { read -r line; printf '%s\\n' \"$line\"; }";
    const fs::path file = support::WriteBytes(root / "bin" / name,
                                              "#!/bin/sh\n" + note + " >>'" + Log().string() + "'\n" + script + "\n");
    fs::permissions(file, fs::perms::owner_all);
  }
  /// Those that let the person be the administrator.
  void LetIn() {
    Program("sudo", "[ \"$1\" = -- ] && shift; exec \"$@\"");
    Program("pkexec", "[ \"$1\" = --disable-internal-agent ] && shift; exec \"$@\"");
  }
  [[nodiscard]] fs::path Log() const { return root.Path() / "calls"; }
  /// The first words of the calls that were noted.
  [[nodiscard]] std::vector<std::string> Calls() const {
    std::vector<std::string> calls;
    if (!fs::exists(Log())) return calls;
    std::istringstream lines(support::ReadBytes(Log()));
    for (std::string line; std::getline(lines, line);) calls.push_back(line);
    return calls;
  }
  [[nodiscard]] UdevRule Rule(UdevRule::Asks asks = UdevRule::Asks::AtTerminal, bool isAdministrator = false) {
    return UdevRule(asks, {root.Path(), isAdministrator, pump});
  }
  [[nodiscard]] fs::path File() const { return root.Path() / "etc/udev/rules.d/70-kestrin.rules"; }
  /// The names in the folder of the rules.
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    if (fs::exists(File().parent_path()))
      for (const auto& entry : fs::directory_iterator(File().parent_path()))
        names.push_back(entry.path().filename().string());
    return names;
  }

  const std::string rule = support::ReadBytes(KESTRIN_RULE_FILE);
  support::TemporaryFolder root;
  core::base::EventPump pump;

 private:
  std::string m_path = std::getenv("PATH");
};

constexpr const char* kReload = "udevadm control --reload";
constexpr const char* kTrigger = "udevadm trigger --action=add --subsystem-match=hidraw";
constexpr const char* kSettle = "udevadm settle --timeout=10";

TEST_F(UdevRuleTest, SaysWhatItWritesAndWhere) {
  const UdevRule real(UdevRule::Asks::AtDesktop);
  EXPECT_EQ(real.Path(), "/etc/udev/rules.d/70-kestrin.rules");
  EXPECT_EQ(real.Content(), rule);
  EXPECT_TRUE(Rule().CanChange());
  fs::remove_all(root / "etc");
  EXPECT_FALSE(Rule().CanChange());
}

TEST_F(UdevRuleTest, IsInstalledAndApplied) {
  LetIn();
  const mode_t before = ::umask(077);
  EXPECT_EQ(Rule().Install().Text(), "");
  ::umask(before);
  EXPECT_EQ(support::ReadBytes(File()), rule);
  struct stat status {};
  ASSERT_EQ(::stat(File().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0644U);
  EXPECT_THAT(Names(), ElementsAre("70-kestrin.rules"));
  const std::vector<std::string> calls = Calls();
  ASSERT_EQ(calls.size(), 4U);
  EXPECT_THAT(calls[0], StartsWith("sudo -- /bin/sh -c "));
  EXPECT_THAT(std::vector<std::string>(calls.begin() + 1, calls.end()), ElementsAre(kReload, kTrigger, kSettle));
}

TEST_F(UdevRuleTest, AtADesktopItIsPkexecThatAsks) {
  LetIn();
  EXPECT_EQ(Rule(UdevRule::Asks::AtDesktop).Install().Text(), "");
  EXPECT_THAT(Calls().at(0), StartsWith("pkexec --disable-internal-agent /bin/sh -c "));
  EXPECT_EQ(support::ReadBytes(File()), rule);
}

TEST_F(UdevRuleTest, AtATerminalWithoutSudoItIsPkexecThatAsks) {
  LetIn();
  fs::remove(root / "bin/sudo");
  EXPECT_EQ(Rule().Install().Text(), "");
  EXPECT_THAT(Calls().at(0), StartsWith("pkexec /bin/sh -c "));
}

TEST_F(UdevRuleTest, TheAdministratorIsNotAsked) {
  LetIn();
  EXPECT_EQ(Rule(UdevRule::Asks::AtTerminal, true).Install().Text(), "");
  EXPECT_THAT(Calls(), ElementsAre(kReload, kTrigger, kSettle));
  EXPECT_EQ(support::ReadBytes(File()), rule);
}

TEST_F(UdevRuleTest, TakesThePlaceOfAnother) {
  LetIn();
  fs::create_directories(File().parent_path());
  support::WriteBytes(File(), "something else");
  EXPECT_EQ(Rule().Install().Text(), "");
  EXPECT_EQ(support::ReadBytes(File()), rule);
}

TEST_F(UdevRuleTest, DoesNotWriteThroughALink) {
  LetIn();
  fs::create_directories(File().parent_path());
  support::WriteBytes(root / "victim", "mine");
  fs::create_symlink(root / "victim", File());
  EXPECT_EQ(Rule().Install().Text(), "");
  EXPECT_EQ(support::ReadBytes(root / "victim"), "mine");
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(File())));
}

TEST_F(UdevRuleTest, AFolderWithAnyNameIsNoCommand) {
  LetIn();
  const fs::path odd = root / "a;touch 'hurt' $(touch hurt) \"";
  fs::create_directories(odd / "etc/udev");
  UdevRule odder(UdevRule::Asks::AtTerminal, {odd, false, {}});
  EXPECT_EQ(odder.Install().Text(), "");
  EXPECT_EQ(support::ReadBytes(odd / "etc/udev/rules.d/70-kestrin.rules"), rule);
  EXPECT_FALSE(fs::exists("hurt"));
}

// --- What goes wrong ---

TEST_F(UdevRuleTest, WhoGivesNoPasswordHasCancelled) {
  struct {
    UdevRule::Asks asks;
    const char* helper;
    const char* end;
  } const rows[] = {{UdevRule::Asks::AtDesktop, "pkexec", "exit 126"},
                    {UdevRule::Asks::AtDesktop, "pkexec", "echo 'Not authorized' >&2; exit 127"},
                    {UdevRule::Asks::AtTerminal, "sudo", "echo 'sudo: 3 incorrect password attempts' >&2; exit 1"}};
  for (const auto& row : rows) {
    Program(row.helper, row.end);
    const Result<> installed = Rule(row.asks).Install();
    ASSERT_FALSE(installed);
    EXPECT_EQ(installed.Why().kind, FailureKind::Cancelled) << row.end;
    EXPECT_THAT(installed.Text(), StartsWith("The administrator's permission was not given, so nothing was changed."))
        << row.end;
    EXPECT_THAT(Names(), IsEmpty());
  }
}

TEST_F(UdevRuleTest, SaysWhatThePasswordProgramHasSaid) {
  Program("pkexec", "echo first >&2; echo 'No agent found' >&2; exit 127");
  EXPECT_THAT(Rule(UdevRule::Asks::AtDesktop).Install().Text(), testing::EndsWith("\nNo agent found"));
}

TEST_F(UdevRuleTest, WithoutAnybodyToAskItSaysWhatToType) {
  for (const auto asks : {UdevRule::Asks::AtTerminal, UdevRule::Asks::AtDesktop}) {
    const Result<> installed = Rule(asks).Install();
    ASSERT_FALSE(installed);
    EXPECT_EQ(installed.Why().kind, FailureKind::Failed);
    EXPECT_THAT(installed.Text(), HasSubstr("pkexec to ask for the administrator's password."));
    EXPECT_THAT(installed.Text(), HasSubstr(File().string()));
    EXPECT_THAT(installed.Text(), HasSubstr(std::string(kReload) + " && " + kTrigger));
  }
}

TEST_F(UdevRuleTest, ASystemThatDoesNotTakeItOverIsNamed) {
  LetIn();
  Program("udevadm", "echo 'Failed to send reload request' >&2; exit 1");
  const Result<> installed = Rule().Install();
  ASSERT_FALSE(installed);
  EXPECT_EQ(installed.Why().kind, FailureKind::Failed);
  EXPECT_EQ(installed.Text(),
            File().string() +
                " was changed, but the system did not take it over: Failed to send reload request. Unplug "
                "the board and plug it in again; if that changes nothing, restart the computer.");
  EXPECT_EQ(support::ReadBytes(File()), rule) << "it is there, and whole";
  EXPECT_THAT(Calls().back(), "udevadm control --reload");
}

TEST_F(UdevRuleTest, ATriggerThatFailsIsNamedASlowSystemIsNot) {
  LetIn();
  Program("udevadm", "[ \"$1\" != trigger ]");
  EXPECT_THAT(Rule().Install().Text(), HasSubstr("the system did not take it over"));
  Program("udevadm", "[ \"$1\" != settle ]");
  EXPECT_EQ(Rule().Install().Text(), "");
}

/// Whatever step of the writing fails.
TEST_F(UdevRuleTest, ADiskThatIsFullLeavesWhatWasThere) {
  LetIn();
  fs::create_directories(File().parent_path());
  for (const char* before : {"", "what was there"}) {
    if (*before != '\0') support::WriteBytes(File(), before);
    for (const char* step : {"chmod", "mv", "mkdir"}) {
      const fs::path tool = root / "bin" / step;
      fs::rename(tool, root / "kept");
      Program(step, "echo 'No space left on device' >&2; exit 1");
      const Result<> installed = Rule().Install();
      fs::rename(root / "kept", tool);
      ASSERT_FALSE(installed) << step;
      EXPECT_EQ(installed.Text(), File().string() +
                                      " could not be changed: No space left on device. What was there is "
                                      "there still.");
      EXPECT_EQ(Names().size(), *before != '\0' ? 1U : 0U) << step << " has left something";
      if (*before != '\0') {
        EXPECT_EQ(support::ReadBytes(File()), before);
      }
    }
  }
  for (const std::string& call : Calls()) EXPECT_THAT(call, testing::Not(StartsWith("udevadm"))) << call;
}

TEST_F(UdevRuleTest, AFileThatMayNotGrowLeavesWhatWasThere) {
  // The shell itself is refused its bytes: a limit of none.
  Program("sudo", "shift; ulimit -f 0; exec \"$@\"");
  const Result<> installed = Rule().Install();
  ASSERT_FALSE(installed);
  EXPECT_THAT(Names(), testing::Not(testing::Contains("70-kestrin.rules")));
}

TEST_F(UdevRuleTest, AHelperThatIsKilledIsNamed) {
  Program("sudo", "kill -9 $$");
  const Result<> installed = Rule().Install();
  ASSERT_FALSE(installed);
  EXPECT_EQ(installed.Why().kind, FailureKind::Failed);
  EXPECT_THAT(installed.Text(), HasSubstr("ended with 137"));
}

TEST_F(UdevRuleTest, AHelperThatCannotBeStartedIsNamed) {
  Program("sudo", "");
  support::WriteBytes(root / "bin/sudo", "#!/no/such/shell\n");
  const Result<> installed = Rule().Install();
  ASSERT_FALSE(installed);
  EXPECT_EQ(installed.Why().kind, FailureKind::Failed);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(UdevRuleTest, WhoStopsWaitingIsNotKept) {
  fs::create_symlink("/bin/sleep", root / "bin/sleep");
  Program("sudo", "exec sleep 1000");
  int turns = 0;
  pump = [&] {
    if (++turns == 3) throw std::runtime_error("stopped");
  };
  EXPECT_THROW(static_cast<void>(Rule().Install()), std::runtime_error);
  EXPECT_EQ(turns, 3);
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(UdevRuleTest, WhatAHelperLeavesBehindIsNotWaitedFor) {
  fs::create_symlink("/bin/sleep", root / "bin/sleep");
  Program("pkexec", "sleep 1000 & echo $! >'" + (root / "left").string() + "'; exit 126");
  EXPECT_EQ(Rule(UdevRule::Asks::AtDesktop).Install().Why().kind, FailureKind::Cancelled);
  ::kill(std::stoi(support::ReadBytes(root / "left")), SIGKILL);
}

// --- Taking it away ---

TEST_F(UdevRuleTest, IsRemovedAndTheSystemToldSo) {
  LetIn();
  fs::create_directories(File().parent_path());
  support::WriteBytes(File(), rule);
  EXPECT_EQ(Rule().Remove().Text(), "");
  EXPECT_THAT(Names(), IsEmpty());
  const std::vector<std::string> calls = Calls();
  EXPECT_THAT(calls, ElementsAre(StartsWith("sudo -- /bin/sh -c "), kReload));
}

TEST_F(UdevRuleTest, OneThatIsNotThereIsRemovedWithoutAsking) {
  EXPECT_EQ(Rule().Remove().Text(), "");
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(UdevRuleTest, OneThatCameWithAPackageIsLeftToThat) {
  LetIn();
  const fs::path folder = root / "usr/lib/udev/rules.d";
  fs::create_directories(folder);
  fs::create_directories(root / "etc/udev");
  support::WriteBytes(folder / "70-kestrin.rules", rule);
  EXPECT_EQ(Rule().Remove().Text(),
            "The rule at /usr/lib/udev/rules.d/70-kestrin.rules came with a package of the system and goes with that.");
  EXPECT_TRUE(fs::exists(folder / "70-kestrin.rules"));
  EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(UdevRuleTest, OneThatCannotBeRemovedStays) {
  LetIn();
  fs::create_directories(File() / "in the way");
  const Result<> removed = Rule().Remove();
  ASSERT_FALSE(removed);
  EXPECT_THAT(removed.Text(), HasSubstr("could not be changed"));
  EXPECT_THAT(Names(), ElementsAre("70-kestrin.rules"));
  EXPECT_FALSE(Rule().Install()) << "nor does a folder become the rule";
}

}  // namespace
}  // namespace kestrin::platform::doctor
