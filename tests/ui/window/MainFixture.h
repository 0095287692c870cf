// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QEnterEvent>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "core/base/Clock.h"
#include "core/base/PathText.h"
#include "simulator/store/StoredBoard.h"
#include "support/FakeClock.h"
#include "support/MemoryKeptParameters.h"
#include "support/RecordingDisk.h"
#include "support/SoundSet.h"
#include "support/TestFiles.h"
#include "ui/doctor/FakeDoctor.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/FakeDialogs.h"
#include "ui/window/FakeSurroundings.h"
#include "ui/window/Main.h"

/// Lets failing tests show texts as people read them.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace kestrin::support {

inline QString Text(const std::filesystem::path& path) { return QString::fromStdString(core::base::TextOf(path)); }

/// Lets the event loop run until `condition` holds; false when that takes too long.
inline bool Until(const std::function<bool()>& condition, int milliseconds = 10000) {
  QElapsedTimer time;
  time.start();
  while (!condition()) {
    if (time.elapsed() > milliseconds) return false;
    QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
  }
  return true;
}

/// The whole window over a simulated board, without a display. Time in the board's world is a fake clock's, which moves
/// when somebody waits.
class MainFixture : public testing::Test {
 protected:
  MainFixture() {
    // Where an earlier test has left the pointer there may be a control of this one's window.
    QCursor::setPos(-1000, -1000);
    std::filesystem::create_directories(program);
    std::filesystem::create_directories(data);
    for (const auto& file : std::filesystem::directory_iterator(KESTRIN_PICTURES))
      if (file.path().extension() == ".bmp") std::filesystem::copy(file.path(), program / file.path().filename());
    std::filesystem::copy(std::filesystem::path(KESTRIN_PICTURES) / "KestrinLEDS.ldcfg", program);
    folders.desktop = folder / "desk";
    folders.documents = folder / "papers";
    folders.drives = {{"Stick", folder.Path()}};
  }

  /// The window's threads may use what fixtures that are built on this one own, and those are gone before ours.
  void TearDown() override { window.reset(); }
  ~MainFixture() override { EXPECT_TRUE(dialogs.okAnswers.empty()) << "a question was not asked"; }

  /// Makes the window; `board` as behind "sim:" on the command line.
  void Make(const std::string& board = "", bool plugged = true) {
    const auto parsed = simulator::BoardOptions::Parse(board);
    ASSERT_TRUE(parsed) << parsed.Text();
    auto created = simulator::store::CreateAgent(*parsed, Clock(), gate.Pump(), &disk);
    ASSERT_TRUE(created) << created.Text();
    agent = *std::move(created);
    if (!plugged) agent->Unplug();
    const std::function<ui::window::AboutFacts()> tell = [this] { return about; };
    window = std::make_unique<ui::window::Main>(ui::window::Surroundings{*agent,
                                                                         gate,
                                                                         Clock(),
                                                                         disk,
                                                                         dialogs,
                                                                         player,
                                                                         *surroundingFolders,
                                                                         kept,
                                                                         sleep,
                                                                         updateDialog,
                                                                         settings,
                                                                         program,
                                                                         {program, data},
                                                                         &doctor.means,
                                                                         hasAbout ? tell : nullptr,
                                                                         audio,
                                                                         archives,
                                                                         output,
                                                                         knowledge});
  }

  /// Makes it and starts it up with that board online.
  void Start(const std::string& board = "") {
    Make(board);
    ASSERT_TRUE(window->StartUp());
    Show();
  }

  /// Makes it and starts it up without a board.
  void StartOffline() {
    Make("", false);
    dialogs.okAnswers = {true};
    ASSERT_TRUE(window->StartUp());
    Show();
  }

  /// Shows it, with all that is made only when it can be seen.
  void Show() {
    window->show();
    ASSERT_TRUE(Until([this] { return window->findChild<QWidget*>("frmLED") != nullptr; }));
  }

