#pragma once

#include <cstdint>

#include "led/Color.h"

class QPalette;

namespace kestrin::led::ui {

/// The colour value that the palette has for a system colour by its number on Windows (0 scroll bars .. 30 menu bar);
/// 0 (black) for all other numbers.
[[nodiscard]] Color SystemColor(std::int32_t number, const QPalette& palette);

}  // namespace kestrin::led::ui
