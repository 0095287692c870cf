#pragma once

#include <optional>
#include <string>

#include "cli/KeptParametersPlace.h"
#include "cli/OnlineBoard.h"
#include "cli/Report.h"
#include "motion/AccelerometerSetup.h"

namespace kestrin::cli {

/// The chosen sound board with its detection parameters.
class AccelerometerBoard {
 public:
  /// Throws CommandFailure when there is no board or it has no sensor.
  explicit AccelerometerBoard(Context& context);

  [[nodiscard]] motion::AccelerometerSetup& Setup() { return m_setup; }

  /// The parameters as every accelerometer command prints them. Throws CommandFailure with `failure` when there are
  /// none.
  [[nodiscard]] static Report ReportOf(const std::optional<device::AccParam>& parameters, const std::string& failure);

 private:
  motion::KeptParametersFolder m_kept;
  OnlineBoard m_online;
  motion::AccelerometerSetup m_setup;
};

/// The failure of every change.
inline constexpr const char* kNotAccepted =
    "The board did not confirm the detection parameters. Check its cable and try again.";

}  // namespace kestrin::cli
