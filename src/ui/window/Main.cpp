// SPDX-License-Identifier: MIT
#include "ui/window/Main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QSettings>
#include <utility>

#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/EnterKey.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/PathText.h"
#include "ui/kit/SpecialFolders.h"
#include "ui/kit/Translated.h"
#include "ui/kit/UpdateDialog.h"
#include "ui/sound/DownloadFrame.h"
#include "ui/sound/SoundPage.h"
#include "ui/window/AboutFrame.h"
#include "ui/window/Examples.h"
#include "ui/window/HelpLine.h"
#include "ui/window/HelpMenu.h"
#include "ui/window/LedPage.h"
#include "ui/window/Pages.h"
#include "ui/window/WhyNot.h"

namespace kestrin::ui::window {

namespace {

constexpr const char* kFolderKey = "explorerFolder";
constexpr const char* kLedSettings = ".ldset";

}  // namespace

Main::Main(const Surroundings& surroundings)
    : m_around(surroundings),
      m_pictures(kit::TextOf(surroundings.programFolder)),
      m_set(m_configuration),
      m_session(surroundings.agent, *this, this),
      m_watch(m_session, surroundings.gate, this),
      m_packed(surroundings.archives, surroundings.disk, surroundings.dialogs, surroundings.folders),
      m_setFile(m_set, surroundings.dialogs, surroundings.disk, surroundings.gate, surroundings.settings,
                ExampleIn(surroundings.programFolder), m_packed),
      m_keeper(m_set, m_setFile, m_around, this),
      m_download(m_configuration, m_set, m_session, m_around),
      m_setup(m_session, m_around),
      m_doctor(m_session, m_around, m_pictures),
      m_preview(surroundings.player, surroundings.foldersToWriteIn),
      m_levelling(m_set, m_around),
      m_import(m_set, m_preview, m_levelling, m_around, m_pictures),
      m_try(m_set, m_around, m_setup),
      m_knowledge(m_set, m_session, m_around, [this] { return m_setFile.Recent(); }),
      m_compare(m_set, m_knowledge, m_preview, m_setFile, m_around, m_pictures),
      m_focus(*this),
      m_place(*this, surroundings.settings),
      m_closing(surroundings.gate, {[this] { return AskToClose(); }, [this] { StopAll(); }, [this] { Finish(); }}),
      m_requests(surroundings.gate, {[this] { return IsFree(); }, [this](const auto& path) { Open(path); },
                                     [this](const auto& path) { TellWaiting(path); }}) {
  setObjectName("Main");
  setWindowTitle(kCaption);
  setWindowIcon(m_pictures.Icon("kestrin.bmp"));
  MakeLayout();
  MakeLedPage();
  LayOver();
  ConnectTools();
  ConnectHelp();
  ConnectSet();
  ConnectStart();
  ConnectPreview();
  ConnectNews();
  m_set.AddListener(*this);
  kit::SetHelpOfGround(*this, kit::HelpContext::Main);
  m_helpLine->Explain(*this);
  UpdateButtons();
  m_place.Restore();
}

Main::~Main() {
  Unload();
  m_set.RemoveListener(*this);
  // They refer to what this window owns, which goes before its child widgets would.
  qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

bool Main::StartUp() {
  m_session.SetLoading(true);
  m_tools->ShowLogo();
  m_page->SetFolder(m_around.programFolder);
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
  const std::filesystem::path last = kit::PathOfSetting(m_around.settings.value(kFolderKey));
  if (std::error_code ignored; std::filesystem::is_directory(last, ignored)) m_page->SetFolder(last);
  // Not before: a board that was plugged in meanwhile must not be overlooked.
  m_watch.Start();
  return !m_closing.IsEnding();
}

void Main::OpenSet(const std::filesystem::path& path) {
  m_around.gate.WhenFree([this, path] {
    // What is not seen is not changed.
    if (m_pages->Shown() == Pages::Page::LedDriver) m_pages->Show(Pages::Page::Sounds);
    m_setFile.OpenPath(path);
  });
}

void Main::OpenPath(const std::filesystem::path& path) { m_requests.Add(path); }

std::vector<std::filesystem::path> Main::TakeUnopened() { return m_requests.TakeWaiting(); }

bool Main::IsFree() const {
  return isVisible() && !m_running && m_covers == 0 && !m_closing.IsEnding() && !m_keeper.IsOffering() &&
         QGuiApplication::modalWindow() == nullptr;
}

void Main::Open(const std::filesystem::path& path) {
  // An open menu may be about what is gone then, and so may those that it came from.
  while (QWidget* const menu = QApplication::activePopupWidget())
    if (!menu->close()) break;
  if (std::error_code ignored; std::filesystem::is_directory(path, ignored)) {
    m_pages->Show(Pages::Page::Sounds);
    return m_page->SetFolder(path);
  }
  if (!kit::TextOf(path.extension()).endsWith(kLedSettings, Qt::CaseInsensitive)) return OpenSet(path);
  if (m_session.State().HasLedDriver()) return m_ledPage->OpenPath(path);
  m_around.dialogs.ShowError(tr("\"%1\" holds the settings of an LED driver, and no LED driver is connected.\nConnect "
                                "it, then open the file again.")
                                 .arg(kit::TextOf(path.filename())));
}

void Main::TellWaiting(const std::filesystem::path& path) {
  // The window is about to be there, or nothing comes any more.
  if (!isVisible() || m_closing.IsEnding()) return;
  Tell(tr("\"%1\" opens as soon as what goes on here has ended.").arg(kit::TextOf(path.filename())));
}

void Main::Tell(const QString& news) { m_helpLine->ShowNews(news); }

void Main::ComeToFront(const QByteArray& activation) {
  // At the start a question may stand before the window is there.
  QWidget* const question = QApplication::activeModalWidget();
  if (!isVisible() && question == nullptr) return;
  // Where windows may not come to the front by themselves, the next activation takes this along.
  if (!activation.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activation);
  if (isVisible()) {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
  }
  QWidget& front = question != nullptr ? *question : *this;
  front.raise();
  front.activateWindow();
  // Where it may not come to the front all the same, it shows that it wants to.
  QApplication::alert(&front);
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

void Main::ShowState(const core::device::SessionState& state) {
  if (state.memoryCapacity != m_configuration.MaxNrOfSamples()) m_set.SetCapacity(state.memoryCapacity);
  m_tools->ShowSession(state);
  // Its values are those of a sound board.
  if (state.HasLedDriver()) m_setup.Hide();
  m_ledPage->Follow(state);
  if (m_accessProblem != state.accessProblem && !state.accessProblem.empty())
    m_helpLine->ShowNews(tr("A board is there, but this program cannot use it yet. \"Why?\" tells what to do."));
  m_accessProblem = state.accessProblem;
  m_doctor.Follow();
  m_knowledge.Follow();
  UpdateButtons();
}

core::base::Result<> Main::InitLedDrivers() { return m_ledPage->InitLedDrivers(); }

std::string Main::CatalogueStamp() { return m_ledPage->CatalogueStamp(); }

void Main::ShowMessage(const std::string& text, const std::string& detail) {
  // Not inside the event that the session has it from: while a message is open, boards come and go all the same.
  m_around.gate.WhenFree([this, text = kit::Translated(text), detail = kit::Translated(detail)] {
    m_around.dialogs.ShowError(text, detail);
  });
}

bool Main::AskWorkOffline(const std::string& question, const std::string& advice) {
  return m_around.dialogs.AskOkCancel(kit::Translated(question), kit::Translated(advice), kit::Dialogs::Harmless::Both,
                                      kit::HelpContext::NoBoardQuestion);
}

bool Main::WaitForBoard(const std::string&) {
  // Half a minute of waiting would be half a minute in which nothing can be done here.
  m_helpLine->ShowNews(tr("The board is still busy. It comes online by itself when it is done."));
  return false;
}

void Main::Press(ToolRow::Tool tool) {
  switch (tool) {
    case ToolRow::Tool::Load:
      m_setFile.Open();
      break;
    case ToolRow::Tool::Save:
      m_setFile.Save();
      break;
    case ToolRow::Tool::Import:
      m_import.AskForFiles();
      break;
    case ToolRow::Tool::Try:
      m_try.Toggle();
      break;
    case ToolRow::Tool::Config:
      m_setup.Open();
      break;
    case ToolRow::Tool::Update:
      Update();
      break;
    case ToolRow::Tool::Send:
      // The board may have gone since the button was pressed.
      if (Why().Of(tool).isEmpty()) m_download.Send();
      break;
  }
}

void Main::OpenDoctor() {
  // It does not wait until nothing talks to the board: one that does not answer is what it is asked about.
  if (Why().Doctor().isEmpty()) m_doctor.Open();
}

void Main::TryExample() {
  m_around.gate.WhenFree([this] {
    const std::filesystem::path example = ExampleIn(m_around.programFolder);
    m_setFile.OpenPath(example);
    // An empty set with changes may have been asked about, and kept.
    if (m_set.Path() == example && m_pages->Shown() != Pages::Page::Try) m_try.Toggle();
  });
}

void Main::Update() {
  // The board may have gone since the button was pressed, and an LED driver may have come.
  core::device::TLS* const board = m_session.Board();
  if (!Why().Of(ToolRow::Tool::Update).isEmpty() || board == nullptr) return;
  std::string serialNumber;
  core::base::Result<> identified;
  {
    const kit::CommandGate::Passage passage(m_around.gate);
    serialNumber = board->GetSN();
    if (serialNumber == core::device::TLS::kNoSerialNumber) return;
    identified = m_session.EnsureIdentified();
  }
  // The server gives fonts to a whole number.
  if (serialNumber.size() != core::device::TLS::kSerialDigits) serialNumber = m_session.State().serialNumber;
  if (serialNumber.size() != core::device::TLS::kSerialDigits)
    return m_around.dialogs.ShowError(kit::Translated(identified.Text()));
  const std::vector<std::filesystem::path> sets = m_around.update->Open(*this, serialNumber);
  if (!m_closing.IsEnding()) m_setFile.OfferNew(sets);
}

void Main::SetRunning(bool running) {
  if (running) m_focus.Take();
  m_running = running;
  m_page->SetBusy(running);
  m_try.SetBusy(running);
  UpdateButtons();
  if (running) return;
  m_focus.GiveBack();
  m_requests.Look();
}

void Main::SetCovered(bool covered) {
  if (covered) m_focus.Take();
  m_covers += covered ? 1 : -1;
  m_tools->setEnabled(m_covers == 0);
  m_pages->setEnabled(m_covers == 0);
  if (covered) return;
  m_focus.GiveBack();
  m_requests.Look();
}

void Main::UpdateButtons() {
  const WhyNot why = Why();
  for (const ToolRow::Tool tool : ToolRow::kTools) m_tools->ShowWhyNot(tool, why.Of(tool));
  if (m_doctor.IsThere()) {
    m_tools->OfferWhy(why.Doctor());
    m_helpMenu->OfferDoctor(why.Doctor());
  }
  m_compare.ShowWhyNotSend(why.Of(ToolRow::Tool::Send));
  m_tools->EnableUndoAndRedo(m_pages->Shown() != Pages::Page::LedDriver);
}

WhyNot Main::Why() const {
  const core::device::SessionState& session = m_session.State();
  // Without an LED driver the set takes the page's place as soon as one is opened.
  const bool isSetSeen = m_pages->Shown() != Pages::Page::LedDriver || !session.HasLedDriver();
  return {session, m_running, isSetSeen, m_set.Fits(), m_around.update != nullptr};
}

bool Main::event(QEvent* event) {
  // What was left comes first.
  if (event->type() == QEvent::Show) m_keeper.Offer();
  // The window is there, or a question over it is answered.
  if (event->type() == QEvent::Show || event->type() == QEvent::WindowUnblocked) m_requests.Look();
  return QMainWindow::event(event);
}

void Main::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  // Most boards have sounds: the LED driver's page is made when the window can be seen already.
  m_ledPage->MakeSoon();
}

void Main::keyPressEvent(QKeyEvent* event) {
  if (!kit::PressByEnter(*this, *event)) QMainWindow::keyPressEvent(event);
}

void Main::closeEvent(QCloseEvent* event) {
  if (!m_unloaded && !m_closing.Close()) event->ignore();
}

bool Main::AskToClose() {
  const sound::DownloadFrame::Pause pause(m_download.Frame());
  // Before another set is loaded its predecessor was asked about.
  const bool maySet = m_set.IsLoading() || m_setFile.MayLose();
  m_mayLose = maySet && m_ledPage->MayClose() && m_setup.MayClose() && m_download.MayClose();
  return m_mayLose;
}

void Main::StopAll() {
  emit ending();
  m_watch.Stop();
  m_doctor.Stop();
  m_levelling.Stop();
  m_import.Stop();
  m_knowledge.Stop();
  m_compare.Stop();
  m_download.Cancel();
  m_session.Hurry();
  m_setFile.Locator().Stop();
  if (m_around.update != nullptr) m_around.update->Cancel();
}

void Main::Finish() {
  m_place.Keep();
  m_keeper.Finish(m_mayLose);
  m_around.settings.setValue(kFolderKey, kit::SettingOf(m_page->Folder()));
  Unload();
  hide();
  emit closed();
}

void Main::Unload() {
  if (std::exchange(m_unloaded, true)) return;
  m_watch.Stop();
  m_doctor.Stop();
  m_preview.Stop();
  m_session.Exit();
  if (m_around.update != nullptr) m_around.update->Unload();
}

}  // namespace kestrin::ui::window
