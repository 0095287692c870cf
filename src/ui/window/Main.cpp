#include "ui/window/Main.h"

#include <QAction>
#include <QCloseEvent>
#include <QFrame>
#include <QSettings>
#include <QVBoxLayout>

#include "core/device/BoardIdentity.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/EnterKey.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Overlay.h"
#include "ui/kit/PathText.h"
#include "ui/kit/SleepBlocker.h"
#include "ui/kit/SpecialFolders.h"
#include "ui/kit/TopicOf.h"
#include "ui/kit/UpdateDialog.h"
#include "ui/kit/WaitFrame.h"
#include "ui/led/LedPanel.h"
#include "ui/motion/ConfigControl.h"
#include "ui/motion/ConfigFrame.h"
#include "ui/sound/DownloadFrame.h"
#include "ui/sound/SoundPage.h"
#include "ui/window/Pages.h"
#include "ui/window/SetDrop.h"

namespace kestrin::ui::window {

namespace {

constexpr const char* kFolderKey = "explorerFolder";

QWidget* MakeLine() {
  auto* const line = new QFrame;
  line->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Plain));
  line->setForegroundRole(QPalette::Mid);
  return line;
}

}  // namespace

Main::Main(const Surroundings& surroundings)
    : m_around(surroundings),
      m_pictures(kit::TextOf(surroundings.programFolder)),
      m_set(m_configuration),
      m_session(surroundings.agent, *this),
      m_setFile(m_set, surroundings.dialogs, surroundings.disk, surroundings.gate, surroundings.settings),
      m_preview(surroundings.player, {surroundings.programFolder, surroundings.dataFolder}),
      m_focus(*this),
      m_place(*this, surroundings.settings),
      m_closing(surroundings.gate, {[this] { return AskToClose(); }, [this] { StopAll(); }, [this] { Finish(); }}),
      m_goOnlineTimer(this),
      m_noticeTimer(this) {
  setObjectName("Main");
  setWindowTitle(kCaption);
  setWindowIcon(m_pictures.Icon("kestrin.bmp"));
  MakeLayout();
  MakePanels();
  Connect();
  m_set.AddListener(*this);
  kit::SetHelp(*this, kit::PressF1(), kit::HelpContext::Main);
  m_helpLine->Explain(*this);
  ShowSet();
  UpdateButtons();
  m_place.Restore();
}

Main::~Main() {
  Unload();
  m_set.RemoveListener(*this);
  // They refer to what this window owns, which goes before its child widgets would.
  qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

void Main::MakeLayout() {
  auto* const all = new QWidget(this);
  m_tools = new ToolRow(m_pictures, all);
  m_page = new sound::SoundPage(m_set, m_around.folders);
  m_pages = new Pages(*m_page, all);
  m_helpLine = new HelpLine(all);
  m_helpLine->setContentsMargins(2 * kit::kGrid, kit::kGrid, 2 * kit::kGrid, kit::kGrid);

  m_tools->AddUndoAndRedo(*m_page->UndoAction(), *m_page->RedoAction());
  m_tools->SetLoadMenu(m_setFile.Menu());
  auto* const column = new QVBoxLayout(all);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_tools);
  column->addWidget(MakeLine());
  column->addWidget(m_pages, 1);
  column->addWidget(MakeLine());
  column->addWidget(m_helpLine);
  setCentralWidget(all);
  kit::SetHelpOfGround(*all);
}

led::LedPanel& Main::LedFrame() {
  if (m_ledFrame != nullptr) return *m_ledFrame;
  m_ledFrame = new led::LedPanel({m_pictures, m_around.dialogs, m_around.disk, m_around.programFolder,
                                  [this] { return m_session.Board(); }, Runner()});
  connect(m_ledFrame, &led::LedPanel::boardFailed, this, [this] { m_session.GoOffline(); });
  connect(m_ledFrame, &led::LedPanel::news, m_helpLine, &HelpLine::ShowNews);
  m_helpLine->Explain(*m_ledFrame);
  m_pages->SetLedDriver(*m_ledFrame);
  UpdateButtons();
  return *m_ledFrame;
}

std::function<void(std::function<void()>)> Main::Runner() {
  return [&gate = m_around.gate](std::function<void()> action) {
    gate.WhenFree([&gate, action = std::move(action)] {
      const kit::CommandGate::Passage passage(gate);
      action();
    });
  };
}

