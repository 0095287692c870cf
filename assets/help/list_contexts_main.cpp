// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <iostream>

#include "ui/help/HelpTopics.h"

/// Prints the help's context numbers with their places as the compiler of the help takes them.
int main() {
  for (const auto& [context, place] : kestrin::ui::help::HelpTopics())
    std::cout << static_cast<int>(context) << ' ' << place << '\n';
  return std::cout.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}
