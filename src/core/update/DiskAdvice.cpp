// SPDX-License-Identifier: MIT
#include "update/DiskAdvice.h"

#include <algorithm>
#include <iterator>

namespace kestrin::core::update {

using base::FailureKind;

namespace {

struct Row {
  FailureKind kind;
  const char* advice;
};
constexpr Row kRows[] = {{FailureKind::DiskFull, "Make room on the disk and update again."},
                         {FailureKind::NotPermitted, "Permit writing there and update again."},
                         {FailureKind::InTheWay, "Move it away and update again."},
                         {FailureKind::InUse, "Then update again."},
                         {FailureKind::Changed, "Update again."}};

}  // namespace

std::string DiskAdvice(FailureKind kind) {
  const Row* const row =
      std::find_if(std::begin(kRows), std::end(kRows), [kind](const Row& candidate) { return candidate.kind == kind; });
  return row != std::end(kRows) ? row->advice : "Check that disk and update again.";
}

}  // namespace kestrin::core::update