void Main::MakePanels() {
  m_configFrame = new motion::ConfigFrame;
  kit::SetHelpContext(*m_configFrame, kit::HelpContext::ConfigFrame);
  m_downloadFrame = new sound::DownloadFrame(m_around.dialogs, m_around.clock);
  kit::SetHelpContext(*m_downloadFrame, kit::HelpContext::DownloadFrame);
  m_download.emplace(m_configuration, *m_downloadFrame, m_around.kept, m_around.clock, m_around.gate.Pump());
  for (QWidget* const panel : {static_cast<QWidget*>(m_configFrame), static_cast<QWidget*>(m_downloadFrame)}) {
    auto* const overlay = new kit::Overlay(*panel, *this);
    connect(overlay, &kit::Overlay::shown, this, [this] { SetCovered(true); });
    connect(overlay, &kit::Overlay::hidden, this, [this] { SetCovered(false); });
    connect(overlay, &kit::Overlay::clickedBeside, this, [this] {
      if (m_downloadFrame->isVisible() && !m_download->IsRunning()) m_downloadFrame->ClickBeside();
    });
  }
  m_waitFrame = new kit::WaitFrame(*this);
  MakeConfigControl();
}

void Main::MakeConfigControl() {
  using Control = motion::ConfigControl;
  const auto lookup = [this]() -> std::optional<Control::Board> {
    core::device::TLS* const board = m_session.Board();
    if (board == nullptr || !m_session.IsOnline() || m_session.DeviceType() != core::device::DeviceType::SoundBoard)
      return std::nullopt;
    return Control::Board{*board, m_session.SerialNumber(), m_session.DeviceRevision(), m_session.IsIdentified()};
  };
  // Ahead of the control: what the board did not tell of itself at first is asked again before anything is sent.
  connect(m_configFrame, &motion::ConfigFrame::sendRequested, this,
          [run = Runner(), this] { run([this] { static_cast<void>(m_session.EnsureIdentified()); }); });
  m_configControl = new Control(*m_configFrame, {m_around.dialogs, m_around.kept, lookup, Runner()});
  m_configControl->setParent(m_configFrame);
  connect(m_configControl, &Control::news, m_helpLine, &HelpLine::ShowNews);
}

void Main::Connect() {
  kit::CommandGate& gate = m_around.gate;
  m_goOnlineTimer.setObjectName("GoOnlineTimer");
  m_noticeTimer.setObjectName("NoticeTimer");
  connect(&m_goOnlineTimer, &QTimer::timeout, this, &Main::TickGoOnline);
  connect(&m_noticeTimer, &QTimer::timeout, this, &Main::LookForNotices);

  auto* const drop = new SetDrop(*this, [this] { return !m_running; });
  connect(drop, &SetDrop::dropped, this, [this](const QString& path) { OpenSet(kit::PathOf(path)); });
  connect(m_tools, &ToolRow::pressed, this,
          [this, &gate](ToolRow::Tool tool) { gate.WhenFree([this, tool] { Press(tool); }); });
  connect(&m_setFile, &SetFile::loading, this, &Main::SetRunning);
  connect(&m_setFile, &SetFile::opened, this, [this] {
    if (!m_session.IsOnline()) m_pages->Show(Pages::Page::Sounds);
    if (!m_set.Path().empty()) m_page->SetFolder(std::filesystem::absolute(m_set.Path()).parent_path());
  });
  ConnectSet();
  connect(m_pages, &Pages::changed, this, &Main::UpdateButtons);
  connect(m_downloadFrame, &sound::DownloadFrame::buttonPressed, this, [this] { m_download->CancelButton(); });

  connect(m_page, &sound::SoundPage::playRequested, this,
          [this](const QString& path) { PlayLsuFile(kit::PathOf(path)); });
  connect(m_page, &sound::SoundPage::stopRequested, &m_preview, &Preview::Stop);
  connect(m_page, &sound::SoundPage::message, this, [this](const QString& text) { m_around.dialogs.ShowError(text); });
  connect(m_page, &sound::SoundPage::hint, m_helpLine, &HelpLine::ShowHint);
  connect(&m_preview, &Preview::preparing, m_waitFrame, &QWidget::setVisible);
  connect(&m_preview, &Preview::preparing, m_page, &sound::SoundPage::SetPreparing);
  connect(&m_preview, &Preview::playing, m_page, &sound::SoundPage::SetPlaying);
  connect(&m_preview, &Preview::failed, m_helpLine, &HelpLine::ShowNews);
}

