// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/saber/SaberSounds.h"
#include "core/sound/SoundSet.h"

namespace kestrin::ui::kit {
class LatestJob;
}

namespace kestrin::ui::stage {

/// Holds the sounds of a set ready for a saber, and reads them on a thread of its own: the window stays alive. What
/// cannot be read is left out, with its reason; of what only has another volume nothing else is read again.
class SoundReader : public QObject {
  Q_OBJECT

 public:
  explicit SoundReader(QObject* parent = nullptr);
  ~SoundReader() override;

  /// Reads what the set holds now, as a board plays it or as the files hold it, if anything is different from what is
  /// there already. What follows comes as signals.
  void Follow(const core::sound::SoundSet& set, bool asOnBoard);
  [[nodiscard]] bool IsReading() const { return m_isReading; }

  /// The sounds that could be read.
  [[nodiscard]] core::saber::SaberSounds Sounds() const;
  /// Where a saber's sound stands in the set, and the other way round; nothing for one that could not be read.
  [[nodiscard]] core::sound::SoundPlace InSet(const core::sound::SoundPlace& ofSaber) const;
  [[nodiscard]] std::optional<core::sound::SoundPlace> OfSaber(const core::sound::SoundPlace& inSet) const;
  [[nodiscard]] core::saber::SharedSamples SamplesAt(const core::sound::SoundPlace& inSet) const;
  /// Why sounds could not be read, a text for each.
  [[nodiscard]] std::vector<std::string> Failures() const;

 signals:
  /// So many of all sounds are read.
  void progress(int done, int all);
  /// All are read: the saber gets others.
  void ready();
  /// The sound that stands there sounds otherwise now.
  void exchanged(const core::sound::SoundPlace& inSet);
  /// All are read, and the saber keeps its sounds, however they sound now.
  void kept();

 private:
  /// A sound of the set, with what was made of it.
  struct Entry {
    core::sound::SoundPlace place;
    core::sound::LSU_SoundFile file;
    bool asOnBoard = true;
    core::saber::SharedSamples samples;
    std::string failure;
  };
  using Entries = std::vector<Entry>;

  [[nodiscard]] static Entries EntriesOf(const core::sound::SoundSet& set, bool asOnBoard);
  /// Whether they differ in their volumes at most.
  [[nodiscard]] static bool AreAlike(const Entries& a, const Entries& b);
  /// Whether a saber has the same sounds of both, however they sound.
  [[nodiscard]] static bool AreSame(const Entries& a, const Entries& b);
  static void Read(Entry& entry);
  void ReadAll(Entries entries);
  void ReadVolumes(const Entries& wanted);

  kit::LatestJob* m_job;
  /// What was read.
  Entries m_entries;
  /// What is being read, all of it.
  std::optional<Entries> m_wanted;
  bool m_isReading = false;
};

}  // namespace kestrin::ui::stage
