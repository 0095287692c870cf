// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace kestrin::core::sound {

/// The names that files get in a packed set and where one is unpacked: such as every system can store and the requests
/// of a font server can carry, and no two that differ in the case of their letters only.
class PackedNames {
 public:
  /// A name made of `wished`, which may be anything, with that ending (".lsu"): letters that some system does not take
  /// become "_", what is too long is cut, and a number follows where another file has the name already.
  [[nodiscard]] std::string Take(std::string_view wished, std::string_view ending);

  /// `wished` without its ending as such a name.
  [[nodiscard]] static std::string Plain(std::string_view wished);

 private:
  /// In small letters.
  std::set<std::string> m_taken;
};

}  // namespace kestrin::core::sound
