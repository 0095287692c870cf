// SPDX-License-Identifier: MIT
// The longest time in which the window did not get its turn, in milliseconds, during what takes long.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QListView>
#include <fstream>

#include "EventLoopWatch.h"
#include "FullSet.h"
#include "core/sound/SoundSet.h"
#include "platform/files/SystemDisk.h"
#include "ui/kit/SpecialFolders.h"
#include "ui/sound/FileExplorer.h"
#include "ui/sound/SoundPage.h"

namespace kestrin::benchmarks {
namespace {

constexpr const char* kPause = "longest pause ms";

void Turn() { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

class Folders final : public ui::kit::SpecialFolders {
 public:
  explicit Folders(std::filesystem::path folder) : m_folder(std::move(folder)) {}
  [[nodiscard]] std::filesystem::path Desktop() const override { return m_folder; }
  [[nodiscard]] std::filesystem::path Documents() const override { return m_folder; }
  [[nodiscard]] std::vector<ui::kit::Drive> Drives() const override { return {}; }

 private:
  std::filesystem::path m_folder;
};

/// A folder of 5,000 sounds is opened, shown and scrolled to its end.
void ShowLargeFolder(benchmark::State& state) {
  constexpr int kFiles = 5000;
  const std::filesystem::path large = std::filesystem::temp_directory_path() / "kestrin pauses";
  std::filesystem::create_directories(large / "empty");
  for (int file = 0; file < kFiles; ++file)
    std::ofstream(large / ("sound " + std::to_string(file) + ".lsu"), std::ios::binary) << "1234567890";
  const Folders folders(large);
  core::sound::LSU_Configuration configuration;
  core::sound::SoundSet set(configuration);
  ui::sound::SoundPage page(set, folders);
  page.resize(1180, 700);
  page.show();
  bool shown = false;
  QObject::connect(page.findChild<ui::sound::FileExplorer*>(), &ui::sound::FileExplorer::folderShown,
                   [&shown] { shown = true; });
  const auto show = [&](const std::filesystem::path& folder) {
    shown = false;
    page.SetFolder(folder);
    while (!shown) Turn();
    page.findChild<QListView*>("FileList")->scrollToBottom();
    Turn();
  };
  double longest = 0;
  for (auto _ : state) {
    state.PauseTiming();
    show(large / "empty");
    state.ResumeTiming();
    EventLoopWatch watch;
    show(large);
    longest = std::max(longest, watch.LongestPause());
  }
  state.counters[kPause] = longest;
  std::filesystem::remove_all(large);
}
BENCHMARK(ShowLargeFolder)->Unit(benchmark::kMillisecond);

/// A set that fills the board is loaded.
void LoadFullSet(benchmark::State& state) {
  core::sound::FullSet full;
  platform::files::SystemDisk disk;
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "kestrin pauses.lscfg";
  core::sound::SoundSet saved(full.configuration);
  if (!saved.Save(path, disk)) return state.SkipWithError("the set could not be saved");
  core::sound::LSU_Configuration configuration;
  core::sound::SoundSet set(configuration);
  double longest = 0;
  for (auto _ : state) {
    EventLoopWatch watch;
    if (!set.Load(path, Turn).valid) return state.SkipWithError("the set could not be loaded");
    longest = std::max(longest, watch.LongestPause());
  }
  state.counters[kPause] = longest;
  std::filesystem::remove(path);
}
BENCHMARK(LoadFullSet)->Unit(benchmark::kMillisecond);

/// It is coded for the board.
void CodeFullSet(benchmark::State& state) {
  core::sound::FullSet full;
  double longest = 0;
  for (auto _ : state) {
    EventLoopWatch watch;
    if (!full.configuration.MakeMemoryMap([](int) { return true; }, Turn))
      return state.SkipWithError("the set could not be coded");
    longest = std::max(longest, watch.LongestPause());
  }
  state.counters[kPause] = longest;
}
BENCHMARK(CodeFullSet)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kestrin::benchmarks

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
