// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kestrin::core::update {

/// Whether a name that somebody else chose can only ever mean a file or folder right where it is put, on every system,
/// and comes through a request unchanged, whose values are not escaped: 1 to 200 bytes, none of / \ : ? * " < > | & = +
/// % and no control character, not the name of a device (NUL, COM1.lsu), no blank or dot at either end (so neither "."
/// nor "..").
[[nodiscard]] bool IsPlainName(std::string_view name);

/// Whether a font may have that name: a plain one that none of the files in the fonts folder itself has.
[[nodiscard]] bool IsFontName(std::string_view name);

/// A name as it can be shown in one line, whatever it holds: control characters become "?", a long one is cut.
[[nodiscard]] std::string ShownName(std::string_view name);

}  // namespace kestrin::core::update
