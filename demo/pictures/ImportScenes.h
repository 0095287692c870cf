// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <string>

#include "demo/pictures/Scenes.h"

namespace kestrin::demo {

// The sheet "Import sounds" over the window, with a folder of sounds as people have them.

[[nodiscard]] QPixmap TakeImport(const Place& place, const std::string& board);
/// With more than the board holds.
[[nodiscard]] QPixmap TakeImportTooMuch(const Place& place, const std::string& board);

}  // namespace kestrin::demo
