// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/hid/NodeIdentity.h"
#include "platform/hid/ReportWriter.h"

namespace kestrin::platform::hid {

/// A process of its own that writes to a device file.
///
/// The kernel holds a write that a device does not take for five seconds, and nothing ends it before, not even being
/// killed: a thread in it keeps its program from exiting. Closing a HID device file for good waits as long. The process
/// therefore keeps what this program has open of the device, so that the program never closes it for good, and nothing
/// else, so that nobody waits for it. The claim on the board it has in its hands only while it writes: then the board
/// is free at once when the program is gone, unless whoever took it would have to wait as long. It hears no signals,
/// belongs to no terminal, needs nobody to wait for its end, and ends when this program lets go of it or is gone, once
/// a write that goes on is over.
class ProcessWriter final : public ReportWriter {
 public:
  /// What stands at `path` is written to only as long as it has that identity. To be made when the program has opened
  /// whatever it opens of the device. `claim` is the open file that the claim belongs to, -1 for none; must outlive it.
  ProcessWriter(std::string path, const NodeIdentity& identity, int claim = -1);
  ~ProcessWriter() override;

  [[nodiscard]] bool Start(std::span<const std::uint8_t> report) override;
  /// A failure is the negative number of the system's error.
  [[nodiscard]] std::optional<int> Outcome(std::chrono::milliseconds timeout) override;

 private:
  /// Starts the process. When that fails, so does the write.
  void Launch();
  void LetGo();
  /// False when there is nobody who takes it.
  [[nodiscard]] bool HandOver(std::span<const std::uint8_t> report) const;

  std::string m_path;
  NodeIdentity m_identity;
  int m_claim;
  /// Reports go there, outcomes come back; -1 without a process.
  int m_channel = -1;
  bool m_writing = false;
};

}  // namespace kestrin::platform::hid
