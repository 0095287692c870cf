// SPDX-License-Identifier: MIT
#include "ui/sound/SoundPage.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/LinkButton.h"
#include "ui/sound/DetailPanel.h"
#include "ui/sound/FileExplorer.h"
#include "ui/sound/MemoryGauge.h"
#include "ui/sound/SetLabel.h"
#include "ui/sound/SlotList.h"
#include "ui/sound/SlotListModel.h"
#include "ui/sound/SlotPanel.h"
#include "ui/sound/SoundActions.h"
#include "ui/sound/SoundMenus.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace {

/// Shows a context menu and takes it away when it closes.
void PopUp(std::unique_ptr<QMenu> menu, const QPoint& where) {
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu.release()->popup(where);
}

}  // namespace

SoundPage::SoundPage(core::sound::SoundSet& set, const kit::SpecialFolders& folders, QWidget* parent)
    : QWidget(parent),
      m_set(set),
      m_actions(new SoundActions(set, this)),
      m_explorer(new FileExplorer(folders, this)),
      m_setLabel(new SetLabel(this)),
      m_options(new QButtonGroup(this)) {
  kit::SetHelpOfGround(*this, kit::HelpContext::Slots);
  MakeActions();
  for (const core::sound::Slot& slot : core::sound::kSlots) {
    auto* panel = new SlotPanel(*m_actions, slot.kind, this);
    m_slots[slot.kind] = panel;
    m_options->addButton(panel->Option(), static_cast<int>(slot.kind));
    ConnectSlot(*panel);
  }
  m_detail = new DetailPanel(*m_actions, this);
  m_gauge = new MemoryGauge(this);
  MakeLayout();
  ConnectExplorer();
  connect(m_actions, &SoundActions::message, this, &SoundPage::message);
  connect(m_actions, &SoundActions::playRequested, this, &SoundPage::playRequested);
  connect(m_actions, &SoundActions::playAsOnBoardRequested, this, &SoundPage::playAsOnBoardRequested);
  connect(m_actions, &SoundActions::importWanted, this, &SoundPage::importRequested);
  connect(m_actions, &SoundActions::moved, this, &SoundPage::FollowMoved);
  connect(m_detail, &DetailPanel::stopRequested, this, &SoundPage::stopRequested);
  connect(m_detail, &DetailPanel::asOnBoardChanged, this, &SoundPage::asOnBoardChanged);
  connect(m_detail, &DetailPanel::locateRequested, this, &SoundPage::locateRequested);
  connect(m_detail, &DetailPanel::volumeChosen, this,
          [this](int percent) { m_actions->SetVolume(SelectedPlaces(), percent); });
  m_slots[core::sound::SlotKind::Boot]->Option()->setChecked(true);
  m_set.AddListener(*this);
  SoundPage::MemoryChanged();
  SoundPage::ModifiedChanged();
}

SoundPage::~SoundPage() { m_set.RemoveListener(*this); }

void SoundPage::MakeActions() {
  m_undoAction = new QAction(this);
  m_redoAction = new QAction(this);
  m_stopAction = new QAction(tr("Stop playing"), this);
  m_levelAction = new QAction(tr("Level the volumes ..."), this);
  m_undoAction->setObjectName(QStringLiteral("UndoAction"));
  m_redoAction->setObjectName(QStringLiteral("RedoAction"));
  m_levelAction->setObjectName(QStringLiteral("LevelAction"));
  m_undoAction->setShortcuts(QKeySequence::Undo);
  m_redoAction->setShortcuts(QKeySequence::Redo);
  m_stopAction->setShortcut(Qt::Key_Escape);
  m_stopAction->setEnabled(false);
  m_levelAction->setShortcut(Qt::CTRL | Qt::Key_L);
  m_levelAction->setVisible(false);
  connect(m_undoAction, &QAction::triggered, m_actions, &SoundActions::Undo);
  connect(m_redoAction, &QAction::triggered, m_actions, &SoundActions::Redo);
  connect(m_stopAction, &QAction::triggered, this, &SoundPage::stopRequested);
  connect(m_levelAction, &QAction::triggered, this, &SoundPage::levelRequested);
  addActions({m_undoAction, m_redoAction, m_stopAction, m_levelAction});
}

