// SPDX-License-Identifier: MIT
#include "cli/SaberKeys.h"

namespace kestrin::cli {

using core::saber::Event;
using core::saber::State;

std::optional<Event> SaberKeys::Press(Key key, State state, core::base::Clock::Duration now) {
  const auto last = m_last.find(key);
  const bool isHeld = last != m_last.end() && now - last->second < kRepeats;
  m_last[key] = now;
  if (isHeld) return std::nullopt;
  switch (key) {
    case Key::Space:
      return state == State::Off || state == State::Boot ? Event::On : Event::Off;
    case Key::Arrow:
      return Event::Swing;
    case Key::Enter:
      return Event::Hit;
    case Key::L:
      if (m_isLocked) return std::nullopt;
      m_isLocked = true;
      return Event::LockupBegin;
    default:
      return std::nullopt;
  }
}

std::optional<Event> SaberKeys::Pass(core::base::Clock::Duration now) {
  if (!m_isLocked || now - m_last[Key::L] < kLetGo) return std::nullopt;
  m_isLocked = false;
  return Event::LockupEnd;
}

}  // namespace kestrin::cli
