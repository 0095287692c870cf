// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::platform::process {

/// Makes standard input, output and error safe to use. To be called first in main(), before any file is opened.
///
/// A stream that whoever started the program has closed reads and writes nothing from now on: left closed, its number
/// would go to the next file that is opened, and a message for the person would end up in that file. And a write that
/// nobody takes any more - the reader has gone, the file may not grow - fails instead of ending the program, which may
/// be in the middle of something that must not be broken off. On Windows lines end with a line feed alone from now on,
/// and the console takes what is written for UTF-8 until the program ends.
///
/// Ends the program when the system has nothing to put in the place of a closed stream.
void GuardStandardStreams();

/// Whether what is written to standard output can still reach somebody: false once the reader of a pipe has gone or the
/// terminal has hung up.
[[nodiscard]] bool OutputHasReader();

}  // namespace kestrin::platform::process
