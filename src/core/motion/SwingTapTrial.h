// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "motion/MovementFinder.h"

namespace kestrin::core::motion {

/// "Swing five times, then tap five times": takes the swings first, then the taps; what is done out of turn does not
/// count.
class SwingTapTrial {
 public:
  /// Of each kind.
  static constexpr std::size_t kWanted = 5;

  /// Whether the movement counts. One that does not is Ignored() until the next one.
  bool Take(const Movement& movement);

  /// The peaks of those that counted, in order.
  [[nodiscard]] const std::vector<std::int32_t>& Swings() const { return m_swings; }
  [[nodiscard]] const std::vector<std::int32_t>& Taps() const { return m_taps; }
  /// Whose turn it is; empty at the end.
  [[nodiscard]] std::optional<Movement::Kind> Turn() const;
  /// The last movement, if it was out of turn.
  [[nodiscard]] std::optional<Movement::Kind> Ignored() const { return m_ignored; }

 private:
  std::vector<std::int32_t> m_swings;
  std::vector<std::int32_t> m_taps;
  std::optional<Movement::Kind> m_ignored;
};

}  // namespace kestrin::core::motion
