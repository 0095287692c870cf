// SPDX-License-Identifier: MIT
#pragma once

namespace kestrin::ui::led {

/// The side of a picture on a button.
inline constexpr int kPicture = 20;

}  // namespace kestrin::ui::led
