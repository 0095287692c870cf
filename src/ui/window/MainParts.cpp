// SPDX-License-Identifier: MIT
// What the window is made of, and who in it tells whom.
#include <QAction>
#include <QFrame>
#include <QVBoxLayout>

#include "ui/board/CompareFrame.h"
#include "ui/doctor/DoctorFrame.h"
#include "ui/import/ImportFrame.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Overlay.h"
#include "ui/kit/PathText.h"
#include "ui/kit/ViewMenu.h"
#include "ui/kit/WaitFrame.h"
#include "ui/motion/ConfigFrame.h"
#include "ui/sound/DownloadFrame.h"
#include "ui/sound/LevelFrame.h"
#include "ui/sound/SoundPage.h"
#include "ui/window/AboutFrame.h"
#include "ui/window/Examples.h"
#include "ui/window/GateRunner.h"
#include "ui/window/HelpLine.h"
#include "ui/window/HelpMenu.h"
#include "ui/window/LedPage.h"
#include "ui/window/Main.h"
#include "ui/window/Pages.h"
#include "ui/window/SetDrop.h"
#include "ui/window/StartCards.h"
#include "ui/window/WhyNot.h"

namespace kestrin::ui::window {

namespace {

QWidget* MakeLine() {
  auto* const line = new QFrame;
  line->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Plain));
  line->setForegroundRole(QPalette::Mid);
  return line;
}

}  // namespace

