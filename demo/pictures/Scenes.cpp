// SPDX-License-Identifier: MIT
#include "demo/pictures/Scenes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QProgressBar>
#include <QSlider>
#include <QTabBar>
#include <QTemporaryDir>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "core/sound/FlashBlock.h"
#include "core/sound/LSU_SoundFile.h"
#include "demo/pictures/BoardScenes.h"
#include "demo/pictures/DoctorScenes.h"
#include "demo/pictures/ImportScenes.h"
#include "demo/pictures/SensorScenes.h"
#include "demo/pictures/Stage.h"
#include "demo/pictures/TryScenes.h"
#include "demo/pictures/UpdateScenes.h"
#include "platform/desktop/CompiledHelp.h"
#include "platform/desktop/QtDialogs.h"
#include "ui/help/HelpWindow.h"
#include "ui/kit/PathText.h"
#include "ui/window/Examples.h"
#include "ui/window/Pages.h"

namespace kestrin::demo {

namespace {

/// A sound of the list is selected, with its waveform and its volume.
void SelectSound(Stage& stage, const char* list, int row) {
  auto& view = stage.Find<QListView>(list);
  view.setFocus();
  view.setCurrentIndex(view.model()->index(row, 0));
}

/// The window as it looks at work: the demo set, one sound selected.
QPixmap TakeWindow(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  SelectSound(stage, "MtFileList", 1);
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

/// The window as it looks to somebody who has just installed and started it.
QPixmap TakeEmpty(const Place& place, const std::string& board) {
  const QTemporaryDir installed;
  const std::filesystem::path program = ui::kit::PathOf(installed.path());
  for (const auto& file : std::filesystem::directory_iterator(place.program))
    if (file.is_regular_file())
      std::filesystem::create_symlink(std::filesystem::absolute(file.path()), program / file.path().filename());
  std::filesystem::create_directory_symlink(std::filesystem::absolute(place.sounds), ui::window::ExamplesIn(program));
  Stage stage(program, place.sounds, board);
  stage.Open(place.size, false);
  return stage.Window().grab();
}

/// A set that was copied without two of its sounds.
QPixmap TakeMissing(const Place& place, const std::string& board) {
  const QTemporaryDir copies;
  const std::filesystem::path away = ui::kit::PathOf(copies.filePath("Ember knight"));
  std::filesystem::copy(place.sounds, away);
  std::ifstream file(place.sounds / "demo.lscfg");
  std::ofstream moved(away / "demo.lscfg");
  int sounds = 0;
  for (std::string line; std::getline(file, line);) {
    // They are gone from where they were: all but the third and the sixth to beside the set, these two nowhere.
    if (const auto end = line.rfind(".lsu"); end != line.npos) {
      const std::filesystem::path name = core::base::PathOf(line.substr(0, end + 4)).filename();
      if (++sounds == 3 || sounds == 6) std::filesystem::remove(away / name);
      line = "/media/stick/" + core::base::TextOf(name) + "\r";
    }
    moved << line << '\n';
  }
  moved.close();
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size, false);
  stage.Window().OpenSet(away / "demo.lscfg");
  SelectSound(stage, "MtFileList", 1);
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

/// In the middle of a download.
QPixmap TakeDownloading(const Place& place, const std::string& board) {
  constexpr int kPercent = 62;
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  QPixmap picture;
  stage.When(
      [&stage] {
        return stage.Find<QLabel>("InformationLabel").text() == "Downloading..." &&
               stage.Find<QProgressBar>("DownloadBar").value() >= kPercent;
      },
      [&] { picture = stage.Window().grab(); });
  stage.Find<QAbstractButton>("SendBtn").click();
  return picture;
}

/// At the end of a download, however it ended.
QPixmap TakeEnded(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  stage.Find<QAbstractButton>("SendBtn").click();
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

/// The report that brings the table into the board: behind those of going online and of erasing, and a report for every
/// block of every sound.
std::uintmax_t TableReport(const std::filesystem::path& sounds) {
  constexpr std::uintmax_t kBefore = 6;
  std::uintmax_t report = kBefore + 1;
  for (const auto& file : std::filesystem::directory_iterator(sounds)) {
    using core::sound::LSU_SoundFile;
    if (!LSU_SoundFile::HasSoundName(file.path())) continue;
    const auto samples = static_cast<std::int32_t>(LSU_SoundFile::SamplesIn(file.file_size()));
    report += core::sound::FlashBlocks(static_cast<std::int32_t>(LSU_SoundFile::CodedBytes(samples))).size();
  }
  return report;
}

/// The table does not arrive as it was sent.
QPixmap TakeMemoryCheckError(const Place& place, const std::string& board) {
  return TakeEnded(place, board + ",fault=flip:" + std::to_string(TableReport(place.sounds)));
}

QPixmap TakeCancelled(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  stage.When([&stage] { return stage.Find<QLabel>("InformationLabel").text() == "Downloading..."; },
             [&stage] { stage.Find<QAbstractButton>("CancelBtn").click(); });
  stage.Find<QAbstractButton>("SendBtn").click();
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

QPixmap TakeSetup(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  stage.Find<QAbstractButton>("ConfigBtn").click();
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

QPixmap TakeAbout(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  stage.Find<QAction>("AboutAction").trigger();
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

/// Some values are moved and not sent.
QPixmap TakeSetupMoved(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  stage.Find<QAbstractButton>("ConfigBtn").click();
  stage.Find<QSlider>("MotionThresholdSlider").setValue(120);
  stage.Find<QSlider>("ImpactTimeSlider").setValue(60);
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

/// After a download that lost the board between the erase and putting the parameters back.
QPixmap TakeSetupKept(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  stage.Find<QAbstractButton>("SendBtn").click();
  stage.Find<QAbstractButton>("CancelBtn").click();
  stage.Find<QAbstractButton>("ConfigBtn").click();
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

/// Chooses a level of a pulse in the colour picker: how strong its red, green and blue outputs shine, 0 to 255.
void PickLevel(Stage& stage, const char* button, const std::array<int, 3>& strengths) {
  stage.Find<QAbstractButton>(button).click();
  int output = 1;
  for (const int strength : strengths)
    stage.Find<QSlider>(("SliderLedSet" + std::to_string(output++)).c_str()).setValue(strength);
  stage.Find<QAbstractButton>("PickColorOK").click();
}

/// Opens the window at the LED driver's page.
void OpenLedDriver(Stage& stage, const QSize& size) {
  stage.Open(size);
  stage.Find<QTabBar>("PageTabs").setCurrentIndex(static_cast<int>(ui::window::Pages::Page::LedDriver));
}

/// An LED driver with a light of three colours.
QPixmap TakeLedDriver(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  OpenLedDriver(stage, place.size);
  auto& types = stage.Find<QComboBox>("LEDcombo");
  types.setCurrentIndex(types.findText("Prism RGB", Qt::MatchStartsWith));
  emit types.activated(types.currentIndex());
  stage.Find<QAbstractButton>("btnUpdateLED").click();
  PickLevel(stage, "btnPulseHigh", {20, 130, 255});
  PickLevel(stage, "btnPulseLow", {60, 10, 120});
  PickLevel(stage, "btnFocHigh", {255, 170, 60});
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

/// The same after its board was away: the pulses that were not sent can be brought back.
QPixmap TakeLedReplugged(const Place& place, const std::string& board) {
  Stage stage(place.program, place.sounds, board);
  OpenLedDriver(stage, place.size);
  PickLevel(stage, "btnPulseHigh", {20, 130, 255});
  stage.Board().Unplug();
  QMetaObject::invokeMethod(&stage.Find<QTimer>("NoticeTimer"), "timeout");
  stage.Board().Plug();
  QMetaObject::invokeMethod(&stage.Find<QTimer>("NoticeTimer"), "timeout");
  QMetaObject::invokeMethod(&stage.Find<QTimer>("GoOnlineTimer"), "timeout");
  stage.Settle(stage.Window());
  return stage.Window().grab();
}

QPixmap TakeHelp(const Place& place, const std::string& /*board*/) {
  const platform::desktop::CompiledHelp source(place.program / platform::desktop::CompiledHelp::kFileName);
  ui::help::HelpWindow window(source);
  window.resize(place.size);
  window.ShowTopic(ui::kit::HelpContext::Slots);
  QApplication::processEvents();
  return window.grab();
}

/// The window with a dialog of the desktop over it.
QPixmap TakeDialog(const Place& place, const std::string& board, const std::function<void(ui::kit::Dialogs&)>& show) {
  Stage stage(place.program, place.sounds, board);
  stage.Open(place.size);
  QPixmap picture = stage.Window().grab();
  platform::desktop::QtDialogs dialogs;
  dialogs.SetWindow(&stage.Window());
  stage.When([] { return QApplication::activeModalWidget() != nullptr; },
             [&] {
               auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
               stage.Settle(*dialog);
               const QSize room = stage.Window().size() - dialog->size();
               const QRect where(QPoint(room.width() / 2, room.height() / 2), dialog->size());
               QPainter painter(&picture);
               painter.drawPixmap(where.topLeft(), dialog->grab());
               // As the desktop's frame does, it tells the dialog from what lies behind it.
               painter.setPen(dialog->palette().color(QPalette::Mid));
               painter.drawRect(where.adjusted(-1, -1, 0, 0));
               dialog->reject();
             });
  show(dialogs);
  return picture;
}

QPixmap TakeNoBoard(const Place& place, const std::string& board) {
  return TakeDialog(place, board, [](ui::kit::Dialogs& dialogs) {
    (void)dialogs.AskOkCancel(
        "A connection with Kuskekpize could not be established.\r\n Press OK to work offline or Cancel to exit the "
        "application",
        "", ui::kit::Dialogs::Harmless::Both);
  });
}

QPixmap TakeQuestion(const Place& place, const std::string& board) {
  return TakeDialog(place, board, [](ui::kit::Dialogs& dialogs) {
    (void)dialogs.AskOkCancel(
        "Are you sure you want to cancel downloading ? \nThis might result in unsable behaviour !\nPress OK to resume "
        "downloading or Cancel to abort",
        "", ui::kit::Dialogs::Harmless::Ok);
  });
}

QPixmap TakeError(const Place& place, const std::string& board) {
  return TakeDialog(place, board, [](ui::kit::Dialogs& dialogs) { dialogs.ShowError("Not a valid file"); });
}

QPixmap TakeUnsaved(const Place& place, const std::string& board) {
  return TakeDialog(place, board, [](ui::kit::Dialogs& dialogs) {
    (void)dialogs.AskUnsaved("The set \"demo\" has changes that are not saved.\nSave them?");
  });
}

QPixmap TakeLeftSet(const Place& place, const std::string& board) {
  return TakeDialog(place, board, [](ui::kit::Dialogs& dialogs) {
    (void)dialogs.AskLeftSet(
        "The set \"demo\" has changes that were not saved, from 11/22/26 2:03 PM.\nOpen it again as it was?",
        "The program ended before they were saved. Its file stays as it is until you save the set. What you leave is "
        "kept and offered again at the next start.");
  });
}

QPixmap TakeMissingQuestion(const Place& place, const std::string& board) {
  return TakeDialog(place, board, [](ui::kit::Dialogs& dialogs) {
    (void)dialogs.AskMissing("Sounds of the set \"demo\" are missing: 2.\nSave it without them?",
                             "Saved without them, the set forgets them. Kept in the file, they are looked for when the "
                             "set is opened again. \"Locate ...\" in their rows finds them.");
  });
}

constexpr const char* kBoard = "serial=4B535401,erase=3,wire=usb";

constexpr Scene kScenes[] = {
    {"window", kBoard, TakeWindow},
    {"offline", "none", TakeWindow},
    {"led", "id=512,serial=4B535402", TakeLedDriver},
    {"led-replugged", "id=512,serial=4B535402", TakeLedReplugged},
    {"empty", kBoard, TakeEmpty},
    {"start", "none", TakeEmpty},
    {"missing", kBoard, TakeMissing},
    {"missing-question", kBoard, TakeMissingQuestion},
    {"downloading", kBoard, TakeDownloading},
    {"success", kBoard, TakeEnded},
    {"memory-check-error", "serial=4B535401", TakeMemoryCheckError},
    {"connection-lost", "serial=4B535401,fault=unplug:200", TakeEnded},
    {"canceled", kBoard, TakeCancelled},
    {"setup", "id=65535,serial=4B535401", TakeSetup},
    {"setup-old-board", kBoard, TakeSetup},
    {"setup-moved", "id=65535,serial=4B535401", TakeSetupMoved},
    // Going online writes three reports; the third of the download would put the parameters back.
    {"setup-kept", "id=65535,serial=4B535401,fault=write:6", TakeSetupKept},
    {"setup-sensor", "id=65535,serial=4B535401", TakeSensor},
    {"setup-sensor-swings", "id=65535,serial=4B535401", TakeSensorSwings},
    {"setup-sensor-alike", "id=65535,serial=4B535401", TakeSensorAlike},
    // Going online reads six answers.
    {"setup-sensor-silent", "id=65535,serial=4B535401,fault=read:7", TakeSensorSilent},
    {"help", "none", TakeHelp},
    {"about", kBoard, TakeAbout},
    {"no-board", "none", TakeNoBoard},
    {"question", kBoard, TakeQuestion},
    {"error", kBoard, TakeError},
    {"unsaved", kBoard, TakeUnsaved},
    {"left-set", kBoard, TakeLeftSet},
    {"try", kBoard, TakeTry},
    {"try-in", kBoard, TakeTryIn},
    {"try-swing", kBoard, TakeTrySwing},
    {"try-lockup", kBoard, TakeTryLockup},
    {"try-empty", "none", TakeTryEmpty},
    {"import", "none", TakeImport},
    {"import-too-much", "none", TakeImportTooMuch},
    {"board-chip", kBoard, TakeBoardChip},
    {"board-same", kBoard, TakeBoardSame},
    {"board-differs", kBoard, TakeBoardDiffers},
    {"board-unknown", kBoard, TakeBoardUnknown},
    {"board-held", kBoard, TakeBoardHeld},
    {"doctor-no-board", "none", TakeDoctorNoBoard},
    {"doctor", "none", TakeDoctorNotPermitted},
    {"doctor-consent", "none", TakeDoctorConsent},
    {"doctor-in-use", "none", TakeDoctorInUse},
    {"doctor-hung", kBoard, TakeDoctorHung},
    {"doctor-healthy", kBoard, TakeDoctorHealthy},
    {"doctor-remarks", kBoard, TakeDoctorRemarks},
    {"updating", "none", [](const Place&, const std::string&) { return TakeUpdating(); }},
    {"updated", "none", [](const Place&, const std::string&) { return TakeUpdated(); }},
    {"update-failed", "none", [](const Place&, const std::string&) { return TakeUpdateFailed(); }},
    {"update-question", "none", [](const Place&, const std::string&) { return TakeUpdateQuestion(); }},
};

}  // namespace

std::span<const Scene> Scenes() { return kScenes; }

}  // namespace kestrin::demo
