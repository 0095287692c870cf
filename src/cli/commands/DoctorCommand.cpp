// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "cli/BoardInterview.h"
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/DoctorPorts.h"
#include "cli/Terminal.h"
#include "core/base/PathText.h"
#include "core/base/WholeFile.h"
#include "core/doctor/Diagnosis.h"
#include "core/doctor/DoctorReport.h"
#include "platform/doctor/SystemSurvey.h"
#include "platform/doctor/UdevRule.h"

namespace kestrin::cli {

namespace {

using core::doctor::Access;
using core::doctor::Answers;
using core::doctor::Diagnosis;
using core::doctor::Finding;
using core::doctor::LinkFacts;
using core::doctor::LinkNode;
using core::doctor::PermissionRule;
using core::doctor::Question;
using core::doctor::Remedy;
using core::doctor::Verdict;
using platform::boards::BoardChoice;

/// All that was found out.
struct Examination {
  LinkFacts facts;
  std::optional<Answers> answers;
  Diagnosis diagnosis;
};

/// An interface that nobody but the session has seen.
LinkNode NodeOf(const std::string& path, const std::string& accessProblem) {
  LinkNode node;
  node.path = path;
  node.hasVariables = true;
  node.access = accessProblem.empty()                        ? Access::Open
                : accessProblem == core::device::kBoardInUse ? Access::InUse
                                                             : Access::Failed;
  node.why = accessProblem;
  return node;
}

/// What stands before a finding in the list.
const char* MarkOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::Ok:
      return "[ok] ";
    case Verdict::Problem:
      return "[!!] ";
    case Verdict::Unknown:
      break;
  }
  return "[..] ";
}

/// The answer to the question as it is put: of these one is better answered by no.
const char* YesOrNo(const Finding& finding) {
  if (finding.verdict == Verdict::Unknown) return "Not known yet";
  return (finding.verdict == Verdict::Ok) != (finding.question == Question::Free) ? "Yes" : "No";
}

std::string TextFor(const Diagnosis& diagnosis) {
  constexpr const char* kIndent = "     ";
  std::string text;
  for (const Finding& finding : diagnosis.findings) {
    text += MarkOf(finding.verdict) + std::string(TextOf(finding.question)) + "  " + YesOrNo(finding) + "\n" + kIndent +
            finding.text + "\n";
    if (!finding.next.empty()) text += kIndent + std::string("Do this next: ") + finding.next + "\n";
    if (finding.remedy == Remedy::InstallRule) text += kIndent + std::string("kestrinctl doctor --install-rule\n");
  }
  if (!diagnosis.remarks.empty()) text += "\n";
  for (const std::string& remark : diagnosis.remarks) text += remark + "\n";
  return text;
}

Document DiagnosisDocument(const Diagnosis& diagnosis) {
  Document findings = Document::array();
  for (const Finding& finding : diagnosis.findings)
    findings.push_back({{"question", WordOf(finding.question)},
                        {"state", WordOf(finding.verdict)},
                        {"text", finding.text},
                        {"next", finding.next}});
  return {{"healthy", diagnosis.IsHealthy()}, {"findings", findings}};
}

ExitCode CodeOf(const Examination& examination) {
  if (examination.diagnosis.IsHealthy()) return ExitCode::Done;
  const bool isNone = examination.facts.bus.empty() && examination.facts.nodes.empty() && !examination.answers;
  return isNone ? ExitCode::NoBoard : ExitCode::Failed;
}

class DoctorCommand final : public Command {
 public:
  explicit DoctorCommand(DoctorPorts ports) : m_ports(std::move(ports)) {}

  [[nodiscard]] std::string Name() const override { return "doctor"; }
  [[nodiscard]] std::string Description() const override {
    return "Find out what stands between this computer and a board";
  }

