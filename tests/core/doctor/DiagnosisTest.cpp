// SPDX-License-Identifier: MIT
#include "core/doctor/Diagnosis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Cases.h"

namespace kestrin::core::doctor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Finding& Of(const Diagnosis& diagnosis, Question question) {
  return diagnosis.findings[static_cast<std::size_t>(question)];
}

/// Answers with something amiss.
template <class Change>
Answers With(Change change) {
  Answers answers = GoodAnswers();
  change(answers);
  return answers;
}

template <class Change>
LinkFacts Facts(LinkFacts facts, Change change) {
  change(facts);
  return facts;
}

// --- Every problem, and its one next step ---

struct Row {
  const char* name;
  LinkFacts facts;
  std::optional<Answers> answers;
  Question question;
  const char* text;
  const char* next;
  Remedy remedy;
};

constexpr const char* kAgain = "Unplug the board and plug it in again.";

std::vector<Row> Problems() {
  LinkFacts nothing;
  nothing.rule = RuleState::Missing;
  const LinkFacts board = OneBoard();
  return {
      {"no board", nothing, std::nullopt, Question::Present, "No board was found on USB.",
       "Plug the board in. If it is, use another cable, since some carry no data, or another port.", Remedy::PlugIn},
      {"no board at a path", Facts(nothing, [](LinkFacts& facts) { facts.onlyPath = "/dev/hidraw9"; }), std::nullopt,
       Question::Present, "There is no board at /dev/hidraw9.",
       "Plug the board in, or look for one anywhere instead of there alone.", Remedy::PlugIn},
      {"no HID interface",
       Facts(board,
             [](LinkFacts& facts) {
               facts.nodes.clear();
               facts.bus[0].hasHid = false;
             }),
       std::nullopt, Question::Present,
       "Kestrin USB2, plugged in 3 minutes ago. The cable carries data, but the system offers no HID interface of it.",
       "Unplug the board and plug it in again. If that changes nothing, use another port, without a hub.",
       Remedy::PlugInAgain},
      {"only a foreign one", Facts(board, [](LinkFacts& facts) { facts.nodes = {ForeignNode("/dev/hidraw1")}; }),
       std::nullopt, Question::Present,
       "What is plugged in at /dev/hidraw1 has the ids of a board but not its reports.",
       "Plug a Kestrin board in. If this is one, unplug it and plug it in again.", Remedy::PlugIn},
      {"no rule", OneBoard(Access::NotPermitted, RuleState::Missing), std::nullopt, Question::Permitted,
       "Linux lets only the administrator open such a board until a rule permits it. The rule is not there yet.",
       "Install the rule that comes with the program. Linux asks for your password once; the board is found by itself "
       "afterwards. If it is not, unplug it and plug it in again.",
       Remedy::InstallRule},
      {"another rule", OneBoard(Access::NotPermitted, RuleState::Different), std::nullopt, Question::Permitted,
       "Linux lets only the administrator open such a board until a rule permits it. The one at "
       "/etc/udev/rules.d/70-kestrin.rules says something else than the rule of this program.",
       "Install the rule that comes with the program in its place. Linux asks for your password once.",
       Remedy::InstallRule},
      {"plugged in before the rule", OneBoard(Access::NotPermitted), std::nullopt, Question::Permitted,
       "The rule that permits it is installed, but it has not been applied to this board, or you are not logged in at "
       "this computer itself.",
       "Unplug the board and plug it in again. Over a network, become a member of the group plugdev.",
       Remedy::PlugInAgain},
      {"no permission without rules", OneBoard(Access::NotPermitted, RuleState::NotNeeded), std::nullopt,
       Question::Permitted, "The system does not let you open /dev/hidraw3.", "Ask the administrator of this computer.",
       Remedy::None},
      {"not to be opened",
       Facts(OneBoard(Access::Failed), [](LinkFacts& facts) { facts.nodes[0].why = "Input/output error"; }),
       std::nullopt, Question::Permitted, "The system could not open /dev/hidraw3: Input/output error.", kAgain,
       Remedy::PlugInAgain},
      {"in use", Facts(OneBoard(Access::InUse), [](LinkFacts& facts) { facts.nodes[0].user = "kestrin (1234)"; }),
       std::nullopt, Question::Free, "Another program is using it: kestrin (1234).", "Close kestrin (1234).",
       Remedy::CloseProgram},
      {"in use by somebody", OneBoard(Access::InUse), std::nullopt, Question::Free, "Another program is using it.",
       "Close the other program that uses boards. If it has just ended, wait five seconds and look again.",
       Remedy::CloseProgram},
      {"takes nothing", board, Answers{}, Question::Answers, "It does not take what it is asked.", kAgain,
       Remedy::PlugInAgain},
      {"silent or erasing", board, With([](Answers& answers) {
         answers = {};
         answers.written = true;
       }),
       Question::Answers,
       "It took a question but has not answered it. While a board erases its memory, it answers nothing for up to half "
       "a minute.",
       "Wait half a minute and look again. If it still does not answer, unplug it and plug it in again.", Remedy::Wait},
      {"stops at once", board, With([](Answers& answers) { answers.roundTrips.clear(); }), Question::Answers,
       "It answered the first question and then no more.", kAgain, Remedy::PlugInAgain},
      {"stops on the way", board, With([](Answers& answers) { answers.roundTrips.resize(19); }), Question::Answers,
       "It answered 20 questions and then no more.", kAgain, Remedy::PlugInAgain},
      {"says not what it is", board, With([](Answers& answers) { answers.id.reset(); }), Question::Identified,
       "The board did not say what it is.", kAgain, Remedy::PlugInAgain},
      {"says not which it is", board, With([](Answers& answers) { answers.serialNumber.clear(); }),
       Question::Identified, "The board did not tell its whole serial number. Nothing is written to such a board.",
       kAgain, Remedy::PlugInAgain},
  };
}

