// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"

namespace kestrin::core::base {

/// The lines of a small text: of a file, or of a text in memory. Lines end with CR LF or LF, the last one also with the
/// text; a byte order mark at the front is skipped.
class TextLines {
 public:
  /// Files of lines that people keep are smaller; what is larger is something else.
  static constexpr std::size_t kLargestFile = std::size_t{1} << 20;

  /// Takes the lines of a file of at most `largest` bytes in place of those it has; there are none after a failure.
  /// Fails with NotFound when there is no such file, with NotValid for what is too large, holds a zero byte or is no
  /// file (a folder; a pipe or a device, for which nobody waits), else as the system says. The text names the file.
  Result<> Read(const std::filesystem::path& file, std::size_t largest = kLargestFile);
  /// The same of `text`, whatever its size; `name` is what it is called in texts for the person. Fails with NotValid
  /// when it holds a zero byte.
  Result<> Take(std::string_view text, std::string name);

  [[nodiscard]] std::size_t Count() const { return m_lines.size(); }
  /// Line `number`, counted from 1, without its end. Throws std::out_of_range beyond the last.
  [[nodiscard]] const std::string& Line(std::size_t number) const { return m_lines.at(number - 1); }
  /// "PATH, line 3": what is at fault for a problem there. The line need not exist: something may be missing behind the
  /// last one.
  [[nodiscard]] std::string Place(std::size_t number) const;

 private:
  [[nodiscard]] Failure Refusal(FailureKind kind, const std::string& reason) const;

  std::string m_name;
  std::vector<std::string> m_lines;
};

}  // namespace kestrin::core::base
