// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QPalette;

namespace kestrin::ui::help {

/// The style sheet of the help's pages in the window's own colours. The pages themselves name no colour, so that they
/// can be read in light and in dark windows.
[[nodiscard]] QString HelpStyle(const QPalette& palette);

}  // namespace kestrin::ui::help
