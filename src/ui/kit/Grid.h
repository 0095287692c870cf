// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::ui::kit {

// The one scale of distances, in pixels: every margin and every gap of the window is one of them.

/// Between two lines that are one text.
inline constexpr int kHair = 2;
/// Between what belongs closely together.
inline constexpr int kHalf = 4;
/// The step of every layout: between controls, and between cards.
inline constexpr int kGrid = 8;
/// From a card's edge to what stands in it.
inline constexpr int kInset = 12;
/// From the window's edge to its cards, and between groups of controls.
inline constexpr int kWide = 16;
/// From the edge of a panel that lies over the window to what stands in it.
inline constexpr int kBroad = 24;

}  // namespace kestrin::ui::kit
