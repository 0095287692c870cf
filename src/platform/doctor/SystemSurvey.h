// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "core/base/Result.h"
#include "core/doctor/LinkSurvey.h"

namespace kestrin::platform::doctor {

/// What this computer knows of the way to a board. On Linux it reads /sys, /proc and the rules, on Windows the system's
/// list of HID interfaces, and tries to open what has a board's ids; elsewhere it only names the system.
class SystemSurvey final : public core::doctor::LinkSurvey {
 public:
  /// What it looks at; a test has its own.
  struct Surroundings {
    /// Where / begins.
    std::filesystem::path root = "/";
    /// Whether a device file can be opened, and by nobody else is; the kind of a failure as HidStack says. Without one
    /// it is tried.
    std::function<core::base::Result<>(const std::string& path)> open;
  };

  SystemSurvey() : SystemSurvey(Surroundings()) {}
  explicit SystemSurvey(Surroundings surroundings);

  /// Throws nothing. May be called from any thread, from one at a time.
  [[nodiscard]] core::doctor::LinkFacts Look() override;

 private:
  Surroundings m_surroundings;
};

}  // namespace kestrin::platform::doctor
