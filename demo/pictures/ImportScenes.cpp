// SPDX-License-Identifier: MIT
#include "demo/pictures/ImportScenes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <functional>
#include <numbers>
#include <optional>
#include <vector>

#include "demo/pictures/Stage.h"
#include "ui/kit/PathText.h"
#include "ui/sound/SoundPage.h"

namespace kestrin::demo {

namespace {

/// A sound as somebody may have it.
struct Tone {
  const char* name;
  double seconds;
  int channels = 2;
  int rate = 44100;
  /// Silence in front, as a part of the seconds.
  double silence = 0;
  double height = 0.5;
  bool isCutOff = false;
};

constexpr Tone kTones[] = {
    {"startup.wav", 2.4, 2, 44100, 0, 0.99},
    {"ignite.wav", 1.4},
    {"retract.wav", 1.3},
    {"hum loop.wav", 6.8, 1, 96000},
    {"swing 01.wav", 1.2},
    {"swing 02.wav", 0.9},
    {"swing 03.wav", 1.3, 2, 44100, 0.3},
    {"swing 04.wav", 0.8},
    {"swing 05.wav", 1.0},
    {"swing 06.wav", 0.9, 2, 44100, 0, 0.5, true},
    {"clash a.wav", 0.7, 1},
    {"clash b.wav", 0.6, 1},
    {"clash c.wav", 0.9, 1, 44100, 0.1},
    {"lockup.wav", 2.4, 1, 48000},
    {"blaster hit.wav", 0.5, 2, 48000, 0, 0.4},
};

void Put(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
}

/// Writes a WAV file of 16 bits.
void Write(const std::filesystem::path& folder, const Tone& tone, double length) {
  const auto frames = static_cast<std::uint32_t>(tone.seconds * length * tone.rate);
  const std::uint32_t size = 2 * frames * static_cast<std::uint32_t>(tone.channels);
  std::string bytes = "RIFF";
  Put(bytes, 36 + size, 4);
  bytes += "WAVEfmt ";
  Put(bytes, 16, 4);
  Put(bytes, 1, 2);
  Put(bytes, static_cast<std::uint32_t>(tone.channels), 2);
  Put(bytes, static_cast<std::uint32_t>(tone.rate), 4);
  Put(bytes, static_cast<std::uint32_t>(2 * tone.rate * tone.channels), 4);
  Put(bytes, static_cast<std::uint32_t>(2 * tone.channels), 2);
  Put(bytes, 16, 2);
  bytes += "data";
  Put(bytes, size, 4);
  for (std::uint32_t i = 0; i < frames; ++i) {
    const double time = static_cast<double>(i) / tone.rate;
    const double height = time < tone.silence ? 0 : 32767 * tone.height;
    const auto sample = static_cast<std::int16_t>(height * std::sin(2 * std::numbers::pi * 220 * time));
    for (int channel = 0; channel < tone.channels; ++channel) Put(bytes, static_cast<std::uint16_t>(sample), 2);
  }
  if (tone.isCutOff) bytes.resize(40);
  std::ofstream(folder / tone.name, std::ios::binary) << bytes;
}

/// The window with the sheet open; `length` lets every sound play so many times as long.
class ImportStage {
 public:
  ImportStage(const Place& place, const std::string& board, double length)
      : m_stage(place.program, place.sounds, board) {
    const std::filesystem::path folder = ui::kit::PathOf(m_folder.path()) / "Night heron";
    std::filesystem::create_directory(folder);
    for (const Tone& tone : kTones) Write(folder, tone, length);
    m_stage.Open(place.size, false);
    emit m_stage.Window().findChild<ui::sound::SoundPage*>()->importRequested({folder}, std::nullopt);
    Await([this] { return Rows().model()->rowCount() == static_cast<int>(std::size(kTones)); });
  }

  void AwaitReady() {
    Await([this] { return m_stage.Find<QPushButton>("ImportTakeBtn").isEnabled(); });
  }
  void PlayAfter(int row) {
    Rows().setCurrentIndex(Rows().model()->index(row, 0));
    QKeyEvent key(QEvent::KeyPress, Qt::Key_P, Qt::NoModifier, "p");
    QApplication::sendEvent(&Rows(), &key);
  }
  [[nodiscard]] QPixmap Grab() {
    m_stage.Settle(m_stage.Window());
    return m_stage.Window().grab();
  }

 private:
  [[nodiscard]] QListView& Rows() { return m_stage.Find<QListView>("ImportList"); }
  static void Await(const std::function<bool()>& condition) {
    while (!condition()) QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
  }

  QTemporaryDir m_folder;
  Stage m_stage;
};

}  // namespace

QPixmap TakeImport(const Place& place, const std::string& board) {
  ImportStage stage(place, board, 1);
  stage.AwaitReady();
  stage.PlayAfter(6);
  return stage.Grab();
}

QPixmap TakeImportTooMuch(const Place& place, const std::string& board) {
  ImportStage stage(place, board, 3.2);
  stage.AwaitReady();
  return stage.Grab();
}

}  // namespace kestrin::demo
