// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/base/EventPump.h"
#include "core/doctor/PermissionRule.h"

namespace kestrin::platform::doctor {

/// The rule of Linux's device manager, put among the administrator's own rules. Elsewhere there is none.
class UdevRule final : public core::doctor::PermissionRule {
 public:
  /// Where the person is asked for the password: by a window of the desktop (pkexec), or at the terminal (sudo).
  enum class Asks { AtDesktop, AtTerminal };

  /// What it works on; a test has its own.
  struct Surroundings {
    /// Where / begins.
    std::filesystem::path root = "/";
    /// Whether the program is run by the administrator, who is not asked; without it the system says so.
    std::optional<bool> isAdministrator;
    /// Gets its turn every 20 ms while the person is asked. It may throw to stop waiting; the change is then made whole
    /// or not at all.
    core::base::EventPump pump;
  };

  explicit UdevRule(Asks asks) : UdevRule(asks, Surroundings()) {}
  UdevRule(Asks asks, Surroundings surroundings);

  [[nodiscard]] bool CanChange() const override;
  [[nodiscard]] std::string Path() const override;
  [[nodiscard]] std::string Content() const override;
  core::base::Result<> Install() override;
  core::base::Result<> Remove() override;

 private:
  /// Has the administrator's shell run a script with these arguments. `todo` is what to type instead.
  [[nodiscard]] core::base::Result<> Change(const std::string& script, const std::string& content,
                                            const std::string& todo) const;

  Asks m_asks;
  Surroundings m_surroundings;
};

}  // namespace kestrin::platform::doctor
