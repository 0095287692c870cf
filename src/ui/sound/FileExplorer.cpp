// SPDX-License-Identifier: MIT
#include "ui/sound/FileExplorer.h"

#include <QAction>
#include <QComboBox>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QLabel>
#include <QSettings>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <initializer_list>
#include <memory>
#include <set>

#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/HintLabel.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LatestJob.h"
#include "ui/kit/PathText.h"
#include "ui/kit/TopicOf.h"
#include "ui/sound/DriveList.h"
#include "ui/sound/FileListModel.h"
#include "ui/sound/FolderContents.h"
#include "ui/sound/PathLabel.h"
#include "ui/sound/SoundListView.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace fs = std::filesystem;

namespace {

/// Changes of a folder come in bursts; it is read again when they have ended.
constexpr int kBurstMilliseconds = 300;
constexpr const char* kFilterKey = "explorerFilter";

/// Whether `folder` is `drive` or lies in it.
bool IsWithin(const fs::path& folder, const fs::path& drive) {
  const auto [end, ignored] = std::mismatch(drive.begin(), drive.end(), folder.begin(), folder.end());
  return end == drive.end() || (std::next(end) == drive.end() && end->empty());
}

/// Shows the entries. The ones that stay keep their selection, and the keyboard and the view their place.
void ShowKeepingPlace(SoundListView& list, FileListModel& model, std::vector<FolderEntry> entries) {
  if (model.Entries() == entries) return;
  std::set<fs::path> chosen;
  for (const int row : list.SelectedRows()) chosen.insert(model.At(row).path);
  const fs::path current = list.currentIndex().isValid() ? model.At(list.currentIndex().row()).path : fs::path();
  model.Show(std::move(entries));
  QList<int> selected;
  int keyboard = -1;
  for (int row = 0; row < model.rowCount(); ++row) {
    if (chosen.contains(model.At(row).path)) selected.append(row);
    if (model.At(row).path == current) keyboard = row;
  }
  list.Place(selected, keyboard);
}

}  // namespace

FileExplorer::FileExplorer(const kit::SpecialFolders& folders, QWidget* parent)
    : Card(parent),
      m_specialFolders(folders),
      m_filter(SoundFilter::Board),
      m_job(new kit::LatestJob(this)),
      m_folders(new FileListModel(this)),
      m_files(new FileListModel(this)),
      m_driveList(new DriveList(this)),
      m_up(new QToolButton(this)),
      m_path(new PathLabel(this)),
      m_dirList(new SoundListView(this)),
      m_filterList(new QComboBox(this)),
      m_fileList(new SoundListView(this)),
      m_hint(new kit::HintLabel(this)),
      m_watcher(new QFileSystemWatcher(this)),
      m_readAgain(new QTimer(this)) {
  m_driveList->setObjectName(QStringLiteral("DriveList"));
  m_up->setObjectName(QStringLiteral("UpBtn"));
  m_path->setObjectName(QStringLiteral("FolderLabel"));
  m_dirList->setObjectName(QStringLiteral("DirList"));
  m_filterList->setObjectName(QStringLiteral("FilterList"));
  m_fileList->setObjectName(QStringLiteral("FileList"));
  m_hint->setObjectName(QStringLiteral("HintLabel"));
  m_driveList->setAccessibleName(tr("Drive"));
  // Some systems tell the chosen drive as the name.
  m_driveList->setAccessibleDescription(tr("Drive"));
  m_up->setAccessibleName(tr("Folder above"));
  m_dirList->setAccessibleName(tr("Folders"));
  m_fileList->setAccessibleName(tr("Sound files"));
  m_filterList->setAccessibleName(tr("Which sounds are shown"));
  m_filterList->setAccessibleDescription(tr("Which sounds are shown"));
  m_filterList->addItems({tr("Sounds for the board"), tr("All sounds")});
  m_filterList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_filterList->hide();
  kit::SetHelp(*m_filterList, tr("Show the sounds that the board takes as they are, or those too that are imported"));
  m_dirList->setModel(m_folders);
  m_fileList->setModel(m_files);
  m_dirList->setSelectionMode(QAbstractItemView::SingleSelection);
  m_dirList->setDragEnabled(false);
  kit::SetHelpContext(*this, kit::HelpContext::Explorer);
  kit::SetHelpContext(*m_driveList, kit::HelpContext::DriveList);
  for (QWidget* const control : std::initializer_list<QWidget*>{m_up, m_path, m_dirList})
    kit::SetHelpContext(*control, kit::HelpContext::FolderList);
  kit::SetHelpContext(*m_fileList, kit::HelpContext::FileList);
  MakeLayout();
  FillDrives();

  // A stick may have been plugged in since.
  connect(m_driveList, &DriveList::opening, this, &FileExplorer::FillDrives);
  connect(m_driveList, &QComboBox::activated, this, &FileExplorer::ChooseDrive);
  connect(m_up, &QToolButton::clicked, this, &FileExplorer::GoUp);
  connect(m_dirList, &SoundListView::doubleClickedPlain, this, &FileExplorer::OpenChosenFolder);
  connect(m_dirList, &SoundListView::enterPressed, this, &FileExplorer::OpenChosenFolder);
  connect(m_dirList, &SoundListView::deletePressed, this, &FileExplorer::GoUp);
  m_readAgain->setSingleShot(true);
  m_readAgain->setInterval(kBurstMilliseconds);
  connect(m_watcher, &QFileSystemWatcher::directoryChanged, m_readAgain, qOverload<>(&QTimer::start));
  connect(m_readAgain, &QTimer::timeout, this, &FileExplorer::Read);
  auto* refresh = new QAction(tr("Read the folder again"), this);
  refresh->setShortcut(QKeySequence::Refresh);
  refresh->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(refresh, &QAction::triggered, this, &FileExplorer::Read);
  addAction(refresh);
}

