// SPDX-License-Identifier: MIT
#include "sound/import/SoundEnding.h"

#include "base/PathText.h"
#include "base/Text.h"

namespace kestrin::core::sound {

namespace {

struct EndingRow {
  std::string_view ending;
  SoundEnding kind;
};

constexpr EndingRow kEndings[] = {
    {"lsu", SoundEnding::OfTheBoard}, {"wav", SoundEnding::Readable},  {"wave", SoundEnding::Readable},
    {"flac", SoundEnding::Readable},  {"mp3", SoundEnding::Readable},  {"ogg", SoundEnding::Readable},
    {"oga", SoundEnding::Readable},   {"opus", SoundEnding::Readable}, {"aif", SoundEnding::Readable},
    {"aiff", SoundEnding::Readable},  {"aifc", SoundEnding::Readable}, {"au", SoundEnding::Readable},
    {"snd", SoundEnding::Readable},   {"caf", SoundEnding::Readable},  {"w64", SoundEnding::Readable},
    {"rf64", SoundEnding::Readable},  {"m4a", SoundEnding::Foreign},   {"m4b", SoundEnding::Foreign},
    {"mp4", SoundEnding::Foreign},    {"aac", SoundEnding::Foreign},   {"wma", SoundEnding::Foreign},
    {"ape", SoundEnding::Foreign},    {"wv", SoundEnding::Foreign},    {"amr", SoundEnding::Foreign},
    {"ac3", SoundEnding::Foreign},    {"mka", SoundEnding::Foreign},   {"weba", SoundEnding::Foreign}};

}  // namespace

SoundEnding EndingOf(const std::filesystem::path& path) { return EndingOfName(base::TextOf(path.filename())); }

SoundEnding EndingOfName(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == name.npos) return SoundEnding::None;
  for (const EndingRow& row : kEndings)
    if (base::EqualsIgnoringCase(row.ending, name.substr(dot + 1))) return row.kind;
  return SoundEnding::None;
}

std::vector<std::string_view> EndingsOf(SoundEnding kind) {
  std::vector<std::string_view> endings;
  for (const EndingRow& row : kEndings)
    if (row.kind == kind) endings.push_back(row.ending);
  return endings;
}

}  // namespace kestrin::core::sound
