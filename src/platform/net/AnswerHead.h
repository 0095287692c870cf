// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrin::platform::net {

/// The head of an HTTP answer, taken over line by line.
class AnswerHead {
 public:
  /// Takes the next line, with its line end. False when the head is too long to be one.
  [[nodiscard]] bool Add(std::string_view line);

  /// Whether the line that ends the head was there. Interim answers (status 100 to 199) do not count.
  [[nodiscard]] bool IsComplete() const { return m_complete; }
  /// 200 and the like; 0 before the first line.
  [[nodiscard]] int Status() const { return m_status; }
  /// The value of a header, letter case of the name ignored; "" when there is none.
  [[nodiscard]] std::string Value(std::string_view name) const;
  /// "Content-Length" in bytes; nothing when it is absent or no number.
  [[nodiscard]] std::optional<std::int64_t> Length() const;
  /// Whether this is a good answer whose body can be read: status 200 to 299, no two lengths, no coding of the transfer
  /// but pieces.
  [[nodiscard]] bool IsSound() const;
  /// Whether the server says that it closes the connection behind the body.
  [[nodiscard]] bool AnnouncesClose() const;

 private:
  int m_status = 0;
  bool m_complete = false;
  std::size_t m_size = 0;
  std::string m_version;
  std::vector<std::pair<std::string, std::string>> m_values;
};

}  // namespace kestrin::platform::net