TEST(Diagnosis, NamesEveryProblemWithOneNextStepAndLetsTheOthersWait) {
  for (const Row& row : Problems()) {
    const Diagnosis diagnosis = Diagnose(row.facts, row.answers);
    EXPECT_FALSE(diagnosis.IsHealthy()) << row.name;
    ASSERT_NE(diagnosis.Problem(), nullptr) << row.name;
    EXPECT_EQ(diagnosis.Problem(), &Of(diagnosis, row.question)) << row.name;
    EXPECT_EQ(diagnosis.Problem()->text, row.text) << row.name;
    EXPECT_EQ(diagnosis.Problem()->next, row.next) << row.name;
    EXPECT_EQ(diagnosis.Problem()->remedy, row.remedy) << row.name;
    for (const Finding& finding : diagnosis.findings) {
      if (finding.question == row.question) continue;
      EXPECT_EQ(finding.verdict, finding.question < row.question ? Verdict::Ok : Verdict::Unknown) << row.name;
      EXPECT_EQ(finding.next, "") << row.name;
      EXPECT_EQ(finding.remedy, Remedy::None) << row.name;
      EXPECT_NE(finding.text, "") << row.name;
    }
  }
}

TEST(Diagnosis, FindsNothingWrongWithAHealthyBoard) {
  const Diagnosis diagnosis = Diagnose(OneBoard(), GoodAnswers());
  EXPECT_TRUE(diagnosis.IsHealthy());
  EXPECT_EQ(diagnosis.Problem(), nullptr);
  EXPECT_THAT(diagnosis.remarks, IsEmpty());
  EXPECT_EQ(Of(diagnosis, Question::Present).text, "Kestrin USB2, plugged in 3 minutes ago. The cable carries data.");
  EXPECT_EQ(Of(diagnosis, Question::Permitted).text, "The system lets you open /dev/hidraw3.");
  EXPECT_EQ(Of(diagnosis, Question::Free).text, "No other program is using it.");
  // 19 times 35 ms and once 40.2 are 705.2 ms.
  EXPECT_EQ(Of(diagnosis, Question::Answers).text, "20 questions answered in 0.7 s, the slowest took 40 ms.");
  EXPECT_EQ(Of(diagnosis, Question::Identified).text, "Kestrin USB2, revision 37. It told its whole serial number.");
}

TEST(Diagnosis, LetsTheLastTwoQuestionsWaitUntilSomebodyHasAsked) {
  const Diagnosis diagnosis = Diagnose(OneBoard(), std::nullopt);
  EXPECT_FALSE(diagnosis.IsHealthy());
  EXPECT_EQ(diagnosis.Problem(), nullptr);
  EXPECT_EQ(Of(diagnosis, Question::Free).verdict, Verdict::Ok);
  EXPECT_EQ(Of(diagnosis, Question::Answers).verdict, Verdict::Unknown);
  EXPECT_EQ(Of(diagnosis, Question::Identified).verdict, Verdict::Unknown);
}

