// SPDX-License-Identifier: MIT
#pragma once

#include "core/base/Disk.h"

namespace kestrin::platform::files {

/// The computer's disks. A lock excludes every other SystemDisk on the same file, of this program or another.
class SystemDisk final : public core::base::Disk {
 public:
  /// A folder that the system cannot flush, or that may not be listed, counts as flushed: nobody can do more for it.
  [[nodiscard]] std::error_code Flush(const std::filesystem::path& path) override;
  [[nodiscard]] LockResult TryLock(const std::filesystem::path& path) override;
  [[nodiscard]] std::error_code TakeFreeName(const std::filesystem::path& made,
                                             const std::filesystem::path& name) override;
};

}  // namespace kestrin::platform::files
