#include "update/DiskAdvice.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <system_error>

namespace kestrin::core::update {

namespace {

constexpr const char* kMakeRoom = "Make room on the disk and update again.";
constexpr const char* kPermit = "Permit writing there and update again.";
constexpr const char* kMoveAway = "Move it away and update again.";
constexpr const char* kCheck = "Check that disk and update again.";

struct Row {
  int reason;
  const char* advice;
};
constexpr Row kSystemReasons[] = {{ENOSPC, kMakeRoom},
#ifdef EDQUOT
                                  {EDQUOT, kMakeRoom},
#endif
                                  {EACCES, kPermit},
                                  {EPERM, kPermit},
                                  {EROFS, kPermit}};

struct OwnRow {
  std::string_view reason;
  const char* advice;
};
constexpr OwnRow kOwnReasons[] = {
    {"is in the way", kMoveAway}, {"into which nothing is written", kMoveAway}, {"meanwhile", "Update again."}};

}  // namespace

std::string DiskAdvice(std::string_view problem) {
  for (const OwnRow& row : kOwnReasons)
    if (problem.ends_with(row.reason)) return row.advice;
  for (const Row& row : kSystemReasons)
    if (problem.ends_with(std::generic_category().message(row.reason))) return row.advice;
  return kCheck;
}

bool IsDiskFull(std::string_view problem) { return DiskAdvice(problem) == kMakeRoom; }

}  // namespace kestrin::core::update
