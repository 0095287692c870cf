// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <optional>

#include "core/base/Clock.h"
#include "core/saber/SwingDetector.h"
#include "core/sound/SoundSet.h"
#include "core/sound/level/HeardSound.h"
#include "ui/stage/BladeMotion.h"
#include "ui/stage/PlayedPieces.h"
#include "ui/stage/SoundReader.h"
#include "ui/stage/StageLight.h"
#include "ui/stage/StageSound.h"
#include "ui/stage/StageView.h"

namespace kestrin::ui::stage {

class TryFrame;

/// Lets the saber of a TryFrame live: what the person does becomes what happens to it, what happens becomes sound and
/// light. While the page is not seen there is silence, and while nothing moves nothing is painted.
class TryControl : public QObject {
  Q_OBJECT

 public:
  /// How a board detects motion, as far as a stage can do the same.
  struct Detection {
    core::saber::SwingDetector::Sensitivity sensitivity;
    double flashPeriod = BladeFlash::kFactoryPeriod;
  };
  /// What it reaches the rest of the program through. Everything must outlive the control.
  struct Means {
    core::sound::SoundSet& set;
    /// nullptr where nothing can be heard.
    core::sound::SoundOutput* output;
    const core::base::Clock& clock;
    /// Of the board that is connected, or of any as it leaves the factory.
    std::function<Detection()> detection;
    /// The LED settings that are open.
    std::function<std::optional<LedLook>()> led;
  };

  /// Milliseconds that a press lasts at least to be a lock-up.
  static constexpr int kHold = 300;
  /// A lock-up by key or button lasts at least so many, also for those who can only click.
  static constexpr int kShortestLockup = 700;

  explicit TryControl(Means means, QObject* parent = nullptr);
  ~TryControl() override;

  /// For whoever puts it into a window, which owns it then.
  [[nodiscard]] TryFrame& Frame() const { return *m_frame; }
  void SetFewer(bool isFewer);
  /// Whether sounds are heard as the board plays them.
  void SetAsOnBoard(bool asOnBoard);
  /// The LED settings are others now.
  void FollowLed();
  /// While something goes on that needs the set as it is, no volume can be changed.
  void SetBusy(bool isBusy);

 signals:
  /// A blade that is out was swung or has hit something.
  void moved(core::saber::Event event);
  /// Short news for the help line.
  void news(const QString& text);
  /// The person wants to hear a sound by itself and to find it in its slot.
  void soundChosen(const core::sound::SoundPlace& place, const core::sound::HeardSound& sound);

 private:
  using Clock = core::base::Clock;

  void Connect();
  void Open(bool isShown);
  void FollowSet();
  void UseSounds();
  void Exchange(const core::sound::SoundPlace& inSet);

  void Power();
  void Swing(int way);
  void Hit();
  void LockUp(bool isHeld);
  void Lead(double degrees);
  void PressStage(bool isPressed);
  void Take(core::saber::Event event);
  /// Sparks fly, unless there are to be fewer of them.
  void Spark();
  void Choose(const core::sound::SoundPlace& place);

  void Wake();
  void Tick();
  void FollowNews(const core::saber::LiveSaber::View& view);
  void FollowState(core::saber::State state);
  void FollowHolds();
  void Show(const core::saber::LiveSaber::View& view);
  [[nodiscard]] QString Line(const core::saber::LiveSaber::View& view) const;
  [[nodiscard]] QString Warning(const core::saber::LiveSaber::View& view) const;
  [[nodiscard]] double Milliseconds() const;
  [[nodiscard]] bool IsOut() const;
  /// How long the sound of a slot is, in seconds: that of the first.
  [[nodiscard]] double SecondsOf(core::sound::SlotKind kind) const;

  Means m_means;
  PlayedPieces m_pieces;
  TryFrame* m_frame;
  SoundReader* m_reader;
  StageSound m_sound;
  core::saber::SwingDetector m_detector;
  BladeMotion m_motion;
  StageLight m_light;
  /// Of the frame, which may go first.
  QTimer* m_timer;

  bool m_isShown = false;
  bool m_asOnBoard = false;
  bool m_isFewer = true;
  /// What the saber begins with once the sounds are read: the person may have pressed Power meanwhile.
  std::optional<core::saber::Event> m_due;
  core::saber::State m_state = core::saber::State::Off;
  /// When Tick() was, in milliseconds as all below.
  double m_last = 0;
  double m_stirred = 0;
  /// When the pointer was pressed on the stage, the lock-up began, and until when it lasts when nobody holds it.
  std::optional<double> m_pressed;
  std::optional<double> m_lockedUntil;
  bool m_isLockupHeld = false;
  /// Whether the pointer has the blade: it has come onto the stage, and no key has swung it since it moved last.
  bool m_isLed = false;
  double m_sparks = -1e9;
  unsigned m_sparkSeed = 0;
  std::int64_t m_onSince = 0;
  std::int64_t m_clippedBefore = 0;
  int m_nextWay = 1;
  int m_tick = 0;
  QString m_progress;
  QString m_told;
};

}  // namespace kestrin::ui::stage
