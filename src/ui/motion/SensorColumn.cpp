// SPDX-License-Identifier: MIT
#include "ui/motion/SensorColumn.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/kit/Card.h"
#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/motion/SensorChart.h"
#include "ui/motion/TrialCard.h"

namespace kestrin::ui::motion {

SensorColumn::SensorColumn(QWidget* parent) : QWidget(parent) {
  auto* const card = new kit::Card(this);
  m_chart = new SensorChart(card);
  m_trial = new TrialCard(this);
  m_notice = new QWidget(card);
  m_noticeText = kit::MakeLabel("SensorNotice", kit::TextStyle::Plain, "", m_notice);
  m_noticeText->setWordWrap(true);
  m_askAgain = new kit::LinkButton("AskAgainBtn", tr("Ask again"), m_notice);
  m_values = kit::MakeLabel("SensorValues", kit::TextStyle::Soft, "", card);
  // Its numbers change all the time; nothing else moves by that.
  m_values->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_values->setMinimumWidth(m_values->fontMetrics().horizontalAdvance(TextOf({{}, -31, -31, -31, 255})));
  connect(m_chart, &SensorChart::thresholdDragged, this, &SensorColumn::thresholdDragged);
  connect(m_trial, &TrialCard::startAgainRequested, this, &SensorColumn::startAgainRequested);
  connect(m_askAgain, &QPushButton::clicked, this, &SensorColumn::askAgainRequested);

  auto* const notice = new QHBoxLayout(m_notice);
  notice->setContentsMargins(0, 0, 0, 0);
  notice->setSpacing(kit::kGrid);
  notice->addWidget(m_noticeText, 1);
  notice->addWidget(m_askAgain);
  auto* const head = new QHBoxLayout;
  auto* const title = kit::MakeLabel("SensorTitle", kit::TextStyle::Title, tr("What the board feels"), card);
  title->setWordWrap(true);
  head->addWidget(title, 1);
  head->addWidget(m_values);
  m_hint = kit::MakeLabel("SensorHint", kit::TextStyle::Soft, tr("drag the red line: impact threshold"), card);
  m_hint->setWordWrap(true);
  auto* const inside = new QVBoxLayout(card);
  inside->setContentsMargins(kit::kInset, kit::kGrid, kit::kInset, kit::kGrid);
  inside->setSpacing(kit::kHalf);
  inside->addLayout(head);
  inside->addWidget(m_hint);
  inside->addWidget(m_notice);
  inside->addWidget(m_chart, 1);
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(kit::kGrid);
  all->addWidget(card, 1);
  all->addWidget(m_trial);
  Say({});
}

void SensorColumn::Show(const core::motion::SensorRecord& record) {
  m_chart->Show(record);
  m_trial->Show(record.Trial());
  if (record.Samples().empty()) return m_values->clear();
  m_values->setText(TextOf(record.Samples().back().reading));
}

QString SensorColumn::TextOf(const core::motion::SensorReading& reading) {
  return tr("X %1   Y %2   Z %3   tilt %4").arg(reading.x).arg(reading.y).arg(reading.z).arg(reading.tilt);
}

void SensorColumn::Say(const QString& text, bool canAskAgain) {
  m_noticeText->setText(text);
  m_askAgain->setVisible(canAskAgain);
  m_notice->setVisible(!text.isEmpty());
  // In its place, so that nothing moves.
  m_hint->setVisible(text.isEmpty());
}

int SensorColumn::heightForWidth(int width) const { return layout()->totalMinimumHeightForWidth(width); }

void SensorColumn::SetThreshold(std::int32_t threshold) { m_chart->SetThreshold(threshold); }

void SensorColumn::SetSuggestion(std::optional<std::int32_t> threshold) { m_chart->SetSuggestion(threshold); }

}  // namespace kestrin::ui::motion
