// SPDX-License-Identifier: MIT
#include "doctor/DoctorReport.h"

#include <algorithm>
#include <functional>

#include "base/Text.h"
#include "device/TLS.h"
#include "doctor/HexText.h"
#include "doctor/TimeText.h"

namespace kestrin::core::doctor {

namespace {

constexpr const char* kLeftOut = "(left out)";
constexpr const char* kSerialCommand = "GetSN";

const char* TextOf(Access access) {
  switch (access) {
    case Access::Open:
      return "can be opened";
    case Access::InUse:
      return "in use";
    case Access::NotPermitted:
      return "not permitted";
    case Access::Failed:
      break;
  }
  return "cannot be opened";
}

std::string TextOf(RuleState state, const std::string& path) {
  switch (state) {
    case RuleState::NotNeeded:
      return "not needed on this system";
    case RuleState::Missing:
      return "not installed";
    case RuleState::Installed:
      return "installed, " + path;
    case RuleState::Different:
      break;
  }
  return "another one of its name is installed, " + path;
}

const char* YesOrNo(bool yes) { return yes ? "yes" : "no"; }

/// Text from outside; "-" for none.
std::string ShownOr(const std::string& text) { return text.empty() ? "-" : base::Shown(text); }

/// Everything that is known about the way, in sections with a heading each.
class Text {
 public:
  void Heading(const std::string& heading) { m_text += "\n" + heading + "\n"; }
  void Line(const std::string& line) { m_text += "  " + line + "\n"; }
  /// "name: value"; nothing without a value.
  void Pair(const std::string& name, const std::string& value) {
    if (!value.empty()) Line("  " + name + ": " + value);
  }
  [[nodiscard]] const std::string& Content() const { return m_text; }

