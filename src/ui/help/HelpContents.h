// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "ui/help/HelpSource.h"

namespace kestrin::ui::help {

/// Reads a table of contents as help compilers take it (".hhc"): HTML lists, one deeper with every `<UL>`, of objects
/// with the parameters "Name" (the title) and "Local" (the place). Objects without a name and all other text are
/// skipped; letter case of tags does not count. Text that is no table of contents at all gives no entries.
[[nodiscard]] std::vector<HelpEntry> ReadHelpContents(std::string_view text);

}  // namespace kestrin::ui::help
