// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <optional>
#include <vector>

#include "core/sound/SoundSet.h"
#include "core/sound/SoundSetListener.h"

namespace kestrin::ui::stage {

/// The sounds of the set beside the stage: all slots one below the other, each with its title and its sounds. What
/// sounds is lit.
class TryRows : public QAbstractListModel, private core::sound::SoundSetListener {
  Q_OBJECT

 public:
  enum Role {
    /// int: the slot.
    kSlot = Qt::UserRole,
    /// bool: it is a slot's title.
    kIsTitle,
    /// QString: its number in a list; "" in a single slot.
    kNumber,
    /// int: percent; may be more than 100.
    kVolume,
    /// bool: it sounds.
    kIsLit,
    /// bool: its file is missing.
    kIsMissing,
  };

  /// The set must outlive the model.
  explicit TryRows(core::sound::SoundSet& set, QObject* parent = nullptr);
  ~TryRows() override;

  /// These sound, and no others.
  void Light(const std::vector<core::sound::SoundPlace>& places);
  [[nodiscard]] bool IsAnyLit() const { return !m_lit.empty(); }
  /// The place of a row; nothing for a title.
  [[nodiscard]] std::optional<core::sound::SoundPlace> PlaceOf(const QModelIndex& index) const;
  [[nodiscard]] QModelIndex IndexOf(const core::sound::SoundPlace& place) const;
  /// Changes the volume of a sound, one step to undo with those right before it; a missing one keeps its.
  void SetVolume(const QModelIndex& index, int percent);
  /// While something else goes on nothing can be changed.
  void SetBusy(bool isBusy) { m_isBusy = isBusy; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  /// Sounds or volumes are others now.
  void changed();

 private:
  /// A title has no position.
  struct Row {
    core::sound::SlotKind kind = core::sound::SlotKind::Boot;
    int position = 0;

    friend bool operator==(const Row&, const Row&) = default;
  };

  void SlotChanged(core::sound::SlotKind kind) override;
  [[nodiscard]] std::vector<Row> RowsNow() const;
  [[nodiscard]] QVariant DataOfTitle(const Row& row, int role) const;
  [[nodiscard]] QVariant DataOfSound(const core::sound::SoundPlace& place, int role) const;

  core::sound::SoundSet& m_set;
  std::vector<Row> m_rows;
  std::vector<core::sound::SoundPlace> m_lit;
  bool m_isBusy = false;
};

}  // namespace kestrin::ui::stage
