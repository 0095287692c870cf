// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>

#include "core/device/KeptParameters.h"

namespace kestrin::support {

/// Kept parameters in memory; `problem` makes the next Keep() fail.
class MemoryKeptParameters final : public core::device::KeptParameters {
 public:
  std::map<std::string, core::device::AccParam> kept;
  std::string problem;

  [[nodiscard]] std::optional<core::device::AccParam> Find(const std::string& serialNumber) const override {
    const auto found = kept.find(serialNumber);
    return found == kept.end() ? std::nullopt : std::optional(found->second);
  }
  core::base::Result<> Keep(const std::string& serialNumber, const core::device::AccParam& parameters) override {
    if (!problem.empty()) return core::base::Failure{core::base::FailureKind::Failed, problem};
    kept[serialNumber] = parameters;
    return {};
  }
  void Forget(const std::string& serialNumber) override { kept.erase(serialNumber); }
};

}  // namespace kestrin::support
