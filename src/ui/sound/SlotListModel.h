// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <optional>
#include <vector>

#include "core/sound/SoundSet.h"

namespace kestrin::ui::sound {

/// The rows of one slot for its list, its sounds and the ones that are missing: bare file names, positions, durations,
/// volumes.
class SlotListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  /// What is not usual about the sound, for the head of a single slot: its volume, or that it is missing.
  static constexpr int kUnusualRole = Qt::UserRole + 10;

  /// Sounds that are dragged out of a slot.
  struct Dragged {
    core::sound::SlotKind kind;
    std::vector<int> positions;
  };

  SlotListModel(const core::sound::SoundSet& set, core::sound::SlotKind kind, QObject* parent = nullptr);

  /// Takes up what the set holds now. Rows that stay keep their selection.
  void Refresh();
  void SetPlaying(const std::filesystem::path& path);
  [[nodiscard]] core::sound::SlotKind Kind() const { return m_kind; }
  /// How many of the rows stand for missing sounds.
  [[nodiscard]] int MissingCount() const { return m_set.AllMissing().Count(m_kind); }

  /// The sounds that were dragged out of a slot of this program; none when the data is something else.
  [[nodiscard]] static std::optional<Dragged> DraggedFrom(const QMimeData& data);
  /// The local files and folders of the data.
  [[nodiscard]] static std::vector<std::filesystem::path> FilesOf(const QMimeData& data);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QStringList mimeTypes() const override;
  [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
  [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction | Qt::MoveAction; }
  [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }

 private:
  struct Row {
    std::filesystem::path path;
    QString name;
    std::int32_t samples;
    int volume;
    bool isMissing;
  };

  /// What both kinds of rows show otherwise.
  [[nodiscard]] QVariant DataOfSound(const Row& row, const QString& where, int role) const;
  [[nodiscard]] static QVariant DataOfMissing(const Row& row, const QString& where, int role);
  /// Empty at 100 %.
  [[nodiscard]] static QString VolumeOf(const Row& row);

  const core::sound::SoundSet& m_set;
  core::sound::SlotKind m_kind;
  std::vector<Row> m_rows;
  std::filesystem::path m_playing;
};

}  // namespace kestrin::ui::sound
