// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>

#include "support/KestrinctlTest.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The built program with simulated boards.
class DoctorTest : public KestrinctlTest {
 protected:
  [[nodiscard]] Json Doctor(int code, const std::string& board) const {
    return RunJson(code, {"--board", board, "doctor"});
  }
  /// The states of the five findings, a word each.
  [[nodiscard]] static std::string States(const Json& document) {
    std::string states;
    for (const Json& finding : document["findings"])
      states += (states.empty() ? "" : " ") + finding["state"].get<std::string>();
    return states;
  }
  [[nodiscard]] static std::string Text(const Json& document, std::size_t finding) {
    return document["findings"][finding]["text"];
  }
  [[nodiscard]] std::string ReportPath() const { return (m_folder / "report.txt").string(); }
};

TEST_F(DoctorTest, AHealthyBoardEndsWithZero) {
  const Json document = Doctor(0, "sim:id=4133");
  EXPECT_EQ(Keys(document), (std::vector<std::string>{"healthy", "findings"}));
  EXPECT_EQ(document["healthy"], true);
  const char* const questions[] = {"present", "permitted", "free", "answers", "identified"};
  ASSERT_EQ(document["findings"].size(), std::size(questions));
  for (std::size_t i = 0; i < std::size(questions); ++i) {
    const Json& finding = document["findings"][i];
    EXPECT_EQ(Keys(finding), (std::vector<std::string>{"question", "state", "text", "next"}));
    EXPECT_EQ(finding["question"], questions[i]);
    EXPECT_EQ(finding["state"], "ok");
    EXPECT_EQ(finding["next"], "");
  }
  EXPECT_EQ(Text(document, 0), "A simulated board: it is part of this program.");
  EXPECT_THAT(Text(document, 3), StartsWith("20 questions answered in "));
  EXPECT_EQ(Text(document, 4), "Kestrin USB2, revision 37. It told its whole serial number.");
}

TEST_F(DoctorTest, EveryKindOfBoardIsHealthy) {
  for (const char* id : {"0", "64", "65535", "5"})
    EXPECT_EQ(Doctor(0, std::string("sim:id=") + id)["healthy"], true) << id;
}

TEST_F(DoctorTest, NoBoardEndsWithThree) {
  const Json document = Doctor(3, "hid:/no/such/board");
  EXPECT_EQ(document["healthy"], false);
  EXPECT_EQ(States(document), "problem unknown unknown unknown unknown");
  EXPECT_EQ(Text(document, 0), "There is no board at /no/such/board.");
  EXPECT_EQ(document["findings"][0]["next"], "Plug the board in, or look for one anywhere instead of there alone.");
}

/// The session asks for identity and serial number: three reads. Then come the identity, twenty round trips, the serial
/// number (reads 25 and 26), a checksum (27), the acceleration (28 and 29).
TEST_F(DoctorTest, EveryWayOfNotAnsweringHasItsText) {
  struct {
    const char* board;
    const char* states;
    std::size_t finding;
    const char* text;
    const char* next;
  } const rows[] = {
      {"sim:fault=write:1,fault=write:2,fault=write:3", "ok ok ok problem unknown", 3,
       "It does not take what it is asked.", "Unplug the board and plug it in again."},
      {"sim:fault=read:1", "ok ok ok problem unknown", 3,
       "It took a question but has not answered it. While a board erases its memory, it answers nothing for up to half "
       "a "
       "minute.",
       "Wait half a minute and look again. If it still does not answer, unplug it and plug it in again."},
      {"sim:fault=read:5", "ok ok ok problem unknown", 3, "It answered the first question and then no more.",
       "Unplug the board and plug it in again."},
      {"sim:fault=read:14", "ok ok ok problem unknown", 3, "It answered 10 questions and then no more.",
       "Unplug the board and plug it in again."},
      {"sim:fault=read:26", "ok ok ok ok problem", 4,
       "The board did not tell its whole serial number. Nothing is written to such a board.",
       "Unplug the board and plug it in again."},
  };
  for (const auto& row : rows) {
    const Json document = Doctor(1, row.board);
    EXPECT_EQ(document["healthy"], false) << row.board;
    EXPECT_EQ(States(document), row.states) << row.board;
    EXPECT_EQ(Text(document, row.finding), row.text) << row.board;
    EXPECT_EQ(document["findings"][row.finding]["next"], row.next) << row.board;
  }
}

