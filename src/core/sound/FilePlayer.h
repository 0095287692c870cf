// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "sound/SoundOutput.h"
#include "sound/SoundPlayer.h"

namespace kestrin::core::sound {

/// Plays files into a stream. Each file is read on a thread of its own, since disks make their readers wait.
class FilePlayer final : public SoundPlayer {
 public:
  /// Nobody else may use the output as long as the player lives.
  explicit FilePlayer(std::unique_ptr<SoundOutput> output);
  /// Stops; waits for no disk.
  ~FilePlayer() override;
  FilePlayer(const FilePlayer&) = delete;
  FilePlayer& operator=(const FilePlayer&) = delete;

  void Play(const std::filesystem::path& wav) override;
  void Stop() override;
  [[nodiscard]] Status Look() override;

 private:
  struct Job;

  /// Shared with the reading threads, which may outlive the player.
  std::shared_ptr<SoundOutput> m_output;
  std::shared_ptr<Job> m_job;
};

}  // namespace kestrin::core::sound
