// SPDX-License-Identifier: MIT
#include "ui/sound/DownloadFrame.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>

#include "core/base/TimeLeft.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/Translated.h"
#include "ui/sound/MemoryGauge.h"

namespace kestrin::ui::sound {

namespace {

constexpr int kWidth = 460;
constexpr int kButtonWidth = 96;

kit::ColorRole ColorOfOutcome(std::optional<core::sound::DownloadOutcome> outcome) {
  if (!outcome) return kit::ColorRole::Text;
  switch (*outcome) {
    case core::sound::DownloadOutcome::Success:
      return kit::ColorRole::Ok;
    case core::sound::DownloadOutcome::Cancelled:
      return kit::ColorRole::Warning;
    default:
      return kit::ColorRole::Error;
  }
}

/// Whether a button under it or with the keyboard would be pressed.
bool IsPress(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return true;
    case QEvent::KeyPress: {
      const int key = static_cast<const QKeyEvent&>(event).key();
      return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    }
    default:
      return false;
  }
}

}  // namespace

DownloadFrame::DownloadFrame(kit::Dialogs& dialogs, const core::base::Clock& clock, QWidget* parent)
    : Card(parent), m_dialogs(dialogs), m_clock(clock), m_hideTimer(new QTimer(this)) {
  setObjectName("DownloadFrame");
  setAccessibleName(tr("Download"));
  MakeLayout();
  m_hideTimer->setObjectName("HideFrameTimer");
  m_hideTimer->setSingleShot(true);
  m_hideTimer->setInterval(kHideMilliseconds);
  connect(m_hideTimer, &QTimer::timeout, this, &DownloadFrame::HideFrame);
  connect(m_button, &QPushButton::clicked, this, &DownloadFrame::buttonPressed);
  hide();
}

void DownloadFrame::MakeLayout() {
  auto* const title = kit::MakeLabel("DownloadTitle", kit::TextStyle::Soft, tr("Download to the board"), this);
  m_information = kit::MakeLabel("InformationLabel", kit::TextStyle::Headline, "", this);
  m_information->setWordWrap(true);
  m_percent = kit::MakeLabel("PercentLabel", kit::TextStyle::Headline, "", this);
  m_percent->setAlignment(Qt::AlignRight | Qt::AlignBottom);
  m_bar = new QProgressBar(this);
  m_bar->setObjectName("DownloadBar");
  m_bar->setAccessibleName(tr("Progress of the download"));
  m_bar->setRange(0, 100);
  m_bar->setTextVisible(false);
  m_timeLeft = kit::MakeLabel("TimeLeftLabel", kit::TextStyle::Soft, "", this);
  m_boardHolds = kit::MakeLabel("BoardHoldsLabel", kit::TextStyle::Plain, "", this);
  m_boardHolds->setWordWrap(true);
  m_button = new QPushButton(this);
  m_button->setObjectName("CancelBtn");
  m_button->setMinimumWidth(kButtonWidth);
  m_button->installEventFilter(this);
  m_again = new QPushButton(tr("Send it again"), this);
  m_again->setObjectName("SendAgainBtn");
  m_again->installEventFilter(this);
  m_again->hide();
  kit::SetHelp(*m_again, tr("Write the set into the board although it holds just this one"));
  connect(m_again, &QPushButton::clicked, this, [this] {
    HideFrame();
    emit sendAgain();
  });

  auto* const state = new QHBoxLayout;
  state->addWidget(m_information, 1);
  state->addWidget(m_percent);
  auto* const bottom = new QHBoxLayout;
  bottom->addWidget(m_timeLeft, 1);
  bottom->addWidget(m_again);
  bottom->addWidget(m_button);
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kit::kBroad, kit::kBroad, kit::kBroad, kit::kWide);
  all->setSpacing(kit::kGrid);
  all->addWidget(title);
  all->addLayout(state);
  all->addWidget(m_bar);
  all->addWidget(m_boardHolds);
  all->addLayout(bottom);
  setFixedWidth(kWidth);
}

void DownloadFrame::ShowHeld(int seconds) {
  ShowInformation(QT_TR_NOOP("The board holds just this set."));
  m_percent->clear();
  ShowButton("Close");
  ShowFrame();
  m_bar->hide();
  m_again->show();
  m_boardHolds->setText(tr("Its sounds and volumes were compared. Nothing was sent; to send it again takes about %1.")
                            .arg(MemoryGauge::DownloadTime(seconds)));
  m_boardHolds->show();
  m_outcome = core::sound::DownloadOutcome::Success;
  ColorInformation();
}

