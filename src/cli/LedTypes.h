// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/Syntax.h"
#include "core/led/LED_Driver.h"
#include "core/ledsetup/LedSetup.h"

namespace kestrin::cli {

/// The types of the LED catalogue in that folder. Throws CommandFailure when it is not valid.
[[nodiscard]] std::vector<core::led::LED_Driver> ReadLedTypes(const std::filesystem::path& programFolder);

/// The options that choose an LED type and its overdrive.
class LedTypeChoice {
 public:
  /// Declares `--type` and `--overdrive`.
  void Declare(Syntax& syntax);
  /// Throws CommandFailure when the overdrive was not given.
  void Require() const;
  /// Makes the chosen type the current one of `setup`. Throws CommandFailure when the catalogue is not valid or does
  /// not have it. Returns "", or a text that says to what the overdrive was lowered.
  [[nodiscard]] std::string Apply(core::ledsetup::LedSetup& setup, const std::filesystem::path& programFolder) const;

 private:
  std::string m_name;
  std::optional<std::int32_t> m_overdrive;
};

}  // namespace kestrin::cli
