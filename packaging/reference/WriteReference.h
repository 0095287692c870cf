// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "reference/ProgramText.h"

namespace kestrin::reference {

/// Writes the program's page of the manual and its completions into the folder, made when absent: "NAME.1",
/// "NAME.bash",
/// "_NAME", "NAME.fish". Throws std::runtime_error, which names the file.
void WriteReference(const ProgramText& program, const std::string& folder);

}  // namespace kestrin::reference
