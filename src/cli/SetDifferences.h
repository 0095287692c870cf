// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/CommandFailure.h"
#include "cli/Report.h"
#include "core/base/Result.h"
#include "core/sound/board/SetComparison.h"

namespace kestrin::cli {

/// What a board told; throws the CommandFailure that says why it did not.
template <typename T>
[[nodiscard]] T RequireTold(core::base::Result<T> told) {
  if (!told) throw CommandFailure(ExitCode::Failed, told.Text());
  return *std::move(told);
}

/// Differences as JSON, each with its slot, its position and the word of SetComparison::NameOf().
[[nodiscard]] Document DocumentOf(const std::vector<core::sound::SetDifference>& differences);

/// Differences as a table for people; `first` and `second` are what the two sets are called in it.
[[nodiscard]] std::string TableOf(const std::vector<core::sound::SetDifference>& differences, const std::string& first,
                                  const std::string& second);

}  // namespace kestrin::cli
