// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace kestrin::platform::process {

/// What the program was called with, as UTF-8, the program's own name first. Windows hands main() what its code page
/// has letters for; there the whole command line is asked for instead.
class Arguments {
 public:
  /// Takes what main() got.
  Arguments(int argc, const char* const* argv);
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  [[nodiscard]] int Count() const { return static_cast<int>(m_texts.size()); }
  /// Count() texts and a null pointer; they last as long as this object.
  [[nodiscard]] const char* const* Values() const { return m_pointers.data(); }

 private:
  std::vector<std::string> m_texts;
  std::vector<const char*> m_pointers;
};

}  // namespace kestrin::platform::process
