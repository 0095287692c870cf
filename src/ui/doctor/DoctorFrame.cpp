// SPDX-License-Identifier: MIT
#include "ui/doctor/DoctorFrame.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/doctor/QuestionRow.h"
#include "ui/doctor/Shelf.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/TopicOf.h"
#include "ui/kit/Translated.h"
#include "ui/kit/WrapLabel.h"

namespace kestrin::ui::doctor {

using core::doctor::Finding;
using core::doctor::Question;
using core::doctor::Remedy;
using core::doctor::Verdict;

namespace {

using kit::kBroad;
using kit::kGrid;
using kit::kHair;
using kit::kInset;
using kit::kWide;

constexpr int kWidth = 640;
/// The part of the right margin in which the scroll bar of a low window stands.
constexpr int kScrollRoom = kWide;
constexpr int kCloseWidth = 88;

QWidget* MakeSeparator(QWidget* parent) {
  auto* const line = new QFrame(parent);
  line->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Plain));
  line->setForegroundRole(QPalette::Mid);
  return line;
}

void Announce(QWidget& widget) {
  QAccessibleEvent alert(&widget, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace

DoctorFrame::DoctorFrame(const kit::Pictures& pictures, QWidget* parent) : Card(parent), m_pictures(pictures) {
  setObjectName("DoctorFrame");
  setWindowTitle(tr(kCaption));
  setAccessibleName(tr(kCaption));
  kit::SetHelpContext(*this, kit::HelpContext::Doctor);
  // What does not fit is scrolled to.
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  MakeLayout();
  Refresh();
  hide();
}

void DoctorFrame::MakeLayout() {
  auto* const caption = kit::MakeLabel("DoctorCaption", kit::TextStyle::Caption, tr(kCaption), this);
  m_summary = kit::MakeLabel("DoctorSummary", kit::TextStyle::Soft, "", this);
  m_summary->setWordWrap(true);
  m_shelf = new Shelf(*MakeFindings(), kWidth - 2 * kBroad + kScrollRoom, kScrollRoom, this);
  m_shelf->setObjectName("DoctorShelf");
  m_shelf->setFocusPolicy(Qt::NoFocus);
  m_next = new NextBox(m_pictures, this);
  connect(m_next, &NextBox::primaryPressed, this, &DoctorFrame::PressPrimary);
  connect(m_next, &NextBox::secondaryPressed, this, &DoctorFrame::PressSecondary);

  auto* const below = new QVBoxLayout;
  below->setContentsMargins(0, 0, kScrollRoom, 0);
  below->setSpacing(kWide);
  below->addWidget(m_next);
  below->addLayout(MakeFooter());
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kBroad, kBroad, kBroad - kScrollRoom, kBroad);
  all->setSpacing(0);
  all->addWidget(caption);
  all->addSpacing(kHair);
  all->addWidget(m_summary);
  all->addSpacing(kGrid);
  all->addWidget(m_shelf, 1);
  all->addSpacing(kInset);
  all->addLayout(below);
  setFixedWidth(kWidth);
}

QWidget* DoctorFrame::MakeFindings() {
  auto* const findings = new QWidget;
  auto* const column = new QVBoxLayout(findings);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  AddRows(*column);
  m_remarks = new QWidget(findings);
  m_remarks->setObjectName("DoctorRemarks");
  auto* const remarks = new QVBoxLayout(m_remarks);
  remarks->setContentsMargins(0, 0, 0, kGrid);
  remarks->setSpacing(kGrid);
  column->addWidget(m_remarks);
  column->addStretch(1);
  return findings;
}

void DoctorFrame::AddRows(QVBoxLayout& column) {
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    if (i > 0) column.addWidget(MakeSeparator(column.parentWidget()));
    m_rows.at(i) = new QuestionRow(static_cast<Question>(i), column.parentWidget());
    column.addWidget(m_rows.at(i));
  }
  auto* const remove = new kit::LinkButton("RemoveRuleLink", tr("Remove the rule ..."), this);
  kit::SetHelp(*remove, tr("Take the permission rule away again; you are asked before"));
  connect(remove, &QPushButton::clicked, this, [this] { Turn(Matter::Remove); });
  m_rows.at(static_cast<std::size_t>(Question::Permitted))->AddLink(*remove);
  m_remove = remove;
}

