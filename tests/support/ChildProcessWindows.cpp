// SPDX-License-Identifier: MIT
#include <windows.h>

#include <array>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/ChildProcess.h"

namespace kestrin::support {

namespace {

[[noreturn]] void Fail(const std::string& what) { throw std::runtime_error("the test cannot " + what); }

std::wstring Wide(const std::string& text) {
  const int bytes = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

/// An argument as the run-time library of the program that gets it takes it apart again.
std::wstring Quoted(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t letter : argument) {
    // Backslashes stand for themselves, but before a quotation mark for half as many.
    if (letter == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = letter == L'\\' ? backslashes + 1 : 0;
    quoted += letter;
  }
  return quoted.append(backslashes, L'\\') + L"\"";
}

std::wstring NameOf(const std::wstring& variable) {
  // The system keeps variables of its own whose names begin with "=".
  std::wstring name = variable.substr(0, variable.find(L'=', 1));
  CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
  return name;
}

/// This process's variables with the changes, each ended by a zero, and one more zero.
std::wstring Environment(const std::vector<std::string>& changes) {
  std::vector<std::wstring> wide;
  for (const std::string& change : changes) wide.push_back(Wide(change));
  std::wstring block;
  wchar_t* const all = GetEnvironmentStringsW();
  for (const wchar_t* at = all; *at != L'\0'; at += std::wstring_view(at).size() + 1) {
    const std::wstring variable = at;
    bool changed = false;
    for (const std::wstring& change : wide) changed = changed || NameOf(change) == NameOf(variable);
    if (!changed) block += variable + L'\0';
  }
  FreeEnvironmentStringsW(all);
  for (const std::wstring& change : wide)
    if (change.find(L'=') != change.npos) block += change + L'\0';
  return block + L'\0';
}

/// Two ends of a pipe; the child inherits its own.
struct Pipe {
  HANDLE test = nullptr;
  HANDLE child = nullptr;
};

Pipe OpenPipe() {
  Pipe pipe;
  if (!CreatePipe(&pipe.test, &pipe.child, nullptr, 0)) Fail("open a pipe");
  SetHandleInformation(pipe.child, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  return pipe;
}

/// A side of this program's console, which the child inherits.
HANDLE OpenConsole(const wchar_t* name) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  const HANDLE console = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                     OPEN_EXISTING, 0, nullptr);
  if (console == INVALID_HANDLE_VALUE) Fail("open its console");
  return console;
}

}  // namespace

/// Each output is read by a thread of its own: anonymous pipes cannot be waited for.
struct ChildProcess::Process {
  HANDLE handle = nullptr;
  std::mutex mutex;
  std::condition_variable changed;
  std::string out;
  std::string errors;
  int readers = 2;
  std::vector<std::thread> threads;

  void Read(HANDLE pipe, std::string& text) {
    std::array<char, 4096> bytes{};
    DWORD count = 0;
    while (ReadFile(pipe, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) && count > 0) {
      const std::lock_guard lock(mutex);
      text.append(bytes.data(), count);
      changed.notify_all();
    }
    CloseHandle(pipe);
    const std::lock_guard lock(mutex);
    --readers;
    changed.notify_all();
  }
};

ChildProcess::ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                           const Surroundings& surroundings)
    : m_process(std::make_unique<Process>()) {
  if (!surroundings.closed.empty() || !surroundings.ignored.empty() || !surroundings.unread.empty() ||
      surroundings.largestFile != 0 || surroundings.memory != 0)
    Fail("give a program these surroundings on this system");
  std::wstring line;
  for (const std::string& argument : command) line += (line.empty() ? L"" : L" ") + Quoted(Wide(argument));
  std::wstring variables = Environment(environment);
  const Pipe out = OpenPipe();
  const Pipe errors = OpenPipe();
  const HANDLE screen = surroundings.output == Output::Terminal ? OpenConsole(L"CONOUT$") : nullptr;
  const HANDLE keyboard = surroundings.hasKeyboard ? OpenConsole(L"CONIN$") : nullptr;
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = keyboard;
  start.hStdOutput = screen != nullptr ? screen : out.child;
  start.hStdError = errors.child;
  PROCESS_INFORMATION process{};
  const BOOL started = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                                      variables.data(), nullptr, &start, &process);
  for (const HANDLE handle : {out.child, errors.child, screen, keyboard})
    if (handle != nullptr) CloseHandle(handle);
  if (!started) Fail("start a process");
  CloseHandle(process.hThread);
  m_process->handle = process.hProcess;
  m_process->threads.emplace_back([this, pipe = out.test] { m_process->Read(pipe, m_process->out); });
  m_process->threads.emplace_back([this, pipe = errors.test] { m_process->Read(pipe, m_process->errors); });
}

ChildProcess::~ChildProcess() {
  // Harmless when it has ended.
  TerminateProcess(m_process->handle, 1);
  for (std::thread& thread : m_process->threads) thread.join();
  CloseHandle(m_process->handle);
}

void ChildProcess::WaitForOutput(const std::string& text) {
  while (m_finished.out.find(text) == std::string::npos)
    if (!ReadMore()) throw std::runtime_error("the program ended without printing " + text + ": " + m_finished.errors);
}

void ChildProcess::WaitForErrors(const std::string& text) {
  while (m_finished.errors.find(text) == std::string::npos)
    if (!ReadMore()) throw std::runtime_error("the program ended without the error output " + text);
}

std::string ChildProcess::WaitForLine() {
  WaitForOutput("\n");
  return m_finished.out.substr(0, m_finished.out.find('\n'));
}

bool ChildProcess::HasEnded() const { return WaitForSingleObject(m_process->handle, 0) == WAIT_OBJECT_0; }

Finished ChildProcess::Wait() {
  while (ReadMore()) {
  }
  WaitForSingleObject(m_process->handle, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(m_process->handle, &code);
  m_finished.code = static_cast<int>(code);
  return m_finished;
}

bool ChildProcess::ReadMore() {
  std::unique_lock lock(m_process->mutex);
  m_process->changed.wait(
      lock, [this] { return m_process->readers == 0 || !m_process->out.empty() || !m_process->errors.empty(); });
  if (m_process->out.empty() && m_process->errors.empty()) return false;
  m_finished.out += std::exchange(m_process->out, {});
  m_finished.errors += std::exchange(m_process->errors, {});
  return true;
}

}  // namespace kestrin::support