void FileExplorer::MakeLayout() {
  auto* title = kit::MakeLabel("", kit::TextStyle::Title, tr("Sounds on this computer"), this);
  title->setWordWrap(true);
  m_up->setArrowType(Qt::UpArrow);
  m_up->setToolTip(tr("Go to the folder above (Backspace in the folder list)"));
  m_up->setFocusPolicy(Qt::TabFocus);
  // As high as its lines; the lists give way.
  QSizePolicy pathPolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
  pathPolicy.setHeightForWidth(true);
  m_path->setSizePolicy(pathPolicy);
  kit::SetTextStyle(*m_path, kit::TextStyle::Soft);
  kit::SetTextStyle(*m_hint, kit::TextStyle::Soft);
  m_driveList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_dirList->SetEmptyText(tr("No folders in here"));

  auto* where = new QHBoxLayout;
  where->setSpacing(kit::kHalf);
  where->addWidget(m_up);
  where->addWidget(m_path, 1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kInset, kit::kInset, kit::kInset, kit::kInset);
  column->setSpacing(kit::kGrid);
  column->addWidget(title);
  column->addWidget(m_driveList);
  column->addLayout(where);
  for (SoundListView* list : {m_dirList, m_fileList}) {
    auto* frame = new Card(this);
    auto* inside = new QVBoxLayout(frame);
    // The rows' ground reaches up to the card's line.
    inside->setContentsMargins(1, kit::kHalf, 1, kit::kHalf);
    inside->addWidget(list);
    list->setMinimumHeight(52);
    frame->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    if (list == m_fileList) column->addWidget(m_filterList);
    column->addWidget(frame, list == m_dirList ? 2 : 5);
  }
  column->addWidget(m_hint);
}

void FileExplorer::FillDrives() {
  const int index = m_driveList->currentIndex();
  const kit::Drive shown = index < 0 ? kit::Drive{} : m_drives.at(static_cast<std::size_t>(index));
  m_drives = {{tr("Desktop").toStdString(), m_specialFolders.Desktop()},
              {tr("My Documents").toStdString(), m_specialFolders.Documents()}};
  for (kit::Drive& drive : m_specialFolders.Drives()) m_drives.push_back(std::move(drive));
  int current = -1;
  m_driveList->clear();
  for (const kit::Drive& drive : m_drives) {
    if (drive.label == shown.label && drive.path == shown.path) current = m_driveList->count();
    m_driveList->addItem(QString::fromStdString(drive.label));
  }
  m_driveList->setCurrentIndex(current);
}

