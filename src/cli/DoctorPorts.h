// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "cli/Command.h"
#include "core/base/EventPump.h"
#include "core/doctor/LinkSurvey.h"
#include "core/doctor/PermissionRule.h"

namespace kestrin::cli {

/// How the doctor reaches the system and the person.
struct DoctorPorts {
  std::unique_ptr<core::doctor::LinkSurvey> survey;
  /// The rule, with the pump of the command that changes it.
  std::function<std::unique_ptr<core::doctor::PermissionRule>(const core::base::EventPump&)> makeRule;
  /// As AskYesOrNo().
  std::function<std::optional<bool>(const std::string& question)> ask;
};

/// The command `doctor` over given ports.
[[nodiscard]] std::unique_ptr<Command> MakeDoctorCommand(DoctorPorts ports);

}  // namespace kestrin::cli