  void Declare(Syntax& syntax) override {
    syntax.Path("--report FILE", m_report, "Write a report for somebody who helps", Syntax::Need::Optional);
    syntax.Flag("--with-serial", m_withSerial, "The report may name the board's serial number");
    syntax.Flag("--install-rule", m_installRule, "Let the people at this computer open boards (Linux)");
    syntax.Flag("--remove-rule", m_removeRule, "Take that permission away again");
    syntax.Flag("--yes", m_yes, "Change the rule without asking");
  }

  [[nodiscard]] Report Run(Context& context) override {
    const bool changesRule = m_installRule || m_removeRule;
    if (m_installRule && m_removeRule)
      throw CommandFailure(ExitCode::WrongUsage, "Give either --install-rule or --remove-rule.");
    if (changesRule && !m_report.empty())
      throw CommandFailure(ExitCode::WrongUsage, "Change the rule first, and write the report after it.");
    if (m_yes && !changesRule)
      throw CommandFailure(ExitCode::WrongUsage, "--yes goes with --install-rule or --remove-rule.");
    if (m_withSerial && m_report.empty())
      throw CommandFailure(ExitCode::WrongUsage, "--with-serial goes with --report.");
    return changesRule ? ChangeRule(context) : Examined(context);
  }

 private:
  // --- The rule ---

  [[nodiscard]] Report ChangeRule(Context& context) {
    const std::unique_ptr<PermissionRule> rule = m_ports.makeRule(context.interrupt.Pump());
    if (!rule->CanChange())
      throw CommandFailure(ExitCode::Failed,
                           "This system has no rules of who may open a board (no udev), so there is none to change.");
    if (!m_yes) RequireConsent(*rule, context);
    const core::base::Result<> changed = m_installRule ? rule->Install() : rule->Remove();
    if (!changed) throw CommandFailure(ExitCode::Failed, changed.Text());
    Report report;
    report.document = {{"installed", m_installRule}, {"path", rule->Path()}};
    report.text =
        m_installRule
            ? rule->Path() + " permits the people at this computer to open boards from now on.\n" +
                  "See with \"kestrinctl doctor\" whether yours is found.\n"
            : rule->Path() +
                  " is not there any more.\nA board that is plugged in may be opened until it is plugged in again.\n";
    return report;
  }

  void RequireConsent(const PermissionRule& rule, Context& context) const {
    const std::string plan = m_installRule
                                 ? "This writes the file " + rule.Path() + " as the administrator:\n\n" +
                                       rule.Content() + "\nThe system then applies it to what is plugged in.\n"
                                 : "This removes the file " + rule.Path() + " as the administrator.\n";
    const std::optional<bool> agreed = m_ports.ask(plan + "Go on?");
    context.interrupt.Look();
    if (!agreed)
      throw CommandFailure(ExitCode::WrongUsage,
                           plan + "Nothing was changed. Repeat the command with --yes if you agree.");
    if (!*agreed) throw CommandFailure(ExitCode::Failed, "Nothing was changed.");
  }

  // --- The examination ---

  [[nodiscard]] Report Examined(Context& context) {
    Examination found =
        context.board.kind == BoardChoice::Kind::Simulated ? ExamineSimulated(context) : Examine(context);
    found.diagnosis = Diagnose(found.facts, found.answers);
    Report report;
    report.code = CodeOf(found);
    report.document = DiagnosisDocument(found.diagnosis);
    report.text = TextFor(found.diagnosis);
    if (const Finding* const problem = found.diagnosis.Problem()) report.message = problem->text;
    if (!m_report.empty()) WriteReport(found, context, report);
    return report;
  }

  [[nodiscard]] Examination ExamineSimulated(Context& context) const {
    Examination found;
    const BoardInterview interview = InterviewBoard(context);
    found.answers = interview.answers;
    found.facts = m_ports.survey->Look();
    found.facts.isSimulated = true;
    found.facts.bus.clear();
    found.facts.nodes = {NodeOf("sim", interview.accessProblem)};
    return found;
  }

