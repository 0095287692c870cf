// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <vector>

#include "ui/sound/FolderContents.h"

namespace kestrin::ui::sound {

/// Entries of a folder for a list: the sounds with duration and size, or the folders.
class FileListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  void Show(std::vector<FolderEntry> entries);
  [[nodiscard]] const std::vector<FolderEntry>& Entries() const { return m_entries; }
  [[nodiscard]] const FolderEntry& At(int row) const { return m_entries.at(static_cast<std::size_t>(row)); }
  /// The row of a path, -1 when it is not shown.
  [[nodiscard]] int RowOf(const std::filesystem::path& path) const;
  /// Marks the sound that is playing; empty: none.
  void SetPlaying(const std::filesystem::path& path);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QStringList mimeTypes() const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
  [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

 private:
  std::vector<FolderEntry> m_entries;
  std::filesystem::path m_playing;
};

}  // namespace kestrin::ui::sound
