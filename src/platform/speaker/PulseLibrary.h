// SPDX-License-Identifier: MIT
#pragma once

#include <pulse/pulseaudio.h>

namespace kestrin::platform::speaker {

/// The functions of libpulse, looked up when the first is needed: a command line that never plays neither loads the
/// library nor what that brings along, and works where it is missing.
struct PulseLibrary {
  /// Null when it is not on this computer. Loading takes a while: not on a thread that must not wait.
  [[nodiscard]] static const PulseLibrary* Find();

  decltype(&pa_get_library_version) getVersion = nullptr;
  decltype(&pa_strerror) textOf = nullptr;

  decltype(&pa_threaded_mainloop_new) newLoop = nullptr;
  decltype(&pa_threaded_mainloop_free) freeLoop = nullptr;
  decltype(&pa_threaded_mainloop_start) startLoop = nullptr;
  decltype(&pa_threaded_mainloop_stop) stopLoop = nullptr;
  decltype(&pa_threaded_mainloop_lock) lockLoop = nullptr;
  decltype(&pa_threaded_mainloop_unlock) unlockLoop = nullptr;
  decltype(&pa_threaded_mainloop_get_api) getApi = nullptr;

  decltype(&pa_context_new) newContext = nullptr;
  decltype(&pa_context_unref) releaseContext = nullptr;
  decltype(&pa_context_set_state_callback) setContextCallback = nullptr;
  decltype(&pa_context_connect) connect = nullptr;
  decltype(&pa_context_disconnect) disconnect = nullptr;
  decltype(&pa_context_get_state) getContextState = nullptr;
  decltype(&pa_context_errno) getError = nullptr;

  decltype(&pa_stream_new) newStream = nullptr;
  decltype(&pa_stream_unref) releaseStream = nullptr;
  decltype(&pa_stream_set_state_callback) setStreamCallback = nullptr;
  decltype(&pa_stream_set_write_callback) setWriteCallback = nullptr;
  decltype(&pa_stream_connect_playback) connectPlayback = nullptr;
  decltype(&pa_stream_disconnect) disconnectStream = nullptr;
  decltype(&pa_stream_get_state) getStreamState = nullptr;
  decltype(&pa_stream_begin_write) beginWrite = nullptr;
  decltype(&pa_stream_cancel_write) cancelWrite = nullptr;
  decltype(&pa_stream_write) write = nullptr;
  decltype(&pa_stream_drain) drain = nullptr;
  decltype(&pa_operation_unref) releaseOperation = nullptr;
};

}  // namespace kestrin::platform::speaker
