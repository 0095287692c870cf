// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::ui::stage {

/// How a blade moves: it follows where it is led smoothly, comes out of its hilt and goes in again, and shakes when it
/// hits something. Time goes on by Step() alone.
class BladeMotion {
 public:
  /// Where it may point, in degrees upwards from the right.
  static constexpr double kLowest = -6;
  static constexpr double kHighest = 62;
  /// How it is held at first.
  static constexpr double kHeld = 16;
  /// It comes out and goes in at least so long, in seconds, also without a sound.
  static constexpr double kQuickest = 0.2;

  /// Where it is led.
  void Aim(double degrees);
  [[nodiscard]] double Aimed() const { return m_aim; }
  /// Whether it is to be out, and in how many seconds all of it is.
  void Extend(bool out, double seconds);
  void Shake();
  void Step(double seconds);

  /// Where it points.
  [[nodiscard]] double Degrees() const { return m_degrees + m_shake; }
  /// Where the light that it draws behind itself begins.
  [[nodiscard]] double Trail() const { return m_trail + m_shake; }
  /// How much of it is out, from 0 to 1.
  [[nodiscard]] double Extent() const;
  /// Whether nothing of it moves any more.
  [[nodiscard]] bool IsStill() const;

 private:
  double m_aim = kHeld;
  double m_degrees = kHeld;
  double m_speed = 0;
  double m_trail = kHeld;
  double m_extent = 0;
  /// Of the blade, a second; below 0 it goes in.
  double m_growth = 0;
  double m_shake = 0;
  /// Since it was shaken.
  double m_shaken = 1e9;
};

}  // namespace kestrin::ui::stage
