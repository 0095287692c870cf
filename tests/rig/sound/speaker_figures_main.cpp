// SPDX-License-Identifier: MIT
// How long it takes from an event to its sound, on a sink that nobody hears, and what a stream costs. No test: figures
// belong to a computer and to what else it does.

#include <pulse/simple.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <thread>
#include <vector>

#include "core/saber/LiveSaber.h"
#include "platform/speaker/PulseOutput.h"
#include "platform/speaker/SystemSoundOutput.h"
#include "support/PrivateSoundService.h"

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
using std::chrono::steady_clock;
using namespace kestrin;

constexpr std::int16_t kHum = 100;
constexpr std::int16_t kHit = 10000;
constexpr int kEvents = 100;
constexpr int kSeconds = 10;

/// Hears the sink in small pieces, and tells when a hit came out of it.
class Ear {
 public:
  Ear() : m_thread([this] { Listen(); }) {
    while (!m_isListening) std::this_thread::yield();
  }
  ~Ear() {
    m_isOver = true;
    m_thread.join();
  }
  Ear(const Ear&) = delete;
  Ear& operator=(const Ear&) = delete;

  [[nodiscard]] steady_clock::time_point AwaitHit(int number) const {
    while (m_hits < number) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return m_last.load();
  }

 private:
  void Listen() {
    std::array<std::int16_t, 48> part{};
    constexpr auto kByDefault = static_cast<std::uint32_t>(-1);
    constexpr pa_sample_spec kFormat{PA_SAMPLE_S16LE, 48000, 1};
    const pa_buffer_attr buffer{kByDefault, kByDefault, kByDefault, kByDefault, sizeof part};
    pa_simple* const stream = pa_simple_new(nullptr, "figures", PA_STREAM_RECORD, "null.monitor", "record", &kFormat,
                                            nullptr, &buffer, nullptr);
    if (stream == nullptr) throw std::runtime_error("the monitor cannot be recorded");
    bool isHit = false;
    while (!m_isOver && pa_simple_read(stream, part.data(), sizeof part, nullptr) >= 0) {
      m_isListening = true;
      for (std::size_t i = 0; i < part.size(); ++i) {
        if (const bool was = std::exchange(isHit, part[i] > kHit / 2); was || !isHit) continue;
        const auto since = std::chrono::duration<double>(static_cast<double>(part.size() - i) / 48000);
        m_last = steady_clock::now() - std::chrono::duration_cast<steady_clock::duration>(since);
        ++m_hits;
      }
    }
    pa_simple_free(stream);
  }

  std::atomic<bool> m_isOver = false;
  std::atomic<bool> m_isListening = false;
  std::atomic<int> m_hits = 0;
  std::atomic<steady_clock::time_point> m_last{};
  std::thread m_thread;
};

core::saber::SaberSounds Sounds() {
  core::saber::SaberSounds sounds;
  sounds.Add(core::sound::SlotKind::Idle, std::vector<std::int16_t>(48000, kHum));
  sounds.Add(core::sound::SlotKind::Impact, std::vector<std::int16_t>(960, kHit));
  return sounds;
}

void MeasureLatency(std::chrono::milliseconds buffer) {
  core::saber::LiveSaber saber(Sounds(), 1);
  const Ear ear;
  platform::speaker::PulseOutput output(buffer);
  saber.Take(core::saber::Event::On);
  output.Start([&saber](std::span<std::int16_t> out) { return saber.Fill(out); });
  while (saber.Now() < 24000) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  std::vector<double> latencies;
  for (int i = 1; i <= kEvents; ++i) {
    // At no fixed place of the service's own rhythm.
    std::this_thread::sleep_for(std::chrono::microseconds(60'000 + i * 370));
    const auto before = steady_clock::now();
    saber.Take(core::saber::Event::Hit);
    latencies.push_back(Milliseconds(ear.AwaitHit(i) - before).count());
  }
  std::ranges::sort(latencies);
  std::printf("event to sound, buffer %d ms: median %.1f ms, 95 %% %.1f ms, longest %.1f ms of %d events\n",
              static_cast<int>(buffer.count()), latencies[kEvents / 2], latencies[kEvents * 95 / 100], latencies.back(),
              kEvents);
}

double ProcessorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void MeasureCost(std::chrono::milliseconds buffer) {
  core::saber::LiveSaber saber(Sounds(), 1);
  platform::speaker::PulseOutput output(buffer);
  saber.Take(core::saber::Event::On);
  const double before = ProcessorSeconds();
  output.Start([&saber](std::span<std::int16_t> out) { return saber.Fill(out); });
  while (saber.Now() < 48000 * kSeconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    saber.Take(core::saber::Event::Hit);
  }
  std::printf("a stream of %d s, buffer %d ms: %.2f s of a processor\n", kSeconds, static_cast<int>(buffer.count()),
              ProcessorSeconds() - before);
}

}  // namespace

int main() {
  const support::PrivateSoundService service;
  for (const auto buffer : {platform::speaker::kLiveBuffer, platform::speaker::kFileBuffer}) {
    MeasureLatency(buffer);
    MeasureCost(buffer);
  }
}
