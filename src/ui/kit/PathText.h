#pragma once

#include <QString>
#include <filesystem>

#include "core/base/PathText.h"

namespace kestrin::ui::kit {

/// A path as text of the window, and back.
[[nodiscard]] inline QString TextOf(const std::filesystem::path& path) {
  return QString::fromStdString(core::base::TextOf(path));
}
[[nodiscard]] inline std::filesystem::path PathOf(const QString& text) {
  return core::base::PathOf(text.toStdString());
}

}  // namespace kestrin::ui::kit
