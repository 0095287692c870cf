// SPDX-License-Identifier: MIT
#include "sound/import/EntryPlace.h"

#include "sound/PathEnd.h"

namespace kestrin::core::sound {

std::string PlaceOf(const base::ArchiveEntry& entry) {
  if (!entry.isReadable && entry.reason.empty()) return "";
  const PathEnd end(entry.name);
  std::string place;
  for (const std::string_view piece : end.Pieces()) {
    if (IsHiddenName(piece)) return "";
    place.append(place.empty() ? "" : "/").append(piece);
  }
  return place;
}

bool IsHiddenName(std::string_view name) { return name.starts_with('.') || name == "__MACOSX"; }

}  // namespace kestrin::core::sound
