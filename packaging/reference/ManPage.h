// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "reference/ProgramText.h"

namespace kestrin::reference {

/// The program's page in section 1 of the manual, as source of "man".
[[nodiscard]] std::string ManPage(const ProgramText& program);

}  // namespace kestrin::reference
