// SPDX-License-Identifier: MIT
#pragma once

#include "core/base/Result.h"
#include "core/doctor/LinkFacts.h"

namespace kestrin::platform::doctor {

/// What came of opening a board, as the doctor tells it: open, or the kind of the failure; Failed for those that need
/// no advice of their own.
[[nodiscard]] inline core::doctor::Access AccessOf(const core::base::Result<>& opened) {
  using core::base::FailureKind;
  using core::doctor::Access;
  if (opened) return Access::Open;
  if (opened.Why().kind == FailureKind::InUse) return Access::InUse;
  return opened.Why().kind == FailureKind::NotPermitted ? Access::NotPermitted : Access::Failed;
}

}  // namespace kestrin::platform::doctor
