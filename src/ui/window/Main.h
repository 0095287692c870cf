// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <filesystem>
#include <string>

#include "core/device/BoardReader.h"
#include "core/device/DeviceSession.h"
#include "core/device/SessionView.h"
#include "core/sound/LSU_Configuration.h"
#include "core/sound/SoundSet.h"
#include "core/sound/SoundSetListener.h"
#include "ui/kit/FocusKeeper.h"
#include "ui/kit/HelpContext.h"
#include "ui/kit/Pictures.h"
#include "ui/window/BoardCompare.h"
#include "ui/window/BoardKnowledge.h"
#include "ui/window/BoardWatch.h"
#include "ui/window/Closing.h"
#include "ui/window/LinkDoctor.h"
#include "ui/window/OpenRequests.h"
#include "ui/window/PackedSets.h"
#include "ui/window/Preview.h"
#include "ui/window/SensorSetup.h"
#include "ui/window/SetDownload.h"
#include "ui/window/SetFile.h"
#include "ui/window/SetKeeper.h"
#include "ui/window/SetLevelling.h"
#include "ui/window/SoundsImport.h"
#include "ui/window/Surroundings.h"
#include "ui/window/ToolRow.h"
#include "ui/window/TryPage.h"
#include "ui/window/WindowPlace.h"

namespace kestrin::ui::sound {
class SoundPage;
}

namespace kestrin::ui::window {

class AboutFrame;
class HelpLine;
class HelpMenu;
class LedPage;
class Pages;
struct WhyNot;

/// The program's window. It owns the session with the board, the set of sounds and all that works with them for the
/// whole run, and leads what one of them tells to those whom it concerns; their rules stand in those classes.
class Main : public QMainWindow,
             private core::device::SessionView,
             private core::device::BoardReader,
             private core::sound::SoundSetListener {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = "Corvent Kestrin Launcher v2.2.2";
  explicit Main(const Surroundings& surroundings);
  ~Main() override;

  /// Makes the window ready, looks for a board and asks whether to go on when there is none. False: the person wants to
  /// end the program; the window was not shown.
  [[nodiscard]] bool StartUp();
  /// Opens a set as soon as nothing goes on.
  void OpenSet(const std::filesystem::path& path);
  /// Opens what the person has opened outside the window, by the desktop or by the command line: a set, LED settings,
  /// or a folder in the file explorer. It waits until the window is there and the person is free to answer questions.
  void OpenPath(const std::filesystem::path& path);
  /// What waits for that still when the window has ended: it was promised to be opened.
  [[nodiscard]] std::vector<std::filesystem::path> TakeUnopened();
  /// Brings the window to the front, with the question that stands over it. `activation` is what the desktop gave for
  /// that; may be empty.
  void ComeToFront(const QByteArray& activation = {});
  /// Short news for the person.
  void Tell(const QString& news);
  /// Ends the program without a question, when there is nobody to answer one: a download ends as if it had been
  /// cancelled, a set that is not saved is kept for the next start. `closed` follows, at once or when what is going on
  /// has stopped.
  void EndNow() { m_closing.EndNow(); }
  /// Whether the board was let go and nothing goes on any more.
  [[nodiscard]] bool IsOver() const { return m_unloaded; }
  /// Plays one ".lsu" file.
  void PlayLsuFile(const std::filesystem::path& path);

  // --- The rest of the window's documented interface: only tests call it ---

  /// The shell's numbers of two of its folders.
  static constexpr int kDesktopDirectory = 16;
  static constexpr int kPersonal = 5;
  /// The shell's folder of that number: 16 desktop, 5 personal; empty for all others.
  [[nodiscard]] std::filesystem::path fGetSpecialFolder(int CSIDL) const;

 signals:
  /// The end is certain: what comes from now on would be lost.
  void ending();
  /// The window was closed, the board let go: the program ends.
  void closed();
  /// The person wants to read the help.
  void helpRequested(kit::HelpContext topic);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeLayout();
  void MakeLedPage();
  void LayOver();
  void ConnectTools();
  void ConnectHelp();
  void ConnectSet();
  void ConnectStart();
  void ConnectPreview();
  void ConnectNews();

  void ShowState(const core::device::SessionState& state) override;
  void ShowMessage(const std::string& text, const std::string& detail) override;
  [[nodiscard]] bool AskWorkOffline(const std::string& question, const std::string& advice) override;
  [[nodiscard]] bool WaitForBoard(const std::string& text) override;
  void StartGoOnlineTimer(std::int32_t milliseconds) override { m_watch.StartGoOnlineTimer(milliseconds); }
  void StopGoOnlineTimer() override { m_watch.StopGoOnlineTimer(); }

  void ReadAccData() override { m_setup.ReadAccData(); }
  core::base::Result<> InitLedDrivers() override;
  [[nodiscard]] std::string CatalogueStamp() override;

  void MemoryChanged() override { UpdateButtons(); }

  /// Nothing keeps the person from answering questions.
  [[nodiscard]] bool IsFree() const;
  void Open(const std::filesystem::path& path);
  void TellWaiting(const std::filesystem::path& path);

  void Press(ToolRow::Tool tool);
  void Update();
  void OpenDoctor();
  void TryExample();
  void SetRunning(bool running);
  void SetCovered(bool covered);
  void UpdateButtons();
  [[nodiscard]] WhyNot Why() const;
  [[nodiscard]] bool AskToClose();
  void StopAll();
  void Finish();
  void Unload();

  Surroundings m_around;
  kit::Pictures m_pictures;

  core::sound::LSU_Configuration m_configuration;
  core::sound::SoundSet m_set;
  core::device::DeviceSession m_session;
  BoardWatch m_watch;
  PackedSets m_packed;
  SetFile m_setFile;
  SetKeeper m_keeper;
  SetDownload m_download;
  SensorSetup m_setup;
  LinkDoctor m_doctor;
  Preview m_preview;
  SetLevelling m_levelling;
  SoundsImport m_import;
  TryPage m_try;
  BoardKnowledge m_knowledge;
  BoardCompare m_compare;

  ToolRow* m_tools = nullptr;
  Pages* m_pages = nullptr;
  sound::SoundPage* m_page = nullptr;
  LedPage* m_ledPage = nullptr;
  HelpLine* m_helpLine = nullptr;
  HelpMenu* m_helpMenu = nullptr;
  QWidget* m_waitFrame = nullptr;
  AboutFrame* m_about = nullptr;

  kit::FocusKeeper m_focus;
  WindowPlace m_place;
  Closing m_closing;
  OpenRequests m_requests;
  /// That the person was told of last.
  std::string m_accessProblem;
  bool m_running = false;
  /// The person was asked about everything that closing the window loses.
  bool m_mayLose = false;
  /// How many sheets lie over the window.
  int m_covers = 0;
  bool m_unloaded = false;
};

}  // namespace kestrin::ui::window
