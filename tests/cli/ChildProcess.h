#pragma once

#include <sys/types.h>

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

/// A program that runs beside the test, with both its outputs caught. Ended by force when it outlives the object.
class ChildProcess {
 public:
  /// Where its standard output goes: into a pipe, or onto a terminal of its own.
  enum class Output { Pipe, Terminal };

  /// `command` is the program and its arguments, `environment` replaces variables of the same name ("NAME=VALUE") or
  /// takes them out ("NAME").
  ChildProcess(const std::vector<std::string>& command, const std::vector<std::string>& environment,
               Output output = Output::Pipe);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Returns as soon as its standard output (or error output) holds `text`; throws when it ends without.
  void WaitForOutput(const std::string& text);
  void WaitForErrors(const std::string& text);
  /// The first line of its standard output, without its end; throws when it ends without one.
  [[nodiscard]] std::string WaitForLine();
  void Signal(int number) const;
  /// Waits for the end.
  Finished Wait();

 private:
  /// Takes over what one of the outputs brings next. False once both have ended.
  bool ReadMore();

  pid_t m_pid = -1;
  int m_out = -1;
  int m_errors = -1;
  Finished m_finished;
};

}  // namespace kestrin::support