  [[nodiscard]] core::base::Clock& Clock() {
    if (realTime) return systemClock;
    return clock;
  }

  template <typename T>
  T& Find(const char* name) const {
    T* const found = window->findChild<T*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("the window has no ") + name);
    return *found;
  }
  [[nodiscard]] QToolButton& Button(const char* name) const { return Find<QToolButton>(name); }
  [[nodiscard]] QString LabelText(const char* name) const { return Find<QLabel>(name).text(); }
  [[nodiscard]] bool Shown(const char* name) const { return Find<QWidget>(name).isVisible(); }

  /// Lets a timer of the window tick at once.
  void Tick(const char* timer) { ASSERT_TRUE(QMetaObject::invokeMethod(&Find<QTimer>(timer), "timeout")); }

  /// Runs `action` once, from the event loop, when `condition` holds there; also in the middle of long work.
  void When(std::function<bool()> condition, std::function<void()> action) {
    auto* const timer = new QTimer(window.get());
    QObject::connect(timer, &QTimer::timeout, timer,
                     [timer, condition = std::move(condition), action = std::move(action)] {
                       if (!condition()) return;
                       timer->stop();
                       timer->deleteLater();
                       action();
                     });
    timer->start(0);
  }
  void WhenInformation(const QString& text, std::function<void()> action) {
    When([this, text] { return Shown("DownloadFrame") && LabelText("InformationLabel") == text; }, std::move(action));
  }

  /// A sound file of that many samples.
  std::filesystem::path Sound(const std::string& name, std::size_t samples = 100, unsigned seed = 1) {
    return support::WriteSoundFile(folder / name, support::SomeSamples(samples, 20000, seed));
  }

  /// A set file with one sound in every slot.
  std::filesystem::path CompleteSet(std::size_t samplesEach = 100) {
    support::SoundSet set(folder.Path());
    for (const core::sound::Slot& slot : core::sound::kSlots)
      set.Add(slot.kind, samplesEach, {.name = "s" + std::to_string(set.sounds.size() + 1) + ".lsu"});
    return set.WriteConfiguration("complete.lscfg");
  }

  support::TemporaryFolder folder;
  std::filesystem::path program = folder / "program";
  std::filesystem::path data = folder / "data";
  support::FakeClock clock;
  core::base::SystemClock systemClock;
  /// Whether the board lives in the computer's own time.
  bool realTime = false;
  support::RecordingDisk disk;
  ui::kit::CommandGate gate{std::chrono::milliseconds(0)};
  FakeDialogs dialogs;
  FakePlayer player;
  FakeFolders folders;
  const ui::kit::SpecialFolders* surroundingFolders = &folders;
  support::MemoryKeptParameters kept;
  FakeSleepBlocker sleep;
  FakeUpdateDialog update;
  FakeDoctor doctor;
  /// What the program tells of itself, if it tells.
  ui::window::AboutFacts about{"9.8.7",
                               "A licence",
                               {"libone 1.2 with libtwo/3", "libthree"},
                               {{"Program", "/opt/kestrin"}, {"Your data", ""}},
                               {"An \aodd system"}};
  bool hasAbout = true;
  /// What measures sounds, if anything does.
  core::sound::AudioTools* audio = nullptr;
  /// Where the window keeps what it knows of boards; empty: it asks none.
  std::filesystem::path knowledge;
  /// What reads ZIP files, if anything does.
  core::base::Archives* archives = nullptr;
  /// What a saber is heard by that is tried, if by anything.
  core::sound::SoundOutput* output = nullptr;
  ui::kit::UpdateDialog* updateDialog = &update;
  QSettings settings{Text(folder / "settings.ini"), QSettings::IniFormat};
  std::unique_ptr<simulator::SimulatedAgent> agent;
  std::unique_ptr<ui::window::Main> window;
};

}  // namespace kestrin::support
