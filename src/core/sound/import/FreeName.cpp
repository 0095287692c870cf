// SPDX-License-Identifier: MIT
#include "sound/import/FreeName.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/PathText.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

constexpr int kMostNumbers = 100'000;

std::string InSmallLetters(std::string text) {
  for (char& letter : text)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  return text;
}

}  // namespace

FreeName::FreeName(fs::path folder, std::string name) : m_folder(std::move(folder)), m_name(std::move(name)) {
  const std::string beginning = InSmallLetters(m_name);
  std::error_code error;
  for (fs::directory_iterator entry(m_folder, error), end; !error && entry != end; entry.increment(error)) {
    std::string taken = InSmallLetters(base::TextOf(entry->path().filename()));
    if (taken.starts_with(beginning)) m_taken.insert(std::move(taken));
  }
}

fs::path FreeName::Next() {
  std::string file;
  do {
    ++m_number;
    file = m_name + (HasNumber() ? " " + std::to_string(m_number) : "") + ".lsu";
  } while (m_taken.contains(InSmallLetters(file)));
  return m_folder / base::PathOf(file);
}

bool FreeName::MayGoOn() const { return m_number < kMostNumbers; }

}  // namespace kestrin::core::sound
