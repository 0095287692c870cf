// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "core/base/PathText.h"
#include "core/sound/import/KeepSound.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"
#include "ui/import/ImportMeans.h"

namespace kestrin::support {

/// Sounds that are imported as a test says, by their names, without any library: what a source file holds does not
/// matter. Made files are real ones.
class FakeImport {
 public:
  /// What becomes of a sound.
  struct Plan {
    std::size_t samples = 4800;
    std::vector<std::string> changes{};
    /// "" when it works.
    std::string reason{};
    /// What trimming takes off.
    std::size_t silence = 0;
  };

  /// Every call that converts: what was asked for, like "swing 01.wav trim loop".
  std::vector<std::string> Asked() const {
    const std::lock_guard lock(m_mutex);
    return m_asked;
  }
  std::vector<std::filesystem::path> Folders() const {
    const std::lock_guard lock(m_mutex);
    return m_folders;
  }
  /// Sounds are made ready only up to so many from now on.
  void HoldAfter(int sounds) {
    const std::lock_guard lock(m_mutex);
    m_left = sounds;
  }
  void LetGo() {
    {
      const std::lock_guard lock(m_mutex);
      m_left = -1;
    }
    m_wake.notify_all();
  }
  ~FakeImport() { LetGo(); }

  [[nodiscard]] ui::imports::ImportMeans Means() {
    ui::imports::ImportMeans means;
    means.list = [](const std::vector<std::filesystem::path>& named, const auto&) { return List(named); };
    means.convert = [this](const auto& orders, const auto& folder, const auto& done, const auto& goOn) {
      {
        const std::lock_guard lock(m_mutex);
        m_folders.push_back(folder);
      }
      for (std::size_t i = 0; i < orders.size() && goOn(); ++i) done(i, Convert(orders[i], folder, goOn));
    };
    means.copy = [this](const auto& sound, const auto& copy, const auto&) -> core::base::Result<> {
      if (!copyFailure.empty()) return core::base::Failure{core::base::FailureKind::NotValid, copyFailure};
      WriteSoundFile(copy, SomeSamples(480));
      const std::lock_guard lock(m_mutex);
      m_asked.push_back("copy " + sound.filename().string());
      return {};
    };
    means.measure = [this](const auto& sounds, const auto&) { return Measure(sounds); };
    means.keep = [this](const auto& made, const auto& folder) { return core::sound::KeepSound(made, folder, disk); };
    return means;
  }

  std::map<std::string, Plan> plans;
  std::string copyFailure;
  /// In LUFS.
  std::map<std::string, double> loudness;
  RecordingDisk disk;

 private:
  static core::sound::ImportSource SourceOf(const std::filesystem::path& file) {
    return {file, core::base::TextOf(file), core::base::TextOf(file.stem())};
  }

  static ui::imports::ListedSounds List(const std::vector<std::filesystem::path>& named) {
    ui::imports::ListedSounds listed;
    for (const std::filesystem::path& path : named) {
      if (!std::filesystem::is_directory(path)) {
        listed.sources.push_back(SourceOf(path));
        continue;
      }
      for (const auto& file : std::filesystem::directory_iterator(path))
        listed.sources.push_back(SourceOf(file.path()));
    }
    return listed;
  }

  /// Every sound is as loud as `loudness` says by the stem of its name.
  core::base::Result<std::vector<core::sound::MeasuredSound>> Measure(
      const std::vector<core::sound::Levelling::Sound>& sounds) {
    std::vector<core::sound::MeasuredSound> measured;
    for (const core::sound::Levelling::Sound& sound : sounds) {
      const std::filesystem::path& path = sound.file.FileNameAndPath();
      const auto own = loudness.find(path.stem().string());
      measured.push_back({sound.place, path, sound.file.Volume(), own == loudness.end() ? -20 : own->second, ""});
    }
    const std::lock_guard lock(m_mutex);
    m_asked.push_back("measure " + std::to_string(sounds.size()));
    return measured;
  }

  core::sound::ImportedSound Convert(const core::sound::ImportCrew::Order& order, const std::filesystem::path& folder,
                                     const ui::imports::ImportMeans::GoOn& goOn) {
    const std::string name = core::base::TextOf(order.source.file.filename());
    {
      std::unique_lock lock(m_mutex);
      m_asked.push_back(name + (order.options.trim ? " trim" : "") + (order.options.loop ? " loop" : ""));
      // A cancelled job is not let go by the test; it looks for itself.
      while (m_left == 0 && goOn()) m_wake.wait_for(lock, std::chrono::milliseconds(1));
      if (m_left > 0) --m_left;
    }
    const Plan plan = plans.contains(name) ? plans.at(name) : Plan();
    core::sound::ImportedSound sound;
    sound.source = order.source.shownAs;
    sound.reason = plan.reason;
    if (!plan.reason.empty()) return sound;
    sound.samples = static_cast<std::int64_t>(plan.samples - (order.options.trim ? plan.silence : 0));
    sound.seconds = static_cast<double>(sound.samples) / 48000;
    sound.sourceSeconds = static_cast<double>(plan.samples) / 48000;
    sound.changes = plan.changes;
    sound.path = WriteSoundFile(folder / (order.source.name + ".lsu"),
                                SomeSamples(static_cast<std::size_t>(sound.samples), 20000, ++m_seed));
    return sound;
  }

  mutable std::mutex m_mutex;
  std::condition_variable m_wake;
  int m_left = -1;
  unsigned m_seed = 0;
  std::vector<std::string> m_asked;
  std::vector<std::filesystem::path> m_folders;
};

}  // namespace kestrin::support
