// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <filesystem>
#include <vector>

#include "core/base/PathText.h"

class QUrl;
class QVariant;

namespace kestrin::ui::kit {

/// A path as text of the window, and back. The text is for the eye: a name that is no UTF-8, as old volumes have them,
/// is not told whole by it. A path therefore stays a path wherever a file is meant.
[[nodiscard]] inline QString TextOf(const std::filesystem::path& path) {
  return QString::fromStdString(core::base::TextOf(path));
}
[[nodiscard]] inline std::filesystem::path PathOf(const QString& text) {
  return core::base::PathOf(text.toStdString());
}

/// A path as it is dragged to other programs, and back; every name comes through. No path for the address of anything
/// but a file on this computer.
[[nodiscard]] QUrl UrlOf(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path PathOf(const QUrl& url);

/// A path as the settings keep it, and back: a text where that tells the whole name, else its bytes.
[[nodiscard]] QVariant SettingOf(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path PathOfSetting(const QVariant& setting);

/// The same for several paths.
[[nodiscard]] QVariant SettingOf(const std::vector<std::filesystem::path>& paths);
[[nodiscard]] std::vector<std::filesystem::path> PathsOfSetting(const QVariant& setting);

}  // namespace kestrin::ui::kit
