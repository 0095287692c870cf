#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "device/TLS.h"
#include "motion/DetectionParameter.h"
#include "motion/KeptParameters.h"

namespace kestrin::motion {

/// Reads and changes a sound board's detection parameters.
///
/// An interrupted download may have left values of this board remembered. What the person sets here on purpose is
/// newer: it replaces the remembered value of the same parameter, and once the board holds everything that is
/// remembered, nothing needs to be remembered any more.
class AccelerometerSetup {
 public:
  /// `serialNumber` is the board's. All must outlive the setup.
  AccelerometerSetup(device::TLS& board, std::string serialNumber, KeptParameters& kept);

  /// What the board holds, in its own units; empty when it did not answer.
  [[nodiscard]] std::optional<device::AccParam> Read();

  /// New values by parameter, as people see them (`FOCTime` in milliseconds); parameters not named keep what the board
  /// holds. Restarts the board and returns what it then holds; empty when it did not accept them.
  [[nodiscard]] std::optional<device::AccParam> Change(const std::map<const DetectionParameter*, std::int32_t>& values);

  /// Puts back the factory values; as Change() with all six.
  [[nodiscard]] std::optional<device::AccParam> RestoreDefaults();

  /// What an interrupted download had kept for this board; empty when there is nothing.
  [[nodiscard]] std::optional<device::AccParam> Kept() const;
  /// Puts Kept() back; as Change() with all six. Empty also when there is nothing.
  [[nodiscard]] std::optional<device::AccParam> RestoreKept();

 private:
  /// Sends all six; nothing is remembered any more once the board has accepted them.
  [[nodiscard]] std::optional<device::AccParam> Replace(const device::AccParam& parameters);
  /// Restarts the board and reads what it then holds: what it accepted, if it does not answer so soon.
  [[nodiscard]] device::AccParam Restart(const device::AccParam& accepted);

  device::TLS& m_board;
  std::string m_serialNumber;
  KeptParameters& m_kept;
};

}  // namespace kestrin::motion
