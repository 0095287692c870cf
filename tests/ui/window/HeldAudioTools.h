// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>

#include "core/sound/import/AudioTools.h"
#include "support/EnergyMeter.h"

namespace kestrin::support {

/// Measures sounds by their mean energy, and only when it may.
class HeldAudioTools final : public core::sound::AudioTools {
 public:
  ~HeldAudioTools() override { LetGo(); }

  /// From now on whoever measures waits.
  void Hold() {
    const std::lock_guard lock(m_mutex);
    m_isHeld = true;
  }
  void LetGo() {
    {
      const std::lock_guard lock(m_mutex);
      m_isHeld = false;
    }
    m_wake.notify_all();
  }

  [[nodiscard]] core::base::Result<std::unique_ptr<core::sound::SoundDecoder>> Open(
      const std::filesystem::path&) override {
    return core::base::Failure{core::base::FailureKind::Failed, "Nothing is read here."};
  }
  [[nodiscard]] std::unique_ptr<core::sound::RateConverter> MakeConverter(int) override { return nullptr; }
  [[nodiscard]] std::unique_ptr<core::sound::LoudnessMeter> MakeMeter() override {
    return std::make_unique<Meter>(*this);
  }

 private:
  class Meter final : public core::sound::LoudnessMeter {
   public:
    explicit Meter(HeldAudioTools& tools) : m_tools(tools) {}
    void Add(std::span<const double> samples) override {
      m_tools.Wait();
      m_meter.Add(samples);
    }
    [[nodiscard]] core::sound::Loudness Finish() override { return m_meter.Finish(); }

   private:
    HeldAudioTools& m_tools;
    EnergyMeter m_meter;
  };

  void Wait() {
    std::unique_lock lock(m_mutex);
    m_wake.wait(lock, [this] { return !m_isHeld; });
  }

  std::mutex m_mutex;
  std::condition_variable m_wake;
  bool m_isHeld = false;
};

}  // namespace kestrin::support
