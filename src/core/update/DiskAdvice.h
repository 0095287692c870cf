#pragma once

#include <string>
#include <string_view>

namespace kestrin::core::update {

/// What the person can do about a file or folder that could not be written, as a sentence. `problem` ends with the
/// reason, as the system or this program words it.
[[nodiscard]] std::string DiskAdvice(std::string_view problem);

/// Whether that reason is that the disk, or the person's share of it, is full.
[[nodiscard]] bool IsDiskFull(std::string_view problem);

}  // namespace kestrin::core::update
