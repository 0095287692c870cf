#pragma once

#include "ui/kit/Grid.h"

namespace kestrin::ui::led {

using kit::kGrid;
/// The side of a picture on a button.
inline constexpr int kPicture = 20;
/// The highest level of a channel.
inline constexpr int kFullLevel = 255;

}  // namespace kestrin::ui::led
