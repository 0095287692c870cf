// SPDX-License-Identifier: MIT
#include "platform/doctor/RuleFile.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <vector>

#include "core/base/PathText.h"
#include "core/base/Text.h"
#include "platform/hid/KernelFile.h"

namespace kestrin::platform::doctor {

namespace fs = std::filesystem;

namespace {

/// In the order in which a file in one hides that of the same name in the next.
constexpr const char* kFolders[] = {kRulesFolder, "run/udev/rules.d", "usr/local/lib/udev/rules.d",
                                    "usr/lib/udev/rules.d", "lib/udev/rules.d"};

/// The lines that say something, without the blanks around them.
std::vector<std::string> Sayings(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  std::vector<std::string> lines;
  for (std::string_view line : core::base::Split(text, "\n")) {
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    line.remove_suffix(line.size() - (line.find_last_not_of(kBlanks) + 1));
    if (!line.empty() && !line.starts_with('#')) lines.emplace_back(line);
  }
  return lines;
}

}  // namespace

bool HasRules(const fs::path& root) {
  // Other packages bring rules of their own to /usr/lib/udev, also where nobody reads them.
  constexpr const char* kManagers[] = {"etc/udev", "run/udev"};
  std::error_code error;
  return std::any_of(std::begin(kManagers), std::end(kManagers),
                     [&](const char* folder) { return fs::is_directory(root / folder, error); });
}

FoundRule FindRule(const fs::path& root) {
  using core::doctor::RuleState;
  if (!HasRules(root)) return {RuleState::NotNeeded, ""};
  for (const char* const folder : kFolders) {
    const fs::path file = root / folder / kRuleName;
    std::error_code error;
    if (!fs::exists(fs::symlink_status(file, error))) continue;
    const std::optional<std::string> text = hid::ReadKernelFile(file);
    const bool isSame = text && Sayings(*text) == Sayings(RuleText());
    return {isSame ? RuleState::Installed : RuleState::Different,
            core::base::TextOf("/" / fs::path(folder) / kRuleName)};
  }
  return {RuleState::Missing, ""};
}

}  // namespace kestrin::platform::doctor