TEST(Diagnosis, KnowsThatThisProgramItselfUsesTheBoard) {
  LinkFacts facts = OneBoard(Access::InUse);
  facts.nodes[0].isOurs = true;
  const Diagnosis diagnosis = Diagnose(facts, GoodAnswers());
  EXPECT_TRUE(diagnosis.IsHealthy());
  EXPECT_EQ(Of(diagnosis, Question::Free).text, "This program is using it.");
}

TEST(Diagnosis, BelievesABoardThatAnswersWhereTheSystemListsNothing) {
  EXPECT_TRUE(Diagnose(LinkFacts(), GoodAnswers()).IsHealthy());
}

TEST(Diagnosis, SaysOfASimulatedBoardThatItIsOne) {
  LinkFacts facts;
  facts.isSimulated = true;
  facts.nodes = {NodeAt("sim")};
  const Diagnosis diagnosis = Diagnose(facts, GoodAnswers());
  EXPECT_TRUE(diagnosis.IsHealthy());
  EXPECT_EQ(Of(diagnosis, Question::Present).text, "A simulated board: it is part of this program.");
  EXPECT_EQ(Of(diagnosis, Question::Permitted).text, "A simulated board needs no permission.");
  facts.nodes = {NodeAt("sim", Access::InUse)};
  EXPECT_EQ(Diagnose(facts, std::nullopt).Problem()->question, Question::Free);
}

TEST(Diagnosis, TellsNoMoreOfABoardThanIsKnown) {
  LinkFacts facts = OneBoard();
  facts.bus[0].pluggedFor = std::chrono::seconds(0);
  EXPECT_EQ(Diagnose(facts, std::nullopt).findings[0].text,
            "Kestrin USB2, plugged in just now. The cable carries data.");
  facts.bus[0].pluggedFor.reset();
  EXPECT_EQ(Diagnose(facts, std::nullopt).findings[0].text, "Kestrin USB2, plugged in. The cable carries data.");
  facts.bus[0].product.clear();
  EXPECT_EQ(Diagnose(facts, std::nullopt).findings[0].text, "A board, plugged in. The cable carries data.");
  // Of two nobody says which is whose.
  facts.bus.push_back(BoardOnBus());
  EXPECT_EQ(Diagnose(facts, std::nullopt).findings[0].text, "Kestrin USB2, at /dev/hidraw3.");
  facts.bus.clear();
  EXPECT_EQ(Diagnose(facts, std::nullopt).findings[0].text, "Kestrin USB2, at /dev/hidraw3.");
  EXPECT_EQ(Diagnose(OneBoard(), With([](Answers& answers) { answers.id = 64; })).findings[4].text,
            "Kestrin USB 64. It told its whole serial number.");
}

TEST(Diagnosis, MakesNamesFromOutsideHarmless) {
  LinkFacts facts = OneBoard(Access::InUse);
  facts.bus[0].product = "Kest\x1B[31m";
  facts.nodes[0].user = "a\nb (7)";
  const Diagnosis diagnosis = Diagnose(facts, std::nullopt);
  EXPECT_THAT(diagnosis.findings[0].text, HasSubstr("Kest?[31m, plugged in"));
  EXPECT_EQ(diagnosis.findings[2].next, "Close a?b (7).");
}

// --- Several devices ---

TEST(Diagnosis, PassesOverWhatOnlyLooksLikeABoard) {
  LinkFacts facts = OneBoard(Access::InUse);
  facts.nodes.insert(facts.nodes.begin(), ForeignNode("/dev/hidraw1"));
  facts.nodes.push_back(ForeignNode("/dev/hidraw5"));
  facts.nodes.back().descriptor.clear();
  const Diagnosis diagnosis = Diagnose(facts, std::nullopt);
  EXPECT_EQ(diagnosis.Problem()->question, Question::Free) << "it is the board that counts";
  EXPECT_THAT(diagnosis.remarks,
              ElementsAre("The device at /dev/hidraw1 has the ids of a board but not its reports. It is passed over.",
                          "What reports the device at /dev/hidraw5 has cannot be seen. It is passed over."));
}

