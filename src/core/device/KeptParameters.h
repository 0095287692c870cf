// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "base/Result.h"
#include "device/TLS.h"

namespace kestrin::core::device {

/// Remembers, for each serial number, the detection parameters that an erase wiped, until a board of that number has
/// confirmed them again. Survives a restart of the program.
class KeptParameters {
 public:
  virtual ~KeptParameters() = default;
  /// What is remembered for that board; empty when nothing is.
  [[nodiscard]] virtual std::optional<device::AccParam> Find(const std::string& serialNumber) const = 0;
  /// Remembers, or says what is wrong.
  virtual base::Result<> Keep(const std::string& serialNumber, const device::AccParam& parameters) = 0;
  /// Nothing is remembered for that board any more.
  virtual void Forget(const std::string& serialNumber) = 0;
};

}  // namespace kestrin::core::device
