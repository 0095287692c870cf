// SPDX-License-Identifier: MIT
#include "ui/board/CompareFrame.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/board/CompareTable.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::ui::board {

namespace {

using core::sound::ComparedPlace;
using core::sound::Differs;
using kit::kBroad;
using kit::kGrid;
using kit::kHair;
using kit::kInset;
using kit::kWide;

constexpr int kSheetWidth = 1040;
constexpr int kHeaderHeight = 30;
constexpr int kCloseWidth = 88;

}  // namespace

CompareFrame::CompareFrame(const kit::Pictures& pictures, QWidget* parent) : Card(parent), m_pictures(pictures) {
  setObjectName("CompareFrame");
  kit::SetHelpContext(*this, kit::HelpContext::Board);
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kBroad, kBroad, kBroad, kBroad);
  all->setSpacing(kWide);
  all->addLayout(MakeHead());
  all->addWidget(MakeTable(), 1);
  all->addLayout(MakeFooter());
  hide();
}

QPushButton* CompareFrame::MakeFilter(const char* name) {
  auto* const button = new QPushButton(this);
  button->setObjectName(name);
  button->setCheckable(true);
  button->setAutoExclusive(true);
  connect(button, &QPushButton::toggled, this, [this](bool isOn) {
    if (isOn) Refresh();
  });
  return button;
}

QBoxLayout* CompareFrame::MakeHead() {
  m_caption = kit::MakeLabel("CompareCaption", kit::TextStyle::Caption, "", this);
  m_summary = kit::MakeLabel("CompareSummary", kit::TextStyle::Soft, "", this);
  m_summary->setWordWrap(true);
  m_all = MakeFilter("CompareAllBtn");
  m_differences = MakeFilter("CompareDifferencesBtn");
  kit::SetHelp(*m_all, tr("Show every sound of both sides"));
  kit::SetHelp(*m_differences, tr("Show only where the two sides differ"));
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(kHair);
  texts->addWidget(m_caption);
  texts->addWidget(m_summary);
  auto* const head = new QHBoxLayout;
  head->setSpacing(kGrid);
  head->addLayout(texts, 1);
  head->addWidget(m_all);
  head->addWidget(m_differences);
  return head;
}

QWidget* CompareFrame::MakeTable() {
  auto* const frame = new Card(this);
  m_header = new QWidget(frame);
  m_header->setFixedHeight(kHeaderHeight);
  auto* const slot = kit::MakeLabel("", kit::TextStyle::Soft, tr("Slot"), m_header);
  slot->move(kWide, (kHeaderHeight - slot->sizeHint().height()) / 2);
  m_here = kit::MakeLabel("CompareHereLabel", kit::TextStyle::Title, "", m_header);
  m_there = kit::MakeLabel("CompareThereLabel", kit::TextStyle::Title, "", m_header);
  m_nothing = kit::MakeLabel("CompareNothingLabel", kit::TextStyle::Soft, "", frame);
  m_nothing->setWordWrap(true);
  m_nothing->setAlignment(Qt::AlignCenter);
  m_nothing->setMargin(kBroad);
  m_table = new CompareTable(*m_differences, frame);
  connect(m_table, &CompareTable::playWanted, this, &CompareFrame::playWanted);
  // The rows are laid out after the table.
  connect(m_table, &CompareTable::laidOut, this, &CompareFrame::PlaceHeader, Qt::QueuedConnection);
  connect(m_table, &CompareTable::stopWanted, this, &CompareFrame::stopWanted);
  connect(m_table, &CompareTable::takeOverWanted, this, &CompareFrame::takeOverWanted);
  kit::SetHelpContext(*m_table, kit::HelpContext::Board);
  auto* const inside = new QVBoxLayout(frame);
  // The rows reach up to the card's line.
  inside->setContentsMargins(1, 1, 1, 1);
  inside->setSpacing(0);
  inside->addWidget(m_header);
  inside->addWidget(m_nothing, 1);
  inside->addWidget(m_table, 1);
  return frame;
}

QBoxLayout* CompareFrame::MakeFooter() {
  m_advice = kit::MakeLabel("CompareAdvice", kit::TextStyle::Soft, "", this);
  m_advice->setWordWrap(true);
  m_close = new QPushButton(tr("Close"), this);
  m_close->setObjectName("CompareCloseBtn");
  m_close->setMinimumWidth(kCloseWidth);
  kit::SetHelp(*m_close, tr("Close the comparison"));
  connect(m_close, &QPushButton::clicked, this, &QWidget::hide);
  m_send = new QPushButton(tr("Send to the board"), this);
  m_send->setObjectName("CompareSendBtn");
  kit::Theme::MakePrimary(*m_send);
  ShowPicture();
  connect(m_send, &QPushButton::clicked, this, &CompareFrame::sendWanted);
  auto* const row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addWidget(m_advice, 1);
  row->addWidget(m_close);
  row->addWidget(m_send);
  return row;
}

