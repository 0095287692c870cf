#pragma once

#include <stdexcept>
#include <string>

#include "cli/ExitCode.h"

namespace kestrin::cli {

/// Ends a command that has nothing to report but why it could not do its work. The text is for the person.
class CommandFailure : public std::runtime_error {
 public:
  CommandFailure(ExitCode code, const std::string& message) : std::runtime_error(message), m_code(code) {}

  [[nodiscard]] ExitCode Code() const { return m_code; }

 private:
  ExitCode m_code;
};

}  // namespace kestrin::cli
