// SPDX-License-Identifier: MIT
#include <windows.h>
// After the line above, which it needs.
#include <mmsystem.h>

#include <fstream>
#include <iterator>
#include <string>

#include "platform/desktop/SystemSoundPlayer.h"
#include "platform/desktop/WavFile.h"

namespace kestrin::platform::desktop {

namespace {

/// Plays with PlaySound, from memory. Windows does not tell when a sound has ended, so its length does.
class WindowsPlayer final : public core::sound::SoundPlayer {
 public:
  explicit WindowsPlayer(const core::base::Clock& clock) : m_clock(clock) {}
  ~WindowsPlayer() override { Stop(); }

  void Play(const std::filesystem::path& wav) override {
    Stop();
    const auto read = WavFile::Read(wav);
    std::ifstream file(wav, std::ios::binary);
    m_bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (!read || !PlaySoundA(m_bytes.data(), nullptr, SND_MEMORY | SND_ASYNC | SND_NODEFAULT)) {
      m_ended = core::base::Failure{core::base::FailureKind::Failed,
                                    "Windows cannot play the sound. Check the loudspeaker and play it again."};
      return;
    }
    const auto bytesPerSecond = std::int64_t{read->samplesPerSecond} * read->channels * 2;
    const auto bytes = static_cast<std::int64_t>(read->samples.size());
    m_end = m_clock.Now() + std::chrono::nanoseconds(bytes * 1'000'000'000 / bytesPerSecond);
  }

  void Stop() override {
    PlaySoundA(nullptr, nullptr, 0);
    m_end = {};
    m_ended = {};
  }

  [[nodiscard]] Status Look() override { return {m_clock.Now() < m_end, m_ended}; }

 private:
  const core::base::Clock& m_clock;
  std::string m_bytes;
  core::base::Clock::Duration m_end{};
  core::base::Result<> m_ended;
};

}  // namespace

std::unique_ptr<core::sound::SoundPlayer> MakeSystemSoundPlayer(const core::base::Clock& clock) {
  return std::make_unique<WindowsPlayer>(clock);
}

}  // namespace kestrin::platform::desktop
