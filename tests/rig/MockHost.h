// SPDX-License-Identifier: MIT
#pragma once

#include <umockdev.h>

#include <memory>
#include <string>

#include "rig/ObjectDeleter.h"

namespace kestrin::rig {

/// A mocked /sys and /dev of this process. One at a time.
class MockHost {
 public:
  /// Throws when the program does not run under umockdev-wrapper.
  MockHost();

  [[nodiscard]] UMockdevTestbed* Testbed() const { return m_testbed.get(); }
  /// Where a path of the mocked system really is; a real path is not redirected.
  [[nodiscard]] std::string RealPath(const std::string& path) const { return m_root + path; }

 private:
  std::unique_ptr<UMockdevTestbed, ObjectDeleter> m_testbed;
  std::string m_root;
};

}  // namespace kestrin::rig
