// SPDX-License-Identifier: MIT
#include "platform/desktop/WaveOutPlayer.h"

#include <windows.h>
// After the line above, which it needs.
#include <mmsystem.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include "core/base/PathText.h"
#include "platform/desktop/WavFile.h"

namespace kestrin::platform::desktop {

namespace {

constexpr std::chrono::milliseconds kGoodBye{500};

core::base::Failure NoOutput() {
  return {core::base::FailureKind::Failed,
          "Windows has no sound output to play on. Connect a loudspeaker and play the sound again."};
}

core::base::Failure Broken() {
  return {core::base::FailureKind::Failed, "The sound output stopped playing. Play the sound again."};
}

}  // namespace

/// One sound and how things stand with it.
struct WaveOutPlayer::Job {
  struct CloseEvent {
    using pointer = HANDLE;
    void operator()(HANDLE event) const { CloseHandle(event); }
  };
  using Event = std::unique_ptr<void, CloseEvent>;

  /// `manual` keeps it set once it is.
  static Event MakeEvent(BOOL manual) { return Event(CreateEventW(nullptr, manual, FALSE, nullptr)); }

  std::filesystem::path name;
  /// All of it from the beginning: as long as a file is open, no other can take its name.
  std::optional<WavFile> wav;
  /// Set for the end.
  Event stop = MakeEvent(TRUE);

  std::mutex mutex;
  std::condition_variable changed;
  bool stopped = false;
  bool done = false;
  core::base::Result<> ended;

  void End(core::base::Result<> how) {
    const std::lock_guard lock(mutex);
    done = true;
    if (!stopped) ended = std::move(how);
    changed.notify_all();
  }

  [[nodiscard]] core::base::Failure Unreadable() const {
    return {core::base::FailureKind::Failed,
            "The sound's copy " + core::base::Quoted(name) + " cannot be read. Play the sound again."};
  }

  /// What the sound's thread does, once the file is read.
  core::base::Result<> Play() {
    if (wav->samples.empty()) return {};
    const Event told = MakeEvent(FALSE);
    WAVEFORMATEX format{};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = wav->channels;
    format.nSamplesPerSec = wav->samplesPerSecond;
    format.wBitsPerSample = 16;
    format.nBlockAlign = static_cast<WORD>(wav->channels * 2);
    format.nAvgBytesPerSec = wav->samplesPerSecond * format.nBlockAlign;
    HWAVEOUT output = nullptr;
    if (waveOutOpen(&output, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(told.get()), 0, CALLBACK_EVENT) !=
        MMSYSERR_NOERROR)
      return NoOutput();
    const core::base::Result<> played = Play(output, told.get());
    waveOutClose(output);
    return played;
  }

 private:
  core::base::Result<> Play(HWAVEOUT output, HANDLE told) {
    WAVEHDR header{};
    // The system reads it only.
    header.lpData = const_cast<char*>(wav->samples.data());
    header.dwBufferLength = static_cast<DWORD>(wav->samples.size());
    if (waveOutPrepareHeader(output, &header, sizeof(header)) != MMSYSERR_NOERROR) return Broken();
    core::base::Result<> played;
    if (waveOutWrite(output, &header, sizeof(header)) != MMSYSERR_NOERROR) played = Broken();
    // It is told of the opening as well, so the header says what it is about.
    const std::array<HANDLE, 2> events{stop.get(), told};
    while (played && (Flags(header) & WHDR_DONE) == 0) {
      const DWORD which = WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, INFINITE);
      if (which == WAIT_OBJECT_0 + 1) continue;
      if (which != WAIT_OBJECT_0) played = Broken();
      break;
    }
    // Gives the samples back, whether they were heard or not.
    waveOutReset(output);
    waveOutUnprepareHeader(output, &header, sizeof(header));
    return played;
  }

  /// The system changes them on a thread of its own.
  static DWORD Flags(const WAVEHDR& header) { return *static_cast<const volatile DWORD*>(&header.dwFlags); }
};

WaveOutPlayer::~WaveOutPlayer() {
  Stop();
  if (m_job == nullptr) return;
  std::unique_lock lock(m_job->mutex);
  m_job->changed.wait_for(lock, kGoodBye, [this] { return m_job->done; });
}

void WaveOutPlayer::Play(const std::filesystem::path& wav) {
  Stop();
  m_job = std::make_shared<Job>();
  m_job->name = wav.filename();
  m_job->wav = WavFile::Read(wav);
  if (!m_job->wav) {
    m_job->End(m_job->Unreadable());
    return;
  }
  std::thread([job = m_job] { job->End(job->Play()); }).detach();
}

void WaveOutPlayer::Stop() {
  if (m_job == nullptr) return;
  const std::lock_guard lock(m_job->mutex);
  m_job->stopped = true;
  SetEvent(m_job->stop.get());
}

core::sound::SoundPlayer::Status WaveOutPlayer::Look() {
  if (m_job == nullptr) return {};
  const std::lock_guard lock(m_job->mutex);
  if (m_job->done) return {false, m_job->ended};
  return {!m_job->stopped, {}};
}

}  // namespace kestrin::platform::desktop
