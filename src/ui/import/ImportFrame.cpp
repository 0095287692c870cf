// SPDX-License-Identifier: MIT
#include "ui/import/ImportFrame.h"

#include <QAccessible>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/import/GuessLegend.h"
#include "ui/import/ImportHeader.h"
#include "ui/import/ImportList.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/Theme.h"
#include "ui/kit/TopicOf.h"
#include "ui/sound/MemoryBar.h"
#include "ui/sound/MemoryGauge.h"
#include "ui/sound/PathLabel.h"

namespace kestrin::ui::imports {

namespace {

using kit::kBroad;
using kit::kGrid;
using kit::kHair;
using kit::kHalf;
using kit::kInset;
using kit::kWide;

constexpr int kSheetWidth = 1104;
constexpr int kButtonWidth = 96;
constexpr int kProgressWidth = 160;
/// From the left edge of a check box to its text.
constexpr int kCheckIndent = 26;

}  // namespace

ImportFrame::ImportFrame(ImportModel& rows, const kit::Pictures& pictures, QWidget* parent)
    : Card(parent), m_model(rows) {
  setObjectName("ImportFrame");
  setWindowTitle(tr(kCaption));
  setAccessibleName(tr(kCaption));
  kit::SetHelpContext(*this, kit::HelpContext::Import);
  // What does not fit is scrolled to.
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kBroad, kBroad, kBroad, kBroad);
  all->setSpacing(kInset);
  all->addLayout(MakeHead());
  all->addWidget(MakeTable(), 1);
  all->addLayout(MakeOptions());
  all->addLayout(MakeMemory());
  all->addLayout(MakePlace());
  all->addLayout(MakeFooter());
  m_add->setIcon(pictures.Icon("import.bmp"));
  connect(&m_model, &ImportModel::changed, this, &ImportFrame::Refresh);
  auto* const take = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
  take->setContext(Qt::WidgetWithChildrenShortcut);
  connect(take, &QShortcut::activated, m_import, &QPushButton::click);
  Refresh();
  hide();
}

QBoxLayout* ImportFrame::MakeHead() {
  m_summary = kit::MakeLabel("ImportSummary", kit::TextStyle::Soft, "", this);
  m_summary->setWordWrap(true);
  m_add = new QPushButton(tr("Add files ..."), this);
  m_add->setObjectName("ImportAddBtn");
  kit::SetHelp(*m_add, tr("Import more sounds together with these"));
  connect(m_add, &QPushButton::clicked, this, &ImportFrame::addWanted);
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(kHair);
  texts->addWidget(kit::MakeLabel("ImportCaption", kit::TextStyle::Caption, tr(kCaption), this));
  texts->addWidget(m_summary);
  auto* const head = new QHBoxLayout;
  head->setSpacing(kWide);
  head->addLayout(texts, 1);
  head->addWidget(m_add, 0, Qt::AlignTop);
  return head;
}

QWidget* ImportFrame::MakeTable() {
  auto* const frame = new Card(this);
  m_header = new ImportHeader(frame);
  m_list = new ImportList(m_model, frame);
  m_list->setObjectName("ImportList");
  m_list->setAccessibleName(tr("Sounds to import"));
  kit::SetHelp(*m_list, tr("Space ticks, 1 to 7 choose the slot, 0 the folder only, P plays, with SHIFT as it was, "
                           "CTRL with an arrow key moves"));
  connect(m_header, &ImportHeader::allTicked, this, [this](bool ticked) {
    QList<int> rows;
    for (int row = 0; row < m_model.rowCount(); ++row) rows.append(row);
    m_model.Tick(rows, ticked);
  });
  connect(m_list, &ImportList::playWanted, this, &ImportFrame::playWanted);
  auto* const inside = new QVBoxLayout(frame);
  // The rows' ground reaches up to the card's line.
  inside->setContentsMargins(1, 1, 1, kHalf);
  inside->setSpacing(0);
  inside->addWidget(m_header);
  inside->addWidget(m_list, 1);
  return frame;
}

QBoxLayout* ImportFrame::MakeOption(QCheckBox*& box, QLabel*& hint, const char* name, const QString& text,
                                    const QString& help) {
  box = new QCheckBox(text, this);
  box->setObjectName(name);
  box->setChecked(true);
  kit::SetHelp(*box, help);
  hint = kit::MakeLabel(QString(name) + "Hint", kit::TextStyle::Soft, "", this);
  hint->setContentsMargins(kCheckIndent, 0, 0, 0);
  auto* const column = new QVBoxLayout;
  column->setSpacing(0);
  column->addWidget(box);
  column->addWidget(hint);
  return column;
}

