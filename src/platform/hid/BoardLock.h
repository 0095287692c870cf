// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <system_error>

#include "core/base/Disk.h"

namespace kestrin::platform::hid {

/// A board that this program has claimed.
class BoardClaim : public core::base::Disk::Lock {
 public:
  /// The open file that the claim belongs to: the claim lasts until it is closed everywhere. -1 where it is none.
  [[nodiscard]] virtual int File() const { return -1; }
};

/// How claiming a board ended: with the claim, with another holder, or with an error.
struct BoardLock {
  std::unique_ptr<BoardClaim> lock;
  bool heldByAnother = false;
  /// Why it could not be asked for; no error when it was.
  std::error_code error;
};

/// Claims the board at a device path. Does not wait; the system lets go of the claim when the program ends, however it
/// ends. Two programs in the middle of their commands would take each other's answers, and one would erase what the
/// other writes. The claim is a promise among programs that make it, no barrier: needs the right to open the board, but
/// nothing is written anywhere. `isStill` is asked right before the device file is opened, whether the path is the
/// board's own still: another device's is left alone, and the error is that there is no such device.
[[nodiscard]] BoardLock LockBoard(const std::string& path, const std::function<bool()>& isStill = {});
/// Whether somebody has claimed it, this program or another. Claims nothing, so that nobody is turned away by the
/// question, and on Linux opens nothing when the answer is yes. False when it cannot be told.
[[nodiscard]] bool IsBoardLocked(const std::string& path, const std::function<bool()>& isStill = {});
#ifdef _WIN32
/// Whether this very program has claimed it.
[[nodiscard]] bool IsBoardOurs(const std::string& path);
#endif

}  // namespace kestrin::platform::hid
