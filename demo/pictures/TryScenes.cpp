// SPDX-License-Identifier: MIT
#include "demo/pictures/TryScenes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QToolButton>
#include <chrono>

#include "demo/pictures/Stage.h"
#include "ui/stage/SoundReader.h"
#include "ui/stage/StageView.h"

namespace kestrin::demo {

namespace {

/// The page "Try", whose time goes on when the scene says so.
class TryStage {
 public:
  TryStage(const Place& place, const std::string& board, bool withSet = true)
      : m_stage(place.program, place.sounds, board) {
    m_stage.Open(place.size, withSet);
    m_stage.Find<QToolButton>("TryBtn").click();
    Timer().stop();
    const auto* const reader = m_stage.Window().findChild<ui::stage::SoundReader*>();
    while (reader->IsReading()) QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    Timer().stop();
  }

  /// Lets so much time go by, picture by picture.
  void Pass(int milliseconds) {
    constexpr int kFrame = 16;
    for (int passed = 0; passed < milliseconds; passed += kFrame) {
      m_stage.Clock().Wait(std::chrono::milliseconds(kFrame));
      QMetaObject::invokeMethod(&Timer(), "timeout");
    }
  }
  void Press(int key) { Send(QEvent::KeyPress, key); }
  void LetGo(int key) { Send(QEvent::KeyRelease, key); }
  void Lead(double degrees) { emit m_stage.Find<ui::stage::StageView>("StageView").led(degrees); }
  [[nodiscard]] QPixmap Grab() {
    Timer().stop();
    return m_stage.Window().grab();
  }

 private:
  [[nodiscard]] QTimer& Timer() { return m_stage.Find<QTimer>("StageTimer"); }
  void Send(QEvent::Type type, int key) {
    QKeyEvent event(type, key, Qt::NoModifier);
    QApplication::sendEvent(&m_stage.Find<ui::stage::StageView>("StageView"), &event);
    Timer().stop();
  }

  Stage m_stage;
};

/// Switched on, with a few swings and hits behind it.
void Play(TryStage& stage) {
  stage.Pass(2000);
  stage.Press(Qt::Key_P);
  stage.Pass(2600);
  stage.Press(Qt::Key_S);
  stage.Pass(1300);
  stage.Press(Qt::Key_S);
  stage.Pass(1500);
  stage.Press(Qt::Key_H);
  stage.Pass(900);
  stage.Press(Qt::Key_H);
  stage.Pass(1400);
}

}  // namespace

QPixmap TakeTryIn(const Place& place, const std::string& board) {
  TryStage stage(place, board);
  stage.Pass(8000);
  return stage.Grab();
}

QPixmap TakeTry(const Place& place, const std::string& board) {
  TryStage stage(place, board);
  Play(stage);
  stage.Lead(17);
  stage.Pass(900);
  stage.Press(Qt::Key_S);
  stage.Lead(17);
  stage.Pass(320);
  return stage.Grab();
}

QPixmap TakeTrySwing(const Place& place, const std::string& board) {
  TryStage stage(place, board);
  Play(stage);
  stage.Lead(0);
  stage.Pass(900);
  stage.Press(Qt::Key_Up);
  stage.Pass(96);
  return stage.Grab();
}

QPixmap TakeTryLockup(const Place& place, const std::string& board) {
  TryStage stage(place, board);
  Play(stage);
  stage.Lead(24);
  stage.Pass(900);
  stage.Press(Qt::Key_L);
  stage.Pass(1500);
  QPixmap picture = stage.Grab();
  stage.LetGo(Qt::Key_L);
  return picture;
}

QPixmap TakeTryEmpty(const Place& place, const std::string& board) {
  TryStage stage(place, board, false);
  stage.Pass(500);
  return stage.Grab();
}

}  // namespace kestrin::demo
