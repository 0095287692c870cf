// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include "core/sound/ConfigurationFile.h"
#include "rig/MockBoard.h"
#include "rig/MockHost.h"
#include "simulator/VirtualBoard.h"
#include "support/KestrinctlTest.h"
#include "support/RecordingDisk.h"
#include "support/ReferenceCoder.h"
#include "support/SoundSet.h"

namespace kestrin::rig {

/// The built kestrinctl, unchanged, as a child of the test inside the same mocked system, with a mocked device and the
/// board's firmware behind it. The child is handed the mocked system by the environment that it inherits.
class ProgramFixture : public support::KestrinctlTest {
 protected:
  using Bytes = MockBoard::Bytes;

  /// Samples of each of the seven sounds of `set`, and their coded bytes: three for every two samples. They go to the
  /// board in three reports: two whole blocks of 1,024 bytes and a rest of 52.
  static constexpr std::size_t kSamples = 1400;
  static constexpr std::size_t kCodedBytes = 2100;
  static constexpr int kSounds = 7;

  ProgramFixture() {
    // AddressSanitizer takes the mock's library in front of its own for a mistake unless told otherwise. The test
    // program says that for itself (SanitizerDefaults.cpp); the program under test is built without any regard to the
    // mock.
    const char* const before = std::getenv("ASAN_OPTIONS");
    m_environment.push_back("ASAN_OPTIONS=" + (before != nullptr ? std::string(before) + ":" : std::string()) +
                            "verify_asan_link_order=0");
    mock.AnswerWith(board);
    mock.onReport = [this, answersOf = mock.onReport](const Bytes& report) {
      std::vector<Bytes> answers = answersOf(report);
      if (m_reportsToHeld == 0 || --m_reportsToHeld != 0) return answers;
      m_heldAnswers = std::move(answers);
      m_held.set_value();
      return std::vector<Bytes>{};
    };
  }

  /// Writes the configuration file of `set`. Returns its path.
  [[nodiscard]] std::string Configuration() const {
    const std::filesystem::path path = m_folder / "complete set.lscfg";
    EXPECT_EQ(core::sound::ConfigurationFile::Save(set.configuration, path, support::AnyDisk()).Text(), "");
    return path.string();
  }

  // --- The moment in which something happens ---

  /// The `number`-th report from now on (from 1) reaches the board, which does all it asks for, but its answers do not
  /// get through to the program. Before the program is started.
  void HoldTheAnswersTo(int number) {
    m_held = std::promise<void>();
    m_reportsToHeld = number;
  }
  /// Returns when that report has arrived: the program now waits for an answer.
  void WaitUntilHeld() { m_held.get_future().wait(); }
  void LetTheAnswersThrough() {
    for (const Bytes& answer : m_heldAnswers) mock.Send(answer);
  }
  /// Pulls the board out. It keeps its flash and its parameters.
  void Unplug() {
    mock.Unplug();
    board.LosePower();
  }
  /// Pulls the board out of a program that waits for an answer. The program stands still until the notice of it has
  /// gone out: the mock cannot bear a listener that leaves while it is told.
  void UnplugFrom(const support::ChildProcess& program) {
    program.Signal(SIGSTOP);
    Unplug();
    program.Signal(SIGCONT);
  }

  // --- What the board is to hold ---

  /// The whole flash with `set` in it, worked out from the layout.
  [[nodiscard]] static Bytes ExpectedFlash() {
    Bytes flash(4 * 1024 * 1024, 0xFF);
    // One motion, one impact, one lock-up sound; then address and length of each sound.
    Bytes table{1, 1, 1, 0};
    const auto put24 = [&](std::size_t number) {
      for (const unsigned shift : {16U, 8U, 0U}) table.push_back(static_cast<std::uint8_t>(number >> shift & 0xFF));
    };
    for (int sound = 0; sound < kSounds; ++sound) {
      const std::size_t address = 512 + static_cast<std::size_t>(sound) * (kCodedBytes + 1);
      put24(address);
      put24(kCodedBytes);
      const Bytes stream =
          support::ReferenceStream(support::SomeSamples(kSamples, 20000, static_cast<unsigned>(sound) + 1), 20000, 100);
      std::copy(stream.begin(), stream.end(), flash.begin() + static_cast<std::ptrdiff_t>(address));
    }
    unsigned sum = 0;
    for (const std::uint8_t byte : table) sum += byte;
    table.push_back(static_cast<std::uint8_t>(sum >> 8 & 0xFF));
    table.push_back(static_cast<std::uint8_t>(sum & 0xFF));
    std::copy(table.begin(), table.end(), flash.begin() + 12);
    return flash;
  }
  [[nodiscard]] bool BoardHoldsTheSet() const {
    const Bytes expected = ExpectedFlash();
    return std::equal(expected.begin(), expected.end(), board.Flash().begin(), board.Flash().end());
  }

  MockHost host;
  simulator::VirtualBoard board;
  MockBoard mock{host};
  support::CompleteSet set{kSamples};

 private:
  /// 0 when nothing is to be held. Counted down in the mock's thread.
  std::atomic<int> m_reportsToHeld{0};
  std::vector<Bytes> m_heldAnswers;
  std::promise<void> m_held;
};

}  // namespace kestrin::rig
