// SPDX-License-Identifier: MIT
#include "platform/speaker/WasapiOutput.h"

#include <thread>
#include <utility>

#include "platform/speaker/WasapiStream.h"

namespace kestrin::platform::speaker {

namespace {

constexpr std::chrono::milliseconds kGoodBye{500};

}  // namespace

WasapiOutput::~WasapiOutput() {
  Stop();
  if (m_stream != nullptr) m_stream->State().WaitUntilGone(kGoodBye);
}

void WasapiOutput::Start(Source source) {
  Stop();
  m_stream = std::make_shared<WasapiStream>(std::move(source), m_buffer);
  std::thread([stream = m_stream] { stream->Run(); }).detach();
  std::thread([stream = m_stream] { stream->Watch(); }).detach();
}

void WasapiOutput::Stop() {
  if (m_stream != nullptr) m_stream->Stop();
}

core::sound::SoundOutput::Status WasapiOutput::Look() {
  return m_stream == nullptr ? Status() : m_stream->State().Look();
}

}  // namespace kestrin::platform::speaker
