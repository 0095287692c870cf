// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace kestrin::core::base {

/// What a crash, a power cut and a second program ask of the disk and the standard library does not have.
class Disk {
 public:
  /// A lock that is held for as long as the object lives. The system lets go of it when the program ends, however it
  /// ends.
  class Lock {
   public:
    Lock() = default;
    virtual ~Lock() = default;
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
  };

  /// How taking a lock ended: with the lock, with another holder, or with an error.
  struct LockResult {
    std::unique_ptr<Lock> lock;
    bool heldByAnother = false;
    /// Why it could not be asked for; no error when it was.
    std::error_code error;
  };

  virtual ~Disk() = default;

  /// Forces what was written to a file, or the names in a folder, onto the medium. The error says why it could not.
  [[nodiscard]] virtual std::error_code Flush(const std::filesystem::path& path) = 0;
  /// Takes the lock that the file `path` stands for; the file is made when it is absent, its content is nobody's. Does
  /// not wait. Another holder may be another program or another part of this one.
  [[nodiscard]] virtual LockResult TryLock(const std::filesystem::path& path) = 0;
  /// Gives the file or folder `made`, which nobody has open, the name `name` on the same disk, unless something has
  /// that name already: then the error is std::errc::file_exists. Of several programs that do so at once one gets the
  /// name.
  [[nodiscard]] virtual std::error_code TakeFreeName(const std::filesystem::path& made,
                                                     const std::filesystem::path& name) = 0;
};

}  // namespace kestrin::core::base
