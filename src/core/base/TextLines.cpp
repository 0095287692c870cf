// SPDX-License-Identifier: MIT
#include "base/TextLines.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

#include "base/PathText.h"
#include "base/Text.h"

namespace kestrin::core::base {

namespace fs = std::filesystem;

Result<> TextLines::Read(const fs::path& file, std::size_t largest) {
  m_name = TextOf(file);
  m_lines.clear();
  std::error_code error;
  if (!fs::exists(file, error)) return Refusal(FailureKind::NotFound, "there is no such file");
  // Opening a pipe would wait for a writer.
  if (!fs::is_regular_file(file, error)) return Refusal(FailureKind::NotValid, "not a file");
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  std::string content;
  std::array<char, 4096> piece{};
  while (content.size() <= largest && (stream.read(piece.data(), piece.size()) || stream.gcount() > 0))
    content.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
  if (!stream.is_open() || stream.bad())
    return Refusal(KindOf(std::error_code(errno, std::generic_category())), "cannot be read");
  if (content.size() > largest) return Refusal(FailureKind::NotValid, "too large");
  return Take(content, std::move(m_name));
}

Result<> TextLines::Take(std::string_view text, std::string name) {
  m_name = std::move(name);
  m_lines.clear();
  if (text.find('\0') != text.npos) return Refusal(FailureKind::NotValid, "not a text file");
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  for (std::string_view line : Split(text, "\n")) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    m_lines.emplace_back(line);
  }
  // A line end at the end of the text starts no further line.
  if (text.empty() || text.ends_with('\n')) m_lines.pop_back();
  return {};
}

std::string TextLines::Place(std::size_t number) const { return m_name + ", line " + std::to_string(number); }

Failure TextLines::Refusal(FailureKind kind, const std::string& reason) const { return {kind, m_name + ": " + reason}; }

}  // namespace kestrin::core::base
