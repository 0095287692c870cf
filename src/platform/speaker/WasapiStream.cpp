// SPDX-License-Identifier: MIT
#include "platform/speaker/WasapiStream.h"

#include <mmdeviceapi.h>

#include <algorithm>
#include <array>
#include <span>

namespace kestrin::platform::speaker {

namespace {

/// The service counts time in units of 100 ns.
constexpr REFERENCE_TIME kMillisecond = 10'000;
constexpr DWORD kSampleRate = 48000;
/// How long the service is waited for until a device is open: a loudspeaker without a cable may have to wake up first.
constexpr std::chrono::milliseconds kToOpen{5000};
/// And until a device that plays takes more samples: it does so every few milliseconds.
constexpr std::chrono::milliseconds kToPlay{2000};
/// Patience is counted in slices. Whoever was asleep for long, as a computer may be, has lost one of them.
constexpr int kSlices = 20;

core::base::Failure NoDevice() {
  return {core::base::FailureKind::Failed,
          "Windows has no sound output to play on. Connect a loudspeaker and try again."};
}

core::base::Failure Broken() {
  return {core::base::FailureKind::Failed, "The sound output stopped playing. Try again."};
}

core::base::Failure Silent() {
  return {core::base::FailureKind::Failed,
          "The sound output does not answer. Choose another one in the sound settings of Windows and try again."};
}

WAVEFORMATEX OneChannel() {
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = 1;
  format.nSamplesPerSec = kSampleRate;
  format.wBitsPerSample = 16;
  format.nBlockAlign = sizeof(std::int16_t);
  format.nAvgBytesPerSec = kSampleRate * format.nBlockAlign;
  return format;
}

/// The service's objects belong to threads that said so.
class ObjectThread {
 public:
  ObjectThread() : m_isEntered(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
  ~ObjectThread() {
    if (m_isEntered) CoUninitialize();
  }
  ObjectThread(const ObjectThread&) = delete;
  ObjectThread& operator=(const ObjectThread&) = delete;

 private:
  bool m_isEntered;
};

}  // namespace

void WasapiStream::Run() {
  {
    const ObjectThread thread;
    m_state.End(PlayAll());
  }
  m_state.TellGone();
}

void WasapiStream::Watch() {
  int idle = 0;
  std::uint32_t steps = 0;
  while (idle < kSlices) {
    if (m_state.WaitUntilOver((m_isOpen ? kToPlay : kToOpen) / kSlices)) return;
    idle = m_steps == steps ? idle + 1 : 0;
    steps = m_steps;
  }
  m_state.End(Silent());
  SetEvent(m_stop.get());
}

void WasapiStream::Stop() {
  m_state.Stop();
  SetEvent(m_stop.get());
}

core::base::Result<> WasapiStream::PlayAll() {
  for (;;) {
    m_hasPlayed = false;
    m_isOpen = false;
    switch (PlayOnDefaultDevice()) {
      case Played::ToTheEnd:
        return {};
      case Played::Nowhere:
        return NoDevice();
      case Played::Badly:
        return Broken();
      case Played::UntilTheDeviceWent:
        // One that goes as soon as it is opened would go for ever.
        if (!m_hasPlayed) return Broken();
        break;
    }
  }
}

WasapiStream::Object<IAudioClient> WasapiStream::OpenDefaultDevice() const {
  void* made = nullptr;
  // Where the library for it finds nothing to play on, the system would look for a service instead, for seconds.
  if (FAILED(CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_INPROC_SERVER,
                              __uuidof(IMMDeviceEnumerator), &made)))
    return nullptr;
  const Object<IMMDeviceEnumerator> devices(static_cast<IMMDeviceEnumerator*>(made));
  IMMDevice* found = nullptr;
  if (FAILED(devices->GetDefaultAudioEndpoint(eRender, eConsole, &found))) return nullptr;
  const Object<IMMDevice> device(found);
  if (FAILED(device->Activate(__uuidof(IAudioClient), CLSCTX_ALL, nullptr, &made))) return nullptr;
  Object<IAudioClient> client(static_cast<IAudioClient*>(made));
  const WAVEFORMATEX format = OneChannel();
  // The service converts to what the device takes.
  constexpr DWORD kFlags =
      AUDCLNT_STREAMFLAGS_EVENTCALLBACK | AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM | AUDCLNT_STREAMFLAGS_SRC_DEFAULT_QUALITY;
  if (FAILED(
          client->Initialize(AUDCLNT_SHAREMODE_SHARED, kFlags, m_buffer.count() * kMillisecond, 0, &format, nullptr)))
    return nullptr;
  return client;
}

WasapiStream::Played WasapiStream::PlayOnDefaultDevice() {
  const Object<IAudioClient> client = OpenDefaultDevice();
  if (client == nullptr) return Played::Nowhere;
  const Event wanted(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  UINT32 frames = 0;
  void* made = nullptr;
  if (FAILED(client->SetEventHandle(wanted.get())) || FAILED(client->GetBufferSize(&frames)) ||
      FAILED(client->GetService(__uuidof(IAudioRenderClient), &made)))
    return Played::Badly;
  const Object<IAudioRenderClient> renderer(static_cast<IAudioRenderClient*>(made));
  const Played played = Play(*client, *renderer, frames, wanted.get());
  client->Stop();
  return played;
}

WasapiStream::Played WasapiStream::Play(IAudioClient& client, IAudioRenderClient& renderer, UINT32 frames,
                                        HANDLE wanted) {
  const auto failed = [](HRESULT result) {
    return result == AUDCLNT_E_DEVICE_INVALIDATED ? Played::UntilTheDeviceWent : Played::Badly;
  };
  // From the first sample on there is something to play.
  HRESULT result = Write(client, renderer, frames);
  if (SUCCEEDED(result)) result = client.Start();
  ++m_steps;
  m_isOpen = true;
  const std::array<HANDLE, 2> events{m_stop.get(), wanted};
  while (SUCCEEDED(result)) {
    const DWORD which = WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, INFINITE);
    if (which == WAIT_OBJECT_0) return Played::ToTheEnd;
    if (which != WAIT_OBJECT_0 + 1) return Played::Badly;
    m_hasPlayed = true;
    UINT32 waiting = 0;
    if (!m_isExhausted) {
      result = Write(client, renderer, frames);
    } else if (SUCCEEDED(result = client.GetCurrentPadding(&waiting))) {
      See(waiting);
      if (waiting > 0) continue;
      // The service has taken the last sample; the device plays it so much later.
      REFERENCE_TIME latency = 0;
      client.GetStreamLatency(&latency);
      WaitForSingleObject(m_stop.get(), static_cast<DWORD>(latency / kMillisecond + 1));
      return Played::ToTheEnd;
    }
  }
  return failed(result);
}

HRESULT WasapiStream::Write(IAudioClient& client, IAudioRenderClient& renderer, UINT32 frames) {
  UINT32 waiting = 0;
  HRESULT result = client.GetCurrentPadding(&waiting);
  if (FAILED(result)) return result;
  See(waiting);
  if (waiting >= frames) return result;
  BYTE* room = nullptr;
  result = renderer.GetBuffer(frames - waiting, &room);
  if (FAILED(result)) return result;
  const std::span<std::int16_t> samples(reinterpret_cast<std::int16_t*>(room), frames - waiting);
  const std::size_t made = m_state.Fill(samples);
  m_isExhausted = made < samples.size();
  // A part of what the service takes at a time might wait for the rest.
  std::fill(samples.begin() + static_cast<std::ptrdiff_t>(made), samples.end(), std::int16_t{0});
  m_waiting = frames;
  return renderer.ReleaseBuffer(frames - waiting, 0);
}

void WasapiStream::See(UINT32 waiting) {
  if (waiting != m_waiting) ++m_steps;
  m_waiting = waiting;
}

}  // namespace kestrin::platform::speaker
