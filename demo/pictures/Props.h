// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/base/Clock.h"
#include "core/sound/SoundPlayer.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/SleepBlocker.h"
#include "ui/kit/SpecialFolders.h"
#include "ui/kit/UpdateDialog.h"

namespace kestrin::demo {

/// Nobody waits for a picture: waiting takes no time, and the board's time goes on all the same.
class HurriedClock final : public core::base::Clock {
 public:
  [[nodiscard]] Duration Now() const override { return m_now; }
  void Wait(Duration duration) override { m_now += duration; }

 private:
  Duration m_now{};
};

/// Answers every question at once: offline work is welcome, a download that is asked about is cancelled.
class AnsweringDialogs final : public ui::kit::Dialogs {
 public:
  /// Every text that was to be shown.
  std::vector<QString> shown;

  [[nodiscard]] QString OpenFile(const QString&, const QString&, const QString&, ui::kit::HelpContext) override {
    return {};
  }
  [[nodiscard]] QStringList OpenFiles(const QString&, const QString&, const QString&, ui::kit::HelpContext) override {
    return {};
  }
  [[nodiscard]] QString SaveFile(const QString&, const QString&, const QString&, const QString&,
                                 ui::kit::HelpContext) override {
    return {};
  }
  [[nodiscard]] std::optional<QColor> AskColor(const QColor&, ui::kit::HelpContext) override { return {}; }
  void ShowMessage(const QString& text, const QString&) override { shown.push_back(text); }
  void ShowError(const QString& text, const QString&) override { shown.push_back(text); }
  [[nodiscard]] bool ShowList(const QString& headline, const QStringList&, const QString&,
                              ui::kit::HelpContext) override {
    shown.push_back(headline);
    return false;
  }
  [[nodiscard]] bool AskOkCancel(const QString&, const QString&, Harmless harmless, ui::kit::HelpContext) override {
    return harmless != Harmless::Ok;
  }
  [[nodiscard]] Unsaved AskUnsaved(const QString&) override { return Unsaved::Discard; }
  [[nodiscard]] LeftSet AskLeftSet(const QString&, const QString&) override { return LeftSet::Leave; }
  [[nodiscard]] QString ChooseFolder(const QString&, const QString&, ui::kit::HelpContext) override { return {}; }
  [[nodiscard]] MissingSounds AskMissing(const QString&, const QString&) override { return MissingSounds::Keep; }
};

/// Plays one endless silence.
class SilentPlayer final : public core::sound::SoundPlayer {
 public:
  void Play(const std::filesystem::path&) override { m_status.playing = true; }
  void Stop() override { m_status.playing = false; }
  [[nodiscard]] Status Look() override { return m_status; }

 private:
  Status m_status;
};

/// A computer with nothing on it but the sounds.
class OneFolder final : public ui::kit::SpecialFolders {
 public:
  explicit OneFolder(std::filesystem::path folder) : m_folder(std::move(folder)) {}
  [[nodiscard]] std::filesystem::path Desktop() const override { return m_folder; }
  [[nodiscard]] std::filesystem::path Documents() const override { return m_folder.parent_path(); }
  [[nodiscard]] std::vector<ui::kit::Drive> Drives() const override { return {{"Home", m_folder}}; }

 private:
  std::filesystem::path m_folder;
};

class Wakefulness final : public ui::kit::SleepBlocker {
 public:
  void Block(const std::string&) override {}
  void Unblock() override {}
};

/// An update that never brings anything.
class NoUpdate final : public ui::kit::UpdateDialog {
 public:
  void Initialise() override {}
  [[nodiscard]] std::vector<std::filesystem::path> Open(QWidget&, const std::string&) override { return {}; }
  void Cancel() override {}
  void Unload() override {}
};

}  // namespace kestrin::demo