  /// A board may come or go between looking and asking, and while it is asked.
  [[nodiscard]] Examination Examine(Context& context) const {
    constexpr int kLooks = 3;
    Examination found;
    std::string accessProblem;
    for (int look = 0; look < kLooks; ++look) {
      context.interrupt.Look();
      found = {LookAt(context.board.path), std::nullopt, {}};
      const bool isSeen = !found.facts.nodes.empty();
      if (isSeen && Diagnose(found.facts, std::nullopt).Problem() != nullptr) return found;

      const BoardInterview interview = InterviewBoard(context);
      found.answers = interview.answers;
      accessProblem = interview.accessProblem;
      if (found.answers && (HasAnsweredAll(*found.answers) || IsStillThere(found.facts, LookAt(context.board.path))))
        return found;
      if (isSeen || found.answers) continue;
      // Where the system lists nothing, the session has still tried.
      if (!interview.accessProblem.empty()) found.facts.nodes = {NodeOf(context.board.path, interview.accessProblem)};
      return found;
    }
    // It is there whenever it is looked for, and cannot be opened, or is gone whenever it is asked.
    if (!found.answers && !accessProblem.empty())
      found.facts.nodes = {NodeOf(context.board.path, accessProblem)};
    else if (!found.answers)
      found.answers.emplace();
    return found;
  }

  /// What the system knows; with a path, of the board there alone.
  [[nodiscard]] LinkFacts LookAt(const std::string& path) const {
    LinkFacts facts = m_ports.survey->Look();
    facts.onlyPath = path;
    if (path.empty()) return facts;
    std::erase_if(facts.nodes, [&](const LinkNode& node) { return node.path != path; });
    if (facts.nodes.empty()) facts.bus.clear();
    return facts;
  }

  [[nodiscard]] static bool HasAnsweredAll(const Answers& answers) {
    return answers.roundTrips.size() == static_cast<std::size_t>(Answers::kRoundTrips);
  }

  /// Whether no interface has gone since.
  [[nodiscard]] static bool IsStillThere(const LinkFacts& before, const LinkFacts& now) {
    return std::all_of(before.nodes.begin(), before.nodes.end(), [&](const LinkNode& node) {
      return std::any_of(now.nodes.begin(), now.nodes.end(),
                         [&](const LinkNode& other) { return other.path == node.path; });
    });
  }

  void WriteReport(const Examination& found, Context& context, Report& report) const {
    const std::string text = DoctorReport(found.facts, found.answers, found.diagnosis, {context.program, m_withSerial});
    const core::base::Result<> written = core::base::WriteWholeFile(m_report, text, context.disk);
    if (written) {
      report.text += "\nThe report is written to " + core::base::TextOf(m_report) + ".\n";
      return;
    }
    report.code = ExitCode::Failed;
    report.message += (report.message.empty() ? "" : "\n") + written.Text();
  }

  DoctorPorts m_ports;
  std::filesystem::path m_report;
  bool m_withSerial = false;
  bool m_installRule = false;
  bool m_removeRule = false;
  bool m_yes = false;
};

}  // namespace

std::unique_ptr<Command> MakeDoctorCommand(DoctorPorts ports) {
  return std::make_unique<DoctorCommand>(std::move(ports));
}

std::unique_ptr<Command> MakeDoctorCommand() {
  DoctorPorts ports;
  ports.survey = std::make_unique<platform::doctor::SystemSurvey>();
  ports.makeRule = [](const core::base::EventPump& pump) -> std::unique_ptr<PermissionRule> {
    using platform::doctor::UdevRule;
    UdevRule::Surroundings surroundings;
    surroundings.pump = pump;
    return std::make_unique<UdevRule>(UdevRule::Asks::AtTerminal, surroundings);
  };
  ports.ask = AskYesOrNo;
  return MakeDoctorCommand(std::move(ports));
}

}  // namespace kestrin::cli
