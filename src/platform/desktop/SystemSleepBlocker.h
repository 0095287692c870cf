// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "ui/kit/SleepBlocker.h"

namespace kestrin::platform::desktop {

/// Keeps the computer awake: on Linux by an inhibitor of the login service, on Windows by the thread's execution state.
class SystemSleepBlocker final : public ui::kit::SleepBlocker {
 public:
  SystemSleepBlocker();
  ~SystemSleepBlocker() override;
  SystemSleepBlocker(const SystemSleepBlocker&) = delete;
  SystemSleepBlocker& operator=(const SystemSleepBlocker&) = delete;

  void Block(const std::string& why) override;
  void Unblock() override;

 private:
  struct Hold;
  std::unique_ptr<Hold> m_hold;
};

}  // namespace kestrin::platform::desktop
