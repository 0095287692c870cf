// SPDX-License-Identifier: MIT
#include "ui/window/Preview.h"

#include <atomic>
#include <optional>
#include <thread>
#include <utility>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/PreviewFile.h"
#include "ui/kit/Translated.h"

namespace kestrin::ui::window {

namespace {

/// How often thread and player are looked at, in milliseconds, while there is anything to see.
constexpr int kLookInterval = 20;

}  // namespace

/// The making of one copy. The thread's results may be read once `done` is set.
struct Preview::Job {
  core::sound::HeardSound sound;
  std::optional<core::base::Result<std::filesystem::path>> written;
  std::atomic<bool> done = false;
  std::thread thread;

  ~Job() {
    if (thread.joinable()) thread.join();
  }
};

Preview::Preview(core::sound::SoundPlayer& player, std::vector<std::filesystem::path> folders, QObject* parent)
    : QObject(parent), m_player(player), m_folders(std::move(folders)) {
  m_timer.setInterval(kLookInterval);
  connect(&m_timer, &QTimer::timeout, this, &Preview::Look);
}

Preview::~Preview() { m_player.Stop(); }

void Preview::Play(const core::sound::HeardSound& sound) {
  if (!core::sound::LSU_SoundFile::HasSoundName(sound.path)) return;
  Stop();
  m_wanted = sound;
  emit preparing(true);
  // Two threads must not write the same copy: the one under way comes to its end first.
  if (m_job == nullptr) StartJob();
}

void Preview::Stop() {
  m_player.Stop();
  if (!m_wanted.path.empty()) {
    m_wanted = {};
    emit preparing(false);
  }
  EndPlaying();
}

void Preview::StartJob() {
  m_job = std::make_unique<Job>();
  m_job->sound = m_wanted;
  m_job->thread = std::thread([job = m_job.get(), folders = m_folders] {
    job->written = core::sound::PreviewFile::Write(job->sound, folders);
    job->done = true;
  });
  m_timer.start();
}

void Preview::Look() {
  if (m_job != nullptr)
    LookAtJob();
  else
    LookAtPlayer();
  if (m_job == nullptr && !m_playing) m_timer.stop();
}

void Preview::LookAtJob() {
  if (!m_job->done) return;
  const core::sound::HeardSound sound = m_job->sound;
  const core::base::Result<std::filesystem::path> written = *m_job->written;
  m_job.reset();
  if (m_wanted.path.empty()) return;
  if (m_wanted != sound) {
    StartJob();
    return;
  }
  m_wanted = {};
  emit preparing(false);
  if (!written) {
    emit failed(kit::Translated(written.Text()));
    return;
  }
  m_player.Play(*written);
  m_playing = true;
  emit playing(sound.path);
}

void Preview::LookAtPlayer() {
  if (!m_playing) return;
  const core::sound::SoundPlayer::Status status = m_player.Look();
  if (status.playing) return;
  EndPlaying();
  if (!status.ended) emit failed(kit::Translated(status.ended.Text()));
}

void Preview::EndPlaying() {
  if (!std::exchange(m_playing, false)) return;
  emit playing({});
}

}  // namespace kestrin::ui::window
