// SPDX-License-Identifier: MIT
// A whole download of a full set into the simulated board: how many bytes of flash data a second arrive without wire
// time, and how much longer than the pure wire time it takes over full-speed USB.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "FullSet.h"
#include "core/base/Clock.h"
#include "core/device/DeviceSession.h"
#include "core/sound/Download.h"
#include "core/sound/FlashBlock.h"
#include "simulator/SimulatedAgent.h"
#include "support/QuietSessionView.h"

namespace kestrin::core::sound {
namespace {

class NoDownloadView final : public DownloadView {
  void ShowMessage(const std::string&) override {}
  void ShowFrame() override {}
  void HideFrame() override {}
  void ShowInformation(const std::string&) override {}
  void ShowPercent(std::optional<int>) override {}
  void ShowButton(const std::string&) override {}
  void ShowBoardHolds(const std::string&) override {}
  bool AskAbort(const std::string&) override { return false; }
  void StartHideFrameTimer() override {}
};

class NothingKept final : public device::KeptParameters {
  [[nodiscard]] std::optional<device::AccParam> Find(const std::string&) const override { return std::nullopt; }
  base::Result<> Keep(const std::string&, const device::AccParam&) override { return {}; }
  void Forget(const std::string&) override {}
};

/// A board online behind a session.
struct Rig {
  explicit Rig(const simulator::BoardOptions& options)
      : agent(std::make_unique<simulator::SimulatedAgent>(options, clock)), session(*agent, sessionView) {
    static_cast<void>(session.SearchAtStartUp());
  }

  base::SystemClock clock;
  std::unique_ptr<simulator::SimulatedAgent> agent;
  support::QuietSessionView sessionView;
  device::DeviceSession session;
  NoDownloadView view;
  NothingKept kept;
};

DownloadOutcome Send(FullSet& set, Rig& rig, Download& download) {
  return download.Send({*rig.session.Board(), rig.session.State().serialNumber,
                        device::FlashSize(set.configuration.MaxNrOfSamples()), true});
}

/// From the check of the files to the restart, the board made anew each time.
void DownloadFullSet(benchmark::State& state) {
  FullSet set;
  std::int64_t bytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto rig = std::make_unique<Rig>(simulator::BoardOptions{});
    Download download(set.configuration, rig->view, rig->kept, rig->clock, {});
    state.ResumeTiming();
    if (Send(set, *rig, download) != DownloadOutcome::Success) return state.SkipWithError("the download failed");
    bytes += download.BytesWritten();
    state.PauseTiming();
    rig.reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(DownloadFullSet)->Unit(benchmark::kMillisecond);

/// The same over full-speed USB: `over wire` is the time beyond what the reports alone need, as a share of it.
void DownloadOverUsb(benchmark::State& state) {
  FullSet set;
  simulator::BoardOptions options;
  options.wire = simulator::BoardOptions::Wire::Usb;
  for (auto _ : state) {
    Rig rig(options);
    Download download(set.configuration, rig.view, rig.kept, rig.clock, {});
    const auto start = rig.clock.Now();
    if (Send(set, rig, download) != DownloadOutcome::Success) return state.SkipWithError("the download failed");
    const double taken = std::chrono::duration<double>(rig.clock.Now() - start).count();
    // 1,028 bytes are 17 packets of 64, an answer is one, a millisecond each. GetAccParam and its three answers,
    // ClearFlash and SetAccParam with one answer each, the blocks with one each, table and checksum with one each,
    // Reset.
    std::int64_t blocks = 0;
    for (const SlotFile& entry : set.configuration.FilesInFlashOrder())
      blocks += static_cast<std::int64_t>(FlashBlocks(entry.file->NrOfBytes()).size());
    const double wire = static_cast<double>((1 + 1 + 1 + blocks + 2 + 1) * 17 + (3 + 1 + 1 + blocks + 2)) / 1000;
    state.counters["wire s"] = wire;
    state.counters["over wire %"] = (taken / wire - 1) * 100;
    state.SetIterationTime(taken);
  }
}
BENCHMARK(DownloadOverUsb)->Unit(benchmark::kSecond)->UseManualTime()->Iterations(1);

}  // namespace
}  // namespace kestrin::core::sound
