// SPDX-License-Identifier: MIT
#include "ui/stage/TryFrame.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/kit/Card.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/stage/ActionButton.h"
#include "ui/stage/StageAccess.h"
#include "ui/stage/StageView.h"
#include "ui/stage/Timeline.h"
#include "ui/stage/TryList.h"
#include "ui/stage/TryRows.h"

namespace kestrin::ui::stage {

namespace {

constexpr int kSoundsLeast = 264;
constexpr int kSoundsMost = 340;

}  // namespace

TryFrame::TryFrame(core::sound::SoundSet& set, const PlayedPieces& pieces, QWidget* parent)
    : QWidget(parent), m_rows(new TryRows(set, this)), m_stage(new StageView(this)) {
  TellPictures();
  setObjectName(QStringLiteral("TryFrame"));
  setAccessibleName(tr("Try the saber"));
  kit::SetHelpOfGround(*this, kit::HelpContext::Try);
  m_stage->setAccessibleName(tr("The saber"));
  kit::SetHelp(*m_stage,
               tr("P Power  \u00b7  S Swing  \u00b7  H Hit  \u00b7  hold L Lock-up  \u00b7  Esc back to the set"),
               kit::HelpContext::Try);

  auto* const left = new QVBoxLayout;
  left->setSpacing(kit::kGrid);
  left->addWidget(m_stage, 5);
  MakeButtons(*left);
  left->addWidget(MakeTimes(pieces), 2);
  auto* const body = new QHBoxLayout;
  body->setSpacing(kit::kGrid);
  body->addLayout(left, 3);
  body->addWidget(MakeSounds(), 1);
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kit::kWide, kit::kGrid, kit::kWide, kit::kGrid);
  all->setSpacing(kit::kGrid);
  MakeHead(*all);
  all->addLayout(body, 1);
}

void TryFrame::MakeHead(QBoxLayout& layout) {
  auto* const title = kit::MakeLabel(QStringLiteral("TryTitle"), kit::TextStyle::Title, tr("TRY THE SABER"), this);
  m_fewer = new QCheckBox(tr("Fewer flashes"), this);
  m_fewer->setObjectName(QStringLiteral("TryFewerBox"));
  m_fewer->setChecked(true);
  kit::SetHelp(*m_fewer, tr("At most three soft flashes a second: quicker ones can make people ill"));
  m_asOnBoard = new QCheckBox(tr("As on the board"), this);
  m_asOnBoard->setObjectName(QStringLiteral("TryAsOnBoardBox"));
  kit::SetHelp(*m_asOnBoard, tr("Play sounds as the board will play them: coded for it; else as their files hold them"),
               kit::HelpContext::AsOnBoard);
  auto* const back = new QPushButton(tr("Back to the set"), this);
  back->setObjectName(QStringLiteral("TryBackBtn"));
  back->setToolTip(tr("Back to the set (Escape)"));
  kit::SetHelp(*back, tr("Go back to the slots; the saber falls silent"));
  connect(m_fewer, &QCheckBox::toggled, this, &TryFrame::fewerChosen);
  connect(m_asOnBoard, &QCheckBox::toggled, this, &TryFrame::asOnBoardChosen);
  connect(back, &QPushButton::clicked, this, &TryFrame::backRequested);

  auto* const head = new QHBoxLayout;
  head->setSpacing(kit::kWide);
  head->addWidget(title);
  head->addStretch(1);
  head->addWidget(m_fewer);
  head->addWidget(m_asOnBoard);
  head->addWidget(back);
  layout.addLayout(head);
}

void TryFrame::MakeButtons(QBoxLayout& layout) {
  m_power = new ActionButton(QStringLiteral("TryPowerBtn"), ActionButton::Sign::Power, tr("Power"), tr("P"), this);
  m_power->setCheckable(true);
  auto* const swing =
      new ActionButton(QStringLiteral("TrySwingBtn"), ActionButton::Sign::Swing, tr("Swing"), tr("S"), this);
  auto* const hit = new ActionButton(QStringLiteral("TryHitBtn"), ActionButton::Sign::Hit, tr("Hit"), tr("H"), this);
  m_lockup =
      new ActionButton(QStringLiteral("TryLockupBtn"), ActionButton::Sign::Lockup, tr("Lock-up"), tr("hold L"), this);
  kit::SetHelp(*m_power, tr("Switch the blade on or off (P, or Space on the stage)"));
  kit::SetHelp(*swing, tr("Swing the saber (S, or an arrow key on the stage)"));
  kit::SetHelp(*hit, tr("Hit something (H, or Enter on the stage)"));
  kit::SetHelp(*m_lockup, tr("Press two blades together for as long as you hold this (L)"));
  connect(m_power, &QPushButton::clicked, this, [this] {
    // It shows how the blade is, not how often it was pressed.
    m_power->setChecked(m_isOn);
    emit powerRequested();
  });
  connect(swing, &QPushButton::clicked, this, [this] { emit swingRequested(0); });
  connect(hit, &QPushButton::clicked, this, &TryFrame::hitRequested);
  connect(m_lockup, &QPushButton::pressed, this, [this] { emit lockupHeld(true); });
  connect(m_lockup, &QPushButton::released, this, [this] { emit lockupHeld(false); });
  auto* const row = new QHBoxLayout;
  row->setSpacing(kit::kGrid);
  for (QWidget* const button : {static_cast<QWidget*>(m_power), static_cast<QWidget*>(swing),
                                static_cast<QWidget*>(hit), static_cast<QWidget*>(m_lockup)})
    row->addWidget(button, 1);
  layout.addLayout(row);
}

