#pragma once

#include <string>

namespace kestrin::hid {

/// What to tell a person whose board is there but may not be opened: the board's path and how to permit it here.
[[nodiscard]] std::string AccessAdvice(const std::string& path);
/// The same for a board that could not be opened for any other reason, given in the system's words.
[[nodiscard]] std::string OpenAdvice(const std::string& path, const std::string& reason);

}  // namespace kestrin::hid
