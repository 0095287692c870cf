// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "core/base/Clock.h"
#include "core/motion/KeptParametersFolder.h"
#include "demo/pictures/Props.h"
#include "platform/archive/ZipArchives.h"
#include "platform/audio/SystemAudioTools.h"
#include "platform/files/SystemDisk.h"
#include "simulator/SimulatedAgent.h"
#include "ui/doctor/DoctorMeans.h"
#include "ui/kit/CommandGate.h"
#include "ui/window/Main.h"

namespace kestrin::demo {

/// The window, over a simulated board and the demo set, with everything else played.
class Stage {
 public:
  /// `program` holds the program's pictures, `sounds` the demo set; the board is described as behind "sim:", "none" for
  /// no board.
  /// The window has a doctor where one is given, which must outlive the stage. `asksBoard`: the window finds out what
  /// the board holds.
  Stage(const std::filesystem::path& program, const std::filesystem::path& sounds, const std::string& board,
        const ui::doctor::DoctorMeans* doctor = nullptr, bool asksBoard = false);
  ~Stage();

  /// Shows the window in that size, with the demo set in it if wanted, and the demo's folder open.
  void Open(const QSize& size, bool withSet = true);
  [[nodiscard]] ui::window::Main& Window() { return *m_window; }
  [[nodiscard]] simulator::SimulatedAgent& Board() { return *m_agent; }
  /// The time of everything but the computer's own.
  [[nodiscard]] core::base::Clock& Clock() { return m_clock; }
  /// Where the window keeps what it knows.
  [[nodiscard]] std::filesystem::path DataFolder() const;
  template <typename T>
  [[nodiscard]] T& Find(const char* name) const {
    return *m_window->findChild<T*>(name);
  }
  /// Lets time go by for everything but the computer itself.
  void Pass(core::base::Clock::Duration time) { m_clock.Wait(time); }
  /// Runs `action` once, as soon as `condition` holds while the window works.
  void When(std::function<bool()> condition, std::function<void()> action);
  /// Lets everything come to rest, so that pictures are complete.
  void Settle(QWidget& widget);

 private:
  std::filesystem::path m_sounds;
  QTemporaryDir m_folder;
  HurriedClock m_clock;
  platform::files::SystemDisk m_disk;
  ui::kit::CommandGate m_gate{std::chrono::milliseconds(0)};
  AnsweringDialogs m_dialogs;
  SilentPlayer m_player;
  OneFolder m_folders;
  core::motion::KeptParametersFolder m_kept;
  Wakefulness m_sleep;
  NoUpdate m_update;
  platform::audio::SystemAudioTools m_audio;
  platform::archive::ZipArchives m_archives{m_disk};
  QSettings m_settings;
  std::unique_ptr<simulator::SimulatedAgent> m_agent;
  std::unique_ptr<ui::window::Main> m_window;
};

}  // namespace kestrin::demo
