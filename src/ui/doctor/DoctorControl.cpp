// SPDX-License-Identifier: MIT
#include "ui/doctor/DoctorControl.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <exception>
#include <utility>

#include "core/device/TLS.h"
#include "ui/doctor/DoctorFrame.h"
#include "ui/kit/Translated.h"

namespace kestrin::ui::doctor {

DoctorControl::DoctorControl(DoctorFrame& frame, Around around, QObject* parent)
    : QObject(parent), m_frame(frame), m_around(std::move(around)), m_timer(this), m_job(this), m_ruleWork(this) {
  m_timer.setObjectName("DoctorTimer");
  m_timer.setInterval(kLookMilliseconds);
  connect(&m_timer, &QTimer::timeout, this, &DoctorControl::Look);
  connect(&frame, &DoctorFrame::closed, this, &DoctorControl::Close);
  connect(&frame, &DoctorFrame::lookAgainRequested, this, &DoctorControl::LookAgain);
  connect(&frame, &DoctorFrame::installRequested, this, [this] { Change(&core::doctor::PermissionRule::Install); });
  connect(&frame, &DoctorFrame::removeRequested, this, [this] { Change(&core::doctor::PermissionRule::Remove); });
  connect(&frame, &DoctorFrame::copyRequested, this, &DoctorControl::Copy);
}

void DoctorControl::Open() {
  if (m_isOpen) return;
  m_isOpen = true;
  ++m_opening;
  m_facts.reset();
  m_answers.reset();
  m_asked.reset();
  m_frame.Open();
  m_frame.ShowRuleWork(m_ruleWork.IsRunning());
  m_timer.start();
  Look();
  AskSoon();
}

void DoctorControl::Close() {
  m_isOpen = false;
  m_timer.stop();
  m_job.Cancel();
  m_isLooking = false;
}

void DoctorControl::Stop() { Close(); }

void DoctorControl::Follow() {
  if (!m_isOpen) return;
  ForgetOthers();
  m_isLookStale = m_isLooking;
  Look();
  AskSoon();
}

void DoctorControl::LookAgain() {
  m_asked.reset();
  Follow();
}

void DoctorControl::Look() {
  if (!m_isOpen || std::exchange(m_isLooking, true)) return;
  m_job.Start(
      [this, &survey = m_around.means.survey](const kit::LatestJob::GoOn&, const kit::LatestJob::Deliver& deliver) {
        deliver([this, facts = survey.Look()] {
          m_isLooking = false;
          Take(facts);
        });
      });
}

void DoctorControl::Take(const core::doctor::LinkFacts& facts) {
  m_facts = facts;
  m_around.means.complete(*m_facts);
  Judge();
  if (std::exchange(m_isLookStale, false)) Look();
}

std::optional<DoctorControl::Asked> DoctorControl::KeyOf(const std::optional<Board>& board) {
  if (!board) return std::nullopt;
  return Asked{board->board.ClassDebugID(), board->isOnline};
}

void DoctorControl::ForgetOthers() {
  const std::optional<Asked> here = KeyOf(m_around.board());
  if (m_asked && here && m_asked->board == here->board) return;
  m_answers.reset();
  m_asked.reset();
  if (m_facts) Judge();
}

void DoctorControl::AskSoon() {
  // Never from here, which may be inside of an event of the link.
  if (std::exchange(m_isAskDue, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        m_around.run([self = QPointer(this)] {
          if (self == nullptr) return;
          self->m_isAskDue = false;
          self->Ask();
        });
      },
      Qt::QueuedConnection);
}

void DoctorControl::Ask() {
  if (!m_isOpen) return;
  const std::optional<Board> board = m_around.board();
  const std::optional<Asked> key = KeyOf(board);
  if (!board || board->isErasing || m_asked == key) {
    m_frame.ShowTalk(board && board->isErasing ? DoctorFrame::Talk::Erasing : DoctorFrame::Talk::None);
    return;
  }
  m_frame.ShowTalk(DoctorFrame::Talk::Asking);
  const auto goOn = [this, opening = m_opening] { return m_isOpen && m_opening == opening; };
  std::optional<core::doctor::Answers> answers;
  try {
    answers = m_around.means.interview(board->board, goOn);
  } catch (const std::exception& error) {
    if (goOn()) m_frame.ShowFailure(tr("The board could not be asked: %1").arg(QString::fromLocal8Bit(error.what())));
  }
  if (!goOn()) return;
  m_frame.ShowTalk(DoctorFrame::Talk::None);
  m_asked = key;
  m_answers = std::move(answers);
  if (m_facts) Judge();
  m_isLookStale = m_isLooking;
  Look();
}

void DoctorControl::Judge() {
  m_diagnosis = m_around.means.diagnose(*m_facts, m_answers);
  DoctorFrame::Rule rule;
  if (const core::doctor::PermissionRule& permission = *m_around.means.rule; permission.CanChange()) {
    const std::string path = permission.Path();
    rule.path = QString::fromStdString(path);
    rule.content = QString::fromStdString(permission.Content());
    // One that came with a package of the system is the system's.
    rule.isRemovable = m_facts->rulePath == path;
  }
  m_frame.Show(m_diagnosis, rule);
}

void DoctorControl::Change(core::base::Result<> (core::doctor::PermissionRule::*change)()) {
  if (m_ruleWork.IsRunning()) return;
  m_frame.ShowFailure({});
  m_frame.ShowRuleWork(true);
  m_ruleWork.Start([rule = m_around.means.rule, change] { return (*rule.*change)(); },
                   [this](const core::base::Result<>& result) {
                     m_frame.ShowRuleWork(false);
                     m_frame.ShowFailure(kit::Translated(result.Text()));
                     Follow();
                   });
}

void DoctorControl::Copy(bool withSerialNumber) {
  if (!m_facts) return;
  const std::string report = m_around.means.report(*m_facts, m_answers, m_diagnosis, withSerialNumber);
  QGuiApplication::clipboard()->setText(QString::fromStdString(report));
  m_frame.ShowCopied();
}

}  // namespace kestrin::ui::doctor
