// SPDX-License-Identifier: MIT
#include "platform/speaker/PulseLibrary.h"

#include <dlfcn.h>

#include <optional>

namespace kestrin::platform::speaker {

namespace {

constexpr const char* kPulseLibrary = "libpulse.so.0";

template <class Function>
bool FindPulseCall(void* library, const char* name, Function*& call) {
  call = reinterpret_cast<Function*>(::dlsym(library, name));
  return call != nullptr;
}

std::optional<PulseLibrary> LoadPulseLibrary() {
  void* const library = ::dlopen(kPulseLibrary, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  PulseLibrary calls;
  const bool isWhole = FindPulseCall(library, "pa_get_library_version", calls.getVersion) &&
                       FindPulseCall(library, "pa_strerror", calls.textOf) &&
                       FindPulseCall(library, "pa_threaded_mainloop_new", calls.newLoop) &&
                       FindPulseCall(library, "pa_threaded_mainloop_free", calls.freeLoop) &&
                       FindPulseCall(library, "pa_threaded_mainloop_start", calls.startLoop) &&
                       FindPulseCall(library, "pa_threaded_mainloop_stop", calls.stopLoop) &&
                       FindPulseCall(library, "pa_threaded_mainloop_lock", calls.lockLoop) &&
                       FindPulseCall(library, "pa_threaded_mainloop_unlock", calls.unlockLoop) &&
                       FindPulseCall(library, "pa_threaded_mainloop_get_api", calls.getApi) &&
                       FindPulseCall(library, "pa_context_new", calls.newContext) &&
                       FindPulseCall(library, "pa_context_unref", calls.releaseContext) &&
                       FindPulseCall(library, "pa_context_set_state_callback", calls.setContextCallback) &&
                       FindPulseCall(library, "pa_context_connect", calls.connect) &&
                       FindPulseCall(library, "pa_context_disconnect", calls.disconnect) &&
                       FindPulseCall(library, "pa_context_get_state", calls.getContextState) &&
                       FindPulseCall(library, "pa_context_errno", calls.getError) &&
                       FindPulseCall(library, "pa_stream_new", calls.newStream) &&
                       FindPulseCall(library, "pa_stream_unref", calls.releaseStream) &&
                       FindPulseCall(library, "pa_stream_set_state_callback", calls.setStreamCallback) &&
                       FindPulseCall(library, "pa_stream_set_write_callback", calls.setWriteCallback) &&
                       FindPulseCall(library, "pa_stream_connect_playback", calls.connectPlayback) &&
                       FindPulseCall(library, "pa_stream_disconnect", calls.disconnectStream) &&
                       FindPulseCall(library, "pa_stream_get_state", calls.getStreamState) &&
                       FindPulseCall(library, "pa_stream_begin_write", calls.beginWrite) &&
                       FindPulseCall(library, "pa_stream_cancel_write", calls.cancelWrite) &&
                       FindPulseCall(library, "pa_stream_write", calls.write) &&
                       FindPulseCall(library, "pa_stream_drain", calls.drain) &&
                       FindPulseCall(library, "pa_operation_unref", calls.releaseOperation);
  return isWhole ? std::optional(calls) : std::nullopt;
}

}  // namespace

const PulseLibrary* PulseLibrary::Find() {
  static const std::optional<PulseLibrary> library = LoadPulseLibrary();
  return library ? &*library : nullptr;
}

}  // namespace kestrin::platform::speaker
