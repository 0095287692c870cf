// SPDX-License-Identifier: MIT
#include "ui/doctor/NextBox.h"

#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/WrapLabel.h"

namespace kestrin::ui::doctor {

namespace {

constexpr qreal kRadius = 8;
constexpr int kStripe = 4;
/// Of a longer text the rest is scrolled to.
constexpr int kMostLines = 7;

kit::WrapLabel* MakeText(const char* name, QWidget* parent) {
  auto* const label = new kit::WrapLabel(parent);
  label->setObjectName(name);
  return label;
}

void ShowText(QLabel& label, const QString& text) {
  label.setText(text);
  label.setVisible(!text.isEmpty());
  label.updateGeometry();
}

}  // namespace

NextBox::NextBox(const kit::Pictures& pictures, QWidget* parent) : QFrame(parent), m_pictures(pictures) {
  setObjectName("NextBox");
  MakeLayout();
  ShowPicture();
  Show({});
}

void NextBox::MakeLayout() {
  m_title = kit::MakeLabel("NextTitle", kit::TextStyle::Title, "", this);
  m_title->setWordWrap(true);
  m_text = MakeText("NextText", this);
  m_failure = MakeText("NextFailure", this);
  // The theme's colour for what went wrong.
  m_failure->setForegroundRole(QPalette::BrightText);
  m_more = MakeMore();

  m_buttons = new QWidget(this);
  m_primary = new QPushButton(m_buttons);
  m_primary->setObjectName("NextBtn");
  kit::Theme::MakePrimary(*m_primary);
  kit::SetHelp(*m_primary, tr("Install or remove the permission rule; you are asked before"));
  m_secondary = new QPushButton(m_buttons);
  m_secondary->setObjectName("NextOtherBtn");
  kit::SetHelp(*m_secondary, tr("Look again, or leave things as they are"));
  m_link = new kit::LinkButton("NextMoreLink", "", m_buttons);
  kit::SetHelp(*m_link, tr("Show the file that is written"));
  auto* const row = new QHBoxLayout(m_buttons);
  row->setContentsMargins(0, kit::kHalf, 0, 0);
  row->setSpacing(kit::kGrid);
  row->addWidget(m_primary);
  row->addWidget(m_secondary);
  row->addWidget(m_link);
  row->addStretch(1);
  connect(m_primary, &QPushButton::clicked, this, &NextBox::primaryPressed);
  connect(m_secondary, &QPushButton::clicked, this, &NextBox::secondaryPressed);
  connect(m_link, &QPushButton::clicked, this, [this] { ShowMore(!m_isMoreShown); });
  // The second press of a double-click would answer what has just been asked, unread.
  for (QPushButton* const button : {m_primary, m_secondary}) button->installEventFilter(this);

  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kit::kWide + kStripe, kit::kInset, kit::kWide, kit::kInset);
  all->setSpacing(kit::kHalf);
  for (QWidget* const part : {static_cast<QWidget*>(m_title), static_cast<QWidget*>(m_text),
                              static_cast<QWidget*>(m_more), static_cast<QWidget*>(m_failure), m_buttons})
    all->addWidget(part);
}

QPlainTextEdit* NextBox::MakeMore() {
  auto* const more = new QPlainTextEdit(this);
  more->setObjectName("NextMore");
  more->setAccessibleName(tr("The permission rule"));
  more->setReadOnly(true);
  more->setTabChangesFocus(true);
  more->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  more->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  kit::SetHelp(*more, tr("The file that is written, word for word"));
  return more;
}

void NextBox::Show(const Step& step) {
  // A screen reader is told of what is set, also when it is the same again.
  if (m_step == step) return;
  const bool isSameMore = m_step && step.more == m_step->more && step.isMoreShown == m_step->isMoreShown;
  m_step = step;
  m_title->setText(step.title);
  ShowText(*m_text, step.text);
  ShowText(*m_failure, step.failure);
  m_primary->setText(step.primary);
  m_primary->setVisible(!step.primary.isEmpty());
  m_secondary->setText(step.secondary);
  m_secondary->setVisible(!step.secondary.isEmpty());
  m_link->setVisible(!step.more.isEmpty() && !step.isMoreShown);
  m_buttons->setVisible(!m_primary->isHidden() || !m_secondary->isHidden() || !m_link->isHidden());
  ShowMore(isSameMore ? m_isMoreShown : step.isMoreShown);
  setAccessibleName(step.title);
  setAccessibleDescription((step.failure + ' ' + step.text).trimmed());
}

bool NextBox::TakeFocus() {
  for (QPushButton* const button : {m_secondary, m_primary})
    if (!button->isHidden()) {
      button->setFocus(Qt::OtherFocusReason);
      return true;
    }
  return false;
}

void NextBox::ShowMore(bool isShown) {
  m_isMoreShown = isShown;
  m_more->setPlainText(isShown ? m_step->more : QString());
  m_more->setVisible(isShown && !m_step->more.isEmpty());
  const int lines = std::clamp(m_more->blockCount(), 2, kMostLines);
  const auto margin = static_cast<int>(m_more->document()->documentMargin()) + m_more->frameWidth();
  m_more->setFixedHeight(lines * m_more->fontMetrics().lineSpacing() + 2 * margin);
  m_link->setText(isShown ? tr("Show less") : tr("What does it do?"));
  m_link->updateGeometry();
}

void NextBox::ShowPicture() {
  m_primary->setIcon(m_pictures.Tinted("shield.bmp", kit::ColorOf(kit::ColorRole::AccentText, palette())));
}

void NextBox::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && m_primary != nullptr) ShowPicture();
}

bool NextBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick) return true;
  return QFrame::eventFilter(watched, event);
}

void NextBox::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath shape;
  shape.addRoundedRect(rect(), kRadius, kRadius);
  painter.fillPath(shape, kit::ColorOf(kit::ColorRole::AccentSoft, palette()));
  painter.setClipRect(0, 0, kStripe, height());
  painter.fillPath(shape, kit::ColorOf(kit::ColorRole::Accent, palette()));
}

}  // namespace kestrin::ui::doctor
