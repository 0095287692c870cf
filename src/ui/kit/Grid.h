#pragma once

namespace kestrin::ui::kit {

/// The step of every layout, in pixels.
inline constexpr int kGrid = 8;

}  // namespace kestrin::ui::kit