void Main::ConnectSet() {
  SoundLocator& locator = m_setFile.Locator();
  connect(&m_setFile, &SetFile::news, m_helpLine, &HelpLine::ShowNews);
  connect(&locator, &SoundLocator::searching, m_waitFrame, &QWidget::setVisible);
  connect(&locator, &SoundLocator::searching, m_page, &sound::SoundPage::SetPreparing);
  connect(m_page, &sound::SoundPage::stopRequested, &locator, &SoundLocator::Stop);
  kit::CommandGate& gate = m_around.gate;
  connect(m_page, &sound::SoundPage::locateRequested, &locator,
          [&gate, &locator](const core::sound::SoundPlace& place) {
            gate.WhenFree([&locator, place] { locator.LocateOne(place); });
          });
  connect(m_page, &sound::SoundPage::locateAllRequested, &locator,
          [&gate, &locator] { gate.WhenFree([&locator] { locator.LocateAll(); }); });
  // Of the page, so that a set that cannot be seen is not saved.
  auto* const save = new QAction(tr("Save the sound set to its file"), m_page);
  save->setObjectName("SaveAction");
  save->setShortcut(QKeySequence::Save);
  connect(save, &QAction::triggered, this, [this, &gate] {
    if (!m_running) gate.WhenFree([this] { m_setFile.SaveNamed(); });
  });
  m_page->addAction(save);
}

bool Main::StartUp() {
  m_session.SetLoading(true);
  m_tools->ShowLogo();
  m_page->SetFolder(m_around.programFolder);
  SetMemoryCapacity(m_session.MemoryCapacity());
  {
    const kit::CommandGate::Passage passage(m_around.gate);
    if (m_session.SearchAtStartUp() == core::device::DeviceSession::StartUp::Quit) {
      Unload();
      return false;
    }
  }
  m_page->FocusSlot(core::sound::SlotKind::Boot);
  if (m_around.update != nullptr) m_around.update->Initialise();
  m_session.SetLoading(false);
  const std::filesystem::path last = kit::PathOf(m_around.settings.value(kFolderKey).toString());
  if (std::error_code ignored; std::filesystem::is_directory(last, ignored)) m_page->SetFolder(last);
  // Not before: a board that was plugged in meanwhile must not be overlooked.
  m_noticeTimer.start(kNoticeInterval);
  return !m_closing.IsEnding();
}

void Main::OpenSet(const std::filesystem::path& path) {
  m_around.gate.WhenFree([this, path] {
    // What is not seen is not changed.
    m_pages->Show(Pages::Page::Sounds);
    m_setFile.OpenPath(path);
  });
}

void Main::PlayLsuFile(const std::filesystem::path& path) { m_preview.Play(path); }

std::filesystem::path Main::fGetSpecialFolder(int CSIDL) const {
  switch (CSIDL) {
    case kDesktopDirectory:
      return m_around.folders.Desktop();
    case kPersonal:
      return m_around.folders.Documents();
    default:
      return {};
  }
}

void Main::ShowOnline(bool online) { m_tools->ShowOnline(online); }

void Main::ShowSerialLabel(const std::string& text) {
  m_tools->ShowSerial(QString::fromStdString(text));
  ShowBoards();
}

void Main::ShowBoards() {
  const std::size_t boards = m_session.NumberOfBoards();
  const bool several = m_session.IsOnline() && boards > 1;
  m_tools->ShowBoards(several ? tr("%1 boards are connected; this is the first one, which is used.").arg(boards) : "");
  const std::string problem = boards == 0 ? m_around.agent.AccessProblem() : "";
  m_tools->ShowAccessProblem(QString::fromStdString(problem));
  // One that keeps silent, or cannot be opened, changes nothing but why the buttons cannot be used.
  const bool otherBoards = std::exchange(m_boards, boards) != boards;
  if (std::exchange(m_accessProblem, problem) != problem || otherBoards) UpdateButtons();
}

void Main::SetMemoryCapacity(std::int32_t samples) { m_set.SetCapacity(samples); }

void Main::EnableFileButtons() { UpdateButtons(); }

void Main::EnableBoardButtons(bool enabled) {
  m_boardButtons = enabled;
  UpdateButtons();
}