QBoxLayout* ImportFrame::MakeOptions() {
  auto* const row = new QHBoxLayout;
  row->setSpacing(kWide);
  row->addLayout(MakeOption(m_trim, m_trimHint, "ImportTrimCheck", tr("Trim silence"),
                            tr("Cut off what cannot be heard before and behind each sound")),
                 1);
  row->addLayout(MakeOption(m_level, m_levelHint, "ImportLevelCheck", tr("Level loudness"),
                            tr("Set the volumes of the set so that no sound is louder than it should be")),
                 1);
  row->addLayout(MakeOption(m_loop, m_loopHint, "ImportLoopCheck", tr("Loop the hum"),
                            tr("Join the end of sounds that repeat to their beginning, so that no click is heard")),
                 1);
  m_levelHint->setText(tr("so that no sound jumps out"));
  m_loopHint->setText(tr("Idle and Lock-up repeat without a click"));
  connect(m_trim, &QCheckBox::toggled, &m_model, &ImportModel::SetTrim);
  connect(m_loop, &QCheckBox::toggled, &m_model, &ImportModel::SetLoop);
  return row;
}

QBoxLayout* ImportFrame::MakeMemory() {
  m_use = kit::MakeLabel("ImportMemoryLabel", kit::TextStyle::Soft, "", this);
  m_use->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_bar = new sound::MemoryBar(this);
  m_bar->setObjectName("ImportMemory");
  m_advice = kit::MakeLabel("ImportAdvice", kit::TextStyle::Plain, "", this);
  m_advice->setWordWrap(true);
  m_advice->setForegroundRole(QPalette::BrightText);
  auto* const head = new QHBoxLayout;
  head->setSpacing(kGrid);
  head->addWidget(kit::MakeLabel("", kit::TextStyle::Title, tr("This set after the import"), this));
  head->addWidget(m_use, 1);
  auto* const column = new QVBoxLayout;
  column->setSpacing(kHalf);
  column->addLayout(head);
  column->addWidget(m_bar);
  column->addWidget(m_advice);
  return column;
}

QBoxLayout* ImportFrame::MakePlace() {
  m_place = new sound::PathLabel(this);
  m_place->setObjectName("ImportFolderLabel");
  kit::SetTextStyle(*m_place, kit::TextStyle::Soft);
  m_change = new kit::LinkButton("ImportFolderLink", tr("Change ..."), this);
  m_change->setAccessibleName(tr("Change the folder for the new sounds"));
  kit::SetHelp(*m_change, tr("Choose another folder for the new sounds"));
  connect(m_change, &QPushButton::clicked, this, &ImportFrame::folderWanted);
  auto* const row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addWidget(kit::MakeLabel("", kit::TextStyle::Plain, tr("The new sounds go into"), this));
  row->addWidget(m_place, 1);
  row->addWidget(m_change);
  return row;
}

QBoxLayout* ImportFrame::MakeFooter() {
  m_legend = new GuessLegend(this);
  m_progressText = kit::MakeLabel("ImportProgressLabel", kit::TextStyle::Soft, "", this);
  m_progressText->setWordWrap(true);
  m_progress = new QProgressBar(this);
  m_progress->setObjectName("ImportProgress");
  m_progress->setAccessibleName(tr("Sounds that are ready"));
  m_progress->setTextVisible(false);
  m_progress->setFixedWidth(kProgressWidth);
  m_cancel = new QPushButton(tr("Cancel"), this);
  m_cancel->setObjectName("ImportCancelBtn");
  m_cancel->setMinimumWidth(kButtonWidth);
  kit::SetHelp(*m_cancel, tr("Close the sheet; nothing is imported"));
  connect(m_cancel, &QPushButton::clicked, this, &QWidget::hide);
  m_import = new QPushButton(this);
  m_import->setObjectName("ImportTakeBtn");
  kit::Theme::MakePrimary(*m_import);
  connect(m_import, &QPushButton::clicked, this, &ImportFrame::importWanted);
  auto* const row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addWidget(m_progress);
  row->addWidget(m_progressText, 1);
  row->addWidget(m_legend, 1);
  row->addWidget(m_cancel);
  row->addWidget(m_import);
  return row;
}

QSize ImportFrame::sizeHint() const {
  const QSize least = Card::sizeHint();
  return {std::max(kSheetWidth, least.width()), least.height()};
}

void ImportFrame::Open() {
  m_origin.clear();
  m_failure.clear();
  m_work = Work::None;
  m_model.SetTrim(m_trim->isChecked());
  m_model.SetLoop(m_loop->isChecked());
  Refresh();
  show();
  m_list->setFocus();
}

void ImportFrame::ShowOrigin(const QString& name) {
  m_origin = name;
  Refresh();
}

void ImportFrame::ShowFolder(const std::filesystem::path& folder) {
  m_folder = folder;
  m_place->setText(kit::TextOf(folder));
  m_place->setToolTip(kit::TextOf(folder));
}

