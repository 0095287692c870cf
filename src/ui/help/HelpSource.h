// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrin::ui::help {

/// One line of the table of contents.
struct HelpEntry {
  std::string title;
  /// The page, with "#anchor" for a place on it; empty: a heading only.
  std::string place;
  /// 0 for the outermost lines.
  int depth = 0;

  friend bool operator==(const HelpEntry&, const HelpEntry&) = default;
};

/// The port to the help's pages.
class HelpSource {
 public:
  virtual ~HelpSource() = default;

  /// Why there is no help: a text for the person with the next step, UTF-8. Empty when all is well; otherwise nothing
  /// else here has anything to give.
  [[nodiscard]] virtual std::string Problem() const = 0;
  /// The bytes of the file with this path ("slots.html"; no anchor), nothing when there is none.
  [[nodiscard]] virtual std::optional<std::string> Page(const std::string& path) const = 0;
  /// The place that a context number leads to, nothing when the help does not know the number.
  [[nodiscard]] virtual std::optional<std::string> PlaceOf(std::uint32_t context) const = 0;
  /// The table of contents, top to bottom.
  [[nodiscard]] virtual std::vector<HelpEntry> Contents() const = 0;
  /// The paths of all pages, in no special order.
  [[nodiscard]] virtual std::vector<std::string> Pages() const = 0;
};

}  // namespace kestrin::ui::help