TEST(Diagnosis, TakesTheFirstBoardThatCanBeUsed) {
  LinkFacts facts = OneBoard();
  facts.nodes = {NodeAt("/dev/hidraw2", Access::NotPermitted), NodeAt("/dev/hidraw3"), NodeAt("/dev/hidraw4")};
  Diagnosis diagnosis = Diagnose(facts, std::nullopt);
  EXPECT_EQ(diagnosis.Problem(), nullptr);
  EXPECT_THAT(diagnosis.remarks, ElementsAre("3 boards are there. This is about the one at /dev/hidraw3."));
  facts.nodes[2].isOurs = true;
  diagnosis = Diagnose(facts, std::nullopt);
  EXPECT_THAT(diagnosis.remarks, ElementsAre("3 boards are there. This is about the one at /dev/hidraw4."));
  facts.nodes.erase(facts.nodes.begin() + 1, facts.nodes.end());
  EXPECT_EQ(Diagnose(facts, std::nullopt).Problem()->question, Question::Permitted);
}

TEST(Diagnosis, RemarksOnWhatStandsBeside) {
  LinkFacts facts = OneBoard();
  facts.bus.push_back(BoardOnBus());
  facts.bus[1].place = "1-3";
  facts.bus[1].hasHid = false;
  facts.nodes[0].user = "spy (77)";
  const Diagnosis diagnosis = Diagnose(facts, GoodAnswers());
  EXPECT_TRUE(diagnosis.IsHealthy());
  EXPECT_THAT(diagnosis.remarks,
              ElementsAre("Another program has the board open as well: spy (77). If something goes wrong, close it.",
                          "The system offers no HID interface of the board at USB port 1-3."));
}

TEST(Diagnosis, RemarksOnAnswersThatAreNotAsTheProtocolSays) {
  const Diagnosis diagnosis = Diagnose(OneBoard(), With([](Answers& answers) {
                                         answers.exchanges.push_back({"GetACC", {1, 2}, 4, {}});
                                         answers.exchanges.push_back({"GetAccParam", {}, 6, {}});
                                       }));
  EXPECT_TRUE(diagnosis.IsHealthy());
  EXPECT_THAT(diagnosis.remarks, ElementsAre("GetACC was answered by 2 bytes; the protocol says 4.",
                                             "GetAccParam was answered by 0 bytes; the protocol says 6."));
}

TEST(Diagnosis, RemarksOnAnswersThatTakeLongerThanTheProtocolSays) {
  using std::chrono::milliseconds;
  // Three seconds for each answer of two bytes.
  const auto remarks = [](milliseconds exchange, milliseconds trip) {
    return Diagnose(OneBoard(), With([&](Answers& answers) {
                      answers.exchanges.push_back({"GetACC", {1, 2, 3, 4}, 4, exchange});
                      answers.roundTrips[3] = answers.roundTrips[5] = trip;
                    }))
        .remarks;
  };
  EXPECT_THAT(remarks(milliseconds(6000), milliseconds(3000)), IsEmpty());
  EXPECT_THAT(remarks(milliseconds(6100), milliseconds(3100)),
              ElementsAre("GetACC took 6.1 s; the protocol says at most 6.0 s.",
                          "2 of 20 questions took longer than the 3.0 s that the protocol says."));
}

// --- Words ---

TEST(Diagnosis, HasWordsForPeopleAndForPrograms) {
  struct {
    Question question;
    const char* text;
    const char* word;
  } const rows[] = {{Question::Present, "Is a board plugged in?", "present"},
                    {Question::Permitted, "May this person open it?", "permitted"},
                    {Question::Free, "Is another program using it?", "free"},
                    {Question::Answers, "Does it answer?", "answers"},
                    {Question::Identified, "Is it known which board it is?", "identified"}};
  for (const auto& row : rows) {
    EXPECT_STREQ(TextOf(row.question), row.text);
    EXPECT_STREQ(WordOf(row.question), row.word);
  }
  EXPECT_STREQ(WordOf(Verdict::Ok), "ok");
  EXPECT_STREQ(WordOf(Verdict::Problem), "problem");
  EXPECT_STREQ(WordOf(Verdict::Unknown), "unknown");
}

}  // namespace
}  // namespace kestrin::core::doctor
