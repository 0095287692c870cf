// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string>

namespace kestrin::ui::kit {

/// A UTF-8 text that the core made, as the window shows it: in the language of the window where that has it, under the
/// context "core", else as it stands. "" stays "".
[[nodiscard]] QString Translated(const std::string& text);

}  // namespace kestrin::ui::kit
