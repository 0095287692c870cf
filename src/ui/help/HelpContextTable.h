// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrin::ui::help {

/// The two tables of a compiled help file that lead from a context number to its place.
///
/// "#IVB": the size of what follows (32 bits, least significant byte first), then pairs of the context number and an
/// offset into "#STRINGS", 32 bits each. "#STRINGS": texts, each ended by a zero byte.
class HelpContextTable {
 public:
  HelpContextTable() = default;
  /// Takes the tables' bytes as they come.
  HelpContextTable(std::string ivb, std::string strings);

  /// The place of a number; nothing when the number is not there or leads out of the tables.
  [[nodiscard]] std::optional<std::string> PlaceOf(std::uint32_t context) const;

 private:
  [[nodiscard]] std::optional<std::string> TextAt(std::uint32_t offset) const;

  std::string m_ivb;
  std::string m_strings;
};

}  // namespace kestrin::ui::help
