// SPDX-License-Identifier: MIT
#include "ui/doctor/QuestionRow.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>

#include "ui/doctor/VerdictSign.h"
#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/Translated.h"
#include "ui/kit/WrapLabel.h"

namespace kestrin::ui::doctor {

using core::doctor::Question;
using core::doctor::Verdict;

namespace {

kit::ColorRole ColorOfVerdict(Verdict verdict) {
  switch (verdict) {
    case Verdict::Ok:
      return kit::ColorRole::Ok;
    case Verdict::Problem:
      return kit::ColorRole::Error;
    case Verdict::Unknown:
      break;
  }
  return kit::ColorRole::Soft;
}

}  // namespace

QuestionRow::QuestionRow(Question question, QWidget* parent)
    : QWidget(parent),
      m_question(question),
      m_sign(new VerdictSign(static_cast<int>(question) + 1, this)),
      m_ask(kit::MakeLabel("QuestionLabel", kit::TextStyle::Title, kit::Translated(core::doctor::TextOf(question)),
                           this)),
      m_answer(kit::MakeLabel("AnswerLabel", kit::TextStyle::Title, "", this)),
      m_text(new kit::WrapLabel(this)) {
  setObjectName(QString("QuestionRow%1").arg(static_cast<int>(question) + 1));
  m_ask->setWordWrap(true);
  m_text->setObjectName("FoundLabel");
  kit::SetTextStyle(*m_text, kit::TextStyle::Soft);
  m_answer->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, kit::kGrid, 0, kit::kGrid);
  grid->setHorizontalSpacing(kit::kInset);
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(1, 1);
  grid->setRowMinimumHeight(0, VerdictSign::kSide);
  grid->addWidget(m_sign, 0, 0, Qt::AlignTop);
  grid->addWidget(m_ask, 0, 1);
  grid->addWidget(m_answer, 0, 2);
  grid->addWidget(m_text, 1, 1, 1, 2);
  Show(Verdict::Unknown, {});
}

void QuestionRow::AddLink(kit::LinkButton& link) {
  auto* const grid = static_cast<QGridLayout*>(layout());
  grid->removeWidget(m_text);
  grid->addWidget(m_text, 1, 1);
  grid->addWidget(&link, 1, 2, Qt::AlignRight | Qt::AlignTop);
}

QString QuestionRow::AnswerWord() const {
  if (m_verdict == Verdict::Unknown) return tr("Not known yet");
  // It is well when no other program uses the board.
  const bool isYes = (m_verdict == Verdict::Ok) != (m_question == Question::Free);
  return isYes ? tr("Yes") : tr("No");
}

void QuestionRow::Show(Verdict verdict, const QString& text) {
  // A screen reader is told of what is set, also when it is the same again.
  if (verdict == m_verdict && text == m_text->text() && !m_answer->text().isEmpty()) return;
  m_verdict = verdict;
  m_sign->Show(verdict);
  m_answer->setText(AnswerWord());
  m_text->setText(text);
  m_text->setVisible(!text.isEmpty());
  m_text->updateGeometry();
  ColorAnswer();
  setAccessibleName(tr("%1 %2").arg(m_ask->text(), m_answer->text()));
  setAccessibleDescription(text);
}

void QuestionRow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ColorAnswer();
}

void QuestionRow::ColorAnswer() {
  // The answers that are known step forward.
  QFont font = m_answer->font();
  font.setBold(m_verdict != Verdict::Unknown);
  m_answer->setFont(font);
  QPalette colors = m_answer->palette();
  colors.setColor(QPalette::WindowText, kit::ColorOf(ColorOfVerdict(m_verdict), palette()));
  m_answer->setPalette(colors);
}

}  // namespace kestrin::ui::doctor
