// SPDX-License-Identifier: MIT
// One thing goes wrong at every single report of a download: the run ends as it must, never claims a success over a
// wrong flash, never loses the detection parameters, and the next download works.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "core/device/DeviceSession.h"
#include "core/sound/Download.h"
#include "simulator/SimulatedAgent.h"
#include "support/FakeClock.h"
#include "support/MemoryKeptParameters.h"
#include "support/QuietSessionView.h"
#include "support/RecordingDownloadView.h"
#include "support/ReferenceCoder.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {
namespace {

using simulator::Fault;

constexpr device::AccParam kHeldBefore{11, 12, 13, 14, 15, 16};

/// The samples of a sound file, read without any code of the program.
std::vector<std::int16_t> SamplesOf(const std::filesystem::path& path) {
  const std::string bytes = support::ReadBytes(path);
  std::vector<std::int16_t> samples;
  for (std::size_t at = 4; at + 2 <= bytes.size(); at += 2)
    samples.push_back(static_cast<std::int16_t>(static_cast<std::uint8_t>(bytes[at]) |
                                                static_cast<std::uint8_t>(bytes[at + 1]) << 8));
  return samples;
}

/// A simulated board with a session on it, and a download.
class Rig {
 public:
  Rig(support::CompleteSet& set, support::MemoryKeptParameters& kept, std::vector<Fault> faults)
      : m_set(set), m_kept(kept) {
    simulator::BoardOptions options;
    options.faults = std::move(faults);
    m_agent = std::make_unique<simulator::SimulatedAgent>(options, m_clock);
    m_session = std::make_unique<device::DeviceSession>(*m_agent, m_sessionView);
    // A board that was tuned before the download; set from its own side, so that no report is spent on it.
    std::vector<std::uint8_t> tune(1028, 0);
    const std::uint8_t command[] = {42, 11, 12, 13, 14, 15, 16};
    std::copy(std::begin(command), std::end(command), tune.begin());
    m_agent->Board().Receive(tune, m_clock.Now());
    static_cast<void>(m_agent->Board().NextAnswer(m_clock.Now()));
    static_cast<void>(m_session->SearchAtStartUp());
  }

  DownloadOutcome Send() {
    device::TLS* const board = m_session->Board();
    return board == nullptr ? DownloadOutcome::ConnectionLost : m_download.Send(Target(*board));
  }

  /// The board is there again, freshly plugged in.
  void Replug() {
    m_agent->Unplug();
    m_agent->Refresh();
    m_agent->Plug();
    m_session->GoOnlineTimerTick();
    ASSERT_TRUE(m_session->State().IsOnline());
  }

  [[nodiscard]] device::AccParam Parameters() const {
    const auto& held = m_agent->Board().State().accelerometer;
    return {held[0], held[1], held[2], held[3], held[4], held[5]};
  }
  [[nodiscard]] std::uint32_t Resets() const { return m_agent->Board().State().resets; }
  [[nodiscard]] std::span<const std::uint8_t> Flash() const { return m_agent->Board().Flash(); }
  [[nodiscard]] support::RecordingDownloadView& View() { return m_view; }

  /// Whether the flash holds every file of the set and the table, decoded back and compared within what ten bits show.
  [[nodiscard]] bool FlashIsRight() const {
    std::size_t address = 512;
    std::vector<std::uint8_t> table = {1, 1, 1, 0};
    for (const SlotFile& entry : m_set.configuration.FilesInFlashOrder()) {
      const std::vector<std::int16_t> samples = SamplesOf(entry.file->FileNameAndPath());
      const std::size_t length = (samples.size() + 1) / 2 * 3;
      for (const std::size_t number : {address, length})
        for (const int shift : {16, 8, 0}) table.push_back(static_cast<std::uint8_t>(number >> shift));
      const auto decoded = support::DecodeStream(Flash().subspan(address, length));
      // The first pair is never coded; the samples 1, 2, 3, ... follow. 20,000 is the loudest of every file. What is
      // left of the first magnitude of a pair below its two low bits is added to the two low bits of the second: up
      // to 1.5 and 3.5 steps between what was coded and what is read back.
      for (std::size_t i = 2; i < decoded.size() && i - 1 < samples.size(); ++i) {
        const double tolerance = i % 2 == 0 ? 1.51 : 3.51;
        if (std::abs(decoded[i] - samples[i - 1] * 999.0 / 20000) > tolerance) return false;
      }
      address += length + 1;
    }
    unsigned sum = 0;
    for (const std::uint8_t byte : table) sum += byte;
    table.push_back(static_cast<std::uint8_t>(sum >> 8));
    table.push_back(static_cast<std::uint8_t>(sum));
    return std::equal(table.begin(), table.end(), Flash().begin() + 12);
  }

 private:
  [[nodiscard]] DownloadTarget Target(device::TLS& board) {
    // As the programs do: what the board did not tell at first, it is asked again.
    const bool identified = static_cast<bool>(m_session->EnsureIdentified());
    return {board, m_session->State().serialNumber, 4 << 20, identified};
  }

