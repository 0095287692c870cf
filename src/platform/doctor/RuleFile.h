// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/doctor/LinkFacts.h"

namespace kestrin::platform::doctor {

/// The file of the rule that permits boards, and the folder in which an administrator's rules lie.
inline constexpr const char* kRuleName = "70-kestrin.rules";
inline constexpr const char* kRulesFolder = "etc/udev/rules.d";

/// What stands in it.
[[nodiscard]] std::string_view RuleText();

/// Whether this system has a device manager that reads such rules. `root` is where / begins.
[[nodiscard]] bool HasRules(const std::filesystem::path& root);

/// A rule that was looked for.
struct FoundRule {
  core::doctor::RuleState state = core::doctor::RuleState::NotNeeded;
  /// The file that is in force, from "/" on; "" without one.
  std::string path;
};

/// How it stands with the rule. Of several files of its name one is in force; comments and blanks in it say nothing.
[[nodiscard]] FoundRule FindRule(const std::filesystem::path& root);

}  // namespace kestrin::platform::doctor