void SoundPage::MakeLayout() {
  auto* singles = new QHBoxLayout;
  m_lists = new QHBoxLayout;
  for (const core::sound::Slot& slot : core::sound::kSlots)
    (slot.isList ? m_lists : singles)->addWidget(m_slots[slot.kind], 1);
  m_level = new kit::LinkButton(QStringLiteral("LevelBtn"), tr("Level the volumes ..."), this);
  m_level->setToolTip(tr("Make all sounds equally loud (Ctrl+L)"));
  kit::SetHelp(*m_level, tr("Make all sounds of the set equally loud, by their volumes alone"),
               kit::HelpContext::Level);
  m_level->hide();
  connect(m_level, &QPushButton::clicked, m_levelAction, &QAction::trigger);
  auto* name = new QHBoxLayout;
  name->addWidget(m_setLabel, 1);
  name->addWidget(m_level);
  auto* head = new QVBoxLayout;
  // A screen of 800 by 600 has no pixel to spare beside an LED driver.
  head->setSpacing(kit::kHalf / 2);
  head->addLayout(name);
  head->addLayout(singles);
  m_right = new QVBoxLayout;
  m_right->addLayout(head);
  m_right->addLayout(m_lists, 1);
  m_right->addWidget(m_detail);
  m_right->addWidget(m_gauge);
  auto* page = new QHBoxLayout(this);
  page->addWidget(m_explorer, 4);
  page->addLayout(m_right, 11);
  for (QBoxLayout* layout : std::initializer_list<QBoxLayout*>{singles, m_lists, m_right, page})
    layout->setSpacing(kit::kGrid);
  page->setContentsMargins(kit::kWide, kit::kGrid, kit::kWide, kit::kGrid);
  m_explorer->setMinimumWidth(240);
  m_explorer->setMaximumWidth(400);
}

void SoundPage::ConnectExplorer() {
  m_explorer->SetHint(tr(kHint));
  SoundListView* files = m_explorer->Files();
  const auto add = [this] { m_actions->Add(SelectedSlot(), m_explorer->SelectedFiles()); };
  connect(files, &SoundListView::doubleClickedPlain, this,
          [this](const QModelIndex& index) { m_actions->Add(SelectedSlot(), {m_explorer->FileAt(index.row())}); });
  connect(files, &SoundListView::enterPressed, this, add);
  connect(files, &SoundListView::playWanted, this,
          [this](const QModelIndex& index) { m_actions->Play(m_explorer->FileAt(index.row())); });
  connect(files, &SoundListView::rowChosen, this, [this](int row) { ShowFile(m_explorer->FileAt(row)); });
  files->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(files, &QWidget::customContextMenuRequested, this, [this, files](const QPoint& where) {
    PopUp(MakeFileMenu(*m_actions, m_explorer->SelectedFiles(), SelectedSlot(), this), files->mapToGlobal(where));
  });
  files->viewport()->installEventFilter(this);
}

