// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <filesystem>
#include <optional>
#include <vector>

#include "core/sound/MemoryUse.h"
#include "core/sound/import/ImportCrew.h"
#include "core/sound/import/SlotGuess.h"
#include "ui/import/ImportRow.h"

namespace kestrin::ui::imports {

/// The sounds of the import sheet, in the order in which they go into the set: which are ticked, into which slots they
/// go, what is done to them. It knows the rules and touches no file.
class ImportModel : public QAbstractListModel {
  Q_OBJECT

 public:
  /// Which copy of a sound can be heard.
  enum class Half { Before, After };
  /// What a row says beside Qt's own roles. Qt::CheckStateRole is its tick.
  enum Role {
    kLength = Qt::UserRole + 1,  ///< how long it plays, "" while that is not known
    kChanges,                    ///< what is done to it, or why it is left out
    kTone,                       ///< how kChanges is meant, a Tone
    kSlot,                       ///< the number of its slot, 0 for the folder only
    kSlotText,
    kIsSure,
    kSize,      ///< what it takes on the board
    kIsFailed,  ///< it cannot be imported
    kCanPlay,   ///< whether the halves can be heard: bit 0 before, bit 1 after
    kPlaying,   ///< the half that is heard, as a number; -1 for none
  };
  enum class Tone { Plain, Quiet, Warning, Error };

  using QAbstractListModel::QAbstractListModel;

  /// Forgets everything, and begins for a set that holds so much.
  void Start(const core::sound::SlotRoom& room, std::vector<core::sound::MemoryUse::Sound> inTheSet,
             std::int64_t capacity);
  /// Adds sounds at the end, with their slots guessed, or with the one that the person has named them for. `names` are
  /// those by which they are guessed.
  void Add(const std::vector<core::sound::ImportSource>& sources, const std::vector<std::string>& names,
           std::optional<core::sound::SlotKind> slot);
  /// Takes what became of a sound that was made ready with these options.
  void Take(int id, const core::sound::ImportedSound& result, const core::sound::ImportOptions& with);
  /// Guesses anew what the person has not chosen, now that lengths are known, and puts the rows in order while nobody
  /// has moved one.
  void Guess();

  void SetTrim(bool trim);
  void SetLoop(bool loop);
  [[nodiscard]] bool Trim() const { return m_trim; }
  [[nodiscard]] bool Loop() const { return m_loop; }
  /// Which copy of which row is heard; -1: none.
  void SetPlaying(int id, Half half);

  void Tick(const QList<int>& rows, bool ticked);
  /// Sends the sounds into a slot, or into the folder only.
  void SetSlot(const QList<int>& rows, std::optional<core::sound::SlotKind> slot);
  /// Moves a row before the one that is at `to` now, up to the number of rows for the end. Returns where it is then.
  int Move(int from, int to);

  [[nodiscard]] const std::vector<ImportRow>& Rows() const { return m_rows; }
  [[nodiscard]] const ImportRow& At(int row) const { return m_rows.at(static_cast<std::size_t>(row)); }
  /// -1 for none.
  [[nodiscard]] int RowOf(int id) const;
  /// The slot into which a sound really goes: nothing for one that is not coming, and where the slot has no room.
  [[nodiscard]] std::optional<core::sound::SlotKind> Destination(int row) const;
  /// What is to be done to a sound.
  [[nodiscard]] core::sound::ImportOptions OptionsOf(const ImportRow& row) const;
  /// The rows that are still to be made ready with what is wanted now.
  [[nodiscard]] std::vector<int> Unready() const;

  /// Sounds that are ticked.
  [[nodiscard]] int Coming() const;
  [[nodiscard]] int Failed() const;
  /// Ticked sounds that are not ready yet.
  [[nodiscard]] int ComingUnready() const;
  [[nodiscard]] bool HasUnsure() const;
  [[nodiscard]] Qt::CheckState AllTicked() const;
  /// Seconds that trimming has taken off what is ticked.
  [[nodiscard]] double Trimmed() const;
  /// What the set takes in the board's memory after the import.
  [[nodiscard]] core::sound::MemoryUse Use() const;
  /// What to do when that is too much; "" when it fits.
  [[nodiscard]] QString Advice() const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

 signals:
  /// Rows have changed, or something that follows from them.
  void changed();

 private:
  [[nodiscard]] QString Changes(int row) const;
  [[nodiscard]] Tone ToneOf(int row) const;
  [[nodiscard]] QString Spoken(int row) const;
  [[nodiscard]] bool IsReady(const ImportRow& row) const;
  /// What Destination() says of each row.
  [[nodiscard]] std::vector<std::optional<core::sound::SlotKind>> Destinations() const;
  /// The sounds of the set that stay when these come: one in a single slot is replaced.
  [[nodiscard]] std::vector<core::sound::MemoryUse::Sound> Staying(
      const std::vector<std::optional<core::sound::SlotKind>>& coming) const;
  void Tell();

  core::sound::SlotRoom m_room = core::sound::kRoomOfAnEmptySet;
  std::vector<core::sound::MemoryUse::Sound> m_inTheSet;
  std::int64_t m_capacity = 0;
  std::vector<ImportRow> m_rows;
  int m_nextId = 1;
  bool m_trim = true;
  bool m_loop = true;
  bool m_isOrderChosen = false;
  int m_playing = -1;
  Half m_playingHalf = Half::Before;
};

/// What the chip of a slot says, and a menu's entry: a slot's name, or that it goes into the folder only.
[[nodiscard]] QString SlotChoice(std::optional<core::sound::SlotKind> slot);

}  // namespace kestrin::ui::imports