QWidget* TryFrame::MakeTimes(const PlayedPieces& pieces) {
  auto* const card = new kit::Card(this);
  auto* const column = new QVBoxLayout(card);
  column->setContentsMargins(kit::kInset, kit::kGrid, kit::kInset, kit::kGrid);
  column->setSpacing(kit::kHalf);
  m_times = new Timeline(pieces, card);
  kit::SetHelp(*m_times, tr("What has sounded; a click, or arrow keys and Enter, plays a piece again"));
  auto* const head = new QHBoxLayout;
  head->addWidget(kit::MakeLabel(QString(), kit::TextStyle::Title, tr("The last 12 seconds"), card));
  head->addStretch(1);
  head->addWidget(kit::MakeLabel(QString(), kit::TextStyle::Soft, tr("click a piece to hear it again"), card));
  column->addLayout(head);
  column->addWidget(m_times, 1);
  return card;
}

QWidget* TryFrame::MakeSounds() {
  auto* const card = new kit::Card(this);
  card->setMinimumWidth(kSoundsLeast);
  card->setMaximumWidth(kSoundsMost);
  auto* const column = new QVBoxLayout(card);
  column->setContentsMargins(kit::kGrid, kit::kGrid, kit::kHalf, kit::kGrid);
  column->setSpacing(kit::kHalf);
  m_list = new TryList(*m_rows, card);
  kit::SetHelp(*m_list,
               tr("Click a sound to play it and to find it in its slot; its bar, or arrow left and right, sets "
                  "its volume"));
  auto* const head = new QHBoxLayout;
  head->setContentsMargins(kit::kHalf, 0, kit::kGrid, 0);
  head->addWidget(kit::MakeLabel(QString(), kit::TextStyle::Title, tr("Sounds"), card));
  head->addStretch(1);
  head->addWidget(kit::MakeLabel(QString(), kit::TextStyle::Soft, tr("volume"), card));
  column->addLayout(head);
  column->addWidget(m_list, 1);
  return card;
}

void TryFrame::ShowState(bool isOn, bool isLocked) {
  m_isOn = isOn;
  m_power->setChecked(isOn);
  m_lockup->setDown(isLocked);
}

void TryFrame::ShowFewer(bool isFewer) { m_fewer->setChecked(isFewer); }

void TryFrame::ShowAsOnBoard(bool asOnBoard) { m_asOnBoard->setChecked(asOnBoard); }

bool TryFrame::TakeKey(int key) {
  const bool isButton = qobject_cast<QAbstractButton*>(window()->focusWidget()) != nullptr;
  switch (key) {
    case Qt::Key_P:
    case Qt::Key_Space:
      emit powerRequested();
      return true;
    case Qt::Key_S:
      emit swingRequested(0);
      return true;
    case Qt::Key_Up:
    case Qt::Key_Right:
      emit swingRequested(1);
      return true;
    case Qt::Key_Down:
    case Qt::Key_Left:
      emit swingRequested(-1);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // A button is pressed by it.
      if (isButton) return false;
      [[fallthrough]];
    case Qt::Key_H:
      emit hitRequested();
      return true;
    case Qt::Key_L:
      emit lockupHeld(true);
      return true;
    case Qt::Key_Escape:
      emit backRequested();
      return true;
    default:
      return false;
  }
}

void TryFrame::keyPressEvent(QKeyEvent* event) {
  // The arrows of the number pad are arrows too.
  if ((event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != 0) return QWidget::keyPressEvent(event);
  // A key that is held is one press.
  if (event->isAutoRepeat()) return event->accept();
  if (!TakeKey(event->key())) QWidget::keyPressEvent(event);
}

void TryFrame::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_L) return QWidget::keyReleaseEvent(event);
  if (!event->isAutoRepeat()) emit lockupHeld(false);
}

bool TryFrame::event(QEvent* event) {
  // The release of a key that is held goes to another window then, or to a sheet over this one.
  if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::EnabledChange) emit lockupHeld(false);
  return QWidget::event(event);
}

void TryFrame::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  m_stage->setFocus(Qt::OtherFocusReason);
  emit shown(true);
}

void TryFrame::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  emit lockupHeld(false);
  emit shown(false);
}

}  // namespace kestrin::ui::stage
