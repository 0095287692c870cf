#pragma once

namespace kestrin::led::ui {

/// The step of the panel's layout, in pixels.
inline constexpr int kGrid = 8;
/// The side of a picture on a button.
inline constexpr int kPicture = 20;
/// The highest level of a channel.
inline constexpr int kFullLevel = 255;

}  // namespace kestrin::led::ui