void ImportFrame::ShowWork(Work work) {
  m_work = work;
  Refresh();
}

void ImportFrame::ShowFailure(const QString& text) {
  m_failure = text;
  Refresh();
  if (text.isEmpty()) return;
  QAccessibleEvent alert(m_progressText, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

bool ImportFrame::IsLevelled() const { return m_level->isChecked(); }

QString ImportFrame::Summary() const {
  const int files = m_model.rowCount();
  if (files == 0 && m_work == Work::Looking) return tr("Looking for sounds ...");
  if (files == 0) return tr("No sounds were found there. Add files, or drop others here.");
  const int ready = files - m_model.Failed() - static_cast<int>(m_model.Unready().size());
  const QString stay = tr("Your files stay as they are; the set gets copies that fit the board.");
  const QString count = files == 1 ? tr("1 file") : tr("%1 files").arg(files);
  const QString from = m_origin.isEmpty() ? count : tr("%1 from \"%2\"").arg(count, m_origin);
  return tr("%1, %2 of them ready. %3").arg(from).arg(ready).arg(stay);
}

QString ImportFrame::WhyNotImport() const {
  if (m_work != Work::None) return tr("Please wait until this is done.");
  if (m_model.Coming() == 0) return tr("Tick the sounds that you want to import.");
  if (m_model.ComingUnready() > 0) return tr("Please wait until the sounds are ready.");
  return {};
}

void ImportFrame::ShowProgress() {
  const int all = m_model.rowCount() - m_model.Failed();
  const int ready = all - static_cast<int>(m_model.Unready().size());
  const bool isBusy = m_work != Work::None || ready < all;
  // Without an end in sight the bar shows that something goes on.
  m_progress->setRange(0, m_work == Work::None ? all : 0);
  m_progress->setValue(ready);
  QString text = m_failure;
  if (m_work == Work::Looking) text = tr("Looking for sounds ...");
  if (m_work == Work::Importing) text = tr("Importing ...");
  if (m_work == Work::None && isBusy) text = tr("Making the sounds ready: %1 of %2").arg(ready).arg(all);
  m_progressText->setText(text);
  m_progressText->setForegroundRole(isBusy ? QPalette::PlaceholderText : QPalette::BrightText);
  m_progressText->setVisible(!text.isEmpty());
  m_progress->setVisible(isBusy);
  m_legend->setVisible(text.isEmpty());
  static_cast<GuessLegend*>(m_legend)->Show(m_model.HasUnsure());
}

void ImportFrame::Refresh() {
  const QString summary = Summary();
  const bool isNews = m_summary->text() != summary && m_model.Unready().empty();
  m_summary->setText(summary);
  m_header->Show(m_model.AllTicked());
  m_list->updateGeometry();

  const double trimmed = m_model.Trimmed();
  m_trimHint->setText(m_trim->isChecked() && trimmed >= 0.05
                          ? tr("at both ends, saves %1 s").arg(QLocale().toString(trimmed, 'f', 1))
                          : tr("at both ends"));
  const core::sound::MemoryUse use = m_model.Use();
  const QString used = use.Fits() ? sound::MemoryGauge::Summary(use) : sound::MemoryGauge::Used(use);
  const QString advice = m_model.Advice();
  m_bar->Show(use);
  m_use->setText(used);
  m_advice->setText(advice);
  m_advice->setVisible(!advice.isEmpty());
  m_bar->setAccessibleName(tr("Board memory after the import: %1").arg(used));
  m_bar->setAccessibleDescription(advice);

  ShowProgress();
  const bool isImporting = m_work == Work::Importing;
  for (QWidget* const control :
       std::initializer_list<QWidget*>{m_add, m_header, m_list, m_trim, m_level, m_loop, m_change})
    control->setEnabled(!isImporting);
  const int coming = m_model.Coming();
  m_import->setText(coming == 1 ? tr("Import 1 sound") : tr("Import %1 sounds").arg(coming));
  const QString why = WhyNotImport();
  m_import->setEnabled(why.isEmpty());
  m_import->setToolTip(why);
  kit::SetHelp(*m_import, why.isEmpty() ? tr("Put the ticked sounds into the folder and into their slots") : why);
  if (!isNews || !isVisible()) return;
  QAccessibleEvent alert(m_summary, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void ImportFrame::resizeEvent(QResizeEvent* event) {
  Card::resizeEvent(event);
  m_header->SetRightMargin(m_list->verticalScrollBar()->isVisible() ? m_list->verticalScrollBar()->width() : 0);
}

void ImportFrame::hideEvent(QHideEvent* event) {
  Card::hideEvent(event);
  // Not when the window is minimised.
  if (isHidden()) emit closed();
}

void ImportFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return hide();
  Card::keyPressEvent(event);
}

}  // namespace kestrin::ui::imports
