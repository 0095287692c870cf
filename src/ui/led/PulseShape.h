// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <vector>

#include "core/led/PulseContent.h"

namespace kestrin::ui::led {

/// How a pulse goes over time, for a picture of it. Times are milliseconds; the light is a share, 0 for the low level
/// of the pulse and 1 for its high level.
class PulseShape {
  Q_DECLARE_TR_FUNCTIONS(PulseShape)

 public:
  struct Phase {
    /// "ON", as the box of this time is called.
    QString name;
    double length = 0;
    /// The share at the start and at the end; in between it moves evenly.
    double from = 0;
    double to = 0;
  };

  PulseShape() = default;
  /// The idle pulse: rises, stays high, falls, stays low, and begins anew.
  [[nodiscard]] static PulseShape Idle(const core::led::PulseContent& pulse);
  /// The flash-on-clash pulse: high and low, as often as it repeats (1 .. 10).
  [[nodiscard]] static PulseShape FlashOnClash(const core::led::PulseContent& pulse);

  /// Those that last.
  [[nodiscard]] const std::vector<Phase>& Phases() const { return m_phases; }
  /// How long one turn of it is; 0 for a pulse without any time.
  [[nodiscard]] double Length() const { return m_length; }
  /// The share at a moment after the start of a turn; before it as at the start, after it as at the end. A pulse
  /// without any time stays low.
  [[nodiscard]] double ShareAt(double moment) const;

 private:
  /// `name` is translated.
  void Add(const char* name, double length, double from, double to);

  std::vector<Phase> m_phases;
  double m_length = 0;
};

}  // namespace kestrin::ui::led
