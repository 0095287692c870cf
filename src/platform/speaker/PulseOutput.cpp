// SPDX-License-Identifier: MIT
#include "platform/speaker/PulseOutput.h"

#include <thread>
#include <utility>

namespace kestrin::platform::speaker {

namespace {

constexpr std::chrono::milliseconds kGoodBye{500};

}  // namespace

PulseOutput::~PulseOutput() {
  Stop();
  if (m_stream != nullptr) m_stream->State().WaitUntilGone(kGoodBye);
}

void PulseOutput::Start(Source source) {
  Stop();
  m_stream = std::make_shared<PulseStream>(std::move(source), m_buffer, m_patience);
  std::thread([stream = m_stream] { stream->Run(); }).detach();
}

void PulseOutput::Stop() {
  if (m_stream != nullptr) m_stream->State().Stop();
}

core::sound::SoundOutput::Status PulseOutput::Look() {
  return m_stream == nullptr ? Status() : m_stream->State().Look();
}

}  // namespace kestrin::platform::speaker
