// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/FakeClock.h"
#include "support/FakeOutput.h"
#include "support/SoundSetFixture.h"
#include "ui/stage/SoundReader.h"
#include "ui/stage/StageView.h"
#include "ui/stage/TryControl.h"
#include "ui/stage/TryFrame.h"

namespace kestrin::ui::stage {

/// The page over a set whose sounds are known by their level: every sample of a sound is the same.
class TryControlTest : public support::SoundSetFixture {
 protected:
  using SlotKind = core::sound::SlotKind;
  using SoundPlace = core::sound::SoundPlace;
  static constexpr int kSecond = 48000;

  void Add(SlotKind kind, const std::string& name, std::int16_t level, int samples) {
    const std::vector<std::int16_t> all(static_cast<std::size_t>(samples), level);
    ASSERT_TRUE(set.Add(kind, support::WriteSoundFile(folder / name, all)));
  }
  /// A tenth of a second each.
  void AddAll() {
    constexpr int kTenth = kSecond / 10;
    Add(SlotKind::Boot, "boot.lsu", 100, kTenth);
    Add(SlotKind::PwrOn, "on.lsu", 200, kTenth);
    Add(SlotKind::PwrOff, "off.lsu", 300, kTenth);
    Add(SlotKind::Idle, "idle.lsu", 1000, kTenth);
    Add(SlotKind::Motion, "swing.lsu", 2000, kTenth);
    Add(SlotKind::Impact, "clash.lsu", 4000, kTenth);
    Add(SlotKind::Lockup, "lock.lsu", 8000, kTenth);
  }
  void Make(bool withOutput = true) {
    control.emplace(TryControl::Means{set, withOutput ? &output : nullptr, clock, [this] { return detection; },
                                      [this] { return look; }});
    frame = &control->Frame();
    holder.reset(frame);
    QObject::connect(&*control, &TryControl::news, [this](const QString& text) { news.push_back(text.toStdString()); });
    QObject::connect(&*control, &TryControl::soundChosen,
                     [this](const SoundPlace& place, const core::sound::HeardSound& sound) {
                       chosen.push_back(place);
                       heard.push_back(sound);
                     });
    frame->resize(960, 560);
  }
  void Show() {
    frame->show();
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame, 20000));
    AwaitSounds();
  }
  void AwaitSounds() {
    auto* const reader = frame->findChild<SoundReader*>();
    ASSERT_TRUE(QTest::qWaitFor([reader] { return !reader->IsReading(); }, 20000));
  }
  /// Open, with its boot sound over and the blade in.
  void Start() {
    AddAll();
    Make();
    Show();
    Pass(300);
  }
  void StartOn() {
    Start();
    Key(Qt::Key_P);
    Pass(300);
    ASSERT_THAT(Sounding(), testing::ElementsAre(1000));
  }
  /// Lets time pass and the loudspeaker take its samples, picture by picture.
  void Pass(int time) {
    constexpr int kFrame = 10;
    for (int passed = 0; passed < time; passed += kFrame) {
      const std::vector<std::int16_t> samples =
          output.IsPlaying() ? output.Pull(kSecond / 100) : std::vector<std::int16_t>();
      if (!samples.empty()) last = samples.back();
      clock.Advance(std::chrono::milliseconds(kFrame));
      QMetaObject::invokeMethod(frame->findChild<QTimer*>("StageTimer"), "timeout");
    }
  }
  /// What the loudspeaker hears next, as the levels of the sounds of which it is the sum.
  std::vector<int> Sounding() {
    Pass(10);
    int left = output.IsPlaying() ? last : 0;
    std::vector<int> levels;
    for (const int level : {8000, 4000, 2000, 1000, 300, 200, 100})
      if (left >= level) levels.push_back(level), left -= level;
    EXPECT_EQ(left, 0) << last;
    return levels;
  }
  void Key(int key) { QTest::keyClick(&frame->Stage(), static_cast<Qt::Key>(key)); }
  void Repeat(int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&frame->Stage(), &event);
  }
  QPushButton& Button(const char* name) { return *frame->findChild<QPushButton*>(name); }
  /// Leads the blade by the pointer.
  void Lead(double degrees) { emit frame->Stage().led(degrees); }

  support::FakeClock clock;
  support::FakeOutput output;
  TryControl::Detection detection;
  std::optional<LedLook> look;
  std::optional<TryControl> control;
  TryFrame* frame = nullptr;
  std::unique_ptr<TryFrame> holder;
  std::vector<std::string> news;
  std::vector<SoundPlace> chosen;
  std::vector<core::sound::HeardSound> heard;
  int last = 0;
};

}  // namespace kestrin::ui::stage
