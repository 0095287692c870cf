// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrin::core::update {

/// The fonts that an update leaves out, because not every computer can store their names.
class LeftOutFonts {
 public:
  /// Forgets them.
  void Clear() { m_shown.clear(); }
  /// A font whose own name is not plain.
  void Add(std::string_view font);
  /// A font of a plain name that names a sound file whose name is not.
  void Add(std::string_view font, std::string_view sound);

  [[nodiscard]] bool IsEmpty() const { return m_shown.empty(); }
  /// They are told of in sentences behind the message that an update ends well with; "" when there are none.
  [[nodiscard]] std::string Text() const;

 private:
  std::vector<std::string> m_shown;
};

}  // namespace kestrin::core::update
