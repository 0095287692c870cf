// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "device/KeptParameters.h"
#include "device/TLS.h"
#include "motion/DetectionParameter.h"

namespace kestrin::core::motion {

/// Reads and changes a sound board's detection parameters.
///
/// An interrupted download may have left values of this board remembered. What the person sets here on purpose is
/// newer: it replaces the remembered value of the same parameter, and once the board holds everything that is
/// remembered, nothing needs to be remembered any more. Both happen only when the board, asked after its restart, tells
/// that it holds what was sent (IsFormOf()): its acknowledgement alone may be that of an erase that came late, and
/// what is remembered may be the only place where the person's values still are.
class AccelerometerSetup {
 public:
  /// What became of values that were sent.
  struct Sent {
    bool accepted = false;
    /// What the board told after its restart; empty also when it did not answer so soon.
    std::optional<device::AccParam> held;
  };

  /// Serial number and `DeviceRevision` are the board's. All must outlive the setup.
  AccelerometerSetup(device::TLS& board, std::string serialNumber, std::uint16_t revision,
                     device::KeptParameters& kept);

  /// What the board holds, in its own units; empty when it did not answer.
  [[nodiscard]] std::optional<device::AccParam> Read();

  /// Sends all six and restarts the board, which takes them into use then.
  [[nodiscard]] Sent Send(const device::AccParam& wanted);
  /// Read() once more after a Send() of `accepted` whose values were not told: settles what is remembered as Send()
  /// would have.
  [[nodiscard]] std::optional<device::AccParam> ReadBack(const device::AccParam& accepted);

  /// New values by parameter, as people see them (`FOCTime` in milliseconds); parameters not named keep what the board
  /// holds. Restarts the board and returns what it then holds: what it accepted, if it does not answer so soon. Empty
  /// when it did not accept them.
  [[nodiscard]] std::optional<device::AccParam> Change(const std::map<const DetectionParameter*, std::int32_t>& values);

  /// Puts back the factory values; as Change() with all six.
  [[nodiscard]] std::optional<device::AccParam> RestoreDefaults();

  /// What an interrupted download had kept for this board; empty when there is nothing.
  [[nodiscard]] std::optional<device::AccParam> Kept() const;
  /// Puts Kept() back; as Change() with all six. Empty also when there is nothing.
  [[nodiscard]] std::optional<device::AccParam> RestoreKept();

 private:
  /// Send(); `remembered` is what is to be remembered for the board from then on.
  [[nodiscard]] Sent Deliver(const device::AccParam& wanted, const device::AccParam& remembered);
  /// Remembers `remembered` in place of what is kept, or nothing any more when `held` is all of it.
  void Settle(const device::AccParam& held, const device::AccParam& remembered);
  [[nodiscard]] static std::optional<device::AccParam> ResultOf(const Sent& sent, const device::AccParam& wanted);

  device::TLS& m_board;
  std::string m_serialNumber;
  std::uint16_t m_revision;
  device::KeptParameters& m_kept;
};

}  // namespace kestrin::core::motion
