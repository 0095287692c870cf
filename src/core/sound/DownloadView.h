// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace kestrin::core::sound {

/// The work of a download that goes on for a while. The board erases by itself; all the rest the program does.
enum class DownloadPhase { Erasing, Coding, Writing };

/// What a download shows: a frame with an information label, a percent label, one button and a line that says what the
/// board holds once the run has ended.
class DownloadView {
 public:
  virtual ~DownloadView() = default;

  /// A message box: why nothing was started.
  virtual void ShowMessage(const std::string& text) = 0;
  /// The download frame (`DownloadFrame`) becomes visible with what was shown last: the first phase, or why there is
  /// none. No word yet about what the board holds.
  virtual void ShowFrame() = 0;
  virtual void HideFrame() = 0;
  virtual void ShowInformation(const std::string& text) = 0;
  /// Information about work that begins now and goes on for a while.
  virtual void ShowPhase(DownloadPhase, const std::string& text) { ShowInformation(text); }
  /// A whole percentage, shown followed by " %"; nothing empties the label.
  virtual void ShowPercent(std::optional<int> percent) = 0;
  /// "Cancel" while the run is going, "Close" when it has ended.
  virtual void ShowButton(const std::string& caption) = 0;
  /// What the board now holds, and the next step; shown when the run has ended.
  virtual void ShowBoardHolds(const std::string& text) = 0;
  /// Asks with OK and Cancel; true for Cancel: the person wants to abort.
  [[nodiscard]] virtual bool AskAbort(const std::string& question) = 0;
  /// `HideFrameTimer`: hides the frame by itself after a while.
  virtual void StartHideFrameTimer() = 0;
};

}  // namespace kestrin::core::sound
