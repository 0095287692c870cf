// SPDX-License-Identifier: MIT
// How fast sounds of many kinds become sounds for the board, beside what sox needs for the same files. One item is one
// file.

#include <benchmark/benchmark.h>
#include <sched.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "core/sound/import/ImportCrew.h"
#include "core/sound/import/SoundImport.h"
#include "platform/audio/SystemAudioTools.h"
#include "platform/files/SystemDisk.h"
#include "support/SoundFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// A kind of which people have files.
struct Kind {
  const char* kind;
  const char* ending;
  int rate;
  int channels;
};
constexpr Kind kKinds[] = {{"wav", "wav", 44100, 2},       {"s24.wav", "wav", 96000, 1}, {"flac", "flac", 44100, 2},
                           {"ogg", "ogg", 44100, 2},       {"wav", "wav", 22050, 1},     {"wav", "wav", 48000, 2},
                           {"s24.flac", "flac", 48000, 1}, {"wav", "wav", 11025, 1},     {"aiff", "aiff", 44100, 1},
                           {"f32.wav", "wav", 44100, 2}};
constexpr int kFiles = 100;

/// Sounds of 1 to 4 seconds, hum and hiss, which go when the program ends.
class Sounds {
 public:
  Sounds() {
    fs::create_directories(m_folder);
    std::uint32_t state = 1;
    for (int number = 0; number < kFiles; ++number) {
      const Kind& kind = kKinds[static_cast<std::size_t>(number) % std::size(kKinds)];
      const auto frames = static_cast<std::size_t>(kind.rate * (1 + number % 4));
      std::vector<double> samples(frames * static_cast<std::size_t>(kind.channels));
      for (std::size_t i = 0; i < samples.size(); ++i) {
        state = state * 1664525U + 1013904223U;
        const double hiss = (static_cast<double>(state >> 8) - 8388608) / 8388608;
        samples[i] = 0.4 * std::sin(static_cast<double>(i) * 0.02) + 0.1 * hiss;
      }
      const std::string name = "sound " + std::to_string(number) + "." + kind.ending;
      files.push_back(support::WriteSound(m_folder / name, kind.kind, samples, kind.rate, kind.channels));
    }
  }
  ~Sounds() {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
  }
  Sounds(const Sounds&) = delete;
  Sounds& operator=(const Sounds&) = delete;

  [[nodiscard]] fs::path Empty(const std::string& name) const {
    fs::remove_all(m_folder / name);
    fs::create_directory(m_folder / name);
    return m_folder / name;
  }

  std::vector<fs::path> files;

 private:
  fs::path m_folder =
      fs::temp_directory_path() / ("kestrin benchmark " + std::to_string(Clock::now().time_since_epoch().count()));
};

/// Seconds for all of them; negative when one failed.
double Import(const Sounds& sounds, unsigned threads) {
  std::vector<ImportCrew::Order> orders;
  for (const fs::path& file : sounds.files) orders.push_back({{file, file.string(), file.stem().string()}, {}});
  platform::audio::SystemAudioTools tools;
  platform::files::SystemDisk disk;
  const fs::path out = sounds.Empty("imported");
  bool isGood = true;
  const auto start = Clock::now();
  ImportCrew crew(tools, disk, threads);
  crew.Import(orders, out, [&](std::size_t, const ImportedSound& sound) { isGood = isGood && sound.reason.empty(); });
  const std::chrono::duration<double> taken = Clock::now() - start;
  return isGood ? taken.count() : -1;
}

/// The same by sox, a process for each file, as a script would do it.
double RunSox(const Sounds& sounds) {
  const fs::path out = sounds.Empty("by sox");
  const fs::path script = out / "convert.sh";
  {
    std::ofstream file(script);
    file << "set -e\n";
    for (const fs::path& sound : sounds.files)
      file << "sox -V1 '" << sound.string() << "' -r 48000 -c 1 -b 16 '" << (out / sound.stem()).string()
           << ".wav' rate -v\n";
  }
  const auto start = Clock::now();
  const int status = std::system(("sh '" + script.string() + "'").c_str());
  const std::chrono::duration<double> taken = Clock::now() - start;
  return status == 0 ? taken.count() : -1;
}

