// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace kestrin::ui::help {

/// The seal of a compiled help file. Readers of such files trust what stands in them and go astray in a damaged one, so
/// the file is checked as a whole before one of them sees it.
///
/// Where the file's header has its time of creation (bytes 16 to 19), ours have the CRC-32 (polynomial 0xEDB88320
/// reflected, start and final inversion) of the whole file with these four bytes taken as zero, least significant byte
/// first. Every bit that is not as it was shows, and so does a missing end.
[[nodiscard]] bool HasValidHelpSeal(std::string_view file);

/// The number that belongs into bytes 16 to 19; `file` must have at least those 20 bytes.
[[nodiscard]] std::uint32_t HelpSealOf(std::string_view file);

}  // namespace kestrin::ui::help