QBoxLayout* DoctorFrame::MakeFooter() {
  m_copy = new QPushButton(m_pictures.Icon("copy.bmp"), tr("Copy report"), this);
  m_copy->setObjectName("CopyReportBtn");
  kit::SetHelp(*m_copy, tr("Copy what was found, as a text for somebody who helps"));
  m_copyHint = kit::MakeLabel("CopyReportHint", kit::TextStyle::Soft, "", this);
  m_copyHint->setWordWrap(true);
  m_withSerial = new QCheckBox(tr("with the board's serial number"), this);
  m_withSerial->setObjectName("WithSerialCheck");
  kit::SetHelp(*m_withSerial, tr("Whether the report tells which board it is"));
  m_close = new QPushButton(tr("Close"), this);
  m_close->setObjectName("CloseDoctorBtn");
  m_close->setMinimumWidth(kCloseWidth);
  kit::SetHelp(*m_close, tr("Close the connection doctor"));
  connect(m_copy, &QPushButton::clicked, this, [this] { emit copyRequested(m_withSerial->isChecked()); });
  connect(m_close, &QPushButton::clicked, this, &QWidget::hide);

  auto* const beside = new QVBoxLayout;
  beside->setSpacing(0);
  beside->addWidget(m_copyHint);
  beside->addWidget(m_withSerial);
  auto* const footer = new QHBoxLayout;
  footer->setSpacing(kInset);
  footer->addWidget(m_copy);
  footer->addLayout(beside, 1);
  footer->addWidget(m_close);
  return footer;
}

void DoctorFrame::Open() {
  m_diagnosis = {};
  m_hasLooked = false;
  m_talk = Talk::None;
  m_matter = Matter::Advice;
  m_failure.clear();
  m_withSerial->setChecked(false);
  m_copyHint->setText(tr("for a question to somebody else; nothing is sent"));
  Refresh();
  m_shelf->verticalScrollBar()->setValue(0);
  show();
  m_close->setFocus();
}

void DoctorFrame::Show(const core::doctor::Diagnosis& diagnosis, const Rule& rule) {
  m_diagnosis = diagnosis;
  m_rule = rule;
  m_hasLooked = true;
  // What has come about by itself is not asked any more.
  if (m_matter == Matter::Install && !CanInstall()) m_matter = Matter::Advice;
  if (m_matter == Matter::Remove && !rule.isRemovable) m_matter = Matter::Advice;
  if (diagnosis.IsHealthy() && m_matter == Matter::Advice && !m_isRuleWorking) m_failure.clear();
  Refresh();
}

void DoctorFrame::ShowTalk(Talk talk) {
  m_talk = talk;
  Refresh();
}

void DoctorFrame::ShowRuleWork(bool isRunning) {
  m_isRuleWorking = isRunning;
  m_matter = Matter::Advice;
  Refresh();
}

void DoctorFrame::ShowFailure(const QString& text) {
  m_failure = text;
  Refresh();
  if (!text.isEmpty()) Announce(*m_next);
}

void DoctorFrame::ShowCopied() {
  m_copyHint->setText(tr("Copied. Paste it where you ask; nothing is sent."));
  Announce(*m_copyHint);
}

bool DoctorFrame::CanInstall() const {
  const Finding* const problem = m_diagnosis.Problem();
  return problem != nullptr && problem->remedy == Remedy::InstallRule && !m_rule.path.isEmpty();
}

QString DoctorFrame::Summary() const {
  if (!m_hasLooked) return tr("Looking ...");
  const auto problems = std::count_if(m_diagnosis.findings.begin(), m_diagnosis.findings.end(),
                                      [](const Finding& finding) { return finding.verdict == Verdict::Problem; });
  if (problems == 1) return tr("One thing keeps this program from your board. It looks again every second.");
  if (problems > 1)
    return tr("%1 things keep this program from your board. It looks again every second.").arg(problems);
  return m_diagnosis.IsHealthy() ? tr("All is well. It looks again every second.")
                                 : tr("So far all is well. It looks again every second.");
}

QString DoctorFrame::TextOf(std::size_t question) const {
  const Finding& finding = m_diagnosis.findings.at(question);
  if (static_cast<Question>(question) == Question::Answers && finding.verdict == Verdict::Unknown) {
    if (m_talk == Talk::Asking) return tr("The board is being asked ...");
    if (m_talk == Talk::Erasing)
      return tr("The board is still erasing its memory. It comes back by itself, please wait.");
  }
  return kit::Translated(finding.text);
}

NextBox::Step DoctorFrame::Advice() const {
  const Finding* const problem = m_diagnosis.Problem();
  if (problem == nullptr && m_failure.isEmpty()) return {};
  NextBox::Step step;
  step.title = tr("Do this next");
  step.failure = m_failure;
  if (problem == nullptr) return step;
  step.text = kit::Translated(problem->next);
  if (CanInstall()) {
    step.primary = tr("Install permission rule ...");
    step.more = m_rule.path + "\n\n" + m_rule.content.trimmed();
  } else if (problem->question >= Question::Answers || problem->remedy == Remedy::Wait) {
    // The board is not asked every second.
    step.secondary = tr("Look again");
  }
  return step;
}

