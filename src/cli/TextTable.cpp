// SPDX-License-Identifier: MIT
#include "cli/TextTable.h"

#include <algorithm>
#include <utility>

#include "core/base/Text.h"

namespace kestrin::cli {

using core::base::Width;

namespace {

std::string Line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths,
                 const std::vector<TextTable::Column>& columns) {
  std::string line;
  for (std::size_t column = 0; column < cells.size(); ++column) {
    const std::string gap(widths[column] - Width(cells[column]), ' ');
    if (column > 0) line += "  ";
    line += columns[column].align == TextTable::Align::Right ? gap + cells[column] : cells[column] + gap;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line + '\n';
}

}  // namespace

void TextTable::Add(std::vector<std::string> cells) {
  cells.resize(m_columns.size());
  for (std::string& cell : cells) cell = core::base::Shown(cell);
  m_rows.push_back(std::move(cells));
}

std::string TextTable::Text() const {
  std::vector<std::string> headings;
  std::vector<std::size_t> widths;
  for (const Column& column : m_columns) {
    headings.push_back(column.heading);
    widths.push_back(Width(column.heading));
  }
  for (const auto& row : m_rows)
    for (std::size_t column = 0; column < row.size(); ++column)
      widths[column] = std::max(widths[column], Width(row[column]));

  std::string text = Line(headings, widths, m_columns);
  for (const auto& row : m_rows) text += Line(row, widths, m_columns);
  return text;
}

std::string AlignedPairs(const std::vector<std::pair<std::string, std::string>>& pairs) {
  std::size_t width = 0;
  for (const auto& pair : pairs) width = std::max(width, Width(pair.first));
  std::string text;
  for (const auto& [name, value] : pairs)
    text += name + std::string(width - Width(name) + 2, ' ') + core::base::Shown(value) + '\n';
  return text;
}

}  // namespace kestrin::cli
