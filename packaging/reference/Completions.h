// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "reference/ProgramText.h"

namespace kestrin::reference {

// The scripts by which shells complete what is typed behind the program's name: commands, options, and the values of
// options as far as it is known by their names what they are: files, folders, words. None needs anything but its shell.

[[nodiscard]] std::string BashCompletion(const ProgramText& program);
[[nodiscard]] std::string ZshCompletion(const ProgramText& program);
[[nodiscard]] std::string FishCompletion(const ProgramText& program);

}  // namespace kestrin::reference
