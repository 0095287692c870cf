// SPDX-License-Identifier: MIT
// Any bytes as a ".lscfg" file; its paths may name "sound.lsu" and "other.lsu", which are good sounds, and
// "silent.lsu", which is none.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "MemoryFolder.h"
#include "core/sound/ConfigurationFile.h"
#include "support/RecordingDisk.h"

namespace {

using kestrin::fuzz::MemoryFolder;
using kestrin::fuzz::Require;
using namespace kestrin::core::sound;

/// A view that checks what it is shown.
class Watch : public ConfigurationView {
 public:
  void EmptySlot(SlotKind kind) override { m_slot = kind; }
  void ShowFile(SlotKind kind, int position, const std::string& name) override {
    Require(kind == m_slot);
    Require(position >= 1 && position <= (SlotOf(kind).isList ? kListCapacity : 1));
    Require(name.find_first_of("/\\") == name.npos);
  }
  void UpdateMemoryStatus() override {}

 private:
  SlotKind m_slot{};
};

/// The folder of the sounds, made the current one so that short paths reach them.
const MemoryFolder& Sounds() {
  static const MemoryFolder folder;
  static const bool prepared = [] {
    std::vector<std::uint8_t> bytes(4 + 2 * 60, 1);
    (void)folder.Write("sound.lsu", bytes.data(), bytes.size());
    (void)folder.Write("other.lsu", bytes.data(), bytes.size() - 10);
    bytes.assign(bytes.size(), 0);
    (void)folder.Write("silent.lsu", bytes.data(), bytes.size());
    std::filesystem::current_path(folder.Path());
    return true;
  }();
  (void)prepared;
  return folder;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto path = Sounds().Write("input.lscfg", data, size);
  LSU_Configuration configuration;
  // What the load has to replace.
  for (const SlotKind kind : {SlotKind::Boot, SlotKind::Motion, SlotKind::Lockup})
    Require(configuration.AddFile("other.lsu", kind));
  Watch watch;
  const LoadResult result = ConfigurationFile::Load(path, configuration, watch);
  Require(static_cast<bool>(result.valid) == result.valid.Text().empty());
  Require(static_cast<bool>(result.valid) || result.Message() == "Not a valid configuration file");

  std::int64_t total = 0;
  for (const SlotFile& entry : configuration.FilesInFlashOrder()) total += entry.file->NrOfSamples();
  Require(configuration.TotalNrOfSamples() == total);
  if (!result.valid) return 0;

  // What was loaded can be saved, and loads back as the same.
  const auto saved = Sounds().Path() / "saved.lscfg";
  if (!ConfigurationFile::Save(configuration, saved, kestrin::support::AnyDisk())) return 0;
  LSU_Configuration again;
  const LoadResult second = ConfigurationFile::Load(saved, again, watch);
  Require(second.valid && second.failed.empty());
  Require(again.TotalNrOfSamples() == total);
  for (const SlotFile& entry : configuration.FilesInFlashOrder()) {
    const LSU_SoundFile& same = again.FileAt(entry.kind, entry.position);
    Require(same.FileNameAndPath() == entry.file->FileNameAndPath());
    Require(same.Volume() == entry.file->Volume());
  }
  return 0;
}
