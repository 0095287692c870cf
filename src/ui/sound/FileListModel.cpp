// SPDX-License-Identifier: MIT
#include "ui/sound/FileListModel.h"

#include <QMimeData>
#include <QUrl>

#include "ui/kit/PathText.h"
#include "ui/sound/SoundRowDelegate.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace {

QString Joined(QStringList parts) {
  parts.removeAll(QString());
  return parts.join(QStringLiteral(", "));
}

}  // namespace

void FileListModel::Show(std::vector<FolderEntry> entries) {
  beginResetModel();
  m_entries = std::move(entries);
  endResetModel();
}

int FileListModel::RowOf(const std::filesystem::path& path) const {
  for (std::size_t row = 0; row < m_entries.size(); ++row)
    if (m_entries[row].path == path) return static_cast<int>(row);
  return -1;
}

void FileListModel::SetPlaying(const std::filesystem::path& path) {
  m_playing = path;
  if (!m_entries.empty()) emit dataChanged(index(0), index(rowCount() - 1), {SoundRowDelegate::kPlayingRole});
}

int FileListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
  const FolderEntry& entry = At(index.row());
  const bool isSound = entry.size > 0;
  const auto bytes = static_cast<std::uintmax_t>(entry.size);
  const auto duration = [&entry, bytes] {
    // How long others play shows only when they are read.
    if (!core::sound::LSU_SoundFile::HasSoundName(entry.path)) return QString();
    return Duration(static_cast<std::int64_t>(core::sound::LSU_SoundFile::SamplesIn(bytes)));
  };
  switch (role) {
    case Qt::DisplayRole:
      return entry.name;
    case Qt::ToolTipRole:
      return kit::TextOf(entry.path);
    case SoundRowDelegate::kTimeRole:
      return isSound ? duration() : QString();
    case SoundRowDelegate::kSizeRole:
      return isSound ? FileSize(bytes) : QString();
    case SoundRowDelegate::kPlayingRole:
      return !m_playing.empty() && entry.path == m_playing;
    case Qt::AccessibleTextRole:
      return isSound ? Joined({entry.name, duration(), FileSize(bytes)}) : entry.name;
    default:
      return {};
  }
}

Qt::ItemFlags FileListModel::flags(const QModelIndex& index) const {
  return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren
                         : Qt::NoItemFlags;
}

QStringList FileListModel::mimeTypes() const { return {QStringLiteral("text/uri-list")}; }

QMimeData* FileListModel::mimeData(const QModelIndexList& indexes) const {
  QList<QUrl> urls;
  for (const QModelIndex& index : indexes) urls.append(kit::UrlOf(At(index.row()).path));
  auto* data = new QMimeData;
  data->setUrls(urls);
  return data;
}

}  // namespace kestrin::ui::sound
