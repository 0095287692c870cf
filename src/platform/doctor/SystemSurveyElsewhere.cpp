// SPDX-License-Identifier: MIT
#include <utility>

#include "platform/doctor/SystemSurvey.h"
#include "platform/hid/HidLibrary.h"

namespace kestrin::platform::doctor {

SystemSurvey::SystemSurvey(Surroundings surroundings) : m_surroundings(std::move(surroundings)) {}

// The HID library is the only one here that could list boards, and it must not be asked beside the thread that talks to
// one.
core::doctor::LinkFacts SystemSurvey::Look() {
  core::doctor::LinkFacts facts;
  facts.system.emplace_back("not Linux, not Windows");
  facts.system.push_back(hid::HidLibrary());
  return facts;
}

}  // namespace kestrin::platform::doctor
