// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kestrin::cli {

/// Where the program writes to.
enum class Stream { Output, Errors };

/// The columns of the terminal on which a person sees the stream as it is written; 0 when it goes elsewhere. A terminal
/// that does not tell its width counts as one of 80.
[[nodiscard]] std::size_t TerminalWidth(Stream stream);

/// Asks the person at the terminal; everything but "y" and "yes" is a no. Nothing when nobody is there to answer.
[[nodiscard]] std::optional<bool> AskYesOrNo(const std::string& question);

}  // namespace kestrin::cli
