// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <future>
#include <memory>
#include <semaphore>
#include <string>
#include <vector>

#include "core/sound/ConfigurationFile.h"
#include "rig/ProgramFixture.h"
#include "rig/window/ProgramFolder.h"
#include "rig/window/WindowProgram.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"

namespace kestrin::rig {
namespace {

using support::ChildProcess;
using support::Finished;

/// Several starts of the built program, as the desktop makes them when files are opened: one window.
class OneWindow : public ProgramFixture {
 protected:
  static constexpr const char* kTaken = "kestrin: the window that is open already takes it from here.\n";

  OneWindow() {
    std::filesystem::create_directories(m_data);
    // With a board the window asks nothing.
    mock.Plug(3);
  }

  /// A complete set of that name.
  std::string Set(const std::string& name) const {
    const std::filesystem::path path = m_folder.Path() / name;
    EXPECT_EQ(core::sound::ConfigurationFile::Save(m_set.configuration, path, support::AnyDisk()).Text(), "");
    return path.string();
  }
  void StartFirst(const std::vector<std::string>& arguments = {}) {
    window.Start(arguments, m_environment);
    window.Await("graphic", "A board is connected");
  }
  [[nodiscard]] std::unique_ptr<ChildProcess> StartAnother(const std::vector<std::string>& arguments) const {
    return window.Another(arguments, m_environment);
  }

  const support::CompleteSet m_set{100};
  ProgramFolder program{m_folder.Path()};
  WindowProgram window;
};

TEST_F(OneWindow, TakesWhatLaterStartsAreToOpen) {
  StartFirst({Set("first.lscfg")});
  window.Await("label", "first");
  const Finished second = StartAnother({Set("second.lscfg")})->Wait();
  EXPECT_EQ(second.code, 0);
  EXPECT_EQ(second.out, kTaken);
  window.Await("label", "second");
  // By its address, and with a name that is no UTF-8, which the window shows as well as it can.
  EXPECT_EQ(StartAnother({"file://" + Set("third.lscfg")})->Wait().code, 0);
  window.Await("label", "third");
  EXPECT_EQ(StartAnother({Set("fo\xFCrth.lscfg")})->Wait().code, 0);
  window.Await("label", "fo\xEF\xBF\xBDrth");
  EXPECT_EQ(StartAnother({})->Wait().out, kTaken);
  EXPECT_EQ(window.Close().code, 0);
}

TEST_F(OneWindow, BeginsAnewWhereItWasKilled) {
  StartFirst();
  window.Program().Signal(SIGKILL);
  static_cast<void>(window.Wait());
  StartFirst({Set("again.lscfg")});
  window.Await("label", "again");
  EXPECT_EQ(StartAnother({Set("next.lscfg")})->Wait().out, kTaken);
  window.Await("label", "next");
}

TEST_F(OneWindow, OpensAnewForWhatItHadTakenWhenItWasClosed) {
  mock.Unplug();
  window.Start({}, m_environment);
  window.Await("push button", "Cancel");
  EXPECT_EQ(StartAnother({Set("late.lscfg")})->Wait().out, kTaken);
  // Without a board and without a window.
  window.Click("push button", "Cancel");
  EXPECT_EQ(window.Wait().code, 0);
  window.Click("push button", "OK");
  window.Await("label", "late");
  static_cast<void>(window.Close());
  window.AwaitGone("label", "late");
}

TEST_F(OneWindow, LeavesOneThatHangsAlone) {
  StartFirst();
  window.Program().Signal(SIGSTOP);
  const std::unique_ptr<ChildProcess> second = StartAnother({Set("mine.lscfg")});
  // It goes on by itself: signals are caught where a window is made.
  second->WaitUntilItCatches(SIGTERM);
  window.Program().Signal(SIGCONT);
  // The board belongs to the first, so the second asks whether to go on without.
  window.Click("push button", "OK");
  window.Await("label", "mine");
  second->Signal(SIGKILL);
  static_cast<void>(second->Wait());
  // What another window has opened is not opened here as well.
  EXPECT_FALSE(window.IsShown("label", "mine"));
  EXPECT_EQ(StartAnother({Set("later.lscfg")})->Wait().out, kTaken);
  window.Await("label", "later");
}

TEST_F(OneWindow, IsOneOfTwentyThatBeginAtTheSameInstant) {
  constexpr int kStarts = 20;
  std::vector<std::unique_ptr<ChildProcess>> starts;
  for (int i = 0; i < kStarts; ++i) starts.push_back(StartAnother({Set("s" + std::to_string(i) + ".lscfg")}));
  window.Await("graphic", "A board is connected");
  // All but the window end by themselves; the window ends when it is told to.
  std::counting_semaphore<kStarts> ends(0);
  std::vector<std::future<Finished>> waiting;
  for (const auto& start : starts)
    waiting.push_back(std::async(std::launch::async, [&ends, &start] {
      Finished end = start->Wait();
      ends.release();
      return end;
    }));
  for (int i = 0; i < kStarts - 1; ++i) ends.acquire();
  int taken = 0;
  for (std::size_t i = 0; i < waiting.size(); ++i) {
    if (waiting[i].wait_for(std::chrono::seconds(0)) != std::future_status::ready) starts[i]->Signal(SIGTERM);
    taken += waiting[i].get().out == kTaken ? 1 : 0;
  }
  EXPECT_EQ(taken, kStarts - 1);
}

TEST_F(OneWindow, IsNotThatOfAStartThatNamesABoard) {
  StartFirst();
  const std::unique_ptr<ChildProcess> other = StartAnother({"--board", "sim:serial=4B535477", Set("other.lscfg")});
  window.Await("label", "Kestrin USB Serial Number: 4B535477");
  window.Await("label", "other");
  other->Signal(SIGTERM);
  EXPECT_EQ(other->Wait().code, 128 + SIGTERM);
}

}  // namespace
}  // namespace kestrin::rig
