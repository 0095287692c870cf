// SPDX-License-Identifier: MIT
#include "sound/FilePlayer.h"

#include <algorithm>
#include <fstream>
#include <mutex>
#include <optional>
#include <span>
#include <thread>
#include <utility>

#include "base/PathText.h"
#include "sound/LSU_SoundFile.h"
#include "sound/WavFile.h"

namespace kestrin::core::sound {

namespace {

/// Whether no other file can take the name of one as long as that is open. There it is read before Play() returns.
#if defined(_WIN32)
constexpr bool kOpenFilesKeepTheirNames = true;
#else
constexpr bool kOpenFilesKeepTheirNames = false;
#endif

/// The samples from the first to the last.
SoundOutput::Source SourceOf(WavFile wav) {
  return [wav = std::move(wav), at = std::size_t{0}](std::span<std::int16_t> out) mutable {
    const std::size_t count = std::min(out.size(), (wav.samples.size() - at) / 2);
    for (std::size_t i = 0; i < count; ++i, at += 2)
      out[i] = static_cast<std::int16_t>(static_cast<std::uint8_t>(wav.samples[at]) |
                                         static_cast<std::uint8_t>(wav.samples[at + 1]) << 8);
    return count;
  };
}

}  // namespace

/// One sound and how things stand with it.
struct FilePlayer::Job {
  std::shared_ptr<SoundOutput> output;
  /// Open from the beginning, so that another file may take its name while this one is read.
  std::ifstream file;
  std::filesystem::path name;

  std::mutex mutex;
  bool isStopped = false;
  bool isHandedOver = false;
  base::Result<> failed;

  void Read() {
    std::optional<WavFile> wav = WavFile::Read(file);
    file.close();
    // Files with other samples are none of ours.
    const bool isPlayable = wav && wav->channels == 1 && wav->samplesPerSecond == LSU_SoundFile::kSamplesPerSecond;
    const std::lock_guard lock(mutex);
    if (isStopped) return;
    if (!isPlayable) {
      failed = Unreadable();
      return;
    }
    output->Start(SourceOf(std::move(*wav)));
    isHandedOver = true;
  }

  [[nodiscard]] base::Failure Unreadable() const {
    return {base::FailureKind::Failed,
            "The sound's copy " + base::Quoted(name) + " cannot be read. Play the sound again."};
  }
};

FilePlayer::FilePlayer(std::unique_ptr<SoundOutput> output) : m_output(std::move(output)) {}

FilePlayer::~FilePlayer() { Stop(); }

void FilePlayer::Play(const std::filesystem::path& wav) {
  Stop();
  m_job = std::make_shared<Job>();
  m_job->output = m_output;
  m_job->name = wav.filename();
  m_job->file.open(wav, std::ios::binary);
  if (!m_job->file.is_open())
    m_job->failed = m_job->Unreadable();
  else if (kOpenFilesKeepTheirNames)
    m_job->Read();
  else
    std::thread([job = m_job] { job->Read(); }).detach();
}

void FilePlayer::Stop() {
  if (m_job == nullptr) return;
  const std::lock_guard lock(m_job->mutex);
  m_job->isStopped = true;
  m_output->Stop();
}

SoundPlayer::Status FilePlayer::Look() {
  if (m_job == nullptr) return {};
  const std::lock_guard lock(m_job->mutex);
  if (!m_job->failed) return {false, m_job->failed};
  if (m_job->isStopped) return {};
  if (!m_job->isHandedOver) return {true, {}};
  const SoundOutput::Status status = m_output->Look();
  return {status.isPlaying, status.ended};
}

}  // namespace kestrin::core::sound
