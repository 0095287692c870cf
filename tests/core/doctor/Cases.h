// SPDX-License-Identifier: MIT
#pragma once

#include "core/doctor/Diagnosis.h"
#include "support/BoardDescriptors.h"

namespace kestrin::core::doctor {

/// A board on USB, three minutes old.
inline BusDevice BoardOnBus() {
  BusDevice device;
  device.place = "1-2";
  device.manufacturer = "Corvent";
  device.product = "Kestrin USB2";
  device.serialNumber = "KU-77123";
  device.hasHid = true;
  device.pluggedFor = std::chrono::seconds(190);
  return device;
}

inline LinkNode NodeAt(const std::string& path, Access access = Access::Open) {
  LinkNode node;
  node.path = path;
  node.product = "Kestrin USB2";
  node.access = access;
  node.descriptor = support::BoardDescriptor();
  node.hasVariables = true;
  return node;
}

/// A device that only looks like a board.
inline LinkNode ForeignNode(const std::string& path) {
  LinkNode node = NodeAt(path);
  node.hasVariables = false;
  node.descriptor = {0x05, 0x01};
  return node;
}

/// A computer to which one board is plugged in.
inline LinkFacts OneBoard(Access access = Access::Open, RuleState rule = RuleState::Installed) {
  LinkFacts facts;
  facts.bus = {BoardOnBus()};
  facts.nodes = {NodeAt("/dev/hidraw3", access)};
  facts.rule = rule;
  facts.rulePath = "/etc/udev/rules.d/70-kestrin.rules";
  return facts;
}

/// What a sound board of revision 37 answers, in 35 ms each time but once.
inline Answers GoodAnswers() {
  Answers answers;
  answers.written = true;
  answers.answered = true;
  answers.id = 4133;
  answers.serialNumber = "4B535401";
  answers.roundTrips.assign(Answers::kRoundTrips, std::chrono::microseconds(35000));
  answers.roundTrips[7] = std::chrono::microseconds(40200);
  answers.exchanges = {{"GetID", {0x10, 0x25}, 2, std::chrono::microseconds(35000)},
                       {"GetSN", {0x4B, 0x53, 0x54, 0x01}, 4, std::chrono::microseconds(36000)}};
  return answers;
}

}  // namespace kestrin::core::doctor