void Main::MakeLayout() {
  auto* const all = new QWidget(this);
  m_tools = new ToolRow(m_pictures, all);
  m_page = new sound::SoundPage(m_set, m_around.folders);
  m_pages = new Pages(*m_page, all);
  m_helpLine = new HelpLine(all);
  m_helpLine->setContentsMargins(kit::kWide, kit::kGrid, kit::kWide, kit::kGrid);

  m_tools->AddUndoAndRedo(*m_page->UndoAction(), *m_page->RedoAction());
  m_tools->SetLoadMenu(m_setFile.Menu());
  if (m_around.archives != nullptr) m_tools->SetSaveMenu(m_setFile.SaveMenu());
  m_tools->SetViewMenu(*new kit::ViewMenu(m_around.settings, this));
  m_helpMenu = new HelpMenu(this);
  m_tools->SetHelpMenu(*m_helpMenu);
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

void Main::MakeLedPage() {
  m_ledPage = new LedPage(*m_pages,
                          {m_pictures, m_around.dialogs, m_around.disk, m_around.programFolder,
                           [this] { return m_session.Board(); }, GateRunner(m_around.gate)},
                          this);
  connect(m_ledPage, &LedPage::boardFailed, this, [this] { m_session.GoOffline(); });
  connect(m_ledPage, &LedPage::made, m_helpLine, [this](QWidget& panel) { m_helpLine->Explain(panel); });
}

void Main::LayOver() {
  m_about = new AboutFrame(m_pictures);
  for (QWidget* const panel :
       std::initializer_list<QWidget*>{&m_setup.Frame(), &m_doctor.Frame(), m_about, &m_levelling.Frame(),
                                       &m_import.Frame(), &m_compare.Frame(), &m_download.Frame()}) {
    auto* const overlay = new kit::Overlay(*panel, *this, m_pages);
    connect(overlay, &kit::Overlay::shown, this, [this] { SetCovered(true); });
    connect(overlay, &kit::Overlay::hidden, this, [this] { SetCovered(false); });
    connect(overlay, &kit::Overlay::clickedBeside, &m_download, &SetDownload::ClickBeside);
  }
  m_waitFrame = new kit::WaitFrame(*this);
}

void Main::ConnectTools() {
  kit::CommandGate& gate = m_around.gate;
  connect(m_tools, &ToolRow::pressed, this,
          [this, &gate](ToolRow::Tool tool) { gate.WhenFree([this, tool] { Press(tool); }); });
  connect(m_pages, &Pages::changed, this, &Main::UpdateButtons);
  connect(&m_setFile, &SetFile::loading, this, &Main::SetRunning);
  connect(&m_download, &SetDownload::running, this, &Main::SetRunning);
  connect(&m_levelling, &SetLevelling::running, this, &Main::SetRunning);
  m_levelling.Attach(*m_page, gate);
  // A sheet that is open has its own controls.
  m_compare.Attach(
      *m_tools, [this] { return m_covers == 0 && !m_running; }, [this] { Press(ToolRow::Tool::Send); });
  connect(&m_download, &SetDownload::writing, this,
          [this](bool isWriting) { isWriting ? m_knowledge.Forget() : m_knowledge.LookAgain(); });
}

void Main::ConnectHelp() {
  connect(m_tools, &ToolRow::whyPressed, this, &Main::OpenDoctor);
  connect(m_helpMenu, &HelpMenu::doctorRequested, this, &Main::OpenDoctor);
  connect(m_helpMenu, &HelpMenu::helpRequested, this, [this] { emit helpRequested(kit::HelpContext::Overview); });
  if (!m_around.about) return;
  m_helpMenu->OfferAbout();
  connect(m_helpMenu, &HelpMenu::aboutRequested, m_about, [this] { m_about->Open(m_around.about()); });
}

void Main::ConnectSet() {
  kit::CommandGate& gate = m_around.gate;
  // Over another sheet no sounds are imported.
  m_import.Attach(*m_tools, *m_page, [this] {
    return (m_covers == 0 || m_import.Frame().isVisible()) && Why().Of(ToolRow::Tool::Import).isEmpty();
  });
  auto* const drop = new SetDrop(
      *this, [this] { return !m_running; }, [this](const SetDrop::Paths& paths) { return m_import.Takes(paths); });
  connect(drop, &SetDrop::dropped, this, &Main::OpenSet);
  connect(drop, &SetDrop::soundsDropped, &m_import, [this](const SetDrop::Paths& paths) { m_import.Open(paths); });
  // A ZIP file may as well be one of sounds.
  connect(&m_setFile, &SetFile::noSet, &m_import, [this](const std::filesystem::path& path) {
    if (m_import.Takes({path})) return m_import.Open({path});
    m_around.dialogs.ShowError(tr("There is no sound set in \"%1\".").arg(kit::TextOf(path)));
  });
  connect(&m_setFile, &SetFile::opened, this, [this] {
    const bool isLedDriver = m_pages->Shown() == Pages::Page::LedDriver;
    if (isLedDriver && !m_session.State().IsOnline()) m_pages->Show(Pages::Page::Sounds);
    if (!m_set.Path().empty()) m_page->SetFolder(std::filesystem::absolute(m_set.Path()).parent_path());
  });

  m_setFile.Locator().Attach(*m_page, *m_waitFrame);

  // Of the page, so that a set that cannot be seen is not saved.
  auto* const save = new QAction(tr("Save the sound set to its file"), m_page);
  save->setObjectName("SaveAction");
  save->setShortcut(QKeySequence::Save);
  connect(save, &QAction::triggered, this, [this, &gate] {
    if (!m_running) gate.WhenFree([this] { m_setFile.SaveNamed(); });
  });
  m_page->addAction(save);
  m_try.Attach(*m_pages, *m_tools, *m_page, m_preview, *m_ledPage);
}

void Main::ConnectStart() {
  std::error_code ignored;
  const StartCards::Ways ways{m_around.audio != nullptr,
                              std::filesystem::exists(ExampleIn(m_around.programFolder), ignored)};
  auto* const start = new StartCards(m_pictures, ways, m_page);
  m_page->SetStart(*start, start->Controls());
  // They do what the buttons of the row do, when those can be used.
  const auto press = [this](ToolRow::Tool tool) {
    m_around.gate.WhenFree([this, tool] {
      if (Why().Of(tool).isEmpty()) Press(tool);
    });
  };
  connect(start, &StartCards::importWanted, this, [press] { press(ToolRow::Tool::Import); });
  connect(start, &StartCards::openWanted, this, [press] { press(ToolRow::Tool::Load); });
  connect(start, &StartCards::exampleWanted, this, [this] {
    if (Why().Of(ToolRow::Tool::Load).isEmpty()) TryExample();
  });
}

void Main::ConnectPreview() {
  connect(m_page, &sound::SoundPage::playRequested, this, &Main::PlayLsuFile);
  connect(m_page, &sound::SoundPage::playAsOnBoardRequested, &m_preview,
          qOverload<const core::sound::HeardSound&>(&Preview::Play));
  m_page->KeepAsOnBoard(m_around.settings);
  connect(m_page, &sound::SoundPage::stopRequested, &m_preview, &Preview::Stop);
  connect(&m_preview, &Preview::preparing, m_waitFrame, &QWidget::setVisible);
  connect(&m_preview, &Preview::preparing, m_page, &sound::SoundPage::SetPreparing);
  connect(&m_preview, &Preview::playing, m_page, &sound::SoundPage::SetPlaying);
}

void Main::ConnectNews() {
  connect(m_page, &sound::SoundPage::hint, m_helpLine, &HelpLine::ShowHint);
  connect(m_page, &sound::SoundPage::message, this,
          [this](const QString& text, const QString& detail) { m_around.dialogs.ShowError(text, detail); });
  connect(&m_setFile, &SetFile::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_keeper, &SetKeeper::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_keeper, &SetKeeper::offered, this, [this] { m_requests.Look(); });
  connect(&m_levelling, &SetLevelling::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_compare, &BoardCompare::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_download, &SetDownload::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_import, &SoundsImport::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_try, &TryPage::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_setup, &SensorSetup::news, m_helpLine, &HelpLine::ShowNews);
  connect(&m_preview, &Preview::failed, m_helpLine, &HelpLine::ShowNews);
  connect(m_ledPage, &LedPage::news, m_helpLine, &HelpLine::ShowNews);
}

}  // namespace kestrin::ui::window
