// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QSize>
#include <filesystem>
#include <span>
#include <string>

namespace kestrin::demo {

/// What a picture needs from outside.
struct Place {
  /// The program's pictures and its help.
  std::filesystem::path program;
  /// The demo set.
  std::filesystem::path sounds;
  QSize size;
};

/// A state of the window that can be taken a picture of.
struct Scene {
  const char* name;
  /// The simulated board, as behind "sim:"; "none" for no board.
  const char* board;
  QPixmap (*take)(const Place& place, const std::string& board);
};

/// Every scene there is.
[[nodiscard]] std::span<const Scene> Scenes();

}  // namespace kestrin::demo
