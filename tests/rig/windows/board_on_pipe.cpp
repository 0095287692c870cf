// SPDX-License-Identifier: MIT
// A simulated board behind a named pipe, which the stand-in for hid.dll takes for a device:  board_on_pipe PIPE FLASH
// Says "ready" once it can be opened; ends with its input, and writes what its flash holds then into the file FLASH.
#include <windows.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "core/device/Protocol.h"
#include "simulator/VirtualBoard.h"

namespace {

using kestrin::simulator::VirtualBoard;

std::mutex s_mutex;
VirtualBoard s_board;

VirtualBoard::Time Now() { return std::chrono::steady_clock::now().time_since_epoch(); }

/// One end of the pipe, with one thing at a time under way on it.
class Connection {
 public:
  explicit Connection(HANDLE pipe) : m_pipe(pipe), m_event(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
  ~Connection() {
    CloseHandle(m_event);
    CloseHandle(m_pipe);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Waits until somebody opens the pipe.
  void WaitForProgram() {
    OVERLAPPED state = State();
    static_cast<void>(Finish(ConnectNamedPipe(m_pipe, &state), state));
  }
  /// The next message; empty once the program has gone.
  std::optional<std::vector<unsigned char>> Read() {
    std::vector<unsigned char> bytes(1 + kestrin::core::device::kCommandSize);
    OVERLAPPED state = State();
    const BOOL done = ReadFile(m_pipe, bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &state);
    const std::optional<DWORD> count = Finish(done, state);
    if (!count) return std::nullopt;
    bytes.resize(*count);
    return bytes;
  }
  bool Write(const VirtualBoard::Answer& answer) {
    const unsigned char report[] = {0, answer[0], answer[1]};
    OVERLAPPED state = State();
    return Finish(WriteFile(m_pipe, report, sizeof report, nullptr, &state), state).has_value();
  }

 private:
  OVERLAPPED State() const {
    OVERLAPPED state{};
    state.hEvent = m_event;
    return state;
  }
  /// How many bytes went over; empty when none can any more.
  std::optional<DWORD> Finish(BOOL done, OVERLAPPED& state) {
    DWORD count = 0;
    if (!done && GetLastError() != ERROR_IO_PENDING) return std::nullopt;
    if (!GetOverlappedResult(m_pipe, &state, &count, TRUE)) return std::nullopt;
    return count;
  }

  HANDLE m_pipe;
  HANDLE m_event;
};

std::vector<VirtualBoard::Answer> AnswersTo(const std::vector<unsigned char>& report) {
  const std::lock_guard lock(s_mutex);
  s_board.Receive(report, Now());
  std::vector<VirtualBoard::Answer> answers;
  while (const auto answer = s_board.NextAnswer(Now())) answers.push_back(*answer);
  return answers;
}

/// Serves one program after the other.
void Serve(const std::wstring& name) {
  for (;;) {
    constexpr DWORD kBuffer = 65536;
    const HANDLE pipe = CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED,
                                         PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT,
                                         PIPE_UNLIMITED_INSTANCES, kBuffer, kBuffer, 0, nullptr);
    if (pipe == INVALID_HANDLE_VALUE) return;
    Connection connection(pipe);
    connection.WaitForProgram();
    while (const auto report = connection.Read())
      for (const VirtualBoard::Answer& answer : AnswersTo(*report))
        if (!connection.Write(answer)) break;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const std::string name = argv[1];
  const std::wstring pipe(name.begin(), name.end());
  // Several may look at a device at the same time.
  for (int i = 0; i < 4; ++i) std::thread(Serve, pipe).detach();
  while (!WaitNamedPipeW(pipe.c_str(), NMPWAIT_WAIT_FOREVER)) SwitchToThread();
  std::puts("ready");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
  }
  const std::lock_guard lock(s_mutex);
  std::ofstream file(argv[2], std::ios::binary);
  const auto flash = s_board.Flash();
  file.write(reinterpret_cast<const char*>(flash.data()), static_cast<std::streamsize>(flash.size()));
  file.close();
  // The threads never end by themselves.
  ExitProcess(file ? 0 : 1);
}
