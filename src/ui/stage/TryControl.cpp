// SPDX-License-Identifier: MIT
#include "ui/stage/TryControl.h"

#include <QAccessible>
#include <QLocale>
#include <algorithm>
#include <chrono>
#include <utility>

#include "ui/kit/Translated.h"
#include "ui/sound/SoundTexts.h"
#include "ui/stage/Timeline.h"
#include "ui/stage/TryFrame.h"
#include "ui/stage/TryList.h"
#include "ui/stage/TryRows.h"

namespace kestrin::ui::stage {

using core::saber::Event;
using core::saber::LiveSaber;
using core::saber::State;
using core::sound::SlotKind;
using core::sound::SoundPlace;

namespace {

constexpr int kFrame = 16;
/// Pictures are at least so many times as far apart as they take: the stage leaves the computer to others.
constexpr double kShare = 4;
constexpr int kLongestFrame = 66;
/// What is lit moves with every n-th picture, and the timeline with every second.
constexpr int kListTicks = 6;
constexpr int kTimelineTicks = 2;
/// A saber that nobody moves is still for so long before its clock stops.
constexpr double kRestMilliseconds = 200;
/// Degrees of a swing by key.
constexpr double kKeySwing = 34;
/// A busy window must not make the saber jump.
constexpr double kLongestTick = 100;

QString NameOf(const core::sound::SoundSet& set, const SoundPlace& place) {
  const QString name = sound::FileName(set.PathAt(place));
  const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
  return dot > 0 ? name.left(dot) : name;
}

}  // namespace

TryControl::TryControl(Means means, QObject* parent)
    : QObject(parent),
      m_means(std::move(means)),
      m_frame(new TryFrame(m_means.set, m_pieces)),
      m_reader(new SoundReader(m_frame)),
      m_sound(m_means.output, m_means.clock),
      m_timer(new QTimer(m_frame)) {
  m_timer->setObjectName(QStringLiteral("StageTimer"));
  m_timer->setTimerType(Qt::PreciseTimer);
  m_timer->setInterval(kFrame);
  connect(m_timer, &QTimer::timeout, this, &TryControl::Tick);
  Connect();
}

TryControl::~TryControl() = default;

void TryControl::Connect() {
  connect(m_frame, &TryFrame::shown, this, &TryControl::Open);
  connect(m_frame, &TryFrame::powerRequested, this, &TryControl::Power);
  connect(m_frame, &TryFrame::swingRequested, this, &TryControl::Swing);
  connect(m_frame, &TryFrame::hitRequested, this, &TryControl::Hit);
  connect(m_frame, &TryFrame::lockupHeld, this, &TryControl::LockUp);
  connect(&m_frame->Stage(), &StageView::led, this, &TryControl::Lead);
  connect(&m_frame->Stage(), &StageView::entered, this, [this] { m_isLed = false; });
  connect(&m_frame->Stage(), &StageView::pressed, this, [this] { PressStage(true); });
  connect(&m_frame->Stage(), &StageView::released, this, [this] { PressStage(false); });
  connect(&m_frame->Times(), &Timeline::chosen, this, &TryControl::Choose);
  connect(&m_frame->List(), &TryList::chosen, this, &TryControl::Choose);
  connect(&m_frame->Rows(), &TryRows::changed, this, &TryControl::FollowSet);
  connect(m_reader, &SoundReader::ready, this, &TryControl::UseSounds);
  connect(m_reader, &SoundReader::exchanged, this, &TryControl::Exchange);
  connect(m_reader, &SoundReader::kept, this, [this] {
    if (m_due) Take(*std::exchange(m_due, std::nullopt));
  });
  connect(m_reader, &SoundReader::progress, this, [this](int done, int all) {
    m_progress =
        done < all ? tr("Reading the sounds: %1 of %2").arg(QString::number(done), QString::number(all)) : QString();
    Wake();
  });
}

double TryControl::Milliseconds() const {
  return std::chrono::duration<double, std::milli>(m_means.clock.Now()).count();
}

bool TryControl::IsOut() const {
  return m_state == State::Ignition || m_state == State::On || m_state == State::Lockup;
}

double TryControl::SecondsOf(SlotKind kind) const { return static_cast<double>(m_sound.Length({kind, 1})) / 48000; }

void TryControl::Open(bool isShown) {
  if (std::exchange(m_isShown, isShown) == isShown) return;
  if (!isShown) {
    m_due.reset();
    m_pressed.reset();
    m_lockedUntil.reset();
    m_isLockupHeld = false;
    m_sound.Stop();
    FollowNews({});
    FollowState(State::Off);
    m_timer->stop();
    return;
  }
  const Detection detection = m_means.detection();
  m_detector.SetSensitivity(detection.sensitivity);
  m_isLed = false;
  m_light.Flash().SetPeriod(detection.flashPeriod);
  m_pieces.Clear();
  m_frame->Times().Refresh();
  FollowLed();
  FollowSet();
  // What has to be read first starts when it is.
  if (m_reader->IsReading())
    m_due = Event::Boot;
  else
    Take(Event::Boot);
  Wake();
}

void TryControl::FollowLed() {
  m_light.SetLed(m_means.led());
  if (m_isShown) Wake();
}

void TryControl::SetFewer(bool isFewer) {
  m_isFewer = isFewer;
  m_frame->ShowFewer(isFewer);
  m_light.SetFewer(isFewer);
}

void TryControl::SetAsOnBoard(bool asOnBoard) {
  m_asOnBoard = asOnBoard;
  m_frame->ShowAsOnBoard(asOnBoard);
  FollowSet();
}

void TryControl::SetBusy(bool isBusy) {
  m_frame->Rows().SetBusy(isBusy);
  if (!isBusy) FollowSet();
}

void TryControl::FollowSet() {
  // What is not seen is read when it is. A set that is being opened tells of every sound.
  if (!m_isShown || m_means.set.IsLoading()) return;
  m_reader->Follow(m_means.set, m_asOnBoard);
  Wake();
}

void TryControl::UseSounds() {
  m_progress.clear();
  m_sound.Use(m_reader->Sounds(), static_cast<std::uint32_t>(m_means.clock.Now().count()));
  FollowNews({});
  FollowState(State::Off);
  m_pieces.Clear();
  const std::vector<std::string> failures = m_reader->Failures();
  if (!failures.empty()) {
    const QString first = kit::Translated(failures.front());
    emit news(failures.size() == 1
                  ? tr("%1 The others can be tried.").arg(first)
                  : tr("%1 sounds cannot be tried. The first: %2").arg(QString::number(failures.size()), first));
  }
  Take(std::exchange(m_due, std::nullopt).value_or(Event::Boot));
}

void TryControl::Exchange(const SoundPlace& inSet) {
  if (const auto ofSaber = m_reader->OfSaber(inSet)) m_sound.Exchange(*ofSaber, m_reader->SamplesAt(inSet));
  // It may be in order now: counting begins anew.
  m_clippedBefore = -1;
}

void TryControl::Power() {
  if (IsOut()) return Take(Event::Off);
  if (!m_reader->IsReading()) return Take(Event::On);
  m_due = m_due == Event::On ? Event::Boot : Event::On;
}

void TryControl::Swing(int way) {
  if (way == 0) way = m_nextWay;
  m_motion.Aim(m_motion.Aimed() + way * kKeySwing);
  // At its end it comes back the next time.
  m_nextWay = -way;
  m_isLed = false;
  Take(Event::Swing);
}

void TryControl::Hit() { Take(Event::Hit); }

void TryControl::LockUp(bool isHeld) {
  if (m_isLockupHeld == isHeld) return;
  m_isLockupHeld = isHeld;
  if (!isHeld) return Wake();
  m_lockedUntil = Milliseconds() + kShortestLockup;
  Take(Event::LockupBegin);
}

void TryControl::Lead(double degrees) {
  m_motion.Aim(degrees);
  // The pointer takes the blade from wherever it was: the way to there is no movement of the pointer's.
  if (!std::exchange(m_isLed, true)) m_detector.Forget();
  const auto event = m_detector.Turn(Milliseconds() / 1000, degrees);
  if (event && m_state == State::On) return Take(*event);
  Wake();
}

void TryControl::PressStage(bool isPressed) {
  if (!isPressed) {
    m_pressed.reset();
    return Wake();
  }
  if (!IsOut()) return Power();
  m_pressed = Milliseconds();
  Take(Event::Hit);
}

void TryControl::Take(Event event) {
  if (!m_isShown) return;
  if (event == Event::Hit && m_state == State::On) {
    m_light.Flash().Hit(Milliseconds());
    m_motion.Shake();
    Spark();
  }
  if ((event == Event::Swing || event == Event::Hit) && m_state == State::On) emit moved(event);
  m_sound.Take(event);
  // Nobody waits for the next picture to see it.
  FollowState(m_sound.GetState());
  Wake();
}

void TryControl::Spark() {
  const double now = Milliseconds();
  if (m_isFewer && now - m_sparks < BladeFlash::kApart) return;
  m_sparks = now;
  ++m_sparkSeed;
}

void TryControl::Choose(const SoundPlace& place) {
  if (!m_means.set.Holds(place)) return;
  const core::sound::LSU_SoundFile& file = m_means.set.At(place);
  emit soundChosen(place, {file.FileNameAndPath(), m_asOnBoard, file.WithoutStream()});
}

void TryControl::Wake() {
  m_stirred = Milliseconds();
  if (!m_isShown || m_timer->isActive()) return;
  m_last = m_stirred;
  m_timer->start();
}

void TryControl::Tick() {
  const double now = Milliseconds();
  const double passed = std::clamp(now - std::exchange(m_last, now), 0.0, kLongestTick);
  FollowHolds();
  const LiveSaber::View view = m_sound.Look();
  FollowNews(view);
  FollowState(view.state);
  if (const auto problem = m_sound.TakeProblem())
    emit news(tr("No sound: %1 The saber goes on without it.").arg(kit::Translated(*problem)));
  if (m_state == State::On && m_isLed) {
    if (const auto event = m_detector.Turn(now / 1000, m_motion.Aimed())) Take(*event);
  } else {
    m_detector.Forget();
  }
  m_motion.Step(passed / 1000);
  Show(view);
  const bool isStill = m_state == State::Off && m_motion.IsStill() && m_light.Flash().IsStill(now) &&
                       !m_reader->IsReading() && now - m_stirred >= kRestMilliseconds;
  if (isStill) m_timer->stop();
}

void TryControl::FollowHolds() {
  const double now = Milliseconds();
  const bool isPressedLong = m_pressed && now - *m_pressed >= kHold;
  if (isPressedLong && m_state == State::On) Take(Event::LockupBegin);
  if (m_state != State::Lockup) return;
  const bool isKept = isPressedLong || m_isLockupHeld || (m_lockedUntil && now < *m_lockedUntil);
  if (isKept) return;
  m_lockedUntil.reset();
  Take(Event::LockupEnd);
}

void TryControl::FollowNews(const LiveSaber::View& view) {
  std::vector<SoundPlace> lit;
  for (const SoundPlace& place : view.sounding) lit.push_back(m_reader->InSet(place));
  for (const LiveSaber::News& one : view.news) {
    const SoundPlace place = m_reader->InSet(one.place);
    if (one.what != LiveSaber::News::What::Began) {
      m_pieces.End(place, one.sample);
      continue;
    }
    m_pieces.Begin(place, NameOf(m_means.set, place), one.sample, m_sound.Length(one.place));
    m_frame->List().Reveal(place);
  }
  m_pieces.Advance(view.now);
  m_frame->Rows().Light(lit);
}

void TryControl::FollowState(State state) {
  const State before = std::exchange(m_state, state);
  if (before == state) return;
  if (state == State::Ignition) {
    m_motion.Extend(true, SecondsOf(SlotKind::PwrOn));
    m_clippedBefore = -1;
  }
  if (state == State::On && before != State::Lockup) {
    // A set without a power-on sound is on at once.
    if (before != State::Ignition) {
      m_motion.Extend(true, 0);
      m_clippedBefore = -1;
    }
    m_onSince = -1;
  }
  if (state == State::Retraction) m_motion.Extend(false, SecondsOf(SlotKind::PwrOff));
  if (state == State::Off && before != State::Retraction) m_motion.Extend(false, 0);
  if (state == State::Lockup)
    m_light.Flash().LockUp(Milliseconds());
  else
    m_light.Flash().LetGo();
  m_frame->ShowState(IsOut(), state == State::Lockup);
}

QString TryControl::Warning(const LiveSaber::View& view) const {
  const std::int64_t clipped = view.clipped - std::max<std::int64_t>(0, m_clippedBefore);
  if (clipped <= 0) return {};
  return tr("Too loud together: %1 samples cut off. Lower a volume.")
      .arg(m_frame->locale().toString(qlonglong{clipped}));
}

QString TryControl::Line(const LiveSaber::View& view) const {
  if (!m_progress.isEmpty()) return m_progress;
  if (m_means.set.Configuration().TotalNrOfSamples() == 0)
    return tr("This set has no sounds yet: put some into the slots, or open a set.");
  switch (m_state) {
    case State::Off:
      return tr("Blade in");
    case State::Boot:
      return tr("The board starts");
    case State::Ignition:
    case State::On:
    case State::Lockup:
      return tr("Blade on for %1 s").arg(std::max<std::int64_t>(0, view.now - m_onSince) / 48000);
    case State::Retraction:
      return tr("The blade goes in");
  }
  return {};
}

void TryControl::Show(const LiveSaber::View& view) {
  ++m_tick;
  const double now = Milliseconds();
  if (m_clippedBefore < 0) m_clippedBefore = view.clipped;
  if (m_onSince < 0) m_onSince = view.now;
  StagePicture picture;
  picture.degrees = m_motion.Degrees();
  picture.trail = m_motion.Trail();
  picture.shine = m_light.At(now, m_motion.Extent());
  // Two blades that are pressed together spark all the time.
  constexpr double kSparksApart = 230;
  if (m_state == State::Lockup && now - m_sparks >= kSparksApart) Spark();
  picture.sparkAge = (now - m_sparks) / 1000;
  picture.sparkSeed = m_sparkSeed;
  picture.name = QString::fromStdString(m_means.set.Name());
  picture.line = Line(view);
  picture.warning = Warning(view);
  picture.hint = IsOut() ? tr("Drag across the stage to swing. A quick stop is a hit.")
                         : tr("Click the stage, or press Space, to switch the blade on.");
  for (const SoundPlace& place : view.sounding) {
    const SoundPlace inSet = m_reader->InSet(place);
    picture.chips.push_back({inSet.kind, sound::FileName(m_means.set.PathAt(inSet))});
  }
  const QString told = IsOut() ? tr("Blade on") : tr("Blade in");
  if (std::exchange(m_told, told) != told) {
    m_frame->Stage().setAccessibleDescription(told);
    QAccessibleEvent description(&m_frame->Stage(), QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&description);
  }
  m_frame->Stage().Show(picture);
  if (m_tick % kTimelineTicks == 0) m_frame->Times().Refresh();
  if (m_tick % kListTicks == 0) m_frame->List().Move();
  const int interval =
      std::clamp(static_cast<int>(kShare * m_frame->Stage().PaintMilliseconds()), kFrame, kLongestFrame);
  if (interval != m_timer->interval()) m_timer->setInterval(interval);
}

}  // namespace kestrin::ui::stage
