// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "core/base/Result.h"
#include "simulator/BoardState.h"

namespace kestrin::simulator::store {

/// The board's state as the text of "board.json".
[[nodiscard]] std::string ToJson(const BoardState& state);

/// The state that such a text holds; what it does not hold is the factory's, members without a meaning are passed over.
/// Strict: what the format does not allow is a failure, and so is a name that an object has twice. The failure's text
/// says where the text or which member is wrong and what it must be.
core::base::Result<BoardState> FromJson(std::string_view text);

}  // namespace kestrin::simulator::store
