#pragma once

#include <cstdint>
#include <string>

#include "simulator/BoardState.h"
#include "simulator/store/Json.h"

namespace kestrin::simulator {

/// Eight upper-case hexadecimal digits.
[[nodiscard]] std::string SerialText(std::uint32_t serial);

/// The board's state as the object that "board.json" holds.
[[nodiscard]] Json ToJson(const BoardState& state);

/// Takes over what `json` holds; what it does not hold stays as `state` has it, members without a meaning are passed
/// over. Returns "" or which member is wrong and what it must be; `state` is then partly changed.
[[nodiscard]] std::string FromJson(const Json& json, BoardState& state);

}  // namespace kestrin::simulator
