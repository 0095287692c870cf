// SPDX-License-Identifier: MIT
#include "demo/pictures/SensorScenes.h"

#include <QAbstractButton>
#include <QTimer>
#include <stdexcept>
#include <string_view>

#include "demo/pictures/Stage.h"
#include "simulator/MotionScript.h"

namespace kestrin::demo {

namespace {

constexpr std::string_view kSwings =
    "at 3 0 -20 9\nrest 1\nswing 6\nrest 0.5\nswing 7\nrest 0.5\nat 2 1 -20 12\nswing 6\nrest 0.6\nswing 8\nrest 0.5\n"
    "swing 7\nrest 0.8\n";

QPixmap Take(const Place& place, const std::string& board, const std::string& script, double seconds) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  const auto moved = simulator::MotionScript::Parse(script, "the scene");
  if (!moved) throw std::runtime_error(moved.Text());
  stage.Board().Board().MoveBy([moves = *moved]() mutable { return moves.Next(); });
  stage.Find<QAbstractButton>("ConfigBtn").click();
  if (auto& turn = stage.Find<QAbstractButton>("SensorTurnBtn"); turn.isVisible()) turn.click();
  constexpr int kStep = simulator::MotionScript::kStepMilliseconds;
  for (int step = 0; step * kStep < seconds * 1000; ++step) {
    QMetaObject::invokeMethod(&stage.Find<QTimer>("SensorTimer"), "timeout");
    stage.Pass(std::chrono::milliseconds(kStep));
  }
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

}  // namespace

QPixmap TakeSensor(const Place& place, const std::string& board) {
  return Take(place, board, std::string(kSwings) + "tap 19\nrest 1\ntap 22\nrest 1.2\ntap 17\nrest 1\n", 12);
}

QPixmap TakeSensorSwings(const Place& place, const std::string& board) {
  return Take(place, board, std::string(kSwings), 3.2);
}

QPixmap TakeSensorAlike(const Place& place, const std::string& board) {
  return Take(place, board, std::string(kSwings) + "tap 19\nrest 1\ntap 8\nrest 1.2\n", 11);
}

QPixmap TakeSensorSilent(const Place& place, const std::string& board) { return Take(place, board, "", 1); }

}  // namespace kestrin::demo
