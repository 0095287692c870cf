#pragma once

#include <QString>
#include <filesystem>

#include "base/PathText.h"

namespace kestrin::app {

/// A path as text of the window, and back.
[[nodiscard]] inline QString TextOf(const std::filesystem::path& path) {
  return QString::fromStdString(base::TextOf(path));
}
[[nodiscard]] inline std::filesystem::path PathOf(const QString& text) { return base::PathOf(text.toStdString()); }

}  // namespace kestrin::app
