// SPDX-License-Identifier: MIT
#include "ui/window/StartCards.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/TopicOf.h"

namespace kestrin::ui::window {

namespace {

/// Where sounds are dropped is the widest.
constexpr int kWideShare = 5;
constexpr int kShare = 4;

}  // namespace

StartCards::StartCards(const kit::Pictures& pictures, const Ways& ways, QWidget* parent)
    : Card(parent),
      m_title(kit::MakeLabel("StartTitle", kit::TextStyle::Headline,
                             ways.import && ways.example ? tr("Three ways to start") : tr("Ways to start"), this)),
      m_hint(kit::MakeLabel("StartHint", kit::TextStyle::Soft,
                            tr("You need no board for this. Plug it in whenever you like; everything stays as it is."),
                            this)),
      m_row(new QHBoxLayout) {
  setObjectName("StartCards");
  kit::SetHelpContext(*this, kit::HelpContext::FirstSteps);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
  m_hint->setWordWrap(true);
  m_row->setSpacing(kit::kWide);
  auto* const column = new QVBoxLayout(this);
  column->setSpacing(kit::kGrid);
  column->addWidget(m_title);
  column->addWidget(m_hint);
  column->addLayout(m_row, 1);
  column->addStretch();
  if (ways.import)
    Add({"StartImportBtn", tr("Drop sounds here"),
         tr("WAV, MP3, FLAC or LSU: single files or a whole folder. They are made ready for the board and sorted into "
            "the slots; you see it all before anything changes."),
         tr("Choose sounds ..."), tr("Choose sounds of any kind for the set")},
        pictures.Icon("import.bmp"), &StartCards::importWanted, kWideShare);
  Add({"StartOpenBtn", tr("Open a set"),
       tr("One that you or somebody else has saved. It brings its sounds, their order and volumes."),
       tr("Open a set ..."), tr("Open a sound set that was saved")},
      pictures.Icon("open.bmp"), &StartCards::openWanted, kShare);
  if (ways.example)
    Add({"StartExampleBtn", tr("Try the example"),
         tr("A finished set that comes with the program. Swing it on the screen and change what you like."),
         tr("Try the example"), tr("Swing the set that comes with the program on the screen")},
        pictures.Icon("LS_on.bmp"), &StartCards::exampleWanted, kShare);
}

void StartCards::Add(const StartCard::Texts& texts, const QIcon& icon, void (StartCards::*wanted)(), int stretch) {
  auto* const card = new StartCard(texts, icon, wanted == &StartCards::importWanted, this);
  connect(&card->Button(), &QPushButton::clicked, this, wanted);
  m_row->addWidget(card, stretch);
  m_cards.push_back(card);
}

QList<QWidget*> StartCards::Controls() const {
  QList<QWidget*> buttons;
  for (const StartCard* const card : m_cards) buttons.append(&card->Button());
  return buttons;
}

int StartCards::TallestCard(Detail detail) const {
  const int room = width() - 2 * kit::kInset - m_row->spacing() * (static_cast<int>(m_cards.size()) - 1);
  int shares = 0;
  for (int card = 0; card < m_row->count(); ++card) shares += m_row->stretch(card);
  int tallest = 0;
  for (std::size_t card = 0; card < m_cards.size(); ++card) {
    const int share = m_row->stretch(static_cast<int>(card));
    tallest = std::max(tallest, m_cards[card]->HeightFor(room * share / shares, detail));
  }
  return tallest;
}

int StartCards::HeightFor(Detail detail) const {
  const int tallest = TallestCard(detail);
  if (detail == Detail::ButtonOnly) return tallest;
  const int gap = layout()->spacing();
  const int title = m_title->sizeHint().height() + gap;
  const int hint = detail == Detail::NoText ? 0 : m_hint->heightForWidth(width() - 2 * kit::kInset) + gap;
  return kit::kInset + title + hint + tallest + kit::kInset;
}

void StartCards::Fit() {
  m_shown = Detail::ButtonOnly;
  for (const Detail detail : {Detail::NoText, Detail::NoPicture, Detail::All})
    if (HeightFor(detail) <= height()) m_shown = detail;
  const int inset = m_shown == Detail::ButtonOnly ? 0 : kit::kInset;
  layout()->setContentsMargins(inset, inset, inset, inset);
  m_title->setVisible(m_shown != Detail::ButtonOnly);
  m_hint->setVisible(m_shown <= Detail::NoPicture);
  // In a large window the buttons stay near to the texts.
  const int tallest = TallestCard(Detail::All) + 2 * kit::kBroad;
  for (StartCard* const card : m_cards) {
    card->setMaximumHeight(tallest);
    card->Show(m_shown);
  }
}

void StartCards::paintEvent(QPaintEvent* event) {
  // Nothing but buttons needs no ground.
  if (m_shown != Detail::ButtonOnly) Card::paintEvent(event);
}

QSize StartCards::sizeHint() const { return {0, HeightFor(Detail::All)}; }

QSize StartCards::minimumSizeHint() const { return {0, HeightFor(Detail::ButtonOnly)}; }

void StartCards::resizeEvent(QResizeEvent* event) {
  Card::resizeEvent(event);
  Fit();
}

bool StartCards::event(QEvent* event) {
  // Texts and fonts have become longer or shorter.
  if (event->type() == QEvent::LayoutRequest) Fit();
  return Card::event(event);
}

}  // namespace kestrin::ui::window
