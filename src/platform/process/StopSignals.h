// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::platform::process {

/// The signals that ask a program to stop, by the numbers that they have wherever there are signals.
enum StopSignal : int {
  /// The terminal hung up, or its window was closed.
  kHangUp = 1,
  /// Ctrl-C.
  kInterrupt = 2,
  /// Whatever else asks: another program, the system that shuts down, Ctrl-Break on Windows.
  kTerminate = 15,
};

/// From now on each of the signals calls `handler` with its number instead of ending the program. The handler runs in
/// the middle of anything, or on a thread of its own: it may do no more than signal handlers may. Being hung up stays
/// ignored where whoever started the program has it ignored (nohup). One handler at a time.
void CatchStopSignals(void (*handler)(int signal));

/// The signals end the program again.
void ReleaseStopSignals();

}  // namespace kestrin::platform::process
