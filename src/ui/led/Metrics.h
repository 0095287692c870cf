// SPDX-License-Identifier: MIT
#pragma once

#include "ui/kit/Grid.h"

namespace kestrin::ui::led {

using kit::kGrid;
using kit::kHair;
using kit::kHalf;
using kit::kInset;
using kit::kWide;
/// The side of a picture on a button.
inline constexpr int kPicture = 20;

}  // namespace kestrin::ui::led