void Main::ShowLedFrame(bool visible) {
  // Its values are those of a sound board.
  if (visible) m_configFrame->hide();
  if (visible) LedFrame();
  m_pages->ShowTabs(visible);
  // A board that is asked again and again does not take the person away from the page of their choice.
  const std::int32_t board = visible ? m_session.Board()->ClassDebugID() : 0;
  if (std::exchange(m_ledBoard, board) == board && visible) return;
  m_pages->Show(visible ? Pages::Page::LedDriver : Pages::Page::Sounds);
}

void Main::ReadAccData() { m_configControl->ReadAccData(); }

bool Main::InitLedDrivers() {
  const bool read = LedFrame().InitLedDrivers();
  const bool ofCatalogue = LedFrame().LastFailure() == core::ledsetup::LedSetup::Failure::Catalogue;
  const LedFailures::Failure failure{m_session.Board()->ClassDebugID(), ofCatalogue, LedFrame().CatalogueStamp()};
  m_ledFailures.Take(read ? std::nullopt : std::optional(failure));
  return read;
}

void Main::ShowMessage(const std::string& text) {
  // The session has one message only: the one about LED drivers that could not be read. A board that keeps failing is
  // asked again every second.
  if (!m_ledFailures.IsNew()) return;
  m_around.dialogs.ShowError(QString::fromStdString(text), QString::fromStdString(LedFrame().Problem()));
}

bool Main::AskWorkOffline(const std::string& question, const std::string& advice) {
  return m_around.dialogs.AskOkCancel(QString::fromStdString(question), QString::fromStdString(advice),
                                      kit::Dialogs::Harmless::Both, kit::HelpContext::NoBoardQuestion);
}

bool Main::WaitForBoard(const std::string&) {
  // Half a minute of waiting would be half a minute in which nothing can be done here.
  m_helpLine->ShowNews(tr("The board is still busy. It comes online by itself when it is done."));
  return false;
}

void Main::StartGoOnlineTimer(std::int32_t milliseconds) { m_goOnlineTimer.start(milliseconds); }

void Main::StopGoOnlineTimer() { m_goOnlineTimer.stop(); }

void Main::TickGoOnline() {
  // While the window starts up, the notice timer does not run either.
  if (m_around.gate.IsBusy() || !m_noticeTimer.isActive()) return;
  const core::device::TLS* const board = m_session.Board();
  if (board != nullptr && m_ledFailures.WouldFailAgain(board->ClassDebugID(), LedFrame().CatalogueStamp())) return;
  const kit::CommandGate::Passage passage(m_around.gate);
  m_session.GoOnlineTimerTick();
  ShowBoards();
}

void Main::LookForNotices() {
  if (m_around.gate.IsBusy()) return;
  const kit::CommandGate::Passage passage(m_around.gate);
  m_around.agent.Refresh();
  ShowBoards();
}

void Main::ShowSet() {
  m_tools->ShowSet(QString::fromStdString(m_set.Name()), m_set.IsModified(), kit::TextOf(m_set.Path()));
}

void Main::Press(ToolRow::Tool tool) {
  switch (tool) {
    case ToolRow::Tool::Load:
      m_setFile.Open();
      break;
    case ToolRow::Tool::Save:
      m_setFile.Save();
      break;
    case ToolRow::Tool::Config:
      m_configControl->Open();
      break;
    case ToolRow::Tool::Update:
      Update();
      break;
    case ToolRow::Tool::Send:
      Send();
      break;
  }
}

void Main::Update() {
  // The board may have gone since the button was pressed, and an LED driver may have come.
  core::device::TLS* const board = m_session.Board();
  if (!m_boardButtons || board == nullptr || m_around.update == nullptr) return;
  std::string serialNumber;
  {
    const kit::CommandGate::Passage passage(m_around.gate);
    serialNumber = board->GetSN();
  }
  if (serialNumber == core::device::TLS::kNoSerialNumber) return;
  const std::vector<std::filesystem::path> sets = m_around.update->Open(*this, serialNumber);
  if (!m_closing.IsEnding()) m_setFile.OfferNew(sets);
}

