// SPDX-License-Identifier: MIT
#include "platform/doctor/UdevRule.h"

#include <unistd.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "core/base/PathText.h"
#include "core/base/Text.h"
#include "platform/doctor/ProgramRun.h"
#include "platform/doctor/RuleFile.h"

namespace kestrin::platform::doctor {

namespace fs = std::filesystem;

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

/// What the scripts end with.
enum ScriptStatus { kDone = 0, kNotWritten = 40, kNotTold = 41 };

/// The file is the first argument of the script, what goes into it the second: nothing of a person's becomes part of a
/// command. It takes its name only once it is whole.
constexpr const char* kWrite = R"(umask 022
beside=$1.new
trap 'rm -f "$beside"' EXIT
trap 'exit 40' HUP INT TERM
mkdir -p "${1%/*}" && printf '%s' "$2" >"$beside" && chmod 644 "$beside" && { sync "$beside" || :; } &&
  mv -fT "$beside" "$1" || exit 40
)";
/// Nothing takes back what a board has been given before it is plugged in again.
constexpr const char* kRemove = R"(rm -f "$1" || exit 40
udevadm control --reload || exit 41
)";
/// Rules are applied to what is plugged in as if it came anew, which also tells the programs that wait for a board.
constexpr const char* kTell =
    R"(udevadm control --reload && udevadm trigger --action=add --subsystem-match=hidraw || exit 41
udevadm settle --timeout=10 || :
)";
/// The same to type.
constexpr const char* kReadByHand = "udevadm control --reload";
constexpr const char* kAppliedByHand = " && udevadm trigger --action=add --subsystem-match=hidraw";

/// The ends of pkexec when the person was not recognised as the administrator, and of sudo when they were not.
constexpr int kDismissed = 126;
constexpr int kNotAuthorised = 127;
constexpr int kSudoRefused = 1;

/// The last line that a program has said; "" when it has said nothing.
std::string LastLine(const std::string& errors) {
  std::string last;
  for (const std::string_view line : core::base::Split(errors, "\n"))
    if (!line.empty()) last = core::base::Shown(line);
  return last;
}

Failure Refused(const ProgramEnd& end) {
  const std::string said = LastLine(end.errors);
  return {FailureKind::Cancelled,
          "The administrator's permission was not given, so nothing was changed." + (said.empty() ? "" : "\n" + said)};
}

/// Who runs a command as the administrator.
struct Helper {
  fs::path program;
  bool isSudo = false;
};

std::optional<Helper> FindHelper(bool atTerminal) {
  const auto sudo = atTerminal ? FindProgram("sudo") : std::nullopt;
  if (sudo) return Helper{*sudo, true};
  const auto pkexec = FindProgram("pkexec");
  if (pkexec) return Helper{*pkexec, false};
  return std::nullopt;
}

}  // namespace

UdevRule::UdevRule(Asks asks, Surroundings surroundings) : m_asks(asks), m_surroundings(std::move(surroundings)) {}

bool UdevRule::CanChange() const { return HasRules(m_surroundings.root); }

std::string UdevRule::Path() const {
  return core::base::TextOf(m_surroundings.root / fs::path(kRulesFolder) / kRuleName);
}

std::string UdevRule::Content() const { return std::string(RuleText()); }

Result<> UdevRule::Install() {
  return Change(std::string(kWrite) + kTell, Content(),
                "Write the rule, \"70-kestrin.rules\" beside the program's sources, to " + Path() +
                    " as the administrator, then type: " + kReadByHand + kAppliedByHand);
}

Result<> UdevRule::Remove() {
  std::error_code error;
  if (fs::symlink_status(core::base::PathOf(Path()), error).type() == fs::file_type::not_found) {
    const FoundRule other = FindRule(m_surroundings.root);
    if (other.path.empty()) return {};
    return Failure{FailureKind::Failed,
                   "The rule at " + other.path + " came with a package of the system and goes with that."};
  }
  return Change(kRemove, "", "As the administrator, type: rm " + Path() + " && " + kReadByHand);
}

Result<> UdevRule::Change(const std::string& script, const std::string& content, const std::string& todo) const {
  const bool isAtTerminal = m_asks == Asks::AtTerminal;
  std::vector<std::string> command{"/bin/sh", "-c", script, "kestrin-rule", Path(), content};
  bool isSudo = false;
  if (!m_surroundings.isAdministrator.value_or(::geteuid() == 0)) {
    const std::optional<Helper> helper = FindHelper(isAtTerminal);
    if (!helper)
      return Failure{FailureKind::Failed, std::string("This computer has no ") + (isAtTerminal ? "sudo and no " : "") +
                                              "pkexec to ask for the administrator's password. " + todo};
    isSudo = helper->isSudo;
    command.insert(command.begin(), core::base::TextOf(helper->program));
    if (isSudo) command.insert(command.begin() + 1, "--");
    // Where no window can ask, pkexec would ask in a terminal that nobody looks at.
    if (!isSudo && !isAtTerminal) command.insert(command.begin() + 1, "--disable-internal-agent");
  }

  const ProgramEnd end = Run({command, isAtTerminal, m_surroundings.pump});
  const bool isAsked = command.front() != "/bin/sh";
  const std::string said = LastLine(end.errors);
  const std::string reason = said.empty() ? "" : ": " + said;
  if (end.status == kDone) return {};
  if (end.status == kNotWritten)
    return Failure{FailureKind::Failed, Path() + " could not be changed" + reason + ". What was there is there still."};
  if (end.status == kNotTold)
    return Failure{FailureKind::Failed, Path() + " was changed, but the system did not take it over" + reason +
                                            ". Unplug the board and plug it in again; if that changes nothing, restart "
                                            "the computer."};
  if (isAsked && (isSudo ? end.status == kSudoRefused : end.status == kDismissed || end.status == kNotAuthorised))
    return Refused(end);
  if (end.status == ProgramEnd::kNotStarted)
    return Failure{FailureKind::Failed, command.front() + " could not be started, so nothing was changed."};
  return Failure{FailureKind::Failed, Path() + " could not be changed: " + command.front() + " ended with " +
                                          std::to_string(end.status) + reason + "."};
}

}  // namespace kestrin::platform::doctor
