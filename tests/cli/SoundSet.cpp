#include "SoundSet.h"

#include <algorithm>
#include <cstdlib>

#include "support/TestFiles.h"

namespace kestrin::support {

int SoundSet::Sound::Peak() const {
  int peak = 0;
  for (const int sample : samples) peak = std::max(peak, std::abs(sample));
  return peak;
}

std::int64_t SoundSet::Samples() const {
  std::size_t sum = 0;
  for (const Sound& sound : sounds) sum += sound.samples.size();
  return static_cast<std::int64_t>(sum);
}

std::int64_t SoundSet::CodedBytes() const {
  std::int64_t sum = 0;
  for (const Sound& sound : sounds) sum += sound.CodedBytes();
  return sum;
}

int SoundSet::WriteReports() const {
  int reports = 0;
  for (const Sound& sound : sounds) {
    const auto bytes = static_cast<int>(sound.CodedBytes());
    const int blocks = bytes > 1024 ? bytes / 1024 : 0;
    const int rest = bytes - blocks * 1024;
    reports += blocks + (rest > 1021 ? 2 : rest > 0 ? 1 : 0);
  }
  return reports;
}

SoundSet WriteSoundSet(const std::filesystem::path& folder) {
  SoundSet set;
  unsigned seed = 0;
  const auto add = [&](const std::string& slot, int position, std::size_t count, int volume, std::int16_t peak) {
    ++seed;
    const auto samples = SomeSamples(count, peak, seed);
    const auto path = WriteSoundFile(folder / (slot + std::to_string(position) + ".lsu"), samples);
    set.sounds.push_back({slot, position, path, volume, samples});
  };
  add("boot", 1, 49, 100, 12000);
  add("pwron", 1, 682, 100, 32767);  // 1,023 coded bytes: one rest that two reports carry
  add("pwroff", 1, 2000, 50, 20000);
  add("idle", 1, 3001, 100, 500);
  add("motion", 1, 800, 80, 30000);
  add("motion", 2, 1365, 100, 25000);
  add("impact", 1, 700, 102, 31000);
  add("lockup", 1, 4096, 100, 9000);

  std::string text;
  const auto entry = [&](const SoundSet::Sound& sound) {
    text += sound.path.string() + "\r\n " + std::to_string(sound.volume) + "\r\n";
  };
  const char* const keywords[] = {"BOOT", "PWRON", "PWROFF", "IDLE", "MOTION-2", nullptr, "IMPACT-1", "LOCKUP-1"};
  for (std::size_t i = 0; i < set.sounds.size(); ++i) {
    if (keywords[i] != nullptr) text += keywords[i] + std::string("\r\n");
    entry(set.sounds[i]);
  }
  set.configuration = WriteBytes(folder / "set.lscfg", text);
  return set;
}

}  // namespace kestrin::support
