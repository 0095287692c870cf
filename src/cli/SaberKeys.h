// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <map>
#include <optional>

#include "cli/Keys.h"
#include "core/base/Clock.h"
#include "core/saber/Saber.h"

namespace kestrin::cli {

/// What keys make happen to a saber. A terminal tells neither when a key is let go nor whether it was pressed or is
/// held down: a key that is held comes again and again, after a while first.
class SaberKeys {
 public:
  /// A key that comes again sooner is held down, not pressed.
  static constexpr core::base::Clock::Duration kRepeats = std::chrono::milliseconds(100);
  /// A lock-up lasts so long after its key came last: until a key that is held down repeats for the first time.
  static constexpr core::base::Clock::Duration kLetGo = std::chrono::milliseconds(750);

  /// What comes of a key: nothing, or one event.
  [[nodiscard]] std::optional<core::saber::Event> Press(Key key, core::saber::State state,
                                                        core::base::Clock::Duration now);
  /// What comes of time: the end of a lock-up whose key was let go.
  [[nodiscard]] std::optional<core::saber::Event> Pass(core::base::Clock::Duration now);

 private:
  /// When each key came last.
  std::map<Key, core::base::Clock::Duration> m_last;
  bool m_isLocked = false;
};

}  // namespace kestrin::cli
