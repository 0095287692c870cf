// SPDX-License-Identifier: MIT
#include "platform/desktop/SystemSoundPlayer.h"

namespace kestrin::platform::desktop {

namespace {

/// For systems without a player.
class AbsentPlayer final : public core::sound::SoundPlayer {
 public:
  void Play(const std::filesystem::path&) override { m_asked = true; }
  void Stop() override { m_asked = false; }
  [[nodiscard]] Status Look() override {
    if (!m_asked) return {};
    return {false,
            core::base::Failure{core::base::FailureKind::Failed,
                                "This build of the program cannot play sounds: it was made without a sound library."}};
  }

 private:
  bool m_asked = false;
};

}  // namespace

std::unique_ptr<core::sound::SoundPlayer> MakeSystemSoundPlayer(const core::base::Clock&) {
  return std::make_unique<AbsentPlayer>();
}

}  // namespace kestrin::platform::desktop
