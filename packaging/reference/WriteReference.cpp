// SPDX-License-Identifier: MIT
#include "reference/WriteReference.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "reference/Completions.h"
#include "reference/ManPage.h"

namespace kestrin::reference {

void WriteReference(const ProgramText& program, const std::string& folder) {
  const std::filesystem::path place = folder;
  std::filesystem::create_directories(place);
  const auto write = [&place](const std::string& name, const std::string& text) {
    std::ofstream file(place / name, std::ios::binary);
    file << text;
    if (!file.flush()) throw std::runtime_error((place / name).string() + " could not be written");
  };
  write(program.name + ".1", ManPage(program));
  write(program.name + ".bash", BashCompletion(program));
  write("_" + program.name, ZshCompletion(program));
  write(program.name + ".fish", FishCompletion(program));
}

}  // namespace kestrin::reference
