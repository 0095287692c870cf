// SPDX-License-Identifier: MIT
#include "platform/speaker/SystemSoundOutput.h"

namespace kestrin::platform::speaker {

namespace {

/// For builds without a library for sound.
class AbsentOutput final : public core::sound::SoundOutput {
 public:
  void Start(Source) override { m_isAsked = true; }
  void Stop() override { m_isAsked = false; }
  [[nodiscard]] Status Look() override {
    if (!m_isAsked) return {};
    return {false,
            core::base::Failure{core::base::FailureKind::Failed,
                                "This build of the program cannot play sounds: it was made without a sound library."}};
  }

 private:
  bool m_isAsked = false;
};

}  // namespace

std::unique_ptr<core::sound::SoundOutput> MakeSystemSoundOutput(std::chrono::milliseconds) {
  return std::make_unique<AbsentOutput>();
}

}  // namespace kestrin::platform::speaker
