#pragma once

#include <QMainWindow>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "core/device/DeviceSession.h"
#include "core/device/SessionView.h"
#include "core/sound/Download.h"
#include "core/sound/LSU_Configuration.h"
#include "core/sound/SoundSet.h"
#include "core/sound/SoundSetListener.h"
#include "ui/kit/FocusKeeper.h"
#include "ui/kit/Pictures.h"
#include "ui/window/Closing.h"
#include "ui/window/HelpLine.h"
#include "ui/window/LedFailures.h"
#include "ui/window/Preview.h"
#include "ui/window/SetFile.h"
#include "ui/window/Surroundings.h"
#include "ui/window/ToolRow.h"
#include "ui/window/WhyNot.h"
#include "ui/window/WindowPlace.h"

namespace kestrin::ui::led {
class LedPanel;
}
namespace kestrin::ui::motion {
class ConfigControl;
class ConfigFrame;
}  // namespace kestrin::ui::motion
namespace kestrin::ui::sound {
class DownloadFrame;
class SoundPage;
}  // namespace kestrin::ui::sound

namespace kestrin::ui::window {

class Pages;

/// The program's window. It owns the session with the board, the set of sounds and the download for the whole run, and
/// shows them; their rules stand in those classes.
class Main : public QMainWindow, private core::device::SessionView, private core::sound::SoundSetListener {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = "Corvent Kestrin Launcher v2.2.2";
  /// How often plugging and unplugging is asked for, in milliseconds.
  static constexpr int kNoticeInterval = 250;

  /// The shell's numbers of two of its folders.
  static constexpr int kDesktopDirectory = 16;
  static constexpr int kPersonal = 5;

  explicit Main(const Surroundings& surroundings);
  ~Main() override;

  /// Makes the window ready, looks for a board and asks whether to go on when there is none. False: the person wants to
  /// end the program; the window was not shown.
  [[nodiscard]] bool StartUp();
  /// Opens a set, as the command line names it.
  void OpenSet(const std::filesystem::path& path);
  /// Ends the program without a question, when there is nobody to answer one: a download ends as if it had been
  /// cancelled, a set that is not saved is lost. `closed` follows, at once or when what is going on has stopped.
  void EndNow() { m_closing.EndNow(); }
  /// Whether the board was let go and nothing goes on any more.
  [[nodiscard]] bool IsOver() const { return m_unloaded; }
  /// Plays one ".lsu" file.
  void PlayLsuFile(const std::filesystem::path& path);
  /// The shell's folder of that number: 16 desktop, 5 personal; empty for all others.
  [[nodiscard]] std::filesystem::path fGetSpecialFolder(int CSIDL) const;

 signals:
  /// The window was closed, the board let go: the program ends.
  void closed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeLayout();
  void MakePanels();
  void MakeConfigControl();
  /// What keeps actions that talk to the board one after another.
  [[nodiscard]] std::function<void(std::function<void()>)> Runner();
  /// The LED driver's page, made with the first use.
  led::LedPanel& LedFrame();
  void Connect();
  void ConnectSet();

  void ShowOnline(bool online) override;
  void ShowSerialLabel(const std::string& text) override;
  void SetMemoryCapacity(std::int32_t samples) override;
  void EnableFileButtons() override;
  void EnableBoardButtons(bool enabled) override;
  void ShowLedFrame(bool visible) override;
  void ReadAccData() override;
  [[nodiscard]] bool InitLedDrivers() override;
  void ShowMessage(const std::string& text) override;
  [[nodiscard]] bool AskWorkOffline(const std::string& question, const std::string& advice) override;
  [[nodiscard]] bool WaitForBoard(const std::string& text) override;
  void StartGoOnlineTimer(std::int32_t milliseconds) override;
  void StopGoOnlineTimer() override;

  void ModifiedChanged() override { ShowSet(); }
  void MemoryChanged() override { UpdateButtons(); }

  void Press(ToolRow::Tool tool);
  void Update();
  void Send();
  void TickGoOnline();
  void LookForNotices();
  void SetRunning(bool running);
  void SetCovered(bool covered);
  void UpdateButtons();
  [[nodiscard]] WhyNot Why() const;
  void ShowBoards();
  void ShowSet();
  [[nodiscard]] bool IsLedDriverOnline() const;
  [[nodiscard]] bool AskToClose();
  void StopAll();
  void Finish();
  void Unload();

  Surroundings m_around;
  kit::Pictures m_pictures;

  core::sound::LSU_Configuration m_configuration;
  core::sound::SoundSet m_set;
  core::device::DeviceSession m_session;
  SetFile m_setFile;
  Preview m_preview;

  ToolRow* m_tools = nullptr;
  Pages* m_pages = nullptr;
  sound::SoundPage* m_page = nullptr;
  /// Null until it is needed, see LedFrame().
  led::LedPanel* m_ledFrame = nullptr;
  HelpLine* m_helpLine = nullptr;
  QWidget* m_waitFrame = nullptr;
  motion::ConfigFrame* m_configFrame = nullptr;
  motion::ConfigControl* m_configControl = nullptr;
  sound::DownloadFrame* m_downloadFrame = nullptr;
  std::optional<core::sound::Download> m_download;

  kit::FocusKeeper m_focus;
  WindowPlace m_place;
  Closing m_closing;
  QTimer m_goOnlineTimer;
  QTimer m_noticeTimer;
  /// How many boards there were when the buttons were shown.
  std::size_t m_boards = 0;
  /// Why a board that is there could not be used then.
  std::string m_accessProblem;
  /// The number of the LED driver whose page was shown last; 0 for none.
  std::int32_t m_ledBoard = 0;
  bool m_boardButtons = false;
  bool m_running = false;
  bool m_unloaded = false;
  LedFailures m_ledFailures;
};

}  // namespace kestrin::ui::window