TEST_F(DoctorTest, ABoardThatGoesOnTheWayHasStoppedAnswering) {
  const Json document = Doctor(1, "sim:fault=unplug:9");
  EXPECT_EQ(States(document), "ok ok ok problem unknown");
  EXPECT_THAT(Text(document, 3), EndsWith(" and then no more."));
}

TEST_F(DoctorTest, AnswersThatAreNotAsTheProtocolSaysAreNamed) {
  const Finished finished = Run({"--board", "sim:fault=read:29", "doctor", "--report", ReportPath()});
  EXPECT_EQ(finished.code, 0);
  const char* const remark = "GetACC was answered by 2 bytes; the protocol says 4.\n";
  EXPECT_THAT(finished.out, HasSubstr(remark));
  EXPECT_THAT(ReadBytes(ReportPath()), HasSubstr(remark));
}

TEST_F(DoctorTest, ABoardThatAnotherProgramUsesIsNotDisturbed) {
  const SoundSet set = WriteSoundSet(m_folder.Path());
  const auto first = Start({"--board", Board("erase=86400"), "download", set.configuration.string()});
  first->WaitForOutput("Erasing flash memory ...\n");
  const Json document = Doctor(1, Board());
  EXPECT_EQ(States(document), "ok ok problem unknown unknown");
  EXPECT_EQ(Text(document, 2), "Another program is using it.");
  EXPECT_EQ(BoardState()["byes"], 0);
  EXPECT_FALSE(first->HasEnded());
}

TEST_F(DoctorTest, ABoardHearsNothingThatChangesItAndAGoodBye) {
  static_cast<void>(RunOnBoard(0, {"accel", "set", "--MotionTh", "77"}));
  const Json before = BoardState();
  EXPECT_EQ(RunOnBoard(0, {"doctor"})["healthy"], true);
  Json after = BoardState();
  EXPECT_EQ(after["byes"], before["byes"].get<int>() + 1);
  after["byes"] = before["byes"];
  EXPECT_EQ(after, before);
}

TEST_F(DoctorTest, AStateFolderThatCannotBeUsedFails) {
  WriteBytes(m_folder / "board", "in the way");
  EXPECT_EQ(Keys(RunOnBoard(1, {"doctor"})), std::vector<std::string>{"error"});
}

TEST_F(DoctorTest, PeopleReadAListWithOneNextStep) {
  const Finished healthy = Run({"--board", "sim", "doctor"});
  EXPECT_EQ(healthy.code, 0);
  EXPECT_EQ(healthy.errors, "");
  EXPECT_THAT(healthy.out, StartsWith("[ok] Is a board plugged in?  Yes\n"
                                      "     A simulated board: it is part of this program.\n"
                                      "[ok] May this person open it?  Yes\n"
                                      "     A simulated board needs no permission.\n"
                                      "[ok] Is another program using it?  No\n"
                                      "     No other program is using it.\n"
                                      "[ok] Does it answer?  Yes\n"
                                      "     20 questions answered in "));
  EXPECT_THAT(healthy.out, Not(HasSubstr("Do this next")));

  const Finished silent = Run({"--board", "sim:fault=read:1", "doctor"});
  EXPECT_EQ(silent.code, 1);
  EXPECT_THAT(silent.out, HasSubstr("[!!] Does it answer?  No\n     It took a question"));
  EXPECT_THAT(silent.out, HasSubstr("\n     Do this next: Wait half a minute and look again."));
  EXPECT_THAT(silent.out,
              EndsWith("[..] Is it known which board it is?  Not known yet\n     Its answers tell the model.\n"));
  EXPECT_THAT(silent.errors, StartsWith("kestrinctl: It took a question but has not answered it."));
}

// --- The report ---

