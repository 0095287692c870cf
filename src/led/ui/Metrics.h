#pragma once

#include "app/theme/Grid.h"

namespace kestrin::led::ui {

using app::kGrid;
/// The side of a picture on a button.
inline constexpr int kPicture = 20;
/// The highest level of a channel.
inline constexpr int kFullLevel = 255;

}  // namespace kestrin::led::ui
