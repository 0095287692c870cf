// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/base/Disk.h"

namespace kestrin::platform::hid {

/// Claims the board at a device path. Does not wait; the system lets go of the claim when the program ends, however it
/// ends. Two programs in the middle of their commands would take each other's answers, and one would erase what the
/// other writes. The claim is a promise among programs that make it, no barrier: needs the right to open the board, but
/// nothing is written anywhere.
[[nodiscard]] core::base::Disk::LockResult LockBoard(const std::string& path);
/// Whether somebody has claimed it, this program or another. Claims nothing, so that nobody is turned away by the
/// question. False when it cannot be told.
[[nodiscard]] bool IsBoardLocked(const std::string& path);

}  // namespace kestrin::platform::hid
