// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/Result.h"

namespace kestrin::core::doctor {

/// The port to the rule by which the system lets people open boards.
class PermissionRule {
 public:
  virtual ~PermissionRule() = default;

  /// Whether this system knows such rules and this program can put one there.
  [[nodiscard]] virtual bool CanChange() const = 0;
  /// The file that is written and removed.
  [[nodiscard]] virtual std::string Path() const = 0;
  /// What is written there, for a person who wants to know before agreeing.
  [[nodiscard]] virtual std::string Content() const = 0;
  /// Writes the rule, has the system read it and apply it to boards that are plugged in: they need not be plugged in
  /// again. Asks the person for the administrator's password by the system's own means and waits for it. Cancelled when
  /// the person does not give it. Nothing is half-written.
  virtual base::Result<> Install() = 0;
  /// Takes it away again, in the same way. A board that has been permitted may be opened until it is plugged in again.
  /// A rule that is not there is no failure.
  virtual base::Result<> Remove() = 0;
};

}  // namespace kestrin::core::doctor