  support::CompleteSet& m_set;
  support::MemoryKeptParameters& m_kept;
  support::FakeClock m_clock;
  support::QuietSessionView m_sessionView;
  std::unique_ptr<simulator::SimulatedAgent> m_agent;
  std::unique_ptr<device::DeviceSession> m_session;
  support::RecordingDownloadView m_view;
  Download m_download{m_set.configuration, m_view, m_kept, m_clock, {}};
};

/// What the reports of one run are, in order: seven files of 2,000 samples, 3,000 coded bytes each, so two whole blocks
/// and a rest; going online comes before.
enum class Step { Identify, KeepParameters, Erase, PutBack, Files, Table, Restart };

std::vector<Step> WrittenSteps() {
  std::vector<Step> steps = {Step::Identify, Step::Identify, Step::KeepParameters, Step::Erase, Step::PutBack};
  steps.insert(steps.end(), 7 * 3, Step::Files);
  steps.insert(steps.end(), {Step::Table, Step::Table, Step::Restart});
  return steps;
}

std::vector<Step> ReadSteps() {
  std::vector<Step> steps(3, Step::Identify);
  steps.insert(steps.end(), 3, Step::KeepParameters);
  steps.insert(steps.end(), {Step::Erase, Step::PutBack});
  steps.insert(steps.end(), 7 * 3, Step::Files);
  steps.insert(steps.end(), 2, Step::Table);
  return steps;
}

/// The same for written and read reports counted together.
std::vector<Step> AllSteps() {
  std::vector<Step> steps(2 + 3, Step::Identify);
  steps.insert(steps.end(), 1 + 3, Step::KeepParameters);
  steps.insert(steps.end(), 2, Step::Erase);
  steps.insert(steps.end(), 2, Step::PutBack);
  steps.insert(steps.end(), 7 * 3 * 2, Step::Files);
  steps.insert(steps.end(), 4, Step::Table);
  steps.push_back(Step::Restart);
  return steps;
}

DownloadOutcome OutcomeOfALostReport(Step step) {
  switch (step) {
    case Step::Table:
      return DownloadOutcome::MemoryCheckError;
    case Step::Restart:
      // The set is verified; only the restart is left to the person.
      return DownloadOutcome::Success;
    default:
      return DownloadOutcome::ConnectionLost;
  }
}

class DownloadFaults : public ::testing::Test {
 protected:
  /// A run with this fault ends like that, and everything that must hold whatever happens holds.
  void ExpectEnd(Fault fault, std::optional<DownloadOutcome> expected) {
    SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault.kind)) + " at report " +
                 std::to_string(fault.number));
    support::MemoryKeptParameters kept;
    Rig rig(m_set, kept, {fault});
    const DownloadOutcome outcome = rig.Send();
    if (expected) {
      EXPECT_EQ(outcome, *expected);
    }
    EXPECT_EQ(outcome == DownloadOutcome::Success, rig.View().information == "SUCCESS !");
    if (outcome == DownloadOutcome::Success) {
      EXPECT_TRUE(rig.FlashIsRight());
    } else {
      EXPECT_EQ(rig.Resets(), 0u) << "a board without its whole set is not restarted";
    }
    EXPECT_TRUE(rig.Parameters() == kHeldBefore || kept.Find("4B535401") == kHeldBefore) << "the parameters are lost";

    rig.Replug();
    EXPECT_EQ(rig.Send(), DownloadOutcome::Success) << "the next download";
    EXPECT_TRUE(rig.FlashIsRight());
    EXPECT_EQ(rig.Parameters(), kHeldBefore);
    EXPECT_TRUE(kept.kept.empty());
  }

  support::CompleteSet m_set{2000};
};

TEST_F(DownloadFaults, WithoutAnyTheFlashHoldsTheSet) {
  support::MemoryKeptParameters kept;
  Rig rig(m_set, kept, {});
  EXPECT_EQ(rig.Send(), DownloadOutcome::Success);
  EXPECT_TRUE(rig.FlashIsRight());
  EXPECT_EQ(rig.Parameters(), kHeldBefore);
  EXPECT_EQ(rig.Resets(), 1u);
  // What was never written is still erased: the bytes before the table and those between the files.
  for (const std::size_t address : {0u, 11u, 512u + 3000u, 512u + 3001u + 3000u}) EXPECT_EQ(rig.Flash()[address], 0xFF);
}

TEST_F(DownloadFaults, AWriteThatFails) {
  const std::vector<Step> steps = WrittenSteps();
  for (std::size_t i = 0; i < steps.size(); ++i) {
    auto expected = OutcomeOfALostReport(steps[i]);
    // Which board it is, is asked again; what it is, is not.
    if (steps[i] == Step::Identify && i > 0) expected = DownloadOutcome::Success;
    ExpectEnd({Fault::Kind::WriteFails, i + 1}, expected);
  }
}

TEST_F(DownloadFaults, AReadThatFails) {
  const std::vector<Step> steps = ReadSteps();
  for (std::size_t i = 0; i < steps.size(); ++i) {
    auto expected = OutcomeOfALostReport(steps[i]);
    // The erase is asked again, and what the board is.
    if (steps[i] == Step::Erase || steps[i] == Step::Identify) expected = DownloadOutcome::Success;
    ExpectEnd({Fault::Kind::ReadFails, i + 1}, expected);
  }
}

TEST_F(DownloadFaults, ABoardThatIsUnplugged) {
  const std::vector<Step> steps = AllSteps();
  for (std::size_t i = 0; i < steps.size(); ++i)
    ExpectEnd({Fault::Kind::Unplug, i + 1}, OutcomeOfALostReport(steps[i]));
}

TEST_F(DownloadFaults, ABitOfFlashDataFlippedOnTheWay) {
  const std::vector<Step> steps = WrittenSteps();
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const bool carriesData = steps[i] == Step::Files || (steps[i] == Step::Table && steps[i - 1] == Step::Files);
    ExpectEnd({Fault::Kind::FlipBit, i + 1}, carriesData ? OutcomeOfALostReport(steps[i]) : DownloadOutcome::Success);
  }
}

}  // namespace
}  // namespace kestrin::core::sound