void Main::Send() {
  // It may have gone since the button was pressed.
  core::device::TLS* const board = m_session.Board();
  if (board == nullptr || !Why().Send().isEmpty()) return;
  const kit::CommandGate::Passage passage(m_around.gate);
  SetRunning(true);
  m_around.sleep.Block("Sounds are being written into the board.");
  const std::int32_t flash = core::device::FlashSize(m_session.MemoryCapacity());
  const bool identified = m_session.EnsureIdentified();
  m_downloadFrame->ShowOutcome(m_download->Send({*board, m_session.SerialNumber(), flash, identified}));
  if (m_download->LeftErasing()) m_session.LetBoardFinish();
  m_around.sleep.Unblock();
  SetRunning(false);
}

void Main::SetRunning(bool running) {
  if (running) m_focus.Take();
  m_running = running;
  m_page->SetBusy(running);
  UpdateButtons();
  if (!running) m_focus.GiveBack();
}

void Main::SetCovered(bool covered) {
  if (covered) m_focus.Take();
  m_tools->setEnabled(!covered);
  m_pages->setEnabled(!covered);
  if (!covered) m_focus.GiveBack();
}

void Main::UpdateButtons() {
  const auto show = [this](ToolRow::Tool tool, const QString& reason) {
    if (reason.isEmpty())
      m_tools->Enable(tool);
    else
      m_tools->Disable(tool, reason);
  };
  if (m_ledFrame != nullptr) m_ledFrame->SetOnline(IsLedDriverOnline());
  const WhyNot why = Why();
  show(ToolRow::Tool::Load, why.Set());
  show(ToolRow::Tool::Save, why.Set());
  m_tools->EnableUndoAndRedo(m_pages->Shown() == Pages::Page::Sounds);
  show(ToolRow::Tool::Config, why.Board());
  show(ToolRow::Tool::Send, why.Send());
  const QString noUpdate =
      m_around.update == nullptr ? tr("This version does not fetch sounds from the Internet.") : QString();
  show(ToolRow::Tool::Update, noUpdate.isEmpty() ? why.Board() : noUpdate);
}

bool Main::IsLedDriverOnline() const {
  return m_session.IsOnline() && m_session.DeviceType() == core::device::DeviceType::LedDriver;
}

WhyNot Main::Why() const {
  const bool isLedDriver = m_session.DeviceType() == core::device::DeviceType::LedDriver;
  // Without an LED driver the set takes the page's place as soon as one is opened.
  const bool isSetSeen = m_pages->Shown() == Pages::Page::Sounds || !IsLedDriverOnline();
  return {m_running,
          isSetSeen,
          m_set.Fits(),
          m_boardButtons,
          m_session.NumberOfBoards(),
          isLedDriver,
          m_session.IsFinishing(),
          m_accessProblem};
}

void Main::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  // Most boards have sounds: the LED driver's page is made when the window can be seen already.
  if (m_ledFrame == nullptr) QTimer::singleShot(0, this, [this] { LedFrame(); });
}

void Main::keyPressEvent(QKeyEvent* event) {
  if (!kit::PressByEnter(*this, *event)) QMainWindow::keyPressEvent(event);
}

void Main::closeEvent(QCloseEvent* event) {
  if (!m_unloaded && !m_closing.Close()) event->ignore();
}

bool Main::AskToClose() {
  const sound::DownloadFrame::Pause pause(*m_downloadFrame);
  // Before another set is loaded its predecessor was asked about.
  if (!m_set.IsLoading() && !m_setFile.MayLose()) return false;
  if (m_ledFrame != nullptr && !m_ledFrame->MayClose()) return false;
  return !m_download->IsRunning() ||
         m_around.dialogs.AskOkCancel(tr("The download is not done yet. Stop it and close the window?\n"
                                         "Without a complete download the board has no sounds."),
                                      "", kit::Dialogs::Harmless::Cancel, kit::HelpContext::CancelQuestion);
}

void Main::StopAll() {
  m_goOnlineTimer.stop();
  m_noticeTimer.stop();
  m_download->Cancel();
  m_setFile.Locator().Stop();
  if (m_around.update != nullptr) m_around.update->Cancel();
}

void Main::Finish() {
  m_place.Keep();
  m_around.settings.setValue(kFolderKey, kit::TextOf(m_page->Folder()));
  Unload();
  hide();
  emit closed();
}

void Main::Unload() {
  if (std::exchange(m_unloaded, true)) return;
  m_goOnlineTimer.stop();
  m_noticeTimer.stop();
  m_preview.Stop();
  m_session.Exit();
  if (m_around.update != nullptr) m_around.update->Unload();
}

}  // namespace kestrin::ui::window
