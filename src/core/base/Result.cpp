// SPDX-License-Identifier: MIT
#include "base/Result.h"

#include <cerrno>

namespace kestrin::core::base {

namespace {

struct Row {
  std::errc error;
  FailureKind kind;
};
constexpr Row kRows[] = {{std::errc::no_such_file_or_directory, FailureKind::NotFound},
                         // Of a device that has just gone: its file may still be there.
                         {std::errc::no_such_device, FailureKind::NotFound},
                         {std::errc::no_such_device_or_address, FailureKind::NotFound},
                         {std::errc::permission_denied, FailureKind::NotPermitted},
                         {std::errc::operation_not_permitted, FailureKind::NotPermitted},
                         {std::errc::read_only_file_system, FailureKind::NotPermitted},
                         {std::errc::no_space_on_device, FailureKind::DiskFull},
                         {std::errc::file_exists, FailureKind::InTheWay},
                         {std::errc::is_a_directory, FailureKind::InTheWay}};

#ifdef _WIN32
struct WindowsRow {
  int error;
  FailureKind kind;
};
/// What the standard library has no word for, or another one.
constexpr WindowsRow kWindowsRows[] = {{19, FailureKind::NotPermitted},  // the medium is write-protected
                                       {32, FailureKind::InUse},         // somebody has the file open
                                       {33, FailureKind::InUse},         // somebody has locked a part of it
                                       {39, FailureKind::DiskFull},      // no room, said by some drivers
                                       {433, FailureKind::NotFound},     // no such device
                                       {1167, FailureKind::NotFound},    // the device is not connected
                                       {1224, FailureKind::InUse},       // somebody has it in memory
                                       {1295, FailureKind::DiskFull}};   // the person's quota is full
#endif

}  // namespace

FailureKind KindOf(const std::error_code& error) {
#ifdef _WIN32
  for (const WindowsRow& row : kWindowsRows)
    if (error == std::error_code(row.error, std::system_category())) return row.kind;
#endif
  for (const Row& row : kRows)
    if (error == row.error) return row.kind;
#ifdef EDQUOT
  // A full quota is the person's full disk; the standard library has no word for it.
  if (error == std::error_code(EDQUOT, std::generic_category()) ||
      error == std::error_code(EDQUOT, std::system_category()))
    return FailureKind::DiskFull;
#endif
  return FailureKind::Failed;
}

Failure FailureOf(const std::error_code& error) {
  const FailureKind kind = KindOf(error);
  return {kind, kind == FailureKind::InUse ? kOpenElsewhere : error.message()};
}

}  // namespace kestrin::core::base
