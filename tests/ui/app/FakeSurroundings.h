#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "app/SleepBlocker.h"
#include "app/SpecialFolders.h"
#include "app/UpdateDialog.h"
#include "sound/SoundPlayer.h"

namespace kestrin::support {

/// Plays nothing, remembers what it was given.
class FakePlayer final : public sound::SoundPlayer {
 public:
  std::vector<std::filesystem::path> played;
  int stops = 0;
  Status status;

  void Play(const std::filesystem::path& wav) override {
    played.push_back(wav);
    status.playing = status.problem.empty();
  }
  void Stop() override {
    ++stops;
    status.playing = false;
  }
  [[nodiscard]] Status Look() override { return status; }
};

class FakeFolders final : public app::SpecialFolders {
 public:
  std::filesystem::path desktop;
  std::filesystem::path documents;
  std::vector<app::Drive> drives;

  [[nodiscard]] std::filesystem::path Desktop() const override { return desktop; }
  [[nodiscard]] std::filesystem::path Documents() const override { return documents; }
  [[nodiscard]] std::vector<app::Drive> Drives() const override { return drives; }
};

class FakeSleepBlocker final : public app::SleepBlocker {
 public:
  int blocks = 0;
  bool blocked = false;

  void Block(const std::string&) override {
    ++blocks;
    blocked = true;
  }
  void Unblock() override { blocked = false; }
};

class FakeUpdateDialog final : public app::UpdateDialog {
 public:
  std::vector<std::string> calls;
  /// What the next update brings.
  std::vector<std::filesystem::path> sets;
  /// Called while it is open.
  std::function<void()> whileOpen;

  void Initialise() override { calls.emplace_back("initialise"); }
  std::vector<std::filesystem::path> Open(QWidget&, const std::string& serialNumber) override {
    calls.push_back("open " + serialNumber);
    if (whileOpen) whileOpen();
    return sets;
  }
  void Cancel() override { calls.emplace_back("cancel"); }
  void Unload() override { calls.emplace_back("unload"); }
};

}  // namespace kestrin::support
