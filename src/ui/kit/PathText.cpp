// SPDX-License-Identifier: MIT
#include "ui/kit/PathText.h"

#include <QUrl>
#include <QVariant>
#include <type_traits>

namespace kestrin::ui::kit {

namespace {

/// Where paths are bytes, these need not be UTF-8, which is all that texts can hold.
constexpr bool kArePathsBytes = std::is_same_v<std::filesystem::path::value_type, char>;

bool IsToldByText(const std::filesystem::path& path) { return PathOf(TextOf(path)) == path; }

}  // namespace

QUrl UrlOf(const std::filesystem::path& path) {
  if (!kArePathsBytes || IsToldByText(path)) return QUrl::fromLocalFile(TextOf(path));
  const QByteArray bytes = QByteArray::fromStdString(core::base::TextOf(path));
  return QUrl::fromEncoded("file://" + bytes.toPercentEncoding("/"));
}

std::filesystem::path PathOf(const QUrl& url) {
  if (!url.isLocalFile()) return {};
  // Qt knows how a computer's name in front is meant. It writes slashes everywhere; people read what their system
  // writes.
  if (!kArePathsBytes || !url.host().isEmpty()) return PathOf(url.toLocalFile()).make_preferred();
  return core::base::PathOf(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString());
}

QVariant SettingOf(const std::filesystem::path& path) {
  if (IsToldByText(path)) return TextOf(path);
  return QByteArray::fromStdString(core::base::TextOf(path));
}

std::filesystem::path PathOfSetting(const QVariant& setting) {
  return setting.typeId() == QMetaType::QByteArray ? core::base::PathOf(setting.toByteArray().toStdString())
                                                   : PathOf(setting.toString());
}

QVariant SettingOf(const std::vector<std::filesystem::path>& paths) {
  QVariantList settings;
  for (const std::filesystem::path& path : paths) settings.append(SettingOf(path));
  return settings;
}

std::vector<std::filesystem::path> PathsOfSetting(const QVariant& setting) {
  if (!setting.isValid()) return {};
  // A list of one is read back as that one.
  const int type = setting.typeId();
  if (type != QMetaType::QVariantList && type != QMetaType::QStringList) return {PathOfSetting(setting)};
  std::vector<std::filesystem::path> paths;
  for (const QVariant& path : setting.toList()) paths.push_back(PathOfSetting(path));
  return paths;
}

}  // namespace kestrin::ui::kit
