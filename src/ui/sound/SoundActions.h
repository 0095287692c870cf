// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <filesystem>
#include <optional>
#include <vector>

#include "core/sound/SoundSet.h"
#include "core/sound/level/HeardSound.h"

namespace kestrin::ui::sound {

/// What mouse, keyboard, menus and drops do to the set: several sounds at once are one step to undo, and what was
/// refused is told in one message.
class SoundActions : public QObject {
  Q_OBJECT

 public:
  /// `to` of a drop behind the last sound.
  static constexpr int kEnd = core::sound::kListCapacity + 1;

  explicit SoundActions(core::sound::SoundSet& set, QObject* parent = nullptr);

  [[nodiscard]] core::sound::SoundSet& Set() const { return m_set; }
  /// While busy nothing changes the set.
  void SetBusy(bool busy);
  [[nodiscard]] bool IsBusy() const { return m_busy || m_set.IsLoading(); }
  /// Whether a change can be made now: not while busy, nor while another is under way.
  [[nodiscard]] bool MayChange() const { return !IsBusy() && !m_isWorking; }

  /// Sounds of other kinds than the board's own can be imported from now on: Add() asks for that.
  void OfferImport() { m_canImport = true; }

  /// Puts the files into the slot, in a list so that the first gets the position `to`; a folder stands for the sounds
  /// in it. A single slot takes the first that is a sound.
  void Add(core::sound::SlotKind kind, const std::vector<std::filesystem::path>& all, int to = kEnd);
  void Remove(core::sound::SlotKind kind, const std::vector<int>& positions);
  /// Moves or copies sounds of one slot, to before the sound that now stands at `to`.
  void Bring(core::sound::SlotKind from, const std::vector<int>& positions, core::sound::SlotKind kind, int to,
             bool copy);
  void SetVolume(const std::vector<core::sound::SoundPlace>& places, int percent);
  void Undo();
  void Redo();

  /// Whether sounds are heard and seen as the board plays them; else as their files hold them.
  void SetAsOnBoard(bool asOnBoard) { m_asOnBoard = asOnBoard; }
  [[nodiscard]] bool IsAsOnBoard() const { return m_asOnBoard; }
  /// How a file that is in no slot, or the sound of a slot, is heard and seen.
  [[nodiscard]] core::sound::HeardSound Heard(const std::filesystem::path& path) const { return {path, m_asOnBoard}; }
  [[nodiscard]] core::sound::HeardSound Heard(const core::sound::SoundPlace& place) const;
  /// Plays a file that is in no slot.
  void Play(const std::filesystem::path& path) { Play(Heard(path)); }
  /// Plays the sound of a slot; nothing when none sits there.
  void Play(const core::sound::SoundPlace& place) { Play(Heard(place)); }

 signals:
  /// `detail` is "" or says why.
  void message(const QString& text, const QString& detail);
  /// These sounds have to be imported first; for the slot when one is given.
  void importWanted(const std::vector<std::filesystem::path>& named, std::optional<core::sound::SlotKind> slot);
  /// The person wants to hear a file as it is, or a sound as the board plays it.
  void playRequested(const std::filesystem::path& path);
  void playAsOnBoardRequested(const core::sound::HeardSound& sound);
  /// So many sounds have been moved: they stand in these rows, one below the other, from 1.
  void moved(core::sound::SlotKind kind, int first, int count);

 private:
  class Work;
  void Play(const core::sound::HeardSound& sound);
  /// Takes out what has to be imported, and asks for that.
  [[nodiscard]] std::vector<std::filesystem::path> WithoutImports(core::sound::SlotKind kind,
                                                                  const std::vector<std::filesystem::path>& paths);
  void MoveInside(core::sound::SlotKind kind, const std::vector<int>& positions, int to);

  core::sound::SoundSet& m_set;
  bool m_canImport = false;
  bool m_busy = false;
  bool m_isWorking = false;
  bool m_asOnBoard = false;
};

}  // namespace kestrin::ui::sound