void FileExplorer::ChooseDrive(int index) {
  if (index >= 0) Open(m_drives.at(static_cast<std::size_t>(index)).path);
}

void FileExplorer::SetFolder(const fs::path& folder) {
  constexpr std::size_t kFirstDrive = 2;
  std::size_t best = 0;
  for (std::size_t drive = kFirstDrive; drive < m_drives.size(); ++drive) {
    const fs::path& path = m_drives[drive].path;
    // The innermost: a home folder rather than the root.
    if (IsWithin(folder, path) && (best == 0 || IsWithin(path, m_drives[best].path))) best = drive;
  }
  m_driveList->setCurrentIndex(best != 0 ? static_cast<int>(best) : -1);
  Open(folder);
}

void FileExplorer::Open(const fs::path& folder) {
  if (folder.empty()) return;
  if (!m_folder.empty()) m_watcher->removePath(kit::TextOf(m_folder));
  m_folder = folder;
  m_watcher->addPath(kit::TextOf(folder));
  m_path->setText(kit::TextOf(folder));
  m_path->setToolTip(kit::TextOf(folder));
  m_up->setEnabled(folder.has_parent_path() && folder.parent_path() != folder);
  // What the folder before held must not be taken for this one's.
  m_folders->Show({});
  m_files->Show({});
  m_fileList->SetEmptyText(tr("Reading the folder ..."));
  Read();
}

void FileExplorer::GoUp() {
  const fs::path left = m_folder;
  if (!m_up->isEnabled()) return;
  Open(m_folder.parent_path());
  m_left = left;
}

void FileExplorer::OpenChosenFolder() {
  const QModelIndex index = m_dirList->currentIndex();
  if (index.isValid()) Open(m_folders->At(index.row()).path);
}

void FileExplorer::Read() {
  if (m_folder.empty()) return;
  m_job->Start([this, folder = m_folder, filter = m_filter](const kit::LatestJob::GoOn& goOn,
                                                            const kit::LatestJob::Deliver& deliver) {
    auto contents = std::make_shared<FolderContents>(FolderContents::Of(folder, goOn, filter));
    deliver([this, contents] { Show(*contents); });
  });
}

void FileExplorer::Show(FolderContents& contents) {
  m_fileList->SetEmptyText(contents.complete ? NoSounds() : tr("This folder cannot be read"));
  // Reading the same folder again leaves the person where they were.
  ShowKeepingPlace(*m_dirList, *m_folders, std::move(contents.folders));
  ShowKeepingPlace(*m_fileList, *m_files, std::move(contents.sounds));
  if (!m_left.empty()) m_dirList->SelectRow(m_folders->RowOf(std::exchange(m_left, {})));
  emit folderShown();
}

std::vector<fs::path> FileExplorer::SelectedFiles() const {
  std::vector<fs::path> files;
  for (const int row : m_fileList->SelectedRows()) files.push_back(m_files->At(row).path);
  return files;
}

fs::path FileExplorer::FileAt(int row) const {
  return row >= 0 && row < m_files->rowCount() ? m_files->At(row).path : fs::path();
}

void FileExplorer::SetPlaying(const fs::path& path) { m_files->SetPlaying(path); }

QString FileExplorer::NoSounds() const {
  if (m_filter == SoundFilter::All) return tr("No sounds in this folder");
  const QString none = tr("No sound files (.lsu) in this folder");
  return m_filterList->isHidden() ? none : tr("%1. \"All sounds\" shows those that can be imported.").arg(none);
}

void FileExplorer::OfferFilter(QSettings& settings) {
  const auto choose = [this](int index) {
    m_filter = index == 0 ? SoundFilter::Board : SoundFilter::All;
    Read();
  };
  m_filterList->setCurrentIndex(settings.value(kFilterKey).toString() == QLatin1String("all") ? 1 : 0);
  m_filterList->show();
  choose(m_filterList->currentIndex());
  connect(m_filterList, &QComboBox::activated, this, [choose, &settings](int index) {
    settings.setValue(kFilterKey, index == 0 ? "board" : "all");
    choose(index);
  });
}

void FileExplorer::SetHint(const QString& hint) { m_hint->setText(hint); }

}  // namespace kestrin::ui::sound
