#pragma once

#include "ui/kit/Grid.h"

namespace kestrin::ui::led {

using kit::kGrid;
/// From a card's edge to what stands in it.
inline constexpr int kInset = 3 * kGrid / 2;
/// The side of a picture on a button.
inline constexpr int kPicture = 20;

}  // namespace kestrin::ui::led