QSize CompareFrame::sizeHint() const {
  const QSize least = Card::sizeHint();
  return {std::max(kSheetWidth, least.width()), least.height()};
}

void CompareFrame::Open() {
  m_all->setChecked(true);
  show();
  m_close->setFocus();
  m_table->TakeFocus();
}

void CompareFrame::ShowSides(const Sides& sides) {
  m_texts = sides.texts;
  m_caption->setText(sides.caption);
  setWindowTitle(sides.caption);
  setAccessibleName(sides.caption);
  m_advice->setText(sides.advice);
  m_send->setVisible(sides.isBoard);
  const auto head = [](const QString& title, const QString& note) {
    return note.isEmpty() ? title : QString("%1  \u00b7  %2").arg(title, note);
  };
  m_here->setText(head(tr("This set"), sides.here));
  m_there->setText(head(sides.there, sides.note));
  m_here->adjustSize();
  m_there->adjustSize();
}

void CompareFrame::Show(const Sides& sides, const core::sound::ComparedPlaces& places) {
  ShowSides(sides);
  m_places = places;
  m_summary->setText(Summary(places, sides.texts.there));
  m_nothing->hide();
  Refresh();
}

void CompareFrame::ShowNothing(const Sides& sides, const QString& why) {
  ShowSides(sides);
  m_places.clear();
  m_summary->setText(why);
  m_nothing->setText(why);
  m_nothing->show();
  Refresh();
}

void CompareFrame::Refresh() {
  core::sound::ComparedPlaces differences;
  std::ranges::copy_if(m_places, std::back_inserter(differences),
                       [](const ComparedPlace& place) { return place.differs.has_value(); });
  m_all->setText(tr("All %1").arg(m_places.size()));
  m_differences->setText(tr("Only differences %1").arg(differences.size()));
  const bool isNothing = !m_nothing->isHidden();
  m_all->setVisible(!isNothing);
  m_differences->setVisible(!isNothing);
  m_header->setVisible(!isNothing);
  m_table->setVisible(!isNothing);
  m_table->Show(m_differences->isChecked() ? differences : m_places, m_texts);
  updateGeometry();
  PlaceHeader();
}

QString CompareFrame::Summary(const core::sound::ComparedPlaces& places, const QString& there) {
  int same = 0;
  int differ = 0;
  int here = 0;
  int other = 0;
  for (const ComparedPlace& place : places) {
    if (!place.differs)
      ++same;
    else if (*place.differs == Differs::OnlyInFirst)
      ++here;
    else if (*place.differs == Differs::OnlyInSecond)
      ++other;
    else
      ++differ;
  }
  if (differ + here + other == 0)
    return same == 1 ? tr("The only sound is the same.") : tr("All %1 sounds are the same.").arg(same);
  QStringList parts = {same == 0   ? tr("No sound is the same")
                       : same == 1 ? tr("1 sound is the same")
                                   : tr("%1 sounds are the same").arg(same)};
  if (differ > 0) parts.append(differ == 1 ? tr("1 differs") : tr("%1 differ").arg(differ));
  if (here > 0) parts.append(here == 1 ? tr("1 is only here") : tr("%1 are only here").arg(here));
  if (other > 0) parts.append(other == 1 ? tr("1 is only %1").arg(there) : tr("%1 are only %2").arg(other).arg(there));
  return parts.join(", ") + '.';
}

void CompareFrame::ShowWhyNotSend(const QString& why) {
  m_send->setEnabled(why.isEmpty());
  m_send->setToolTip(why);
  kit::SetHelp(*m_send, why.isEmpty() ? tr("Write the open set into the board") : why);
}

void CompareFrame::ShowSilence() { m_table->ShowSilence(); }

void CompareFrame::PlaceHeader() {
  m_here->move(m_table->SideAt(0), (kHeaderHeight - m_here->height()) / 2);
  m_there->move(m_table->SideAt(1), (kHeaderHeight - m_there->height()) / 2);
}

void CompareFrame::ShowPicture() {
  m_send->setIcon(m_pictures.Tinted("download.bmp", kit::ColorOf(kit::ColorRole::AccentText, palette())));
}

bool CompareFrame::event(QEvent* event) {
  const bool handled = Card::event(event);
  // The rows have their places once they are laid out.
  if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show) PlaceHeader();
  if (event->type() == QEvent::PaletteChange && m_send != nullptr) ShowPicture();
  return handled;
}

void CompareFrame::resizeEvent(QResizeEvent* event) {
  Card::resizeEvent(event);
  PlaceHeader();
}

void CompareFrame::hideEvent(QHideEvent* event) {
  Card::hideEvent(event);
  // Not when the window is minimised.
  if (isHidden()) emit closed();
}

void CompareFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return hide();
  Card::keyPressEvent(event);
}

}  // namespace kestrin::ui::board
