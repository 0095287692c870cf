// SPDX-License-Identifier: MIT
#include <array>
#include <map>

#include "cli/AccelerometerBoard.h"
#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "core/motion/DetectionParameter.h"

namespace kestrin::cli {

namespace {

/// Its place in kDetectionParameters: the last.
constexpr std::size_t kFlashPeriod = core::motion::kDetectionParameters.size() - 1;
static_assert(core::motion::kDetectionParameters[kFlashPeriod].field == &core::device::AccParam::FOCTime);

class AccelSetCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "accel set"; }
  [[nodiscard]] std::string Description() const override {
    return "Change detection parameters; those not named keep what the board holds";
  }

  void Declare(Syntax& syntax) override {
    for (std::size_t i = 0; i < m_values.size(); ++i) {
      const core::motion::DetectionParameter& parameter = core::motion::kDetectionParameters[i];
      syntax.Number("--" + std::string(parameter.name) + (i == kFlashPeriod ? " MS" : " N"), m_values[i],
                    parameter.minimum, parameter.maximum,
                    std::string(parameter.caption) + ", " + std::string(parameter.group));
    }
  }

  [[nodiscard]] Report Run(Context& context) override {
    std::map<const core::motion::DetectionParameter*, std::int32_t> values;
    for (std::size_t i = 0; i < m_values.size(); ++i)
      if (m_values[i]) values[&core::motion::kDetectionParameters[i]] = *m_values[i];
    if (values.empty())
      throw CommandFailure(ExitCode::WrongUsage, "Name at least one parameter to set, for example --MotionTh 180.");
    AccelerometerBoard board(context);
    if (m_values[kFlashPeriod]) board.RequireFlashPeriod();
    return AccelerometerBoard::ReportOf(board.SetupToChange().Change(values), kNotAccepted);
  }

 private:
  /// By the parameters' places in kDetectionParameters.
  std::array<std::optional<std::int32_t>, core::motion::kDetectionParameters.size()> m_values;
};

}  // namespace

std::unique_ptr<Command> MakeAccelSetCommand() { return std::make_unique<AccelSetCommand>(); }

}  // namespace kestrin::cli
