#pragma once

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "core/device/BoardIdentity.h"
#include "core/sound/LSU_Configuration.h"
#include "core/sound/SlotKind.h"

namespace kestrin::core::sound {

/// A set that fills the smaller board to the last sample: 40 files of noise.
class FullSet {
 public:
  FullSet() {
    std::filesystem::create_directories(m_folder);
    int remaining = device::kDefaultMemoryCapacity;
    int files = 40;
    for (const Slot& slot : kSlots)
      for (int position = 1; position <= (slot.isList ? kListCapacity : 1); ++position) {
        const int samples = remaining / files--;
        remaining -= samples;
        const std::filesystem::path path = m_folder / (std::string(slot.name) + std::to_string(position) + ".lsu");
        Write(path, samples);
        if (!configuration.AddFile(path, slot.kind)) std::abort();
      }
    configuration.SetMaxNrOfSamples(device::kDefaultMemoryCapacity);
  }
  ~FullSet() {
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
  }
  FullSet(const FullSet&) = delete;
  FullSet& operator=(const FullSet&) = delete;

  LSU_Configuration configuration;

 private:
  static void Write(const std::filesystem::path& path, int count) {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(count));
    std::uint32_t state = static_cast<std::uint32_t>(count);
    for (std::int16_t& sample : samples) {
      state = state * 1664525U + 1013904223U;
      sample = static_cast<std::int16_t>(state >> 16);
    }
    std::ofstream file(path, std::ios::binary);
    file.write("lsu\0", 4);
    file.write(reinterpret_cast<const char*>(samples.data()),
               static_cast<std::streamsize>(samples.size() * sizeof(std::int16_t)));
  }

  std::filesystem::path m_folder =
      std::filesystem::temp_directory_path() /
      ("kestrin download " + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
};

}  // namespace kestrin::core::sound
