// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "simulator/SimulatorSupport.h"
#include "simulator/store/StoredBoard.h"
#include "support/FakeClock.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::simulator::store {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kInUse = "Another program is using this board. Close it and try again.";

/// Two agents on one state folder, as two programs have them.
class BoardFolderLock : public testing::Test {
 protected:
  BoardFolderLock() { m_options.dir = m_folder / "board"; }

  core::base::Result<std::unique_ptr<SimulatedAgent>> Create() { return CreateAgent(m_options, m_clock, {}, &m_disk); }
  /// An agent, whether it has the board or waits for it.
  std::unique_ptr<SimulatedAgent> Agent() {
    auto created = Create();
    EXPECT_TRUE(created) << created.Text();
    return *std::move(created);
  }
  [[nodiscard]] std::string State() const { return support::ReadBytes(m_options.dir / "board.json"); }

  support::TemporaryFolder m_folder;
  support::FakeClock m_clock;
  support::RecordingDisk m_disk;
  BoardOptions m_options;
  support::EventRecorder m_recorder;
};

TEST_F(BoardFolderLock, TheFolderIsKeptForOneAgent) {
  const auto first = Agent();
  EXPECT_TRUE(m_disk.IsLocked(m_options.dir / "board.lock"));
  support::OpenAndSelect(*first);
  ASSERT_TRUE(support::WriteCommand(*first, {42, 1, 2, 3, 4, 5, 6}));
  const std::string before = State();

  // The serial number would be written into the folder by whoever opens it.
  m_options.serial = 7;
  const auto second = Agent();
  EXPECT_FALSE(second->SearchAndOpen());
  EXPECT_EQ(second->AccessProblem(), kInUse);
  EXPECT_EQ(second->NumberOfInterfaces(), 0);
  EXPECT_EQ(State(), before);
}

TEST_F(BoardFolderLock, AnAgentThatWaitsHearsOfTheBoardOnceItIsFreeAndFindsWhatTheOtherLeft) {
  auto first = Agent();
  const auto second = Agent();
  second->SetEvents(&m_recorder);
  second->Start();
  EXPECT_FALSE(second->SearchAndOpen());
  second->Refresh();
  EXPECT_THAT(m_recorder.events, IsEmpty());
  EXPECT_EQ(second->AccessProblem(), kInUse);

  support::OpenAndSelect(*first);
  ASSERT_TRUE(support::WriteCommand(*first, {42, 1, 2, 3, 4, 5, 6}));
  first.reset();
  second->Refresh();
  second->Refresh();
  EXPECT_THAT(m_recorder.events, ElementsAre("arrival sim"));
  EXPECT_EQ(second->AccessProblem(), "");
  EXPECT_TRUE(second->SearchAndOpen());
  EXPECT_THAT(second->Board().State().accelerometer, ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_TRUE(m_disk.IsLocked(m_options.dir / "board.lock"));
}

TEST_F(BoardFolderLock, ASearchTakesTheBoardAsSoonAsItIsFree) {
  auto first = Agent();
  const auto second = Agent();
  EXPECT_FALSE(second->SearchAndOpen());
  first.reset();
  EXPECT_TRUE(second->SearchAndOpen());
  EXPECT_EQ(second->AccessProblem(), "");
}

TEST_F(BoardFolderLock, WhatTheOtherLeftDamagedIsNamed) {
  auto first = Agent();
  const auto second = Agent();
  first.reset();
  support::WriteBytes(m_options.dir / "board.json", "{");
  EXPECT_FALSE(second->SearchAndOpen());
  EXPECT_THAT(second->AccessProblem(), HasSubstr("board.json\" is damaged"));
  EXPECT_FALSE(m_disk.IsLocked(m_options.dir / "board.lock"));
}

TEST_F(BoardFolderLock, ABoardThatWaitsCanBeUnpluggedAndPlugged) {
  auto first = Agent();
  const auto second = Agent();
  second->Unplug();
  second->Plug();
  EXPECT_FALSE(second->SearchAndOpen());
  first.reset();
  EXPECT_TRUE(second->SearchAndOpen());
}

TEST_F(BoardFolderLock, ALockThatCannotBeAskedForIsNoOtherProgram) {
  m_disk.lockError = std::make_error_code(std::errc::permission_denied);
  const auto created = Create();
  ASSERT_FALSE(created);
  EXPECT_EQ(created.Why().kind, core::base::FailureKind::NotPermitted);
  EXPECT_THAT(created.Text(), HasSubstr("could not be kept for this program: "));
  EXPECT_THAT(created.Text(), HasSubstr("board.lock"));
  EXPECT_THAT(created.Text(), testing::Not(HasSubstr(kInUse)));
}

TEST_F(BoardFolderLock, BoardsInMemoryAreAnybodys) {
  m_options.dir.clear();
  const auto first = Agent();
  const auto second = Agent();
  EXPECT_TRUE(first->SearchAndOpen());
  EXPECT_TRUE(second->SearchAndOpen());
}

}  // namespace
}  // namespace kestrin::simulator::store
