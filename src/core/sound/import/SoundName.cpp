// SPDX-License-Identifier: MIT
#include "sound/import/SoundName.h"

#include <algorithm>

#include "base/Text.h"
#include "base/WindowsName.h"

namespace kestrin::core::sound {

namespace {

/// In bytes. A file system takes 255, and a number and the ending come behind; folders take their share of a path.
constexpr std::size_t kLongest = 120;

/// The beginning of a text, not longer than that many bytes, without half a character at its end.
std::string_view Beginning(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  constexpr unsigned kFollows = 0x80;
  while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0U) == kFollows) --bytes;
  return text.substr(0, bytes);
}

}  // namespace

SoundName NameForSound(std::string_view wanted) {
  if (wanted.find_first_not_of(' ') == wanted.npos) return {"sound", "it had no name"};
  SoundName made{base::Shown(wanted), ""};
  if (made.name != wanted) made.why = "no file takes a name with control characters";
  constexpr std::string_view kNoLetters = "<>:\"/\\|?*";
  if (wanted.find_first_of(kNoLetters) != wanted.npos)
    made.why = "Windows takes no name with any of < > : \" / \\ | ? *";
  std::replace_if(
      made.name.begin(), made.name.end(), [=](char letter) { return kNoLetters.find(letter) != kNoLetters.npos; }, '_');
  if (made.name.size() > kLongest) {
    made.name = Beginning(made.name, kLongest);
    made.why = "its name is too long";
  }
  if (base::IsDeviceName(made.name)) {
    made.name.insert(0, "_");
    made.why = "Windows keeps its name for a device";
  }
  if (made.name.front() == '.') {
    made.name.front() = '_';
    made.why = "a file whose name begins with a dot is not shown everywhere";
  }
  return made;
}

}  // namespace kestrin::core::sound
