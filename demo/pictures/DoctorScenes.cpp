// SPDX-License-Identifier: MIT
#include "demo/pictures/DoctorScenes.h"

#include <QAbstractButton>
#include <QAction>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include "core/doctor/Diagnosis.h"
#include "core/doctor/Interview.h"
#include "demo/pictures/Stage.h"

namespace kestrin::demo {

namespace {

using core::doctor::Access;
using core::doctor::Answers;
using core::doctor::LinkFacts;
using core::doctor::LinkNode;
using core::doctor::RuleState;
using namespace std::chrono_literals;

constexpr const char* kRulePath = "/etc/udev/rules.d/70-kestrin.rules";

/// Sees what the picture is to show.
class PreparedSurvey final : public core::doctor::LinkSurvey {
 public:
  LinkFacts facts;
  [[nodiscard]] LinkFacts Look() override { return facts; }
};

/// Writes nothing.
class PreparedRule final : public core::doctor::PermissionRule {
 public:
  [[nodiscard]] bool CanChange() const override { return true; }
  [[nodiscard]] std::string Path() const override { return kRulePath; }
  [[nodiscard]] std::string Content() const override {
    return "# Lets the people who sit at this computer open Kestrin boards.\n#\n"
           "# The number in this file's name must stay below 73: later, \"uaccess\" is no longer looked at.\n\n"
           "ACTION==\"remove\", GOTO=\"kestrin_end\"\n"
           "SUBSYSTEM!=\"hidraw\", GOTO=\"kestrin_end\"\n\n"
           "KERNELS==\"0003:04D8:FA37.*\", MODE=\"0660\", GROUP=\"plugdev\", TAG+=\"uaccess\"\n\n"
           "LABEL=\"kestrin_end\"\n";
  }
  core::base::Result<> Install() override { return {}; }
  core::base::Result<> Remove() override { return {}; }
};

/// One board on the bus that can be opened, with the rule there.
LinkFacts OneBoard() {
  LinkFacts facts;
  facts.bus = {{"1-2.4", "Corvent", "Kestrin USB2", "", true, 120s}};
  LinkNode node;
  node.path = "/dev/hidraw3";
  node.product = "Kestrin USB2";
  node.access = Access::Open;
  node.hasVariables = true;
  facts.nodes = {node};
  facts.rule = RuleState::Installed;
  facts.rulePath = kRulePath;
  return facts;
}

Answers WellAnswered() {
  Answers answers;
  answers.written = true;
  answers.answered = true;
  answers.id = 65535;
  answers.serialNumber = "4B535401";
  answers.roundTrips.assign(Answers::kRoundTrips, 2100us);
  return answers;
}

QPixmap Take(const Place& place, const std::string& board, LinkFacts facts, const Answers& answers,
             const std::function<void(Stage&)>& act = {}) {
  PreparedSurvey survey;
  survey.facts = std::move(facts);
  const ui::doctor::DoctorMeans doctor{survey,
                                       std::make_shared<PreparedRule>(),
                                       [](LinkFacts&) {},
                                       core::doctor::Diagnose,
                                       [&answers](core::device::TLS&, const std::function<bool()>&) { return answers; },
                                       {}};
  Stage stage(place.program, place.sounds, board, &doctor);
  stage.Open(place.size, false);
  stage.Find<QAction>("ConnectionAction").trigger();
  stage.Settle(stage.Window());
  if (act) act(stage);
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

LinkFacts NotPermitted() {
  LinkFacts facts = OneBoard();
  facts.nodes.front().access = Access::NotPermitted;
  facts.rule = RuleState::Missing;
  facts.rulePath.clear();
  return facts;
}

}  // namespace

QPixmap TakeDoctorNoBoard(const Place& place, const std::string& board) { return Take(place, board, {}, {}); }

QPixmap TakeDoctorNotPermitted(const Place& place, const std::string& board) {
  return Take(place, board, NotPermitted(), {});
}

QPixmap TakeDoctorConsent(const Place& place, const std::string& board) {
  return Take(place, board, NotPermitted(), {}, [](Stage& stage) { stage.Find<QAbstractButton>("NextBtn").click(); });
}

QPixmap TakeDoctorInUse(const Place& place, const std::string& board) {
  LinkFacts facts = OneBoard();
  facts.nodes.front().access = Access::InUse;
  facts.nodes.front().user = "kestrinctl (4711)";
  return Take(place, board, std::move(facts), {});
}

QPixmap TakeDoctorHung(const Place& place, const std::string& board) {
  LinkFacts facts = OneBoard();
  facts.nodes.front().isOurs = true;
  Answers silent;
  silent.written = true;
  return Take(place, board, std::move(facts), silent);
}

QPixmap TakeDoctorHealthy(const Place& place, const std::string& board) {
  LinkFacts facts = OneBoard();
  facts.nodes.front().isOurs = true;
  return Take(place, board, std::move(facts), WellAnswered());
}

QPixmap TakeDoctorRemarks(const Place& place, const std::string& board) {
  LinkFacts facts = OneBoard();
  facts.nodes.front().isOurs = true;
  LinkNode foreign;
  foreign.path = "/dev/hidraw/by-id/usb-Somebody_A_device_with_the_ids_of_a_board_but_other_reports_0001-event-if00";
  foreign.descriptor = {6, 0, 255};
  facts.nodes.push_back(foreign);
  facts.bus.push_back({"1-3", "Corvent", "Kestrin USB", "", false, 5s});
  return Take(place, board, std::move(facts), WellAnswered());
}

}  // namespace kestrin::demo
