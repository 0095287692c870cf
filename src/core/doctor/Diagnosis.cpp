// SPDX-License-Identifier: MIT
#include "doctor/Diagnosis.h"

#include <algorithm>
#include <numeric>

#include "base/Text.h"
#include "device/BoardIdentity.h"
#include "device/Protocol.h"
#include "device/THIDagent.h"
#include "device/TLS.h"
#include "doctor/TimeText.h"

namespace kestrin::core::doctor {

namespace {

constexpr const char* kPlugInAgain = "Unplug the board and plug it in again.";

/// What is judged.
struct Case {
  const LinkFacts& facts;
  const std::optional<Answers>& answers;
  /// The interface that a session would use; nullptr when there is none.
  const LinkNode* node;
};

struct Answer {
  Verdict verdict = Verdict::Ok;
  std::string text;
  std::string next;
  Remedy remedy = Remedy::None;
};

Answer Yes(std::string text) { return {Verdict::Ok, std::move(text), "", Remedy::None}; }
Answer No(std::string text, std::string next, Remedy remedy) {
  return {Verdict::Problem, std::move(text), std::move(next), remedy};
}

/// The interface that is talked to, or else the first that could be, or else the first of a board.
const LinkNode* ChooseNode(const std::vector<LinkNode>& nodes) {
  const auto first = [&](auto&& fits) -> const LinkNode* {
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [&](const LinkNode& node) { return node.hasVariables && fits(node); });
    return found == nodes.end() ? nullptr : &*found;
  };
  const LinkNode* node = first([](const LinkNode& candidate) { return candidate.isOurs; });
  if (node == nullptr) node = first([](const LinkNode& candidate) { return candidate.access == Access::Open; });
  return node != nullptr ? node : first([](const LinkNode&) { return true; });
}

std::string NameOf(const std::string& product) { return product.empty() ? "A board" : base::Shown(product); }

/// "Kestrin USB2, plugged in 2 minutes ago".
std::string Plugged(const BusDevice& device) {
  std::string text = NameOf(device.product) + ", plugged in";
  if (!device.pluggedFor) return text;
  return text + (device.pluggedFor->count() < 1 ? " just now" : " " + AgeText(*device.pluggedFor) + " ago");
}

// --- The questions ---

Answer WithoutNode(const LinkFacts& facts) {
  if (!facts.nodes.empty())
    return No("What is plugged in at " + base::Shown(facts.nodes.front().path) +
                  (facts.nodes.front().descriptor.empty() ? " has the ids of a board, but its reports cannot be seen."
                                                          : " has the ids of a board but not its reports."),
              "Plug a Kestrin board in. If this is one, unplug it and plug it in again.", Remedy::PlugIn);
  if (!facts.onlyPath.empty())
    return No("There is no board at " + base::Shown(facts.onlyPath) + ".",
              "Plug the board in, or look for one anywhere instead of there alone.", Remedy::PlugIn);
  if (!facts.bus.empty())
    return No(Plugged(facts.bus.front()) + ". The cable carries data, but the system offers no HID interface of it.",
              "Unplug the board and plug it in again. If that changes nothing, use another port, without a hub.",
              Remedy::PlugInAgain);
  return No("No board was found on USB.",
            "Plug the board in. If it is, use another cable, since some carry no data, or another port.",
            Remedy::PlugIn);
}

Answer IsPresent(const Case& asked) {
  const LinkFacts& facts = asked.facts;
  if (facts.isSimulated) return Yes("A simulated board: it is part of this program.");
  // Where the system lists nothing, a board that is talked to is there all the same.
  if (asked.node == nullptr && asked.answers) return Yes("A board is plugged in. The cable carries data.");
  if (asked.node == nullptr) return WithoutNode(facts);
  // With more than one nobody says which is whose.
  const auto hasHid = [](const BusDevice& device) { return device.hasHid; };
  const auto device = std::find_if(facts.bus.begin(), facts.bus.end(), hasHid);
  if (device != facts.bus.end() && std::none_of(device + 1, facts.bus.end(), hasHid))
    return Yes(Plugged(*device) + ". The cable carries data.");
  return Yes(NameOf(asked.node->product) + ", at " + base::Shown(asked.node->path) + ".");
}

/// The end of a sentence with the system's words, if there are any.
std::string Because(const std::string& why) {
  if (why.empty()) return ".";
  return ": " + why + (why.ends_with('.') ? "" : ".");
}

Answer IsPermitted(const Case& asked) {
  if (asked.facts.isSimulated) return Yes("A simulated board needs no permission.");
  if (asked.node == nullptr || asked.node->isOurs) return Yes("This program has it open.");
  const std::string path = base::Shown(asked.node->path);
  switch (asked.node->access) {
    case Access::Open:
    case Access::InUse:
      return Yes("The system lets you open " + path + ".");
    case Access::Failed:
      return No(
          "The system could not open " + (path.empty() ? "the board" : path) + Because(base::Shown(asked.node->why)),
          kPlugInAgain, Remedy::PlugInAgain);
    case Access::NotPermitted:
      break;
  }
  switch (asked.facts.rule) {
    case RuleState::Missing:
      return No(
          "Linux lets only the administrator open such a board until a rule permits it. The rule is not there yet.",
          "Install the rule that comes with the program. Linux asks for your password once; the board is found by "
          "itself afterwards. If it is not, unplug it and plug it in again.",
          Remedy::InstallRule);
    case RuleState::Different:
      return No("Linux lets only the administrator open such a board until a rule permits it. The one at " +
                    base::Shown(asked.facts.rulePath) + " says something else than the rule of this program.",
                "Install the rule that comes with the program in its place. Linux asks for your password once.",
                Remedy::InstallRule);
    case RuleState::Installed:
      return No(
          "The rule that permits it is installed, but it has not been applied to this board, or you are not "
          "logged in at this computer itself.",
          "Unplug the board and plug it in again. Over a network, become a member of the group plugdev.",
          Remedy::PlugInAgain);
    case RuleState::NotNeeded:
      break;
  }
  return No("The system does not let you open " + path + ".", "Ask the administrator of this computer.", Remedy::None);
}

Answer IsFree(const Case& asked) {
  const LinkNode* const node = asked.node;
  if (node != nullptr && node->access == Access::InUse && !node->isOurs) {
    const std::string user = base::Shown(node->user);
    return No(user.empty() ? "Another program is using it." : "Another program is using it: " + user + ".",
              user.empty()
                  ? "Close the other program that uses boards. If it has just ended, wait five seconds and look again."
                  : "Close " + user + ".",
              Remedy::CloseProgram);
  }
  if (asked.facts.isSimulated) return Yes("No other program is using it.");
  return Yes(node == nullptr || node->isOurs ? "This program is using it." : "No other program is using it.");
}

Answer DoesAnswer(const Case& asked) {
  if (!asked.answers) return {Verdict::Unknown, "", "", Remedy::None};
  const std::vector<std::chrono::microseconds>& trips = asked.answers->roundTrips;
  if (!asked.answers->written) return No("It does not take what it is asked.", kPlugInAgain, Remedy::PlugInAgain);
  if (!asked.answers->answered)
    return No(
        "It took a question but has not answered it. While a board erases its memory, it answers nothing for up to "
        "half a minute.",
        "Wait half a minute and look again. If it still does not answer, unplug it and plug it in again.",
        Remedy::Wait);
  if (trips.size() < static_cast<std::size_t>(Answers::kRoundTrips))
    return No("It answered " +
                  (trips.empty() ? "the first question" : std::to_string(trips.size() + 1) + " questions") +
                  " and then no more.",
              kPlugInAgain, Remedy::PlugInAgain);
  const auto all = std::accumulate(trips.begin(), trips.end(), std::chrono::microseconds(0));
  return Yes(std::to_string(trips.size()) + " questions answered in " + TimeText(all) + ", the slowest took " +
             TimeText(*std::max_element(trips.begin(), trips.end())) + ".");
}

Answer IsIdentified(const Case& asked) {
  if (!asked.answers->id) return No("The board did not say what it is.", kPlugInAgain, Remedy::PlugInAgain);
  if (asked.answers->serialNumber.size() != device::TLS::kSerialDigits)
    return No("The board did not tell its whole serial number. Nothing is written to such a board.", kPlugInAgain,
              Remedy::PlugInAgain);
  const device::BoardIdentity identity = device::Identify(*asked.answers->id);
  return Yes("Kestrin " + std::string(identity.model) +
             (identity.revision > 0 ? ", revision " + std::to_string(identity.revision) : "") +
             ". It told its whole serial number.");
}

struct Row {
  Question question;
  const char* word;
  const char* text;
  /// What is said while it waits for those before it.
  const char* waiting;
  Answer (*judge)(const Case&);
};

constexpr Row kRows[] = {
    {Question::Present, "present", "Is a board plugged in?", "", IsPresent},
    {Question::Permitted, "permitted", "May this person open it?", "This can be seen once a board is there.",
     IsPermitted},
    {Question::Free, "free", "Is another program using it?", "This can be seen once the board may be opened.", IsFree},
    {Question::Answers, "answers", "Does it answer?", "Then the program asks the board for its serial number.",
     DoesAnswer},
    {Question::Identified, "identified", "Is it known which board it is?", "Its answers tell the model.", IsIdentified},
};

const Row& RowOf(Question question) { return kRows[static_cast<std::size_t>(question)]; }

// --- Remarks ---

void RemarkOnNodes(const Case& asked, std::vector<std::string>& remarks) {
  std::size_t boards = 0;
  for (const LinkNode& node : asked.facts.nodes) {
    const std::string path = base::Shown(node.path);
    boards += static_cast<std::size_t>(node.hasVariables);
    if (!node.hasVariables && node.descriptor.empty())
      remarks.push_back("What reports the device at " + path + " has cannot be seen. It is passed over.");
    else if (!node.hasVariables)
      remarks.push_back("The device at " + path + " has the ids of a board but not its reports. It is passed over.");
  }
  if (asked.node == nullptr) return;
  if (boards > 1)
    remarks.push_back(std::to_string(boards) + " boards are there. This is about the one at " +
                      base::Shown(asked.node->path) + ".");
  if (asked.node->access == Access::Open && !asked.node->isOurs && !asked.node->user.empty())
    remarks.push_back("Another program has the board open as well: " + base::Shown(asked.node->user) +
                      ". If something goes wrong, close it.");
  for (const BusDevice& device : asked.facts.bus)
    if (!device.hasHid)
      remarks.push_back("The system offers no HID interface of the board at USB port " + base::Shown(device.place) +
                        ".");
}

/// The time that the protocol grants to as many answer bytes.
std::chrono::milliseconds Granted(std::size_t bytes) {
  return std::chrono::milliseconds(device::THIDagent::kTimeOut) * static_cast<int>(bytes / device::kResponseSize);
}

void RemarkOnAnswers(const Answers& answers, std::vector<std::string>& remarks) {
  if (!answers.answered) return;
  for (const Exchange& exchange : answers.exchanges) {
    if (exchange.IsAsExpected() && exchange.took > Granted(exchange.expected))
      remarks.push_back(exchange.command + " took " + TimeText(exchange.took) + "; the protocol says at most " +
                        TimeText(Granted(exchange.expected)) + ".");
    if (!exchange.IsAsExpected())
      remarks.push_back(exchange.command + " was answered by " + std::to_string(exchange.answer.size()) +
                        " bytes; the protocol says " + std::to_string(exchange.expected) + ".");
  }
  const auto slow = std::count_if(answers.roundTrips.begin(), answers.roundTrips.end(),
                                  [](std::chrono::microseconds took) { return took > Granted(device::kResponseSize); });
  if (slow > 0)
    remarks.push_back(std::to_string(slow) + " of " + std::to_string(answers.roundTrips.size()) +
                      " questions took longer than the " + TimeText(Granted(device::kResponseSize)) +
                      " that the protocol says.");
}

}  // namespace

