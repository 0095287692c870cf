// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "cli/KeptParametersPlace.h"
#include "cli/OnlineBoard.h"
#include "cli/Report.h"
#include "core/motion/AccelerometerSetup.h"

namespace kestrin::cli {

/// The chosen sound board with its detection parameters.
class AccelerometerBoard {
 public:
  /// Throws CommandFailure when there is no board or it has no sensor.
  explicit AccelerometerBoard(Context& context);

  [[nodiscard]] core::motion::AccelerometerSetup& Setup() { return m_setup; }
  /// The same, to change something. Throws CommandFailure when the board has not said which one it is.
  [[nodiscard]] core::motion::AccelerometerSetup& SetupToChange();
  /// Throws CommandFailure when the board has no flash period that could be set.
  void RequireFlashPeriod() const;

  /// The parameters as every accelerometer command prints them. Throws CommandFailure with `failure` when there are
  /// none.
  [[nodiscard]] static Report ReportOf(const std::optional<core::device::AccParam>& parameters,
                                       const std::string& failure);

 private:
  core::motion::KeptParametersFolder m_kept;
  OnlineBoard m_online;
  core::motion::AccelerometerSetup m_setup;
};

/// The warning of a change of all parameters after which something is still kept for the board.
inline constexpr const char* kStillKept =
    "The board did not confirm that it holds these, so what an interrupted download has kept for it stays kept. "
    "\"kestrinctl accel get\" shows what the board holds.";

/// The failure of every change.
inline constexpr const char* kNotAccepted =
    "The board did not confirm the detection parameters. Check its cable and try again.";

}  // namespace kestrin::cli
