#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrin::update {

/// The longest name that a file or folder from the server may have, in bytes.
inline constexpr std::size_t kLongestName = 200;

/// Whether a name that somebody else chose can only ever mean a file or folder right where it is put, on every system:
/// 1 to 200 bytes, no separator, no colon, no control character, not the name of a device (NUL, COM1.lsu), no blank or
/// dot at either end (so neither "." nor "..").
[[nodiscard]] bool IsPlainName(std::string_view name);

/// A name as it can be shown in one line, whatever it holds: control characters become "?", a long one is cut.
[[nodiscard]] std::string ShownName(std::string_view name);

}  // namespace kestrin::update
