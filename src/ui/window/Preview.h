// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <vector>

#include "core/sound/SoundPlayer.h"
#include "core/sound/level/HeardSound.h"

namespace kestrin::ui::window {

/// Plays a sound to the person: writes its copy on a thread of its own, since disks can be slow, then hands it to the
/// player. One sound at a time, the latest.
class Preview : public QObject {
  Q_OBJECT

 public:
  /// The copy is written into the first of `folders` that takes it. The player must outlive the preview.
  Preview(core::sound::SoundPlayer& player, std::vector<std::filesystem::path> folders, QObject* parent = nullptr);
  /// Silence; waits until the copy that is being written is complete.
  ~Preview() override;

  /// Plays the sound in place of what is playing; files that are no ".lsu" are ignored.
  void Play(const core::sound::HeardSound& sound);
  void Play(const std::filesystem::path& sound) { Play(core::sound::HeardSound{sound}); }
  void Stop();

 signals:
  /// The sound's copy is being made.
  void preparing(bool isPreparing);
  /// This file can be heard now; an empty path when there is silence.
  void playing(const std::filesystem::path& path);
  /// It could not be played, for this reason.
  void failed(const QString& text);

 private:
  struct Job;

  void StartJob();
  void Look();
  void LookAtJob();
  void LookAtPlayer();
  void EndPlaying();

  core::sound::SoundPlayer& m_player;
  std::vector<std::filesystem::path> m_folders;
  std::unique_ptr<Job> m_job;
  /// The sound that is to be played next.
  core::sound::HeardSound m_wanted;
  bool m_playing = false;
  QTimer m_timer;
};

}  // namespace kestrin::ui::window
