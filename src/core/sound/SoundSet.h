// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/EventPump.h"
#include "base/Result.h"
#include "sound/ConfigurationFile.h"
#include "sound/LSU_Configuration.h"
#include "sound/MissingSounds.h"
#include "sound/SlotKind.h"
#include "sound/SoundPlace.h"
#include "sound/SoundSetListener.h"

namespace kestrin::core::sound {

/// Files that may be a missing sound.
struct LocatedSound {
  SoundPlace place;
  /// The likeliest first.
  std::vector<std::filesystem::path> files;
};

/// Everything that a person does to the set of sounds: each change can be undone and redone, and the set knows whether
/// it differs from its file. The configuration is the owner's; while the set lives, all changes go through it.
///
/// When a method fails, nothing has changed, and the text is for the person. While a set is loaded, everything else is
/// refused: with Busy, or with false where nothing else can go wrong.
///
/// Sounds that could not be loaded keep their rows: they are no part of the configuration, yet move, go and come back
/// like all others, and are saved with the set unless the person leaves them out.
class SoundSet {
 public:
  /// What becomes of missing sounds in the file that is written.
  enum class Missing { Keep, LeaveOut };
  /// Steps that can be undone; older ones are forgotten.
  static constexpr std::size_t kHistory = 100;

  /// Everything that changes while it lives is one step to undo, which is called `text`, or without one as its first
  /// change. Of groups inside one another the outermost counts.
  class Group {
   public:
    explicit Group(SoundSet& set, std::string text = {}) : m_set(set) { m_set.BeginGroup(std::move(text)); }
    ~Group() { m_set.EndGroup(); }
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;

   private:
    SoundSet& m_set;
  };

  /// The configuration must outlive the set.
  explicit SoundSet(LSU_Configuration& configuration);
  SoundSet(const SoundSet&) = delete;
  SoundSet& operator=(const SoundSet&) = delete;

  [[nodiscard]] const LSU_Configuration& Configuration() const { return m_configuration; }
  /// Files in use in the slot: 0 or 1 in a single slot, 0 .. 12 in a list.
  [[nodiscard]] int Count(SlotKind kind) const { return m_configuration.Count(kind); }
  /// The rows of the slot: its files in use and the sounds that are missing, in a list 12 at most.
  [[nodiscard]] int Rows(SlotKind kind) const { return Count(kind) + m_missing.Count(kind); }
  [[nodiscard]] bool HasRow(const SoundPlace& place) const {
    return place.position >= 1 && place.position <= Rows(place.kind);
  }
  /// Whether a sound sits there, one that is not missing.
  [[nodiscard]] bool Holds(const SoundPlace& place) const { return HasRow(place) && m_missing.At(place) == nullptr; }
  /// The sound that sits there. Throws std::out_of_range when none does.
  [[nodiscard]] const LSU_SoundFile& At(const SoundPlace& place) const;
  /// The sounds that could not be loaded.
  [[nodiscard]] const MissingSounds& AllMissing() const { return m_missing; }
  /// The path of the sound in that row, missing or not; empty when there is no such row.
  [[nodiscard]] std::filesystem::path PathAt(const SoundPlace& place) const;

  /// Puts the file into the slot: a single slot's sound is replaced, a list grows at its end. Fails with Full when the
  /// list holds 12 files already, of which nothing is read then, with NotValid when the file is no sound.
  base::Result<> Add(SlotKind kind, const std::filesystem::path& path);

  /// Puts files in the places of missing sounds, with their volumes: for each the first that is a sound. One step to
  /// undo; `pump` gets its turn after every sound. Returns how many were found; fails with NotValid when it is none.
  base::Result<int> Locate(const std::vector<LocatedSound>& found, const base::EventPump& pump = {});

  /// Puts the file at that volume in the place of the sound there, be it missing or not; where there is none, behind
  /// the others of its slot. Refused like Add(); then everything stays as it was.
  base::Result<> Put(const SoundPlace& place, const std::filesystem::path& path, std::int16_t percent);
  /// Takes a sound out. In a list the later ones move up, while volumes stay with their positions. Nothing happens
  /// when there is no such sound.
  bool Remove(SlotKind kind, int position);
  /// Moves a sound, also one that is missing, inside its list, together with its volume.
  bool Move(SlotKind kind, int from, int to);
  /// Moves or copies a sound with its volume into another slot, in a list to the position `to` (beyond the end: to the
  /// end). Refused like Add(); the sound then stays where it was.
  base::Result<> MoveTo(const SoundPlace& from, SlotKind kind, int to);
  base::Result<> CopyTo(const SoundPlace& from, SlotKind kind, int to);
  /// Sets the volume of these sounds in percent; missing ones keep theirs. Changes of the same sounds right after one
  /// another are one step to undo.
  bool SetVolume(const std::vector<SoundPlace>& places, std::int16_t percent);
  bool SetVolume(SlotKind kind, int position, std::int16_t percent) { return SetVolume({{kind, position}}, percent); }