TEST_F(DoctorTest, TheReportNamesTheProgramAndWhatTheBoardAnswered) {
  const Finished finished = Run({"--board", "sim:id=4133", "doctor", "--report", ReportPath()});
  EXPECT_EQ(finished.code, 0);
  EXPECT_THAT(finished.out, EndsWith("\nThe report is written to " + ReportPath() + ".\n"));
  const std::string report = ReadBytes(ReportPath());
  for (const char* part : {"\n  kestrinctl 2.2.2\n", "\n  hidapi ", "\n  GetID: 10 25, 2 of 2 bytes, ",
                           "\n  GetSN: (left out), 4 of 4 bytes, ",
                           "\n  GetAccParam: B4 02 0A 32 7D 0D, 6 of 6 bytes, ", "\nRound trips in microseconds\n"})
    EXPECT_THAT(report, HasSubstr(part));
}

TEST_F(DoctorTest, NeitherReportNorOutputNamesTheSerialNumber) {
  const Arguments arguments{"--board", "sim:serial=DEADBEA7", "doctor", "--report", ReportPath()};
  const Finished finished = Run(arguments);
  const Json document = RunJson(0, arguments);
  for (const std::string& text : {finished.out, document.dump(), ReadBytes(ReportPath())})
    for (const char* spelling :
         {"DEADBEA7", "deadbea7", "DE AD BE A7", "de ad be a7", "DEAD", "BEA7", "DE AD", "BE A7"})
      EXPECT_THAT(text, Not(HasSubstr(spelling)));
  Arguments wanting = arguments;
  wanting.emplace_back("--with-serial");
  EXPECT_EQ(Run(wanting).code, 0);
  EXPECT_THAT(ReadBytes(ReportPath()), HasSubstr("\n  serial number: DEADBEA7\n"));
}

TEST_F(DoctorTest, ThereIsAReportOfEveryTrouble) {
  for (const char* board :
       {"hid:/no/such/board", "sim:fault=read:1", "sim:fault=write:1,fault=write:2,fault=write:3"}) {
    EXPECT_NE(Run({"--board", board, "doctor", "--report", ReportPath()}).code, 0);
    EXPECT_THAT(ReadBytes(ReportPath()), HasSubstr("? problem\n"));
    fs::remove(ReportPath());
  }
}

TEST_F(DoctorTest, AReportIsWrittenWholeOrNotAtAll) {
#ifndef _WIN32
  // Windows has no limits like this one.
  WriteBytes(ReportPath(), "what was there");
  Surroundings small;
  small.largestFile = 100;
  const Finished full = Run({"--board", "sim", "doctor", "--report", ReportPath()}, small);
  EXPECT_EQ(full.code, 1);
  EXPECT_THAT(full.errors, HasSubstr("report.txt"));
  EXPECT_THAT(full.out, StartsWith("[ok] Is a board plugged in?")) << "the findings are there all the same";
  EXPECT_EQ(ReadBytes(ReportPath()), "what was there");
  EXPECT_EQ(std::distance(fs::directory_iterator(m_folder.Path()), {}), 1);
#endif

  const Finished nowhere = Run({"--board", "sim", "doctor", "--report", (m_folder / "no/report.txt").string()});
  EXPECT_EQ(nowhere.code, 1);
  EXPECT_EQ(Run({"--board", "sim", "doctor", "--report", ReportPath()}).code, 0);
  EXPECT_THAT(ReadBytes(ReportPath()), StartsWith("Kestrin connection report\n"));
}

// --- The rule ---

/// What is not agreed to is not done; and where there is nobody to ask, nobody agrees.
TEST_F(DoctorTest, WithoutATerminalTheRuleIsOnlyShown) {
  const bool hasRules = fs::is_directory("/etc/udev") || fs::is_directory("/run/udev");
  const Finished finished = Run({"doctor", "--install-rule"});
  EXPECT_EQ(finished.code, hasRules ? 2 : 1);
  EXPECT_EQ(finished.out, "");
  if (hasRules) {
    EXPECT_THAT(finished.errors, HasSubstr("This writes the file /etc/udev/rules.d/70-kestrin.rules"));
    EXPECT_THAT(finished.errors, HasSubstr("KERNELS==\"0003:04D8:FA37.*\", MODE=\"0660\""));
    EXPECT_THAT(finished.errors, EndsWith("Nothing was changed. Repeat the command with --yes if you agree.\n"));
  } else {
    EXPECT_THAT(finished.errors, HasSubstr("(no udev)"));
  }
}

}  // namespace
}  // namespace kestrin::support