void SoundPage::ConnectSlot(SlotPanel& panel) {
  SlotList* list = panel.List();
  const core::sound::SlotKind kind = panel.Kind();
  connect(list, &SoundListView::doubleClickedPlain, this,
          [this, kind](const QModelIndex& index) { m_actions->Remove(kind, {index.row() + 1}); });
  connect(list, &SoundListView::deletePressed, list, &SlotList::RemoveSelected);
  connect(list, &SoundListView::playWanted, this, [this, kind](const QModelIndex& index) {
    m_actions->Play(core::sound::SoundPlace{kind, index.row() + 1});
  });
  connect(list, &SoundListView::rowChosen, this, [this, kind](int row) { SelectSound({kind, row + 1}); });
  connect(list, &SoundListView::clickedInto, panel.Option(), [option = panel.Option()] { option->setChecked(true); });
  connect(list, &SlotList::locateWanted, this, [this, kind](int row) { Locate(kind, row); });
  connect(list, &SoundListView::enterPressed, this, [this, kind, list] { Locate(kind, list->currentIndex().row()); });
  connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this, kind] {
    if (m_detail->Place() && m_detail->Place()->kind == kind) m_detail->ShowCount(CountOfSelected());
  });
  list->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list, &QWidget::customContextMenuRequested, this, [this, &panel, list](const QPoint& where) {
    PopUp(MakeSlotMenu(
              *m_actions, *list, *panel.Sounds(), [this] { emit locateAllRequested(); }, m_levelAction),
          list->mapToGlobal(where));
  });
  list->viewport()->installEventFilter(this);
}

void SoundPage::SelectSound(const core::sound::SoundPlace& place) {
  // One sound is selected on the page, wherever it sits.
  for (const auto& [kind, panel] : m_slots)
    if (kind != place.kind) panel->List()->SelectRow(-1);
  m_explorer->Files()->clearSelection();
  m_detail->ShowPlace(place);
  m_detail->ShowCount(CountOfSelected());
}

std::vector<core::sound::SoundPlace> SoundPage::SelectedPlaces() const {
  const std::optional<core::sound::SoundPlace> shown = m_detail->Place();
  if (!shown) return {};
  std::vector<core::sound::SoundPlace> places;
  for (const int position : m_slots.at(shown->kind)->List()->SelectedPositions())
    places.push_back({shown->kind, position});
  // The one that is shown may have lost its selection to a key that only moves the keyboard's row.
  if (std::find(places.begin(), places.end(), *shown) == places.end()) return {*shown};
  return places;
}

int SoundPage::CountOfSelected() const { return std::max(1, static_cast<int>(SelectedPlaces().size())); }

void SoundPage::FollowMoved(core::sound::SlotKind kind, int first, int count) {
  QList<int> rows;
  for (int row = first - 1; row < first - 1 + count; ++row) rows.append(row);
  SlotList* const list = m_slots.at(kind)->List();
  list->Place(rows, rows.constFirst());
  list->scrollTo(list->currentIndex());
  SelectSound({kind, first});
}

void SoundPage::Locate(core::sound::SlotKind kind, int row) {
  const core::sound::SoundPlace place{kind, row + 1};
  if (m_actions->MayChange() && m_set.AllMissing().At(place) != nullptr) emit locateRequested(place);
}

void SoundPage::ShowFile(const std::filesystem::path& path) {
  for (const auto& [kind, panel] : m_slots) panel->List()->SelectRow(-1);
  m_detail->ShowFile(path);
}

void SoundPage::SetFolder(const std::filesystem::path& folder) { m_explorer->SetFolder(folder); }

std::filesystem::path SoundPage::Folder() const { return m_explorer->Folder(); }

void SoundPage::OfferImport(QSettings& settings) {
  m_actions->OfferImport();
  m_explorer->OfferFilter(settings);
}

void SoundPage::SetStart(QWidget& cards, const QList<QWidget*>& controls) {
  m_start = &cards;
  m_start->hide();
  m_right->insertWidget(m_right->indexOf(m_lists) + 1, m_start, 1);
  QWidget* before = m_slots.at(core::sound::SlotKind::Lockup)->List();
  for (QWidget* const control : controls) {
    setTabOrder(before, control);
    before = control;
  }
  ShowStart();
}