bool Diagnosis::IsHealthy() const {
  return std::all_of(findings.begin(), findings.end(),
                     [](const Finding& finding) { return finding.verdict == Verdict::Ok; });
}

const Finding* Diagnosis::Problem() const {
  const auto found = std::find_if(findings.begin(), findings.end(),
                                  [](const Finding& finding) { return finding.verdict == Verdict::Problem; });
  return found == findings.end() ? nullptr : &*found;
}

Diagnosis Diagnose(const LinkFacts& facts, const std::optional<Answers>& answers) {
  const Case asked{facts, answers, ChooseNode(facts.nodes)};
  Diagnosis diagnosis;
  bool goOn = true;
  for (std::size_t i = 0; i < diagnosis.findings.size(); ++i) {
    const Row& row = kRows[i];
    Answer answer{Verdict::Unknown, "", "", Remedy::None};
    if (goOn) answer = row.judge(asked);
    goOn = answer.verdict == Verdict::Ok;
    if (answer.verdict == Verdict::Unknown) answer.text = row.waiting;
    diagnosis.findings[i] = {row.question, answer.verdict, answer.text, answer.next, answer.remedy};
  }
  RemarkOnNodes(asked, diagnosis.remarks);
  if (answers) RemarkOnAnswers(*answers, diagnosis.remarks);
  return diagnosis;
}

const char* TextOf(Question question) { return RowOf(question).text; }

const char* WordOf(Question question) { return RowOf(question).word; }

const char* WordOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::Ok:
      return "ok";
    case Verdict::Problem:
      return "problem";
    case Verdict::Unknown:
      break;
  }
  return "unknown";
}

}  // namespace kestrin::core::doctor
