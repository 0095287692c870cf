// SPDX-License-Identifier: MIT
// A named pipe stands in for the device file: full, it holds up a write for as long as the test wants, and its reading
// end tells when the last process has let go of it.
#include "platform/hid/ProcessWriter.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <memory>
#include <numeric>
#include <string>

#include "support/TestFiles.h"

namespace kestrin::platform::hid {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

using Bytes = std::vector<std::uint8_t>;

/// Waits until something comes out of `file`, or its other end is closed for good.
short WaitFor(int file) {
  pollfd waiting{file, POLLIN, 0};
  while (::poll(&waiting, 1, -1) < 0) {
  }
  return waiting.revents;
}

class ProcessWriterTest : public testing::Test {
 protected:
  ProcessWriterTest() {
    EXPECT_EQ(::mkfifo(m_path.c_str(), 0600), 0);
    m_device = ::open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GE(m_device, 0);
  }
  ~ProcessWriterTest() override { ::close(m_device); }

  [[nodiscard]] NodeIdentity Identity() const {
    struct stat status {};
    EXPECT_EQ(::stat(m_path.c_str(), &status), 0);
    return {status.st_dev, status.st_ino};
  }
  [[nodiscard]] std::unique_ptr<ProcessWriter> MakeWriter() const {
    return std::make_unique<ProcessWriter>(m_path, Identity());
  }
  /// From now on the device takes nothing.
  void Fill() {
    const int file = ::open(m_path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(file, 0);
    const Bytes bytes(4096, 0);
    for (ssize_t count = 0; (count = ::write(file, bytes.data(), bytes.size())) > 0;)
      m_filled += static_cast<std::size_t>(count);
    EXPECT_EQ(errno, EAGAIN);
    ::close(file);
  }
  /// The device takes everything again: what it was filled with, then the next `count` bytes, which are returned.
  [[nodiscard]] Bytes Take(std::size_t count) {
    // Somebody who writes is always there: the process may only now be about to open the device.
    const int file = ::open(m_path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    const std::size_t filled = std::exchange(m_filled, 0);
    Bytes bytes(filled + count);
    for (std::size_t at = 0; at < bytes.size();) {
      WaitFor(m_device);
      const ssize_t read = ::read(m_device, bytes.data() + at, bytes.size() - at);
      if (read > 0) at += static_cast<std::size_t>(read);
    }
    ::close(file);
    return {bytes.begin() + static_cast<std::ptrdiff_t>(filled), bytes.end()};
  }
  /// Returns when nobody can write to the device any more.
  void WaitUntilNobodyHasTheDevice() const {
    while ((WaitFor(m_device) & POLLHUP) == 0) {
    }
  }
  [[nodiscard]] static bool Claim(int file) {
    struct flock whole {};
    whole.l_type = F_WRLCK;
    return ::fcntl(file, F_OFD_SETLK, &whole) == 0;
  }
  [[nodiscard]] bool CanBeClaimed() const {
    const int file = ::open(m_path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    const bool claimed = Claim(file);
    ::close(file);
    return claimed;
  }
  [[nodiscard]] static Bytes Report() {
    Bytes report(1029);
    std::iota(report.begin(), report.end(), std::uint8_t{0});
    return report;
  }
  /// Waits for the end however long it takes.
  [[nodiscard]] static int OutcomeOf(ProcessWriter& writer) {
    for (;;)
      if (const auto outcome = writer.Outcome(1s)) return *outcome;
  }

  const support::TemporaryFolder m_folder;
  const std::string m_path = (m_folder / "node").string();
  int m_device = -1;
  std::size_t m_filled = 0;
};

TEST_F(ProcessWriterTest, TheDeviceGetsTheBytesAsTheyAreAndTheCountComesBack) {
  const auto writer = MakeWriter();
  for (int time = 0; time < 3; ++time) {
    ASSERT_TRUE(writer->Start(Report()));
    EXPECT_EQ(OutcomeOf(*writer), 1029);
    EXPECT_EQ(Take(1029), Report());
  }
}

TEST_F(ProcessWriterTest, AWriteThatTheDeviceHoldsUpIsWaitedForInSlices) {
  Fill();
  const auto writer = MakeWriter();
  ASSERT_TRUE(writer->Start(Report()));
  EXPECT_EQ(writer->Outcome(1ms), std::nullopt);
  EXPECT_EQ(writer->Outcome(0ms), std::nullopt);
  EXPECT_EQ(Take(1029), Report());
  EXPECT_EQ(OutcomeOf(*writer), 1029);
  EXPECT_LT(writer->Outcome(0ms), 0) << "it is told once";
}

TEST_F(ProcessWriterTest, NothingIsBegunOnTopOfAWriteThatGoesOn) {
  Fill();
  const auto writer = MakeWriter();
  ASSERT_TRUE(writer->Start(Report()));
  EXPECT_FALSE(writer->Start(Bytes{0, 1}));
  EXPECT_EQ(Take(1029), Report());
  // Nobody asked for the outcome of the first one: it is forgotten.
  while (!writer->Start(Bytes{0, 1})) {
  }
  EXPECT_EQ(OutcomeOf(*writer), 2);
  EXPECT_THAT(Take(2), ElementsAre(0, 1));
}

TEST_F(ProcessWriterTest, OnlyReportsThatTheKernelWouldTakeAreWritten) {
  const auto writer = MakeWriter();
  EXPECT_FALSE(writer->Start({}));
  EXPECT_FALSE(writer->Start(Bytes(16385)));
  EXPECT_LT(writer->Outcome(0ms), 0);
  ASSERT_TRUE(writer->Start(Bytes(16384, 7)));
  EXPECT_EQ(Take(16384), Bytes(16384, 7));
  EXPECT_EQ(OutcomeOf(*writer), 16384);
}

TEST_F(ProcessWriterTest, TheSystemsErrorComesBack) {
  // What cannot be written to; and whoever has the path by now is another device.
  std::filesystem::create_directory(m_folder / "folder");
  ProcessWriter folder((m_folder / "folder").string(), {});
  ASSERT_TRUE(folder.Start(Report()));
  EXPECT_EQ(OutcomeOf(folder), -EISDIR);

  NodeIdentity other = Identity();
  ++other.inode;
  ProcessWriter late(m_path, other);
  ASSERT_TRUE(late.Start(Report()));
  EXPECT_EQ(OutcomeOf(late), -ENODEV);
  std::array<char, 1> byte{};
  EXPECT_LE(::read(m_device, byte.data(), byte.size()), 0) << "something was written";
}

// --- The process ---

TEST_F(ProcessWriterTest, NobodyHasToWaitForItsEnd) {
  const auto writer = MakeWriter();
  ASSERT_TRUE(writer->Start(Report()));
  EXPECT_EQ(OutcomeOf(*writer), 1029);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(ProcessWriterTest, ItEndsWhenItIsLetGo) {
  auto writer = MakeWriter();
  ASSERT_TRUE(writer->Start(Report()));
  EXPECT_EQ(Take(1029), Report());
  writer.reset();
  WaitUntilNobodyHasTheDevice();
}

TEST_F(ProcessWriterTest, LetGoInAWriteItEndsBehindIt) {
  Fill();
  auto writer = MakeWriter();
  ASSERT_TRUE(writer->Start(Report()));
  EXPECT_EQ(writer->Outcome(0ms), std::nullopt);
  writer.reset();
  EXPECT_EQ(Take(1029), Report());
  WaitUntilNobodyHasTheDevice();
}

TEST_F(ProcessWriterTest, ItKeepsNothingOfTheProgramsButTheDevice) {
  std::array<int, 2> pipe{};
  ASSERT_EQ(::pipe(pipe.data()), 0);
  const int device = ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC);
  ASSERT_TRUE(Claim(device));
  const auto writer = MakeWriter();
  // Whoever reads what the program prints reads its end.
  ::close(pipe[1]);
  EXPECT_EQ(WaitFor(pipe[0]), POLLHUP);
  ::close(pipe[0]);
  // What the program has open of the device would, closed for good, be waited for.
  ::close(device);
  EXPECT_FALSE(CanBeClaimed());
}

TEST_F(ProcessWriterTest, TheClaimIsTheProgramsAloneUnlessItWrites) {
  const int claim = ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC);
  ASSERT_TRUE(Claim(claim));
  ProcessWriter writer(m_path, Identity(), claim);
  for (int time = 0; time < 2; ++time) {
    ASSERT_TRUE(writer.Start(Report()));
    EXPECT_EQ(OutcomeOf(writer), 1029);
    EXPECT_EQ(Take(1029), Report());
  }
  EXPECT_FALSE(CanBeClaimed());
  ::close(claim);
  EXPECT_TRUE(CanBeClaimed());
}

TEST_F(ProcessWriterTest, TheClaimLastsUntilAWriteIsOver) {
  const int claim = ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC);
  ASSERT_TRUE(Claim(claim));
  Fill();
  {
    ProcessWriter writer(m_path, Identity(), claim);
    ASSERT_TRUE(writer.Start(Report()));
    ::close(claim);
  }
  EXPECT_FALSE(CanBeClaimed());
  EXPECT_EQ(Take(1029), Report());
  WaitUntilNobodyHasTheDevice();
  EXPECT_TRUE(CanBeClaimed());
}

TEST_F(ProcessWriterTest, AProgramThatIsKilledInAWriteLeavesNothingBehindOnceThatIsOver) {
  Fill();
  std::array<int, 2> begun{};
  ASSERT_EQ(::pipe(begun.data()), 0);
  const pid_t program = ::fork();
  if (program == 0) {
    ::setpgid(0, 0);
    // As a program does that ends in order. In whoever hears it, it breaks off a write.
    struct sigaction heard {};
    heard.sa_handler = [](int) {};
    for (const int number : {SIGINT, SIGHUP, SIGTERM}) ::sigaction(number, &heard, nullptr);
    ProcessWriter writer(m_path, Identity());
    if (writer.Start(Report()) && ::write(begun[1], "!", 1) == 1)
      for (;;) ::pause();
    ::_exit(1);
  }
  ::close(begun[1]);
  ASSERT_NE(WaitFor(begun[0]) & POLLIN, 0);
  ::close(begun[0]);
  // A terminal's signals go to all that it started together.
  for (const int number : {SIGINT, SIGHUP, SIGTERM}) EXPECT_EQ(::kill(-program, number), 0);
  ::kill(program, SIGKILL);
  EXPECT_EQ(::waitpid(program, nullptr, 0), program);
  EXPECT_EQ(Take(1029), Report());
  WaitUntilNobodyHasTheDevice();
}

/// The processes that write, of this test or whatever else runs.
[[nodiscard]] std::vector<pid_t> Writers() {
  std::vector<pid_t> writers;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::string name;
    std::getline(std::ifstream(entry.path() / "comm"), name);
    if (name == "kestrin-writer") writers.push_back(std::stoi(entry.path().filename()));
  }
  return writers;
}

/// Of them those that have this device open.
[[nodiscard]] std::vector<pid_t> WritersOf(const std::string& device) {
  std::vector<pid_t> found;
  for (const pid_t writer : Writers()) {
    std::error_code gone;
    for (const auto& file : std::filesystem::directory_iterator("/proc/" + std::to_string(writer) + "/fd", gone)) {
      std::error_code closed;
      if (std::filesystem::read_symlink(file.path(), closed) == device) {
        found.push_back(writer);
        break;
      }
    }
  }
  return found;
}

/// Returns when it has ended.
void End(pid_t process) {
  const auto file = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
  ::kill(process, SIGKILL);
  WaitFor(file);
  ::close(file);
}

TEST_F(ProcessWriterTest, AnotherOneIsMadeWhenSomebodyHasEndedIt) {
  const auto writer = MakeWriter();
  ASSERT_TRUE(writer->Start(Report()));
  EXPECT_EQ(OutcomeOf(*writer), 1029);
  EXPECT_EQ(Take(1029), Report());
  const std::vector<pid_t> first = WritersOf(m_path);
  ASSERT_EQ(first.size(), 1U);
  EXPECT_NE(::getsid(first[0]), ::getsid(0)) << "it belongs to the terminal";
  End(first[0]);

  ASSERT_TRUE(writer->Start(Report()));
  EXPECT_EQ(OutcomeOf(*writer), 1029);
  EXPECT_EQ(Take(1029), Report());
}

TEST_F(ProcessWriterTest, AWriteFailsWhoseProcessSomebodyEnds) {
  Fill();
  const auto writer = MakeWriter();
  ASSERT_TRUE(writer->Start(Report()));
  std::vector<pid_t> first;
  while (first.empty()) first = WritersOf(m_path);
  ASSERT_EQ(first.size(), 1U);
  ::kill(first[0], SIGKILL);
  EXPECT_EQ(OutcomeOf(*writer), -EIO);
}

}  // namespace
}  // namespace kestrin::platform::hid
