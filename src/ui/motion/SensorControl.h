// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>

#include "core/base/Clock.h"
#include "core/motion/SensorRecord.h"
#include "core/motion/SensorWatch.h"

namespace kestrin::ui::motion {

class ConfigFrame;

/// Has the board tell what it feels while the picture of it in a ConfigFrame can be seen, and at no other time. A
/// question is begun only while nothing else talks to the board; whatever wants to meanwhile comes next.
///
/// A board that does not answer is not asked again until the person wants it, or another one comes.
class SensorControl : public QObject {
  Q_OBJECT

 public:
  /// The sound board that is online; nullptr when there is none.
  using BoardLookup = std::function<core::device::TLS*()>;

  /// What it reaches the rest of the program through. The clock must outlive the control.
  struct Surroundings {
    const core::base::Clock& clock;
    BoardLookup board;
    /// Whether something talks to the board.
    std::function<bool()> isBusy;
    /// Runs a question while nothing else talks to the board, and keeps others away until it is done.
    std::function<void(std::function<void()>)> run;
  };

  /// The frame must outlive the control.
  SensorControl(ConfigFrame& frame, Surroundings around, QObject* parent = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Begin();
  void Look();
  /// Whether that board may be asked by now.
  [[nodiscard]] bool IsDue(const core::device::TLS& board) const;
  void Ask();
  void Show();
  void SayRest();
  void RestartTrial();
  void AskAgain();
  /// The next look, after that many milliseconds at least.
  void LookAfter(core::base::Clock::Duration time);

  ConfigFrame& m_frame;
  Surroundings m_around;
  QTimer m_timer;
  core::motion::SensorRecord m_record;
  /// Shared with a question that is under way: another watch may have begun when its answer comes.
  std::shared_ptr<core::motion::SensorWatch> m_watch;
  /// The number of the board that m_watch asks; of the one that does not answer, and what is said of it.
  std::int32_t m_board = 0;
  std::int32_t m_silent = 0;
  QString m_silence;
};

}  // namespace kestrin::ui::motion
