// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>
// After the line above, which they need.
#include <audioclient.h>

#include <chrono>
#include <cstddef>
#include <memory>

#include "platform/speaker/StreamState.h"

namespace kestrin::platform::speaker {

/// One stream of the Windows audio service.
class WasapiStream {
 public:
  WasapiStream(StreamState::Source source, std::chrono::milliseconds buffer)
      : m_state(std::move(source)), m_buffer(buffer) {}
  WasapiStream(const WasapiStream&) = delete;
  WasapiStream& operator=(const WasapiStream&) = delete;

  /// Plays until it is over: the work of a thread of its own.
  void Run();
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

  StreamState m_state;
  std::chrono::milliseconds m_buffer;
  Event m_stop{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  /// Whether the source has given its last sample.
  bool m_isExhausted = false;
  /// Whether anything was played on the present device.
  bool m_hasPlayed = false;
};

}  // namespace kestrin::platform::speaker