void SoundPage::ShowStart() {
  // What is loaded is not empty for long.
  if (m_start == nullptr || m_set.IsLoading()) return;
  const bool isEmpty = std::all_of(core::sound::kSlots.begin(), core::sound::kSlots.end(),
                                   [this](const core::sound::Slot& slot) { return m_set.Rows(slot.kind) == 0; });
  if (isEmpty != m_start->isHidden()) return;
  QWidget* const focused = QApplication::focusWidget();
  const bool hadFocus = focused != nullptr && m_start->isAncestorOf(focused);
  m_right->setStretchFactor(m_lists, isEmpty ? 0 : 1);
  for (const auto& [kind, panel] : m_slots) panel->SetShort(isEmpty);
  m_start->setVisible(isEmpty);
  if (hadFocus && !isEmpty) m_slots.at(SelectedSlot())->List()->setFocus(Qt::OtherFocusReason);
}

void SoundPage::SetPreparing(bool isPreparing) {
  m_isPreparing = isPreparing;
  m_stopAction->setEnabled(m_isPreparing || m_isPlaying);
}

void SoundPage::SetPlaying(const std::filesystem::path& path) {
  m_isPlaying = !path.empty();
  m_stopAction->setEnabled(m_isPreparing || m_isPlaying);
  m_detail->SetPlaying(path);
  m_explorer->SetPlaying(path);
  for (const auto& [kind, panel] : m_slots) panel->Sounds()->SetPlaying(path);
}

void SoundPage::KeepAsOnBoard(QSettings& settings) { m_detail->KeepAsOnBoard(settings); }

void SoundPage::OfferLevelling() {
  m_levelAction->setVisible(true);
  m_level->show();
}

void SoundPage::SetBusy(bool busy) {
  m_actions->SetBusy(busy);
  m_detail->Refresh();
  ModifiedChanged();
}

void SoundPage::FocusSlot(core::sound::SlotKind kind) {
  m_slots.at(kind)->Option()->setChecked(true);
  m_slots.at(kind)->List()->setFocus(Qt::ShortcutFocusReason);
}

void SoundPage::Select(const core::sound::SoundPlace& place) {
  m_slots.at(place.kind)->Option()->setChecked(true);
  SlotList* const list = m_slots.at(place.kind)->List();
  list->Place({place.position - 1}, place.position - 1);
  list->scrollTo(list->currentIndex());
  SelectSound(place);
}

void SoundPage::SetAsOnBoard(bool asOnBoard) { m_detail->SetAsOnBoard(asOnBoard); }

bool SoundPage::IsAsOnBoard() const { return m_actions->IsAsOnBoard(); }

core::sound::SlotKind SoundPage::SelectedSlot() const {
  return static_cast<core::sound::SlotKind>(m_options->checkedId());
}

void SoundPage::SlotChanged(core::sound::SlotKind kind) {
  m_slots.at(kind)->Refresh();
  if (m_detail->Place() && m_detail->Place()->kind == kind) m_detail->Refresh();
}

void SoundPage::MemoryChanged() { m_gauge->Show(core::sound::MemoryUse::Of(m_set.Configuration())); }

void SoundPage::ModifiedChanged() {
  ShowStart();
  m_setLabel->Show(QString::fromStdString(m_set.Name()), m_set.IsModified(), m_set.Path());
  const auto show = [this](QAction& action, const QString& verb, const std::string& what, bool possible) {
    const QString text = QString::fromStdString(what);
    action.setText(text.isEmpty() ? verb : tr("%1: %2").arg(verb, text));
    action.setEnabled(possible && !m_actions->IsBusy());
  };
  show(*m_undoAction, tr("Undo"), m_set.UndoText(), m_set.CanUndo());
  show(*m_redoAction, tr("Redo"), m_set.RedoText(), m_set.CanRedo());
  m_levelAction->setEnabled(!m_actions->IsBusy());
  m_level->setEnabled(!m_actions->IsBusy());
}

bool SoundPage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Enter) emit hint(tr(kHint));
  if (event->type() == QEvent::Leave) emit hint(QString());
  return QWidget::eventFilter(watched, event);
}

}  // namespace kestrin::ui::sound
