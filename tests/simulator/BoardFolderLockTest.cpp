#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "SimulatorSupport.h"
#include "support/FakeClock.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::simulator {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kInUse = "Another program is using this board. Close it and try again.";

/// Two agents on one state folder, as two programs have them.
class BoardFolderLock : public testing::Test {
 protected:
  BoardFolderLock() { m_options.dir = m_folder / "board"; }

  [[nodiscard]] SimulatedAgent::Created Create() { return SimulatedAgent::Create(m_options, m_clock, {}, &m_disk); }
  [[nodiscard]] std::string State() const { return support::ReadBytes(m_options.dir / "board.json"); }

  support::TemporaryFolder m_folder;
  support::FakeClock m_clock;
  support::RecordingDisk m_disk;
  BoardOptions m_options;
  support::EventRecorder m_recorder;
};

TEST_F(BoardFolderLock, TheFolderIsKeptForOneAgent) {
  const auto first = Create();
  ASSERT_NE(first.agent, nullptr);
  EXPECT_TRUE(m_disk.IsLocked(m_options.dir / "board.lock"));
  support::OpenAndSelect(*first.agent);
  ASSERT_TRUE(support::WriteCommand(*first.agent, {42, 1, 2, 3, 4, 5, 6}));
  const std::string before = State();

  // The serial number would be written into the folder by whoever opens it.
  m_options.serial = 7;
  const auto second = Create();
  ASSERT_NE(second.agent, nullptr) << "it is there, and waits";
  EXPECT_EQ(second.problem, "");
  EXPECT_FALSE(second.agent->SearchAndOpen());
  EXPECT_EQ(second.agent->AccessProblem(), kInUse);
  EXPECT_EQ(second.agent->NumberOfInterfaces(), 0);
  EXPECT_EQ(State(), before);
}

TEST_F(BoardFolderLock, AnAgentThatWaitsHearsOfTheBoardOnceItIsFreeAndFindsWhatTheOtherLeft) {
  auto first = Create();
  const auto second = Create();
  second.agent->SetEvents(&m_recorder);
  second.agent->Start();
  EXPECT_FALSE(second.agent->SearchAndOpen());
  second.agent->Refresh();
  EXPECT_THAT(m_recorder.events, IsEmpty());
  EXPECT_EQ(second.agent->AccessProblem(), kInUse);

  support::OpenAndSelect(*first.agent);
  ASSERT_TRUE(support::WriteCommand(*first.agent, {42, 1, 2, 3, 4, 5, 6}));
  first.agent.reset();
  second.agent->Refresh();
  second.agent->Refresh();
  EXPECT_THAT(m_recorder.events, ElementsAre("arrival sim"));
  EXPECT_EQ(second.agent->AccessProblem(), "");
  EXPECT_TRUE(second.agent->SearchAndOpen());
  EXPECT_THAT(second.agent->Board().State().accelerometer, ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_TRUE(m_disk.IsLocked(m_options.dir / "board.lock"));
}

TEST_F(BoardFolderLock, ASearchTakesTheBoardAsSoonAsItIsFree) {
  auto first = Create();
  const auto second = Create();
  EXPECT_FALSE(second.agent->SearchAndOpen());
  first.agent.reset();
  EXPECT_TRUE(second.agent->SearchAndOpen());
  EXPECT_EQ(second.agent->AccessProblem(), "");
}

TEST_F(BoardFolderLock, WhatTheOtherLeftDamagedIsNamed) {
  auto first = Create();
  const auto second = Create();
  first.agent.reset();
  support::WriteBytes(m_options.dir / "board.json", "{");
  EXPECT_FALSE(second.agent->SearchAndOpen());
  EXPECT_THAT(second.agent->AccessProblem(), HasSubstr("board.json\" is damaged"));
  EXPECT_FALSE(m_disk.IsLocked(m_options.dir / "board.lock"));
}

TEST_F(BoardFolderLock, ABoardThatWaitsCanBeUnpluggedAndPlugged) {
  auto first = Create();
  const auto second = Create();
  second.agent->Unplug();
  second.agent->Plug();
  EXPECT_FALSE(second.agent->SearchAndOpen());
  first.agent.reset();
  EXPECT_TRUE(second.agent->SearchAndOpen());
}

TEST_F(BoardFolderLock, ALockThatCannotBeAskedForIsNoOtherProgram) {
  m_disk.lockError = std::make_error_code(std::errc::permission_denied);
  const auto created = Create();
  EXPECT_EQ(created.agent, nullptr);
  EXPECT_THAT(created.problem, HasSubstr("could not be kept for this program: "));
  EXPECT_THAT(created.problem, HasSubstr("board.lock"));
  EXPECT_THAT(created.problem, testing::Not(HasSubstr(kInUse)));
}

TEST_F(BoardFolderLock, BoardsInMemoryAreAnybodys) {
  m_options.dir.clear();
  const auto first = Create();
  const auto second = Create();
  EXPECT_TRUE(first.agent->SearchAndOpen());
  EXPECT_TRUE(second.agent->SearchAndOpen());
}

}  // namespace
}  // namespace kestrin::simulator