 private:
  std::string m_text = "Kestrin connection report\n";
};

void Describe(Text& text, const Diagnosis& diagnosis) {
  text.Heading("Questions");
  for (const Finding& finding : diagnosis.findings) {
    text.Line(doctor::TextOf(finding.question) + std::string(" ") + WordOf(finding.verdict));
    text.Line("  " + finding.text);
    text.Pair("next", finding.next);
  }
  if (diagnosis.remarks.empty()) return;
  text.Heading("Remarks");
  for (const std::string& remark : diagnosis.remarks) text.Line(remark);
}

void Describe(Text& text, const BusDevice& device) {
  text.Line("at " + ShownOr(device.place));
  text.Pair("manufacturer", ShownOr(device.manufacturer));
  text.Pair("product", ShownOr(device.product));
  text.Pair("USB serial", ShownOr(device.serialNumber));
  text.Pair("HID interface", YesOrNo(device.hasHid));
  if (device.pluggedFor) text.Pair("plugged in for", AgeText(*device.pluggedFor));
}

void Describe(Text& text, const LinkNode& node) {
  constexpr std::size_t kBytesInLine = 16;
  text.Line(ShownOr(node.path));
  text.Pair("product", ShownOr(node.product));
  text.Pair("access", TextOf(node.access) + (node.why.empty() ? "" : ", " + base::Shown(node.why)) +
                          (node.isOurs ? ", by this program" : ""));
  text.Pair("permissions", ShownOr(node.permissions));
  text.Pair("used by", base::Shown(node.user));
  text.Pair("reports of a board", YesOrNo(node.hasVariables));
  text.Pair("descriptor", std::to_string(node.descriptor.size()) + " bytes");
  for (std::size_t at = 0; at < node.descriptor.size(); at += kBytesInLine) {
    const std::size_t count = std::min(kBytesInLine, node.descriptor.size() - at);
    text.Line("    " + HexText(std::span(node.descriptor).subspan(at, count), " "));
  }
}

void Describe(Text& text, const Answers& answers, bool withSerialNumber) {
  text.Heading("Answers");
  if (!answers.written) text.Line("The first question could not be sent.");
  if (answers.written && !answers.answered) text.Line("The first question was not answered.");
  for (const Exchange& exchange : answers.exchanges) {
    const bool isHidden = !withSerialNumber && exchange.command == kSerialCommand && !exchange.answer.empty();
    const std::string bytes = exchange.answer.empty() ? "nothing" : HexText(exchange.answer, " ");
    text.Line(exchange.command + ": " + (isHidden ? kLeftOut : bytes) + ", " + std::to_string(exchange.answer.size()) +
              " of " + std::to_string(exchange.expected) + " bytes, " + TimeText(exchange.took));
  }
  if (withSerialNumber && !answers.serialNumber.empty()) text.Line("serial number: " + answers.serialNumber);
  if (answers.roundTrips.empty()) return;
  text.Heading("Round trips in microseconds");
  std::string times;
  for (const std::chrono::microseconds time : answers.roundTrips)
    times += (times.empty() ? "" : " ") + std::to_string(time.count());
  text.Line(times);
}

// --- What is left out ---

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Every place of `text` that reads `secret`, in letters of either case, becomes kLeftOut.
std::string Without(const std::string& text, const std::string& secret) {
  std::string result;
  const auto same = [](char a, char b) { return Lower(a) == Lower(b); };
  for (auto at = text.begin();;) {
    const auto found = std::search(at, text.end(), secret.begin(), secret.end(), same);
    result.append(at, found);
    if (found == text.end()) return result;
    result += kLeftOut;
    at = found + static_cast<std::ptrdiff_t>(secret.size());
  }
}

/// Whether a number is one at all: boards that were never given one answer the same byte again and again, which stands
/// in other answers as well.
template <class Number>
bool NamesABoard(const Number& number) {
  return std::adjacent_find(number.begin(), number.end(), std::not_equal_to<>()) != number.end();
}

/// What nobody but the owner may read: the numbers as they are spelled.
std::vector<std::string> SecretsOf(const LinkFacts& facts, const std::optional<Answers>& answers) {
  // Shorter ones name no board, and stand in many words.
  constexpr std::size_t kShortest = 3;
  std::vector<std::string> secrets;
  for (const BusDevice& device : facts.bus) secrets.push_back(base::Shown(device.serialNumber));
  if (answers && NamesABoard(answers->serialNumber)) secrets.push_back(answers->serialNumber);
  if (answers) {
    for (const Exchange& exchange : answers->exchanges) {
      if (exchange.command != kSerialCommand || !NamesABoard(exchange.answer)) continue;
      for (const char* separator : {"", " ", ":", "-"}) secrets.push_back(HexText(exchange.answer, separator));
    }
  }
  std::erase_if(secrets, [](const std::string& secret) { return secret.size() < kShortest; });
  // A number may be part of another.
  std::sort(secrets.begin(), secrets.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
  return secrets;
}

}  // namespace

std::string DoctorReport(const LinkFacts& facts, const std::optional<Answers>& answers, const Diagnosis& diagnosis,
                         const ReportChoices& choices) {
  Text text;
  text.Heading("Versions");
  text.Line(choices.program);
  for (const std::string& line : facts.system) text.Line(base::Shown(line));
  text.Heading("Permission rule");
  text.Line(TextOf(facts.rule, base::Shown(facts.rulePath)));
  Describe(text, diagnosis);
  text.Heading("Boards on USB: " + std::to_string(facts.bus.size()));
  for (BusDevice device : facts.bus) {
    if (!choices.withSerialNumber && !device.serialNumber.empty()) device.serialNumber = kLeftOut;
    Describe(text, device);
  }
  text.Heading("Interfaces: " + std::to_string(facts.nodes.size()));
  for (const LinkNode& node : facts.nodes) Describe(text, node);
  if (answers) Describe(text, *answers, choices.withSerialNumber);

  std::string report = text.Content();
  if (!choices.withSerialNumber)
    for (const std::string& secret : SecretsOf(facts, answers)) report = Without(report, secret);
  return report;
}

}  // namespace kestrin::core::doctor