  /// Empties all slots and starts a set without a name.
  bool Clear();
  /// Loads a configuration file; `pump` gets its turn after every sound. What a file that is not valid held up to its
  /// flaw stays loaded, under the name of the set before.
  [[nodiscard]] LoadResult Load(const std::filesystem::path& path, const base::EventPump& pump = {});
  /// The same, but the set has no file then: what was loaded is a set that nobody has saved yet.
  [[nodiscard]] LoadResult LoadCopy(const std::filesystem::path& path, const base::EventPump& pump = {});
  /// Brings back what was not saved of a set: loads its file `origin`, or an empty set where that cannot be loaded,
  /// then the configuration `unsaved` as changes of it. The set bears the name of `origin`, which is not written to; an
  /// empty path is that of a set without a file. When `unsaved` is not valid, the set is as `origin` has it.
  [[nodiscard]] LoadResult BringBack(const std::filesystem::path& unsaved, const std::filesystem::path& origin,
                                     const base::EventPump& pump = {});
  /// Saves the set, which then bears the file's name. Missing sounds that are left out go from the set too, as a step
  /// to undo. Fails like ConfigurationFile::Save().
  base::Result<> Save(const std::filesystem::path& path, base::Disk& disk, Missing missing = Missing::Keep);
  /// Whether Load() or Locate() is under way.
  [[nodiscard]] bool IsLoading() const { return m_loading; }

  [[nodiscard]] bool CanUndo() const { return !m_undo.empty() && !m_loading; }
  [[nodiscard]] bool CanRedo() const { return !m_redo.empty() && !m_loading; }
  /// What the next Undo() or Redo() takes back or does again, for a menu ("Add hum.lsu"); "" when there is nothing.
  [[nodiscard]] std::string UndoText() const { return m_undo.empty() ? "" : m_undo.back().text; }
  [[nodiscard]] std::string RedoText() const { return m_redo.empty() ? "" : m_redo.back().text; }
  /// Brings back exactly what was there before the last step, or after it. Nothing happens when there is none.
  void Undo();
  void Redo();

  /// The file that the set was loaded from or saved to; empty when there is none.
  [[nodiscard]] const std::filesystem::path& Path() const { return m_origin->path; }
  /// The file's name without its extension; "New set" when there is no file.
  [[nodiscard]] std::string Name() const { return NameOf(Path()); }
  /// What a set with that file is called.
  [[nodiscard]] static std::string NameOf(const std::filesystem::path& file);
  /// Whether the set differs from its file, or from an empty set when it has none. One that was just loaded does not:
  /// its file still names the sounds that are missing, and leads again to those that were found beside it.
  [[nodiscard]] bool IsModified() const;

  /// The samples that the board holds.
  void SetCapacity(std::int32_t samples);
  /// Whether the board can hold the set.
  [[nodiscard]] bool Fits() const { return m_configuration.TotalNrOfSamples() <= m_configuration.MaxNrOfSamples(); }

  /// The listener must live until it is removed.
  void AddListener(SoundSetListener& listener);
  void RemoveListener(SoundSetListener& listener);

 private:
  /// What a set holds.
  struct Contents {
    LSU_Configuration configuration;
    MissingSounds missing;
  };
  /// The file of a set and what it holds. Steps over the same file share it, so that a save counts for all of them.
  struct Origin {
    std::filesystem::path path;
    Contents saved;
  };
  /// How the set was at one moment.
  struct Moment {
    Contents contents;
    std::shared_ptr<Origin> origin;
  };
  /// A step, with the moment on its other side.
  struct Step {
    std::string text;
    Moment moment;
  };
  class LoadView;

  /// Reads a configuration file into the set, with the sounds that are missing; nobody is told that it is done.
  LoadResult Read(const std::filesystem::path& path, const base::EventPump& pump);
  [[nodiscard]] LoadResult Load(const std::filesystem::path& path, bool isCopy, const base::EventPump& pump);
  void BeginGroup(std::string text);
  void EndGroup();
  [[nodiscard]] Contents Held() const { return {m_configuration.WithoutStreams(), m_missing}; }
  [[nodiscard]] Moment Now() const { return {Held(), m_origin}; }
  /// Puts the contents of a moment back; the capacity is the board's and stays.
  void PutBack(const Contents& contents);
  /// Whether a file of the set would say the same as one of these.
  [[nodiscard]] bool SavesLike(const Contents& contents) const;
  /// The position in the configuration of the sound in that row.
  [[nodiscard]] int PositionOf(const SoundPlace& place) const { return place.position - m_missing.Above(place); }
  /// Takes the file in place of the missing sound. False when it is no sound.
  bool Fill(const SoundPlace& place, const std::filesystem::path& file);
  /// Remembers the moment `before` a change that has just been made.
  void Remember(Moment&& before, std::string text);
  /// The last step of `from` is taken back and becomes the last of `to`.
  void Travel(std::deque<Step>& from, std::deque<Step>& to);
  base::Result<> Transfer(const SoundPlace& from, SlotKind kind, int to, bool copy);
  /// Tells the listeners that these slots have changed, and all that follows from it.
  void Tell(std::initializer_list<SlotKind> kinds) const;
  void TellAll() const;

  LSU_Configuration& m_configuration;
  MissingSounds m_missing;
  std::shared_ptr<Origin> m_origin;
  std::deque<Step> m_undo;
  std::deque<Step> m_redo;
  /// The sounds whose volume the last step changed, while nothing else has happened.
  std::vector<SoundPlace> m_volumeStep;
  int m_groupDepth = 0;
  std::string m_groupText;
  bool m_groupHasStep = false;
  bool m_loading = false;
  std::vector<SoundSetListener*> m_listeners;
};

}  // namespace kestrin::core::sound
