#pragma once

namespace kestrin::app {

/// The step of every layout, in pixels.
inline constexpr int kGrid = 8;

}  // namespace kestrin::app
