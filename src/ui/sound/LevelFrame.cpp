// SPDX-License-Identifier: MIT
#include "ui/sound/LevelFrame.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <cmath>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Theme.h"
#include "ui/kit/TopicOf.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace {

using core::sound::kSlots;
using core::sound::SlotKind;

constexpr int kSheetWidth = 560;
/// Page up and page down change a balance by so many units.
constexpr int kLargeStep = 3;

int Units(const core::sound::Balance& balance, SlotKind kind) {
  return static_cast<int>(std::lround(balance.Of(kind)));
}

}  // namespace

LevelFrame::LevelFrame(QWidget* parent) : Card(parent) {
  setObjectName("LevelFrame");
  setAccessibleName(tr(kCaption));
  kit::SetHelpContext(*this, kit::HelpContext::Level);
  MakeLayout();
  SetBalance(core::sound::Balance());
  SetRunning(false);
  hide();
}

void LevelFrame::MakeLayout() {
  auto* const purpose =
      kit::MakeLabel("LevelPurpose", kit::TextStyle::Plain,
                     tr("Measures how loud the board plays each sound and changes the volumes of the set: the quietest "
                        "sound goes to 100 %, the louder ones come down. No sound file is changed."),
                     this);
  purpose->setWordWrap(true);
  auto* const about =
      kit::MakeLabel("BalanceLabel", kit::TextStyle::Soft,
                     tr("How loud the slots shall be against one another, in loudness units: lower is quieter."), this);
  about->setWordWrap(true);
  m_state = kit::MakeLabel("LevelState", kit::TextStyle::Soft, "", this);
  m_bar = new QProgressBar(this);
  m_bar->setObjectName("LevelBar");
  m_bar->setAccessibleName(tr("Progress of the measuring"));
  m_bar->setRange(0, 100);
  m_bar->setTextVisible(false);
  // The sheet does not change its height under the pointer.
  QSizePolicy room = m_bar->sizePolicy();
  room.setRetainSizeWhenHidden(true);
  m_bar->setSizePolicy(room);

  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kit::kBroad, kit::kWide, kit::kBroad, kit::kWide);
  all->setSpacing(kit::kGrid);
  all->addWidget(kit::MakeLabel("LevelCaption", kit::TextStyle::Caption, tr(kCaption), this));
  all->addWidget(purpose);
  all->addSpacing(kit::kHalf);
  all->addWidget(about);
  all->addLayout(MakeBalance());
  all->addSpacing(kit::kHalf);
  all->addWidget(m_state);
  all->addWidget(m_bar);
  all->addLayout(MakeButtons());
  setFixedWidth(kSheetWidth);
}

QGridLayout* LevelFrame::MakeBalance() {
  auto* const grid = new QGridLayout;
  grid->setHorizontalSpacing(kit::kGrid);
  grid->setVerticalSpacing(kit::kHalf);
  grid->setColumnStretch(2, 1);
  grid->setColumnStretch(5, 1);
  // Single slots on the left, lists on the right, as they stand on the page.
  int singles = 0;
  int lists = 0;
  for (const core::sound::Slot& slot : kSlots)
    AddSlot(*grid, slot.isList ? lists++ : singles++, slot.isList, slot.kind);
  return grid;
}

void LevelFrame::AddSlot(QGridLayout& grid, int row, int column, SlotKind kind) {
  const core::sound::Slot& slot = core::sound::SlotOf(kind);
  auto* const box = new QSpinBox(this);
  m_boxes[static_cast<std::size_t>(&slot - kSlots.data())] = box;
  box->setObjectName(QStringLiteral("Balance_") +
                     QString::fromUtf8(slot.name.data(), static_cast<int>(slot.name.size())));
  box->setAccessibleName(tr("Balance of %1, in loudness units").arg(SlotTitle(kind)));
  box->setRange(static_cast<int>(core::sound::Balance::kLowest), static_cast<int>(core::sound::Balance::kHighest));
  box->setSuffix(tr(" LU"));
  auto* const label = kit::MakeLabel("", kit::TextStyle::Plain, SlotTitle(kind), this);
  label->setBuddy(box);
  auto* const usual =
      kit::MakeLabel("", kit::TextStyle::Soft, tr("usual: %1 LU").arg(Units(core::sound::Balance(), kind)), this);
  grid.addWidget(label, row, 3 * column);
  grid.addWidget(box, row, 3 * column + 1);
  grid.addWidget(usual, row, 3 * column + 2);
  connect(box, &QSpinBox::valueChanged, this, &LevelFrame::ShowWhetherUsual);
}

QBoxLayout* LevelFrame::MakeButtons() {
  m_usual = new QPushButton(tr("Put back"), this);
  m_usual->setObjectName("UsualBalanceBtn");
  m_usual->setToolTip(tr("Put back the usual balance"));
  m_cancel = new QPushButton(tr("Cancel"), this);
  m_cancel->setObjectName("CancelLevelBtn");
  m_level = new QPushButton(tr("Level"), this);
  m_level->setObjectName("LevelNowBtn");
  kit::Theme::MakePrimary(*m_level);
  connect(m_usual, &QPushButton::clicked, this, [this] {
    // It cannot be used then, and the keyboard would be nowhere.
    m_boxes.front()->setFocus();
    SetBalance(core::sound::Balance());
  });
  connect(m_cancel, &QPushButton::clicked, this, &LevelFrame::Cancel);
  connect(m_level, &QPushButton::clicked, this, &LevelFrame::levelRequested);
  auto* const buttons = new QHBoxLayout;
  buttons->setSpacing(kit::kGrid);
  buttons->addWidget(m_usual);
  buttons->addStretch(1);
  buttons->addWidget(m_cancel);
  buttons->addWidget(m_level);
  return buttons;
}

void LevelFrame::SetBalance(const core::sound::Balance& balance) {
  for (std::size_t place = 0; place < kSlots.size(); ++place)
    m_boxes[place]->setValue(Units(balance, kSlots[place].kind));
  ShowWhetherUsual();
}

core::sound::Balance LevelFrame::Balance() const {
  core::sound::Balance balance;
  for (std::size_t place = 0; place < kSlots.size(); ++place) balance.Set(kSlots[place].kind, m_boxes[place]->value());
  return balance;
}

void LevelFrame::ShowWhetherUsual() { m_usual->setEnabled(!m_isRunning && Balance() != core::sound::Balance()); }

void LevelFrame::Open() {
  SetRunning(false);
  show();
  m_level->setFocus();
}

void LevelFrame::SetRunning(bool isRunning) {
  m_isRunning = isRunning;
  // Before others can no longer be used: the keyboard stays in the sheet.
  if (isRunning) m_cancel->setFocus();
  for (QSpinBox* const box : m_boxes) box->setEnabled(!isRunning);
  m_level->setEnabled(!isRunning);
  ShowWhetherUsual();
  m_state->setText(isRunning ? tr("Measuring the sounds ...") : QString());
  m_bar->setValue(0);
  m_bar->setVisible(isRunning);
}

void LevelFrame::ShowPercent(int percent) { m_bar->setValue(percent); }

void LevelFrame::Cancel() {
  if (m_isRunning)
    emit stopRequested();
  else
    hide();
}

void LevelFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    Cancel();
  else
    Card::keyPressEvent(event);
}

}  // namespace kestrin::ui::sound
