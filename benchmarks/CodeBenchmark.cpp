// SPDX-License-Identifier: MIT
// How fast a sound is coded, beside what the machine needs to copy the same bytes and what sox needs for a volume
// change of the same samples. One item is one sample.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "core/sound/LSU_SoundFile.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kSamples = 1'000'000;

/// A sound of noise, which leaves nothing to guess for the processor, as a ".lsu" file that goes when the program ends.
class Sound {
 public:
  Sound() : m_samples(kSamples) {
    std::uint32_t state = 1;
    for (std::int16_t& sample : m_samples) {
      state = state * 1664525U + 1013904223U;
      sample = static_cast<std::int16_t>(state >> 16);
    }
    fs::create_directories(m_folder);
    std::ofstream file(Path(), std::ios::binary);
    file.write("lsu\0", 4);
    file.write(reinterpret_cast<const char*>(m_samples.data()), kSamples * sizeof(std::int16_t));
  }
  ~Sound() {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
  }
  Sound(const Sound&) = delete;
  Sound& operator=(const Sound&) = delete;

  [[nodiscard]] fs::path Path() const { return m_folder / "noise.lsu"; }
  [[nodiscard]] fs::path Folder() const { return m_folder; }
  [[nodiscard]] const std::vector<std::int16_t>& Samples() const { return m_samples; }

 private:
  fs::path m_folder =
      fs::temp_directory_path() / ("kestrin benchmark " + std::to_string(Clock::now().time_since_epoch().count()));
  std::vector<std::int16_t> m_samples;
};

const Sound& TheSound() {
  static const Sound sound;
  return sound;
}

void CountSamples(benchmark::State& state) {
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(kSamples));
}

/// Reading the file from the system's cache included; the stream's memory is taken anew each time, as for a fresh
/// sound.
void CodeFreshSound(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    LSU_SoundFile file;
    if (!file.ReadFile(TheSound().Path())) return state.SkipWithError("the sound cannot be read");
    state.ResumeTiming();
    if (!file.Code()) return state.SkipWithError("the sound cannot be coded");
    state.PauseTiming();
    file = LSU_SoundFile();
    state.ResumeTiming();
  }
  CountSamples(state);
}
BENCHMARK(CodeFreshSound);

/// The same for a sound that was coded before, say for an earlier download.
void CodeSoundAgain(benchmark::State& state) {
  LSU_SoundFile file;
  if (!file.ReadFile(TheSound().Path())) return state.SkipWithError("the sound cannot be read");
  for (auto _ : state)
    if (!file.Code()) return state.SkipWithError("the sound cannot be coded");
  CountSamples(state);
}
BENCHMARK(CodeSoundAgain);

/// Reading and measuring a file, as when it is added to a slot.
void ReadSound(benchmark::State& state) {
  LSU_SoundFile file;
  for (auto _ : state)
    if (!file.ReadFile(TheSound().Path())) return state.SkipWithError("the sound cannot be read");
  CountSamples(state);
}
BENCHMARK(ReadSound);

/// What no coder can beat.
void CopySameBytes(benchmark::State& state) {
  std::vector<std::int16_t> copy(kSamples);
  for (auto _ : state) {
    std::memcpy(copy.data(), TheSound().Samples().data(), kSamples * sizeof(std::int16_t));
    benchmark::DoNotOptimize(copy.data());
    benchmark::ClobberMemory();
  }
  CountSamples(state);
}
BENCHMARK(CopySameBytes);

/// A volume change by sox, the whole process; then coding, often enough for a steady mean. `sox/Code` tells how many
/// times longer sox takes.
void SoxVolumeChange(benchmark::State& state) {
  if (std::system("sox --version > /dev/null 2>&1") != 0) return state.SkipWithError("sox is not installed");
  const fs::path raw = TheSound().Folder() / "noise.s16";
  {
    std::ofstream file(raw, std::ios::binary);
    file.write(reinterpret_cast<const char*>(TheSound().Samples().data()), kSamples * sizeof(std::int16_t));
  }
  const std::string format = "-t s16 -r 48000 -c 1 ";
  const std::string command =
      "sox " + format + "\"" + raw.string() + "\" " + format + "\"" + raw.string() + ".out\" vol 0.5";
  LSU_SoundFile sound;
  if (!sound.ReadFile(TheSound().Path())) return state.SkipWithError("the sound cannot be read");
  Clock::duration sox{0};
  for (auto _ : state) {
    const auto start = Clock::now();
    if (std::system(command.c_str()) != 0) return state.SkipWithError("sox failed");
    const auto taken = Clock::now() - start;
    sox += taken;
    state.SetIterationTime(std::chrono::duration<double>(taken).count());
  }
  const auto start = Clock::now();
  constexpr int kCodings = 500;
  for (int i = 0; i < kCodings; ++i)
    if (!sound.Code()) return state.SkipWithError("the sound cannot be coded");
  const auto code = Clock::now() - start;
  state.counters["sox/Code"] = static_cast<double>(sox.count()) / static_cast<double>(state.iterations()) /
                               (static_cast<double>(code.count()) / kCodings);
  CountSamples(state);
}
BENCHMARK(SoxVolumeChange)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kestrin::core::sound
