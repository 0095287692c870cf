// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "core/base/Clock.h"
#include "core/sound/Download.h"
#include "core/sound/DownloadView.h"
#include "ui/kit/Card.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace kestrin::ui::kit {
class Dialogs;
}

namespace kestrin::ui::sound {

/// Shows a download: what is being done, how far it is and how long it will take, and at the end what the board holds.
class DownloadFrame : public kit::Card, public core::sound::DownloadView {
  Q_OBJECT

 public:
  /// A successful download's frame stays for so many milliseconds before it hides itself.
  static constexpr int kHideMilliseconds = 6000;

  /// Both must outlive the frame, which starts hidden.
  DownloadFrame(kit::Dialogs& dialogs, const core::base::Clock& clock, QWidget* parent = nullptr);

  /// While it lives a question stands open and the program waits for its answer, which the time left does not count.
  class Pause {
   public:
    explicit Pause(DownloadFrame& frame) : m_frame(frame), m_began(frame.m_clock.Now()) {}
    ~Pause() { m_frame.LeaveOut(m_frame.m_clock.Now() - m_began); }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    DownloadFrame& m_frame;
    core::base::Clock::Duration m_began;
  };

  /// The board holds just this set: nothing is sent unless the person wants it sent again, which takes so many seconds.
  void ShowHeld(int seconds);
  /// The run has ended so: its information gets the colour of it.
  void ShowOutcome(core::sound::DownloadOutcome outcome);
  /// The person clicked beside the frame of a run that has ended: it hides, unless the click was meant for something
  /// else.
  void ClickBeside();

  void ShowMessage(const std::string& text) override;
  void ShowFrame() override;
  void HideFrame() override;
  void ShowInformation(const std::string& text) override;
  void ShowPhase(core::sound::DownloadPhase phase, const std::string& text) override;
  void ShowPercent(std::optional<int> percent) override;
  void ShowButton(const std::string& caption) override;
  void ShowBoardHolds(const std::string& text) override;
  [[nodiscard]] bool AskAbort(const std::string& question) override;
  void StartHideFrameTimer() override;

 signals:
  /// The button was pressed, whatever it says just now.
  void buttonPressed();
  /// The set is to be sent although the board holds it.
  void sendAgain();

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeLayout();
  void ColorInformation();
  void LeaveOut(core::base::Clock::Duration waited);
  /// The frame says something new: what is pressed just now is meant for what was there before.
  void StartReading();
  [[nodiscard]] bool IsTooSoon() const;

  kit::Dialogs& m_dialogs;
  const core::base::Clock& m_clock;
  QLabel* m_information = nullptr;
  QLabel* m_percent = nullptr;
  QProgressBar* m_bar = nullptr;
  QLabel* m_timeLeft = nullptr;
  QLabel* m_boardHolds = nullptr;
  QPushButton* m_button = nullptr;
  QPushButton* m_again = nullptr;
  QTimer* m_hideTimer = nullptr;
  std::optional<core::sound::DownloadOutcome> m_outcome;
  /// What goes on; none once the run is cancelled or has ended.
  std::optional<core::sound::DownloadPhase> m_phase;
  core::base::Clock::Duration m_phaseStarted{};
  core::base::Clock::Duration m_newsShown{};
};

}  // namespace kestrin::ui::sound