void DownloadFrame::ShowOutcome(core::sound::DownloadOutcome outcome) {
  m_outcome = outcome;
  ColorInformation();
  m_bar->setValue(outcome == core::sound::DownloadOutcome::Success ? m_bar->maximum() : m_bar->value());
  m_bar->setEnabled(outcome == core::sound::DownloadOutcome::Success);
  m_timeLeft->clear();
  StartReading();
}

void DownloadFrame::StartReading() { m_newsShown = m_clock.Now(); }

bool DownloadFrame::IsTooSoon() const {
  return m_clock.Now() - m_newsShown < std::chrono::milliseconds(QApplication::doubleClickInterval());
}

void DownloadFrame::ClickBeside() {
  if (!IsTooSoon()) HideFrame();
}

void DownloadFrame::LeaveOut(core::base::Clock::Duration waited) {
  // The board goes on erasing while a question stands open; with all the rest the program waits.
  if (m_phase != core::sound::DownloadPhase::Erasing) m_phaseStarted += waited;
}

void DownloadFrame::ShowMessage(const std::string& text) { m_dialogs.ShowError(kit::Translated(text)); }

void DownloadFrame::ShowFrame() {
  m_hideTimer->stop();
  m_outcome.reset();
  ColorInformation();
  m_bar->setEnabled(true);
  m_bar->show();
  m_again->hide();
  m_boardHolds->clear();
  m_boardHolds->hide();
  show();
  m_button->setFocus();
  StartReading();
}

void DownloadFrame::HideFrame() {
  m_hideTimer->stop();
  hide();
}

void DownloadFrame::ShowPhase(core::sound::DownloadPhase phase, const std::string& text) {
  ShowInformation(text);
  m_phase = phase;
}

void DownloadFrame::ShowInformation(const std::string& text) {
  m_phase.reset();
  m_phaseStarted = m_clock.Now();
  m_timeLeft->clear();
  m_information->setText(kit::Translated(text));
  m_information->setAccessibleName(m_information->text());
}

void DownloadFrame::ShowPercent(std::optional<int> percent) {
  m_percent->setText(percent ? tr("%1 %").arg(*percent) : QString());
  m_bar->setValue(percent.value_or(0));
  const auto left = core::base::SecondsLeft(m_clock.Now() - m_phaseStarted, percent.value_or(0));
  m_timeLeft->setText(left ? tr("%1 left").arg(QString::fromStdString(core::base::MinutesAndSeconds(*left)))
                           : QString());
}

void DownloadFrame::ShowButton(const std::string& caption) { m_button->setText(kit::Translated(caption)); }

void DownloadFrame::ShowBoardHolds(const std::string& text) {
  m_boardHolds->setText(kit::Translated(text));
  m_boardHolds->setVisible(!text.empty());
  // A cancelled run may go on for seconds, and its frame may be closed meanwhile. How it ended must not be missed.
  if (!isHidden()) return;
  show();
  m_button->setFocus();
}

bool DownloadFrame::AskAbort(const std::string& question) {
  const Pause pause(*this);
  return !m_dialogs.AskOkCancel(kit::Translated(question), "", kit::Dialogs::Harmless::Ok,
                                kit::HelpContext::CancelQuestion);
}

void DownloadFrame::StartHideFrameTimer() { m_hideTimer->start(); }

bool DownloadFrame::eventFilter(QObject* watched, QEvent* event) {
  // The second press of a double-click on what has started the run, or a key pressed twice, would answer unread.
  if ((watched == m_button || watched == m_again) && IsPress(*event) && IsTooSoon()) return true;
  return Card::eventFilter(watched, event);
}

void DownloadFrame::changeEvent(QEvent* event) {
  Card::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && m_information != nullptr) ColorInformation();
}

void DownloadFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    m_button->click();
  else
    Card::keyPressEvent(event);
}

void DownloadFrame::ColorInformation() {
  QPalette colors = m_information->palette();
  colors.setColor(QPalette::WindowText, kit::ColorOf(ColorOfOutcome(m_outcome), palette()));
  m_information->setPalette(colors);
}

}  // namespace kestrin::ui::sound
