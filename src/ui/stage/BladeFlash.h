// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace kestrin::ui::stage {

/// When a blade flashes, with the flash period of a board: once with a hit, over and over while it is locked up. With
/// fewer flashes none begins sooner than a third of a second after the one before, whatever asks for it, and each comes
/// and goes softly: more than three flashes a second can make people ill.
///
/// Times are milliseconds of one clock that never goes back.
class BladeFlash {
 public:
  /// At least so far apart begin flashes when there are to be fewer.
  static constexpr double kApart = 1000.0 / 3;
  /// So long is each when there are to be fewer.
  static constexpr double kLength = 130;
  /// The board's flash period as it leaves the factory.
  static constexpr double kFactoryPeriod = 52;

  void SetFewer(bool fewer) { m_fewer = fewer; }
  void SetPeriod(double milliseconds) { m_period = milliseconds; }
  void Hit(double now);
  void LockUp(double now);
  void LetGo() { m_lockedSince.reset(); }

  /// How strong the flash is at that moment, from 0 to 1; to be asked in the order of time. One that begins between two
  /// questions begins with the later one.
  [[nodiscard]] double At(double now);
  /// Whether it flashes, or will without anything happening.
  [[nodiscard]] bool IsStill(double now) const;

 private:
  /// The moment in which a flash wants to begin, at or before now; nothing when none has begun.
  [[nodiscard]] std::optional<double> Wanted(double now) const;
  [[nodiscard]] double Length() const;

  bool m_fewer = true;
  double m_period = kFactoryPeriod;
  std::optional<double> m_hit;
  std::optional<double> m_lockedSince;
  /// The beginning of the flash that was shown last, and what it stands for.
  std::optional<double> m_shown;
  std::optional<double> m_shownWanted;
};

}  // namespace kestrin::ui::stage
