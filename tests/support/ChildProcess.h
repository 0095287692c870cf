// SPDX-License-Identifier: MIT
#pragma once

#ifndef _WIN32
#include <sys/types.h>
#endif

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace kestrin::support {

/// What a program left behind.
struct Finished {
  /// The exit code, or minus the signal that ended it.
  int code = 0;
  std::string out;
  std::string errors;
};

/// A program that runs beside the test, with both its outputs caught. Ended by force when it outlives the object. On
/// Windows the terminal is this program's own console, and what is shown there is not caught; there are no signals, and
/// no other surroundings than the usual ones.
class ChildProcess {
 public:
  /// Where its standard output goes: into a pipe, or onto a terminal of its own, which it is told the end of.
  enum class Output { Pipe, Terminal };

  /// What the program finds when it starts.
  struct Surroundings {
    Output output = Output::Pipe;
    /// The terminal's width; 0 when it does not tell.
    unsigned short columns = 0;
    /// Whether its standard input is that terminal as well.
    bool hasKeyboard = false;
    /// Outputs (1, 2) whose reader has gone before the program starts.
    std::vector<int> unread = {};
    /// Standard descriptors that are closed.
    std::vector<int> closed = {};
    /// Signals that are ignored. All others are as they are by default, whatever this process has inherited.
    std::vector<int> ignored = {};
    /// The size that no file may grow beyond, in bytes; 0 for none.
    std::uint64_t largestFile = 0;
    /// The memory that it may ask for, in bytes; 0 for any.
    std::uint64_t memory = 0;
  };

  /// `command` is the program and its arguments, `environment` replaces variables of the same name ("NAME=VALUE") or
  /// takes them out ("NAME").
  ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
               const Surroundings& surroundings);
  ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment)
      : ChildProcess(command, environment, Surroundings()) {}
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Returns as soon as its standard output (or error output) holds `text`; throws when it ends without.
  void WaitForOutput(const std::string& text);
  void WaitForErrors(const std::string& text);
  /// The first line of its standard output, without its end; throws when it ends without one.
  [[nodiscard]] std::string WaitForLine();
  /// Whether it has ended.
  [[nodiscard]] bool HasEnded() const;
  /// Waits for the end.
  Finished Wait();
#ifndef _WIN32
  void Signal(int number) const;
  /// Stops its terminal as Ctrl-S does: what it writes waits.
  void StopTerminal() const;
  /// Presses keys on its terminal.
  void Type(const std::string& keys) const;
  /// Whether its terminal shows what is typed and gives it on by lines, as one does before any program changes that.
  [[nodiscard]] bool IsTerminalAsUsual() const;
  /// Puts its terminal back into that state, as a shell does when a program of it was stopped.
  void UseTerminalAsUsual() const;
  /// Lets nothing more be written onto its terminal, whatever the program does about Ctrl-S.
  void BlockTerminal() const;
  /// Goes away as the reader of its standard output; a terminal hangs up.
  void CloseOutput();
  /// By which the system knows it.
  [[nodiscard]] pid_t Id() const { return m_pid; }
#endif
#ifdef __linux__
  /// Returns as soon as it catches the signal; throws when it ends without.
  void WaitUntilItCatches(int number) const;
  /// Returns as soon as it has the file open; throws when it ends without.
  void WaitUntilItReads(const std::filesystem::path& file) const;
  /// Where one of its descriptors leads; throws when it leads nowhere.
  [[nodiscard]] std::filesystem::path TargetOf(int descriptor) const;
#endif

 private:
  /// Takes over what one of the outputs brings next. False once both have ended.
  bool ReadMore();

#ifdef _WIN32
  struct Process;
  std::unique_ptr<Process> m_process;
#else
  pid_t m_pid = -1;
  int m_out = -1;
  /// Its terminal, also once nothing comes out of it any more.
  int m_terminal = -1;
  int m_errors = -1;
#endif
  Finished m_finished;
};

}  // namespace kestrin::support
