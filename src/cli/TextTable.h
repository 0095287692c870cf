// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kestrin::cli {

/// Rows of text under each other in aligned columns.
class TextTable {
 public:
  enum class Align { Left, Right };

  /// A heading for each column, with how its cells are aligned.
  struct Column {
    std::string heading;
    Align align = Align::Left;
  };

  explicit TextTable(std::vector<Column> columns) : m_columns(std::move(columns)) {}

  /// Cells from the first column on; columns that get none stay blank. Control characters are not shown.
  void Add(std::vector<std::string> cells);
  /// The heading line and all rows, each ended by a line end.
  [[nodiscard]] std::string Text() const;

 private:
  std::vector<Column> m_columns;
  std::vector<std::vector<std::string>> m_rows;
};

/// "name  value" lines, the values under each other. Control characters in values are not shown.
[[nodiscard]] std::string AlignedPairs(const std::vector<std::pair<std::string, std::string>>& pairs);

}  // namespace kestrin::cli
