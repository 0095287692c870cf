#pragma once

#include <cstdint>

#include "core/led/Color.h"

class QPalette;

namespace kestrin::ui::led {

/// The colour value that the palette has for a system colour by its number on Windows (0 scroll bars .. 30 menu bar);
/// 0 (black) for all other numbers.
[[nodiscard]] core::led::Color SystemColor(std::int32_t number, const QPalette& palette);

}  // namespace kestrin::ui::led