NextBox::Step DoctorFrame::Step() const {
  if (m_isRuleWorking)
    return {tr("The system asks you"),
            tr("Give the administrator's password in the window of the system, or cancel there. It goes on here by "
               "itself."),
            {},
            {},
            {},
            {},
            false};
  switch (m_matter) {
    case Matter::Install:
      return {tr("Install the permission rule?"),
              tr("The file %1 is written. It lets the people who sit at this computer open Kestrin boards, and nothing "
                 "else. The system asks for the administrator's password.")
                  .arg(m_rule.path),
              {},
              tr("Install"),
              tr("Not now"),
              m_rule.content.trimmed(),
              true};
    case Matter::Remove:
      return {tr("Remove the permission rule?"),
              tr("The file %1 is removed. Then the system lets nobody but the administrator open Kestrin boards until "
                 "a rule permits it again. It asks for the administrator's password.")
                  .arg(m_rule.path),
              {},
              tr("Remove"),
              tr("Keep it"),
              {},
              false};
    case Matter::Advice:
      break;
  }
  return Advice();
}

void DoctorFrame::ShowRemarks() {
  QLayout& layout = *m_remarks->layout();
  const auto& remarks = m_diagnosis.remarks;
  QStringList wanted;
  std::transform(remarks.begin(), remarks.end(), std::back_inserter(wanted), kit::Translated);
  QStringList shown;
  for (const QLabel* const label : m_remarks->findChildren<kit::WrapLabel*>()) shown.append(label->text());
  m_remarks->setVisible(!wanted.isEmpty());
  if (shown == wanted) return;
  while (QLayoutItem* const item = layout.takeAt(0)) {
    delete item->widget();
    delete item;
  }
  if (wanted.isEmpty()) return;
  layout.addWidget(MakeSeparator(m_remarks));
  layout.addWidget(kit::MakeLabel("RemarksTitle", kit::TextStyle::Title, tr("Noticed as well"), m_remarks));
  for (const QString& remark : wanted) {
    auto* const label = new kit::WrapLabel(m_remarks);
    label->setObjectName("RemarkLabel");
    label->setText(remark);
    kit::SetTextStyle(*label, kit::TextStyle::Soft);
    layout.addWidget(label);
  }
}

void DoctorFrame::Refresh() {
  const QWidget* const focused = QApplication::focusWidget();
  const bool wasInside = focused != nullptr && isAncestorOf(focused);
  const bool wasInBox = focused != nullptr && m_next->isAncestorOf(focused);
  const QString summary = Summary();
  const bool isNews = m_summary->text() != summary;
  m_summary->setText(summary);
  for (std::size_t i = 0; i < m_rows.size(); ++i) m_rows.at(i)->Show(m_diagnosis.findings.at(i).verdict, TextOf(i));
  m_remove->setVisible(m_rule.isRemovable && !m_isRuleWorking);
  ShowRemarks();
  m_copy->setEnabled(m_hasLooked);
  const NextBox::Step step = Step();
  m_next->Show(step);
  m_next->setVisible(step != NextBox::Step{});
  m_shelf->updateGeometry();
  if (wasInside && !focused->isVisible() && !(wasInBox && m_next->isVisible() && m_next->TakeFocus()))
    m_close->setFocus();
  if (isNews && isVisible()) Announce(*m_summary);
}

void DoctorFrame::Turn(Matter matter) {
  m_matter = matter;
  m_failure.clear();
  Refresh();
  Announce(*m_next);
  if (!m_next->isVisible() || !m_next->TakeFocus()) m_close->setFocus();
}

void DoctorFrame::PressPrimary() {
  switch (m_matter) {
    case Matter::Advice:
      return Turn(Matter::Install);
    case Matter::Install:
      return emit installRequested();
    case Matter::Remove:
      return emit removeRequested();
  }
}

void DoctorFrame::PressSecondary() {
  if (m_matter != Matter::Advice) return Turn(Matter::Advice);
  emit lookAgainRequested();
}

void DoctorFrame::hideEvent(QHideEvent* event) {
  Card::hideEvent(event);
  // Not when the window is minimised.
  if (isHidden()) emit closed();
}

void DoctorFrame::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      // It answers a question first.
      if (m_matter != Matter::Advice)
        Turn(Matter::Advice);
      else
        hide();
      break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      // Nothing in the list takes the keyboard.
      m_shelf->verticalScrollBar()->triggerAction(event->key() == Qt::Key_PageUp ? QAbstractSlider::SliderPageStepSub
                                                                                 : QAbstractSlider::SliderPageStepAdd);
      break;
    default:
      Card::keyPressEvent(event);
  }
}

}  // namespace kestrin::ui::doctor
