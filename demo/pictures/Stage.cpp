// SPDX-License-Identifier: MIT
#include "demo/pictures/Stage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPixmap>
#include <stdexcept>
#include <utility>

#include "ui/kit/PathText.h"
#include "ui/sound/SoundPage.h"
#include "ui/window/Surroundings.h"

namespace kestrin::demo {

namespace {

constexpr const char* kNoBoard = "none";

/// What the program tells of itself in a picture.
ui::window::AboutFacts Facts(const std::filesystem::path& program) {
  return {"2.2.2",
          "MIT License, Copyright (c) 2026 The Kestrin Launcher authors",
          {"Qt 6.4.2", "hidapi 0.13.1", "libudev", "libcurl 7.88.1 with OpenSSL/3.0.15", "libpulse 16.1", "chmlib",
           "nlohmann-json 3.11.2"},
          {{"Program", program},
           {"Your data", "/home/ann/.local/share/kestrin"},
           {"Fonts", "/home/ann/.local/share/kestrin/fonts"}},
          {}};
}

}  // namespace

Stage::Stage(const std::filesystem::path& program, const std::filesystem::path& sounds, const std::string& board,
             const ui::doctor::DoctorMeans* doctor, bool asksBoard)
    : m_sounds(sounds),
      m_folders(sounds),
      m_kept(ui::kit::PathOf(m_folder.path()), m_disk),
      m_settings(m_folder.filePath("settings.ini"), QSettings::IniFormat) {
  const bool none = board == kNoBoard;
  const auto options = simulator::BoardOptions::Parse(none ? "" : board);
  if (!options) throw std::runtime_error(options.Text());
  m_agent = std::make_unique<simulator::SimulatedAgent>(*options, m_clock, m_gate.Pump());
  if (none) m_agent->Unplug();
  m_window =
      std::make_unique<ui::window::Main>(ui::window::Surroundings{*m_agent,
                                                                  m_gate,
                                                                  m_clock,
                                                                  m_disk,
                                                                  m_dialogs,
                                                                  m_player,
                                                                  m_folders,
                                                                  m_kept,
                                                                  m_sleep,
                                                                  &m_update,
                                                                  m_settings,
                                                                  program,
                                                                  {ui::kit::PathOf(m_folder.path())},
                                                                  doctor,
                                                                  [program] { return Facts(program); },
                                                                  &m_audio,
                                                                  &m_archives,
                                                                  nullptr,
                                                                  asksBoard ? DataFolder() : std::filesystem::path()});
}

Stage::~Stage() = default;

std::filesystem::path Stage::DataFolder() const { return ui::kit::PathOf(m_folder.path()); }

void Stage::Open(const QSize& size, bool withSet) {
  if (!m_window->StartUp()) throw std::runtime_error("the window did not start up");
  m_window->resize(size);
  m_window->show();
  if (withSet) m_window->OpenSet(m_sounds / "demo.lscfg");
  m_window->findChild<ui::sound::SoundPage*>()->SetFolder(m_sounds);
  Settle(*m_window);
}

void Stage::When(std::function<bool()> condition, std::function<void()> action) {
  auto* const timer = new QTimer(m_window.get());
  QObject::connect(timer, &QTimer::timeout, timer,
                   [timer, condition = std::move(condition), action = std::move(action)] {
                     if (!condition()) return;
                     timer->stop();
                     timer->deleteLater();
                     action();
                   });
  timer->start(0);
}

void Stage::Settle(QWidget& widget) {
  constexpr int kQuietMilliseconds = 300;
  // What moves all the time is never at rest.
  constexpr int kLongestMilliseconds = 2000;
  QImage last;
  QElapsedTimer all;
  QElapsedTimer quiet;
  all.start();
  quiet.start();
  while (quiet.elapsed() < kQuietMilliseconds && all.elapsed() < kLongestMilliseconds) {
    QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    QImage now = widget.grab().toImage();
    if (now != last) quiet.restart();
    last = std::move(now);
  }
}

}  // namespace kestrin::demo
