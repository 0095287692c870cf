// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "cli/ExitCode.h"

namespace kestrin::cli {

/// Ends a command that has nothing to report but why it could not do its work. The text is for the person, and so is
/// the detail, which says what exactly is wrong where the text does not.
class CommandFailure : public std::runtime_error {
 public:
  CommandFailure(ExitCode code, const std::string& message, std::string detail = "")
      : std::runtime_error(message), m_code(code), m_detail(std::move(detail)) {}

  [[nodiscard]] ExitCode Code() const { return m_code; }
  [[nodiscard]] const std::string& Detail() const { return m_detail; }

 private:
  ExitCode m_code;
  std::string m_detail;
};

}  // namespace kestrin::cli
