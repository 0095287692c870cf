// SPDX-License-Identifier: MIT
#include "core/doctor/DoctorReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "Cases.h"

namespace kestrin::core::doctor {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; });
  return text;
}

/// A report on these facts; in it the numbers have crept into every place that others write.
std::string ReportOf(LinkFacts facts, const Answers& answers, bool withSerialNumber) {
  facts.nodes[0].why = "no 4b535401 at usb:ku-77123";
  facts.nodes[0].path = "/dev/by-id/KU-77123-4B535401";
  facts.nodes[0].user = "4B:53:54:01 (5)";
  facts.system = {"Debian", "hidapi 0.13.1", "ku-77123"};
  const Diagnosis diagnosis = Diagnose(facts, answers);
  return DoctorReport(facts, answers, diagnosis, {"kestrinctl 9.8.7", withSerialNumber});
}

TEST(DoctorReport, NamesNoSerialNumberInAnySpelling) {
  Answers answers = GoodAnswers();
  answers.exchanges.push_back({"GetAccParam", {7, 0x4B, 0x53, 0x54, 0x01, 7}, 6, {}});
  for (const Access access : {Access::Open, Access::InUse, Access::Failed, Access::NotPermitted}) {
    const std::string report = Lower(ReportOf(OneBoard(access), answers, false));
    for (const char* spelling : {"4b535401", "4b 53 54 01", "4b:53:54:01", "4b-53-54-01", "4b53", "5401", "ku-77123"})
      EXPECT_THAT(report, Not(HasSubstr(spelling))) << static_cast<int>(access);
    EXPECT_THAT(report, HasSubstr("getsn: (left out), 4 of 4 bytes"));
    EXPECT_THAT(report, HasSubstr("usb serial: (left out)"));
  }
}

TEST(DoctorReport, NamesNoHalfOfASerialNumberThatCameInHalves) {
  Answers answers = GoodAnswers();
  answers.serialNumber.clear();
  answers.exchanges[1].answer.resize(2);
  const std::string report = Lower(ReportOf(OneBoard(), answers, false));
  EXPECT_THAT(report, Not(HasSubstr("4b 53")));
  EXPECT_THAT(report, Not(HasSubstr("4b53")));
  EXPECT_THAT(report, HasSubstr("getsn: (left out), 2 of 4 bytes"));
}

TEST(DoctorReport, KeepsTheOtherAnswersOfABoardThatWasNeverGivenANumber) {
  for (const std::uint8_t blank : {std::uint8_t{0xFF}, std::uint8_t{0}}) {
    Answers answers = GoodAnswers();
    answers.serialNumber = blank == 0 ? "00000000" : "FFFFFFFF";
    answers.exchanges[1].answer.assign(4, blank);
    answers.exchanges.push_back({"GetAccParam", std::vector<std::uint8_t>(6, blank), 6, {}});
    const std::string report = ReportOf(OneBoard(), answers, false);
    EXPECT_THAT(report, HasSubstr("GetSN: (left out), 4 of 4 bytes"));
    EXPECT_THAT(report, HasSubstr(blank == 0 ? "GetAccParam: 00 00 00 00 00 00, 6 of 6 bytes"
                                             : "GetAccParam: FF FF FF FF FF FF, 6 of 6 bytes"));
  }
}

TEST(DoctorReport, NamesItWhereItIsWanted) {
  const std::string report = ReportOf(OneBoard(), GoodAnswers(), true);
  EXPECT_THAT(report, HasSubstr("USB serial: KU-77123\n"));
  EXPECT_THAT(report, HasSubstr("GetSN: 4B 53 54 01, 4 of 4 bytes"));
  EXPECT_THAT(report, HasSubstr("serial number: 4B535401\n"));
}

TEST(DoctorReport, HoldsEverythingThatHelps) {
  LinkFacts facts = OneBoard();
  facts.nodes[0].permissions = "crw-rw----+ root plugdev";
  facts.system = {"Debian GNU/Linux 12", "hidapi 0.13.1"};
  Answers answers = GoodAnswers();
  answers.exchanges.push_back({"GetACC", {1, 2}, 4, std::chrono::microseconds(3000000)});
  const Diagnosis diagnosis = Diagnose(facts, answers);
  const std::string report = DoctorReport(facts, answers, diagnosis, {"kestrinctl 9.8.7", false});
  for (const char* part : {"  kestrinctl 9.8.7\n",
                           "  Debian GNU/Linux 12\n",
                           "  hidapi 0.13.1\n",
                           "  installed, /etc/udev/rules.d/70-kestrin.rules\n",
                           "  Is a board plugged in? ok\n",
                           "    Kestrin USB2, plugged in 3 minutes ago. The cable carries data.\n",
                           "  at 1-2\n",
                           "    manufacturer: Corvent\n",
                           "    HID interface: yes\n",
                           "    plugged in for: 3 minutes\n",
                           "  /dev/hidraw3\n",
                           "    access: can be opened\n",
                           "    permissions: crw-rw----+ root plugdev\n",
                           "    reports of a board: yes\n",
                           "    descriptor: 28 bytes\n",
                           "      06 00 FF 09 01 A1 01 15 00 26 FF 00 75 08 09 01\n",
                           "      96 04 04 91 02 09 02 95 02 81 02 C0\n",
                           "  GetID: 10 25, 2 of 2 bytes, 35 ms\n",
                           "  GetACC: 01 02, 2 of 4 bytes, 3.0 s\n",
                           "  GetACC was answered by 2 bytes; the protocol says 4.\n",
                           "  35000 35000 35000 35000 35000 35000 35000 40200 35000"})
    EXPECT_THAT(report, HasSubstr(part));
  EXPECT_EQ(report.back(), '\n');
}

TEST(DoctorReport, SaysHowFarItCameAndWhatToDo) {
  const LinkFacts facts = OneBoard(Access::NotPermitted, RuleState::Missing);
  const Diagnosis diagnosis = Diagnose(facts, std::nullopt);
  const std::string report = DoctorReport(facts, std::nullopt, diagnosis, {"kestrin 1", false});
  EXPECT_THAT(report, HasSubstr("  not installed\n"));
  EXPECT_THAT(report, HasSubstr("  May this person open it? problem\n"));
  EXPECT_THAT(report, HasSubstr("    next: Install the rule that comes with the program."));
  EXPECT_THAT(report, HasSubstr("  Does it answer? unknown\n"));
  EXPECT_THAT(report, Not(HasSubstr("Answers\n")));

  Answers silent;
  silent.written = true;
  EXPECT_THAT(DoctorReport(facts, silent, diagnosis, {"", false}), HasSubstr("The first question was not answered.\n"));
  EXPECT_THAT(DoctorReport(facts, Answers{}, diagnosis, {"", false}),
              HasSubstr("The first question could not be sent.\n"));
}

TEST(DoctorReport, LetsNoNameFromOutsideMakeALineOfItsOwn) {
  LinkFacts facts = OneBoard();
  facts.bus[0].product = "x\nRound trips";
  facts.nodes[0].user = "y\nz";
  facts.system = {"a\nb"};
  facts.rulePath = "c\nd";
  const std::string report = DoctorReport(facts, std::nullopt, Diagnose(facts, std::nullopt), {"p", false});
  for (const char* name : {"x?Round trips", "y?z", "a?b", "c?d"}) EXPECT_THAT(report, HasSubstr(name));
}

}  // namespace
}  // namespace kestrin::core::doctor
