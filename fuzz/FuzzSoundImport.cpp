// SPDX-License-Identifier: MIT
// Any bytes as a sound file: decoded, converted, trimmed, joined, levelled, written for the board.

#include <cstddef>
#include <cstdint>
#include <system_error>

#include "MemoryFolder.h"
#include "core/base/Disk.h"
#include "core/sound/LSU_SoundFile.h"
#include "core/sound/import/SoundImport.h"
#include "platform/audio/SystemAudioTools.h"

using kestrin::fuzz::Require;

namespace {

/// A disk in memory, where nothing needs to be forced.
class MemoryDisk final : public kestrin::core::base::Disk {
 public:
  std::error_code Flush(const std::filesystem::path&) override { return {}; }
  LockResult TryLock(const std::filesystem::path&) override { return {}; }
  std::error_code TakeFreeName(const std::filesystem::path& made, const std::filesystem::path& name) override {
    std::error_code error;
    std::filesystem::rename(made, name, error);
    return error;
  }
};

}  // namespace

// libsndfile forgets a few kilobytes of every broken Ogg file. By the library, since not every system names functions.
extern "C" const char* __lsan_default_suppressions() { return "leak:libvorbis\n"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const kestrin::fuzz::MemoryFolder folder;
  static kestrin::platform::audio::SystemAudioTools tools;
  static MemoryDisk disk;
  kestrin::core::sound::SoundImport import(tools, disk);
  // A sound may well be long; what is done to it does not change behind its first seconds.
  int blocks = 200;
  // The last byte chooses what is done.
  const unsigned choice = size > 0 ? data[size - 1] : 0;
  kestrin::core::sound::ImportOptions options;
  options.trim = (choice & 1U) != 0;
  options.loop = (choice & 2U) != 0;
  if ((choice & 4U) != 0) options.level = -16;

  const auto input = folder.Write("input", data, size);
  const auto made = import.Import({input, "input", "sound"}, options, folder.Path(), [&] { return blocks-- > 0; });
  Require(made.path.empty() != made.reason.empty());
  if (made.path.empty()) return 0;
  kestrin::core::sound::LSU_SoundFile file;
  Require(file.ReadFile(made.path));
  Require(file.NrOfSamples() == made.samples);
  Require(made.truePeak && *made.truePeak <= -1);
  Require(std::filesystem::remove(made.path));
  return 0;
}