/// Keeps the threads that are made from now on, and sox, on so many of the computer's cores.
bool StayOn(int cores) {
  cpu_set_t set;
  CPU_ZERO(&set);
  for (int core = 0; core < cores; ++core) CPU_SET(core, &set);
  return sched_setaffinity(0, sizeof set, &set) == 0;
}

/// Each round one after the other, so that all meet the same machine: on one core, on two with the threads that the
/// crew makes for two, and sox on one. `sox/one` tells how many times longer sox takes, `one/two` how much the second
/// core helps.
void ImportHundredFiles(benchmark::State& state) {
  if (std::system("sox --version > /dev/null 2>&1") != 0) return state.SkipWithError("sox is not installed");
  const Sounds sounds;
  double one = 0;
  double two = 0;
  double sox = 0;
  for (auto _ : state) {
    if (!StayOn(2)) return state.SkipWithError("two cores are needed");
    const double together = Import(sounds, ImportCrew::ThreadsFor(2));
    StayOn(1);
    const double alone = Import(sounds, 1);
    const double other = RunSox(sounds);
    StayOn(2);
    if (alone < 0 || together < 0) return state.SkipWithError("a sound cannot be imported");
    if (other < 0) return state.SkipWithError("sox failed");
    one += alone;
    two += together;
    sox += other;
    state.SetIterationTime(alone);
  }
  state.counters["sox/one"] = sox / one;
  state.counters["one/two"] = one / two;
  state.SetItemsProcessed(state.iterations() * kFiles);
}
BENCHMARK(ImportHundredFiles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

/// A number of /proc/self/status, in MiB.
double MemoryOf(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;)
    if (double kibibytes = 0; word == name + ":" && status >> kibibytes) return kibibytes / 1024;
  return 0;
}

/// A WAV file of two gibibytes, stereo at 44,100 Hz, from the first step to the last. `MiB` tells how much memory that
/// takes above what the program had before, at its most.
void ImportTwoGibibytes(benchmark::State& state) {
  const fs::path folder =
      fs::temp_directory_path() / ("kestrin benchmark " + std::to_string(Clock::now().time_since_epoch().count()));
  fs::create_directories(folder);
  const fs::path file = folder / "long.wav";
  constexpr std::uint32_t kBytes = 0x7FFFFF00;
  support::WriteSound(file, "wav", support::Tone(440, 0.9, 400'000, 44100), 44100, 2);
  {
    std::fstream wav(file, std::ios::in | std::ios::out | std::ios::binary);
    const std::uint32_t sizes[] = {kBytes - 8, kBytes - 44};
    wav.seekp(4).write(reinterpret_cast<const char*>(&sizes[0]), 4);
    wav.seekp(40).write(reinterpret_cast<const char*>(&sizes[1]), 4);
  }
  // The rest is silence that takes no room on the disk.
  fs::resize_file(file, kBytes);
  platform::audio::SystemAudioTools tools;
  platform::files::SystemDisk disk;
  for (auto _ : state) {
    // From now on the most is counted anew.
    std::ofstream("/proc/self/clear_refs") << 5;
    const double before = MemoryOf("VmRSS");
    const ImportedSound made = SoundImport(tools, disk).Import({file, "long", "long"}, {}, folder);
    if (!made.reason.empty()) state.SkipWithError(made.reason.c_str());
    state.counters["MiB"] = MemoryOf("VmHWM") - before;
  }
  std::error_code ignored;
  fs::remove_all(folder, ignored);
}
BENCHMARK(ImportTwoGibibytes)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace
}  // namespace kestrin::core::sound
