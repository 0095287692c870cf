// SPDX-License-Identifier: MIT
#include "platform/desktop/PulsePlayer.h"

#include <pulse/error.h>
#include <pulse/simple.h>

#include <algorithm>
#include <condition_variable>
#include <fstream>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "core/base/PathText.h"
#include "platform/desktop/WavFile.h"

namespace kestrin::platform::desktop {

namespace {

/// Milliseconds of sound that are handed over at a time, and that the service may hold: so quickly a stop is heard.
constexpr std::uint32_t kChunkMilliseconds = 20;
constexpr std::uint32_t kBufferMilliseconds = 200;
constexpr std::chrono::milliseconds kGoodBye{500};

core::base::Failure NoService() {
  return {core::base::FailureKind::Failed,
          "No sound service answers on this computer, so nothing can be heard. Start PipeWire or PulseAudio and play "
          "the sound again."};
}

struct CloseStream {
  void operator()(pa_simple* stream) const { pa_simple_free(stream); }
};
using Stream = std::unique_ptr<pa_simple, CloseStream>;

std::uint32_t BytesOf(const WavFile& wav, std::uint32_t milliseconds) {
  return wav.samplesPerSecond * milliseconds / 1000 * wav.channels * 2;
}

Stream OpenStream(const WavFile& wav) {
  const pa_sample_spec format{PA_SAMPLE_S16LE, wav.samplesPerSecond, wav.channels};
  const auto byDefault = static_cast<std::uint32_t>(-1);
  const pa_buffer_attr buffer{byDefault, BytesOf(wav, kBufferMilliseconds), byDefault, byDefault, byDefault};
  return Stream(pa_simple_new(nullptr, "Kestrin Launcher", PA_STREAM_PLAYBACK, nullptr, "Preview", &format, nullptr,
                              &buffer, nullptr));
}

}  // namespace

/// One sound and how things stand with it.
struct PulsePlayer::Job {
  /// Open from the beginning, so that another file may take its name while this one is read.
  std::ifstream file;
  std::filesystem::path name;

  std::mutex mutex;
  std::condition_variable changed;
  bool stop = false;
  bool read = false;
  bool connected = false;
  bool done = false;
  core::base::Result<> ended;

  [[nodiscard]] bool IsStopped() {
    const std::lock_guard lock(mutex);
    return stop;
  }
  void SetRead() {
    const std::lock_guard lock(mutex);
    read = true;
  }
  void SetConnected() {
    const std::lock_guard lock(mutex);
    connected = true;
  }
  void End(core::base::Result<> how) {
    const std::lock_guard lock(mutex);
    done = true;
    if (!stop) ended = std::move(how);
    changed.notify_all();
  }

  /// What the sound's thread does.
  core::base::Result<> Run() {
    const std::optional<WavFile> wav = WavFile::Read(file);
    file.close();
    if (!wav) return Unreadable();
    SetRead();
    return Play(*wav);
  }

  [[nodiscard]] core::base::Failure Unreadable() const {
    return {core::base::FailureKind::Failed,
            "The sound's copy " + core::base::Quoted(name) + " cannot be read. Play the sound again."};
  }

 private:
  core::base::Result<> Play(const WavFile& wav) {
    const Stream stream = OpenStream(wav);
    if (stream == nullptr) return NoService();
    SetConnected();
    int error = 0;
    const auto failed = [&error] {
      return core::base::Failure{core::base::FailureKind::Failed, std::string("The sound service stopped playing (") +
                                                                      pa_strerror(error) + "). Play the sound again."};
    };
    const std::size_t chunk = std::max<std::size_t>(BytesOf(wav, kChunkMilliseconds), wav.channels * std::size_t{2});
    for (std::string_view rest = wav.samples; !rest.empty();) {
      if (IsStopped()) {
        static_cast<void>(pa_simple_flush(stream.get(), &error));
        return {};
      }
      const std::string_view part = rest.substr(0, chunk);
      if (pa_simple_write(stream.get(), part.data(), part.size(), &error) < 0) return failed();
      rest.remove_prefix(part.size());
    }
    // Not before the last sample was heard.
    if (pa_simple_drain(stream.get(), &error) < 0) return failed();
    return {};
  }
};

PulsePlayer::~PulsePlayer() {
  Stop();
  if (m_job == nullptr) return;
  std::unique_lock lock(m_job->mutex);
  m_job->changed.wait_for(lock, kGoodBye, [this] { return m_job->done; });
}

void PulsePlayer::Play(const std::filesystem::path& wav) {
  Stop();
  m_job = std::make_shared<Job>();
  m_job->name = wav.filename();
  m_job->file.open(wav, std::ios::binary);
  if (!m_job->file.is_open()) {
    m_job->End(m_job->Unreadable());
    return;
  }
  std::thread([job = m_job] { job->End(job->Run()); }).detach();
}

void PulsePlayer::Stop() {
  if (m_job == nullptr) return;
  const std::lock_guard lock(m_job->mutex);
  m_job->stop = true;
}

core::sound::SoundPlayer::Status PulsePlayer::Look() {
  if (m_job == nullptr) return {};
  const std::lock_guard lock(m_job->mutex);
  if (m_job->done) return {false, m_job->ended};
  if (m_job->stop) return {};
  // Only the service is given up; a slow disk is waited for.
  if (!m_job->read) m_readUntil = m_clock.Now();
  if (!m_job->connected && m_clock.Now() - m_readUntil > kPatience) {
    m_job->stop = true;
    m_job->done = true;
    m_job->ended = NoService();
    return {false, m_job->ended};
  }
  return {true, {}};
}

}  // namespace kestrin::platform::desktop
