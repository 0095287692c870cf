// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/doctor/Diagnosis.h"
#include "core/doctor/Interview.h"
#include "core/doctor/LinkFacts.h"
#include "core/doctor/LinkSurvey.h"
#include "core/doctor/PermissionRule.h"

namespace kestrin::ui::doctor {

/// What the doctor looks through, asks with and judges by.
struct DoctorMeans {
  core::doctor::LinkSurvey& survey;
  /// Shared, as work with it that waits for the administrator's password may outlive the window.
  std::shared_ptr<core::doctor::PermissionRule> rule;
  /// Adds to what was seen what only the program knows: which board was chosen. Called on the window's thread.
  std::function<void(core::doctor::LinkFacts&)> complete;
  /// core::doctor::Diagnose().
  std::function<core::doctor::Diagnosis(const core::doctor::LinkFacts&, const std::optional<core::doctor::Answers>&)>
      diagnose;
  /// core::doctor::Interview() by the program's clock.
  std::function<core::doctor::Answers(core::device::TLS&, const std::function<bool()>& goOn)> interview;
  /// core::doctor::DoctorReport() with the program's name.
  std::function<std::string(const core::doctor::LinkFacts&, const std::optional<core::doctor::Answers>&,
                            const core::doctor::Diagnosis&, bool withSerialNumber)>
      report;
};

}  // namespace kestrin::ui::doctor
