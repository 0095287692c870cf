// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::ui::kit {

/// The port to the computer's power saving.
class SleepBlocker {
 public:
  virtual ~SleepBlocker() = default;
  /// From now on the computer does not fall asleep by itself; `why` may be shown to the person. A system that cannot do
  /// that stays as it is.
  virtual void Block(const std::string& why) = 0;
  virtual void Unblock() = 0;
};

}  // namespace kestrin::ui::kit
