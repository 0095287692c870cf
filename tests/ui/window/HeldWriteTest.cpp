// SPDX-License-Identifier: MIT
// A board that takes nothing any more: what is written to it stands for as long as the test wants. The window is over
// the agent of real boards, a fake HID device and the board's firmware.
#include "core/device/Protocol.h"
#include "platform/hid/StackAgent.h"
#include "support/BoardDescriptors.h"
#include "support/EventLoopTurns.h"
#include "support/FakeHidStack.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using namespace std::chrono_literals;

class HeldWrite : public MainFixture {
 protected:
  static constexpr int kForEver = 1000000;

  /// The window with a board online and a complete set open.
  void StartWithSet() {
    FakeHidDevice& device = bus.Plug("/dev/hidraw0", BoardDescriptor());
    device.onWrite = [this, &device](const FakeHidDevice::Bytes& report) {
      if (report[1] == static_cast<std::uint8_t>(held)) device.slowWrites = slices;
      board.Receive(std::span(report).subspan(1), {});
      while (const auto answer = board.NextAnswer({})) device.input.emplace_back(answer->begin(), answer->end());
    };
    hid = std::make_unique<platform::hid::StackAgent>(
        std::make_unique<FakeHidStack>(bus), [this] { return std::make_unique<FakeDeviceMonitor>(bus); }, bus.clock,
        gate.Pump());
    window = std::make_unique<ui::window::Main>(ui::window::Surroundings{*hid,
                                                                         gate,
                                                                         bus.clock,
                                                                         disk,
                                                                         dialogs,
                                                                         player,
                                                                         folders,
                                                                         kept,
                                                                         sleep,
                                                                         updateDialog,
                                                                         settings,
                                                                         program,
                                                                         {program, data}});
    ASSERT_TRUE(window->StartUp());
    Show();
    window->OpenSet(CompleteSet());
    ASSERT_EQ(dialogs.errors, std::vector<QString>());
  }
  [[nodiscard]] bool IsHeld() const { return bus.devices[0]->slowWrites > 0; }
  /// Runs `action` from the event loop, once, in the second turn of a write that stands.
  void WhenHeld(std::function<void()> action) {
    When([this] { return IsHeld() && bus.devices[0]->slowWrites < slices; }, std::move(action));
  }

  FakeHidBus bus;
  simulator::VirtualBoard board;
  /// The device holds each report of this command so many slices long.
  core::device::Command held = core::device::Command::WriteLess;
  int slices = 0;
  std::unique_ptr<platform::hid::StackAgent> hid;
};

TEST_F(HeldWrite, TheWindowHasItsTurnEveryTwentyMilliseconds) {
  StartWithSet();
  held = core::device::Command::ClearFlash;
  slices = 250;
  const auto begin = bus.clock.Now();
  auto before = begin;
  core::base::Clock::Duration longest{};
  const EventLoopTurns turns(
      [&] { longest = std::max(longest, bus.clock.Now() - std::exchange(before, bus.clock.Now())); });
  Button("SendBtn").click();
  EXPECT_EQ(LabelText("InformationLabel"), "SUCCESS !");
  EXPECT_EQ(bus.clock.Now() - begin, 5s);
  EXPECT_EQ(longest, 20ms);
  Find<QPushButton>("CancelBtn").click();
}

TEST_F(HeldWrite, CancelAnswersInTheNextTurnAndNothingElseCanBeStarted) {
  StartWithSet();
  slices = kForEver;
  dialogs.okAnswers = {false};
  int pressedIn = -1;
  int askedIn = -1;
  const EventLoopTurns turns;
  WhenHeld([&] {
    EXPECT_FALSE(Button("SendBtn").isEnabled());
    EXPECT_FALSE(Button("ConfigBtn").isEnabled());
    Tick("NoticeTimer");
    Tick("GoOnlineTimer");
    pressedIn = turns.Count();
    QMetaObject::invokeMethod(&Find<QPushButton>("CancelBtn"), "click", Qt::QueuedConnection);
  });
  dialogs.whileAsking = [&] { askedIn = turns.Count(); };
  Button("SendBtn").click();
  ASSERT_GE(pressedIn, 0);
  ASSERT_GE(askedIn, 0);
  EXPECT_LE(askedIn - pressedIn, 1);
  EXPECT_EQ(LabelText("InformationLabel"), "Canceled");
  EXPECT_TRUE(IsHeld());
  Find<QPushButton>("CancelBtn").click();
}

TEST_F(HeldWrite, ClosingTheWindowDoesNotWaitForIt) {
  StartWithSet();
  slices = kForEver;
  dialogs.okAnswers = {true};
  bool closed = false;
  QObject::connect(window.get(), &ui::window::Main::closed, [&closed] { closed = true; });
  core::base::Clock::Duration begin{};
  WhenHeld([&] {
    begin = bus.clock.Now();
    window->close();
  });
  Button("SendBtn").click();
  EXPECT_TRUE(Until([&closed] { return closed; }));
  EXPECT_TRUE(IsHeld());
  EXPECT_LE(bus.clock.Now() - begin, 120ms);
  EXPECT_EQ(board.State().byes, 0U);
}

TEST_F(HeldWrite, ABoardThatTakesNothingComesOnlineWhenItDoes) {
  held = core::device::Command::GetID;
  slices = kForEver;
  StartWithSet();
  EXPECT_FALSE(Button("SendBtn").isEnabled());
  EXPECT_EQ(bus.devices[0]->written.size(), 1U) << "it was asked on";
  slices = 0;
  bus.devices[0]->slowWrites = 0;
  Tick("GoOnlineTimer");
  EXPECT_TRUE(Button("SendBtn").isEnabled());
}

}  // namespace
}  // namespace kestrin::support
