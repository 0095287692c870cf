// SPDX-License-Identifier: MIT
#include "ui/motion/TrialCard.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/motion/MarkRow.h"

namespace kestrin::ui::motion {

using core::motion::SwingTapTrial;
using Kind = core::motion::Movement::Kind;

TrialCard::TrialCard(QWidget* parent) : Card(parent) {
  setObjectName("TrialCard");
  auto* const title =
      kit::MakeLabel("TrialTitle", kit::TextStyle::Title, tr("Swing five times, then tap five times"), this);
  auto* const again = new kit::LinkButton("TrialAgainBtn", tr("Start again"), this);
  connect(again, &QPushButton::clicked, this, &TrialCard::startAgainRequested);
  auto* const head = new QHBoxLayout;
  title->setWordWrap(true);
  head->addWidget(title, 1);
  head->addWidget(again);
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(kit::kInset, kit::kGrid, kit::kInset, kit::kGrid);
  grid->setHorizontalSpacing(kit::kGrid);
  grid->setVerticalSpacing(kit::kHair);
  grid->addLayout(head, 0, 0, 1, 3);
  grid->setColumnStretch(2, 1);
  m_swings = MakeRow(*grid, 1, Kind::Swing);
  m_taps = MakeRow(*grid, 2, Kind::Tap);
  Show({});
}

TrialCard::Row TrialCard::MakeRow(QGridLayout& grid, int line, Kind kind) {
  const bool isTap = kind == Kind::Tap;
  const QString name = isTap ? tr("Taps") : tr("Swings");
  const QString object = isTap ? QStringLiteral("Taps") : QStringLiteral("Swings");
  auto* const caption = kit::MakeLabel("", kit::TextStyle::Plain, name, this);
  caption->setMinimumWidth(caption->fontMetrics().horizontalAdvance(tr("Swings")) + kit::kHalf);
  Row row;
  row.marks = new MarkRow(name, isTap ? core::sound::SlotKind::Impact : core::sound::SlotKind::Motion,
                          SwingTapTrial::kWanted, this);
  row.marks->setObjectName(object + "Marks");
  row.text = kit::MakeLabel(object + "Text", kit::TextStyle::Plain, "", this);
  row.text->setTextFormat(Qt::RichText);
  row.text->setWordWrap(true);
  grid.addWidget(caption, line, 0);
  grid.addWidget(row.marks, line, 1);
  grid.addWidget(row.text, line, 2);
  return row;
}

void TrialCard::Show(const SwingTapTrial& trial) {
  ShowRow(m_swings, trial, Kind::Swing);
  ShowRow(m_taps, trial, Kind::Tap);
}

void TrialCard::ShowRow(const Row& row, const SwingTapTrial& trial, Kind kind) {
  const bool isTap = kind == Kind::Tap;
  const auto& peaks = isTap ? trial.Taps() : trial.Swings();
  const bool isTheirTurn = trial.Turn() == kind;
  row.marks->Show(peaks.size(), isTheirTurn);
  QString more;
  QString text;
  if (peaks.size() == SwingTapTrial::kWanted) {
    text = isTap ? tr("done, softest %1").arg(*std::ranges::min_element(peaks))
                 : tr("done, hardest %1").arg(*std::ranges::max_element(peaks));
  } else if (isTheirTurn) {
    const QString counts[] = {tr("five times:"), tr("four more:"), tr("three more:"), tr("two more:"), tr("one more:")};
    more = counts[peaks.size()];
    text = isTap ? tr("tap the blade on your palm") : tr("swing the saber through the air");
    if (trial.Ignored()) text = isTap ? tr("that was a swing, tap now") : tr("that was a tap, swing first");
  } else {
    text = tr("after the swings");
  }
  row.text->setText(more.isEmpty() ? text.toHtmlEscaped()
                                   : QString("<b>%1</b> %2").arg(more.toHtmlEscaped(), text.toHtmlEscaped()));
  row.text->setAccessibleName(more.isEmpty() ? text : more + ' ' + text);
  row.text->setForegroundRole(isTheirTurn ? QPalette::WindowText : QPalette::PlaceholderText);
}

}  // namespace kestrin::ui::motion
