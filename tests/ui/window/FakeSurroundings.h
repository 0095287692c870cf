// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "core/sound/SoundPlayer.h"
#include "ui/kit/SleepBlocker.h"
#include "ui/kit/SpecialFolders.h"
#include "ui/kit/UpdateDialog.h"

namespace kestrin::support {

/// Plays nothing, remembers what it was given.
class FakePlayer final : public core::sound::SoundPlayer {
 public:
  std::vector<std::filesystem::path> played;
  int stops = 0;
  Status status;

  void Play(const std::filesystem::path& wav) override {
    played.push_back(wav);
    status.playing = static_cast<bool>(status.ended);
  }
  void Stop() override {
    ++stops;
    status.playing = false;
  }
  [[nodiscard]] Status Look() override { return status; }
};

class FakeFolders final : public ui::kit::SpecialFolders {
 public:
  std::filesystem::path desktop;
  std::filesystem::path documents;
  std::vector<ui::kit::Drive> drives;

  [[nodiscard]] std::filesystem::path Desktop() const override { return desktop; }
  [[nodiscard]] std::filesystem::path Documents() const override { return documents; }
  [[nodiscard]] std::vector<ui::kit::Drive> Drives() const override { return drives; }
};

class FakeSleepBlocker final : public ui::kit::SleepBlocker {
 public:
  int blocks = 0;
  bool blocked = false;

  void Block(const std::string&) override {
    ++blocks;
    blocked = true;
  }
  void Unblock() override { blocked = false; }
};

class FakeUpdateDialog final : public ui::kit::UpdateDialog {
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
