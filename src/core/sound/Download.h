// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "base/EventPump.h"
#include "device/KeptParameters.h"
#include "device/TLS.h"
#include "sound/DownloadView.h"
#include "sound/LSU_Configuration.h"

namespace kestrin::core::sound {

/// How a download ended.
enum class DownloadOutcome {
  Success,
  /// A piece of the set is missing, cannot be used or changed under way; the information text names it.
  Incomplete,
  /// The set is larger than the board; nothing was sent.
  TooLarge,
  ConnectionLost,
  MemoryCheckError,
  Cancelled,
};

/// The board that a download writes to.
struct DownloadTarget {
  device::TLS& board;
  std::string serialNumber;
  std::int32_t flashSize;
  /// Whether the board said what it is and which one; one that did not is left alone.
  bool identified;
};

/// Writes a whole configuration into a sound board's flash: checks everything that can be checked, keeps the detection
/// parameters, erases, puts them back, codes, writes the files and the table, verifies the table, restarts the board.
///
/// One run at a time. Everything happens inside Send(); the pump lets the person's Cancel in.
class Download {
 public:
  /// The erase is expected to take about this long, in seconds, and is asked for this often at most.
  static constexpr int kEraseSeconds = 30;
  static constexpr int kErasePolls = 20;

  /// All must outlive the download.
  Download(LSU_Configuration& configuration, DownloadView& view, device::KeptParameters& kept, base::Clock& clock,
           base::EventPump pump);

  /// The whole run.
  DownloadOutcome Send(const DownloadTarget& target);

  /// The frame's button: "Close" hides the frame; "Cancel" asks whether to abort the run.
  void CancelButton();
  /// Aborts the run without a question. Does nothing when none is going.
  void Cancel();

  [[nodiscard]] bool IsRunning() const { return m_running; }
  /// The last information text, or the message that refused the run.
  [[nodiscard]] const std::string& Information() const { return m_information; }
  /// Whether the board was still erasing when the last run ended: until it is done it answers nothing, then first that.
  [[nodiscard]] bool LeftErasing() const { return m_eraseStarted.has_value(); }
  /// The detection parameters that the board got back in the last run; nothing when it got none.
  [[nodiscard]] const std::optional<device::AccParam>& Parameters() const { return m_parameters; }
  /// Coded bytes and table bytes that the board has acknowledged in the last run.
  [[nodiscard]] std::int64_t BytesWritten() const { return m_bytesWritten; }

 private:
  /// How far the board has come, for the words about what it holds.
  enum class BoardHolds { OldSet, OldSetOfUnknown, PerhapsErased, NoSet, UnverifiedSet, NewSetNotRestarted, NewSet };

  DownloadOutcome Run(const DownloadTarget& target);
  [[nodiscard]] std::optional<DownloadOutcome> Refuse(const DownloadTarget& target);
  [[nodiscard]] std::optional<DownloadOutcome> KeepParameters(const DownloadTarget& target, device::AccParam& kept);
  [[nodiscard]] std::optional<DownloadOutcome> Erase(device::TLS& board);
  [[nodiscard]] bool WaitForErase(device::TLS& board);
  [[nodiscard]] std::optional<DownloadOutcome> Code();
  [[nodiscard]] std::optional<DownloadOutcome> WriteFiles(device::TLS& board);
  [[nodiscard]] bool WriteFile(device::TLS& board, const LSU_SoundFile& file);
  [[nodiscard]] bool WriteTable(device::TLS& board);
  void AddProgress(std::int32_t bytes);
  /// With what is shown already, so that its first words are the right ones.
  void ShowFrame(const std::string& button);
  void ShowInformation(const std::string& text);
  void ShowPhase(DownloadPhase phase, const std::string& text);
  void ShowPercent(std::optional<int> percent);
  DownloadOutcome RefuseWith(DownloadOutcome outcome, const std::string& message);
  /// Shows how the run ended and what the board holds. The outcome is Cancelled, whatever else went wrong, once the
  /// person has aborted.
  DownloadOutcome EndWith(DownloadOutcome outcome, const std::string& information);
  DownloadOutcome End(DownloadOutcome outcome);
  DownloadOutcome EndWithCancelled();
  DownloadOutcome EndWithConnectionLost();
  [[nodiscard]] std::string BoardHoldsText() const;

  LSU_Configuration& m_configuration;
  DownloadView& m_view;
  device::KeptParameters& m_kept;
  base::Clock& m_clock;
  base::EventPump m_pump;

  bool m_running = false;
  bool m_cancelDownload = false;
  bool m_parametersMissing = false;
  bool m_frameShown = false;
  BoardHolds m_boardHolds = BoardHolds::OldSet;
  std::string m_information;
  double m_progress = 0;
  std::int64_t m_bytesWritten = 0;
  std::optional<device::AccParam> m_parameters;
  /// Of an erase whose completion was not seen yet.
  std::optional<base::Clock::Duration> m_eraseStarted;
};

}  // namespace kestrin::core::sound
