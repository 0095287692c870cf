#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace kestrin::core::base {

/// The lines of a small text file. Lines end with CR LF or LF, the last one also with the file; a byte order mark at
/// the front is skipped.
class TextLines {
 public:
  /// No file of this kind is larger; what is, is something else.
  static constexpr std::size_t kLargestFile = std::size_t{1} << 20;

  /// Reads the file anew. False when it is missing, cannot be read, is too large or is not text; there are no lines
  /// then.
  [[nodiscard]] bool Read(const std::filesystem::path& file);

  [[nodiscard]] std::size_t Count() const { return m_lines.size(); }
  /// Line `number`, counted from 1, without its end. Throws std::out_of_range beyond the last.
  [[nodiscard]] const std::string& Line(std::size_t number) const { return m_lines.at(number - 1); }

  /// Why the last Read() failed, with the file's path; "" when it did not.
  [[nodiscard]] const std::string& Problem() const { return m_problem; }
  /// "PATH, line 3": what is in the file at fault for a problem there.
  [[nodiscard]] std::string Place(std::size_t number) const;

 private:
  [[nodiscard]] bool Refuse(const std::string& reason);

  std::string m_name;
  std::vector<std::string> m_lines;
  std::string m_problem;
};

}  // namespace kestrin::core::base
