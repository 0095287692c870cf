#include "base/TextLines.h"

#include <array>
#include <fstream>
#include <string_view>
#include <system_error>

#include "base/Text.h"

namespace kestrin::core::base {

namespace fs = std::filesystem;

bool TextLines::Read(const fs::path& file) {
  const std::u8string name = file.u8string();
  m_name.assign(name.begin(), name.end());
  m_lines.clear();
  m_problem.clear();
  std::error_code error;
  if (!fs::exists(file, error)) return Refuse("there is no such file");
  // Opening a pipe would wait for a writer.
  if (!fs::is_regular_file(file, error)) return Refuse("not a file");
  std::ifstream stream(file, std::ios::binary);
  if (!stream.is_open()) return Refuse("cannot be read");
  std::string content;
  std::array<char, 4096> piece{};
  while (content.size() <= kLargestFile && (stream.read(piece.data(), piece.size()) || stream.gcount() > 0))
    content.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
  if (stream.bad()) return Refuse("cannot be read");
  if (content.size() > kLargestFile) return Refuse("too large");
  if (content.find('\0') != content.npos) return Refuse("not a text file");

  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::string_view text = content;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  for (std::string_view line : base::Split(text, "\n")) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    m_lines.emplace_back(line);
  }
  // A line end at the end of the file starts no further line.
  if (text.empty() || text.ends_with('\n')) m_lines.pop_back();
  return true;
}

std::string TextLines::Place(std::size_t number) const { return m_name + ", line " + std::to_string(number); }

bool TextLines::Refuse(const std::string& reason) {
  m_problem = m_name + ": " + reason;
  return false;
}

}  // namespace kestrin::core::base
