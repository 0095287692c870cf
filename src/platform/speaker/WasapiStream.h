// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>
// After the line above, which they need.
#include <audioclient.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/speaker/StreamState.h"

namespace kestrin::platform::speaker {

/// One stream of the Windows audio service. Any call of the service may last for ever, and a device may ask for samples
/// without taking any: one thread plays, another one watches, and nobody waits for the first.
class WasapiStream {
 public:
  WasapiStream(StreamState::Source source, std::chrono::milliseconds buffer)
      : m_state(std::move(source)), m_buffer(buffer) {}
  WasapiStream(const WasapiStream&) = delete;
  WasapiStream& operator=(const WasapiStream&) = delete;

  /// Plays until it is over: the work of a thread of its own.
  void Run();
  /// Ends it when the service does nothing for too long: the work of a second thread.
  void Watch();
  void Stop();
  [[nodiscard]] StreamState& State() { return m_state; }

 private:
  struct CloseEvent {
    using pointer = HANDLE;
    void operator()(HANDLE event) const { CloseHandle(event); }
  };
  using Event = std::unique_ptr<void, CloseEvent>;
  struct ReleaseObject {
    void operator()(IUnknown* object) const { object->Release(); }
  };
  template <class Interface>
  using Object = std::unique_ptr<Interface, ReleaseObject>;

  /// What became of playing on one device.
  enum class Played {
    /// The source has ended and was heard, or it was stopped.
    ToTheEnd,
    /// There is no device that can be opened.
    Nowhere,
    /// The device was taken away; another one may be there.
    UntilTheDeviceWent,
    /// The audio service has failed.
    Badly,
  };

  [[nodiscard]] core::base::Result<> PlayAll();
  [[nodiscard]] Played PlayOnDefaultDevice();
  [[nodiscard]] Played Play(IAudioClient& client, IAudioRenderClient& renderer, UINT32 frames, HANDLE wanted);
  /// Fills what is free of a buffer of so many frames.
  [[nodiscard]] HRESULT Write(IAudioClient& client, IAudioRenderClient& renderer, UINT32 frames);
  [[nodiscard]] Object<IAudioClient> OpenDefaultDevice() const;
  /// So many frames wait in the buffer now.
  void See(UINT32 waiting);

  StreamState m_state;
  std::chrono::milliseconds m_buffer;
  /// Whether a device is open.
  std::atomic<bool> m_isOpen = false;
  /// Goes up with everything that the service does.
  std::atomic<std::uint32_t> m_steps = 0;
  Event m_stop{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  /// Whether the source has given its last sample.
  bool m_isExhausted = false;
  /// Whether anything was played on the present device.
  bool m_hasPlayed = false;
  UINT32 m_waiting = 0;
};

}  // namespace kestrin::platform::speaker
