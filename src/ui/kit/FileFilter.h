// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace kestrin::ui::kit {

/// A file dialog's filter in the form "NAME|PATTERN;PATTERN|NAME|PATTERN" as Qt has it: "NAME (PATTERN PATTERN);;...".
/// A pattern that NAME already shows in parentheses is not shown twice. Patterns come in small letters, as platforms
/// show them, and "*.*" as "*", which fits names without a dot too.
[[nodiscard]] QString QtFileFilter(const QString& filter);

}  // namespace kestrin::ui::kit
