// SPDX-License-Identifier: MIT
#include "device/ObjectId.h"

#include <atomic>

namespace kestrin::core::device {

std::int32_t NextObjectId() {
  static std::atomic<std::int32_t> s_last{kLargestGivenIdentity};
  return ++s_last;
}

}  // namespace kestrin::core::device
