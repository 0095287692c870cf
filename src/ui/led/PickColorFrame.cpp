// SPDX-License-Identifier: MIT
#include "ui/led/PickColorFrame.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

#include "core/led/ColorLevels.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Theme.h"
#include "ui/led/BladeLight.h"
#include "ui/led/BladeView.h"
#include "ui/led/ChannelLabel.h"

namespace kestrin::ui::led {

namespace {

constexpr int kWidth = 380;

/// The part of a control that can be seen: a page that scrolls shows less than all of it.
QRect SeenOf(const QWidget& control) {
  QRect seen = control.rect();
  for (const QWidget* around = control.parentWidget(); around != nullptr; around = around->parentWidget()) {
    seen &= QRect(control.mapFrom(around, QPoint(0, 0)), around->size());
    if (around->isWindow()) break;
  }
  return seen;
}

}  // namespace

PickColorFrame::PickColorFrame(QWidget* parent) : Card(parent) {
  setObjectName(QStringLiteral("PickColor_frame"));
  setAccessibleName(tr("LED setting"));
  kit::SetHelpOfGround(*this, kit::HelpContext::ColorPicker);
  SetChosen(true);
  setCursor(Qt::SizeAllCursor);
  setMinimumWidth(kWidth);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kWide, kit::kInset, kit::kWide, kit::kWide);
  column->setSpacing(kit::kGrid);
  AddHead(*column);
  AddRows(*column);
  AddPicking(*column);
  AddButtons(*column);
  // The hand that moves the picker belongs to its ground only.
  for (QWidget* const control : findChildren<QWidget*>())
    if (control->focusPolicy() != Qt::NoFocus) control->setCursor(Qt::ArrowCursor);
  parent->installEventFilter(this);
  hide();
}

void PickColorFrame::AddHead(QBoxLayout& layout) {
  QLabel* const title = kit::MakeLabel(QString(), kit::TextStyle::Title, tr("LED setting"), this);
  m_subject = kit::MakeLabel(QStringLiteral("PickColorSubject"), kit::TextStyle::Soft, QString(), this);
  auto* const head = new QHBoxLayout;
  head->addWidget(title);
  head->addStretch(1);
  head->addWidget(m_subject);
  m_blade = new BladeView(this);
  m_blade->setObjectName(QStringLiteral("PickColorBlade"));
  m_blade->setAccessibleName(tr("The blade at these levels"));
  layout.addLayout(head);
  layout.addWidget(m_blade);
}

void PickColorFrame::AddRows(QBoxLayout& layout) {
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const QString number = QString::number(i + 1);
    Row& row = m_rows[i];
    row.label = new ChannelLabel(tr("LED%1").arg(number), this);
    row.label->setObjectName(QStringLiteral("LabelLedSet") + number);
    row.slider = new QSlider(Qt::Horizontal, this);
    row.slider->setObjectName(QStringLiteral("SliderLedSet") + number);
    row.slider->setAccessibleName(tr("Level of LED %1, 0 to 255").arg(number));
    row.slider->setRange(0, core::led::kFullLevel);
    row.slider->setPageStep(16);
    row.label->setBuddy(row.slider);
    row.value = new QSpinBox(this);
    row.value->setObjectName(QStringLiteral("ValueLedSet") + number);
    row.value->setAccessibleName(row.slider->accessibleName());
    // Digits as everywhere else on the panel.
    row.value->setLocale(QLocale::c());
    row.value->setRange(0, core::led::kFullLevel);
    row.value->setAlignment(Qt::AlignRight);
    const auto tell = [this, channel = static_cast<int>(i) + 1](int level) { emit levelMoved(channel, level); };
    connect(row.slider, &QSlider::valueChanged, this, tell);
    connect(row.value, &QSpinBox::valueChanged, this, tell);
    auto* const line = new QHBoxLayout;
    line->setSpacing(kit::kGrid);
    line->addWidget(row.label);
    line->addWidget(row.slider, 1);
    line->addWidget(row.value);
    layout.addLayout(line);
  }
}

void PickColorFrame::AddPicking(QBoxLayout& layout) {
  m_pick = MakeButton("PickColor", tr("Pick color"), &PickColorFrame::pickColorRequested);
  m_fidelity = new QCheckBox(tr("Color Fidelity"), this);
  m_fidelity->setObjectName(QStringLiteral("ColorFidelity"));
  m_fidelity->setToolTip(tr("Balances the LEDs when a color is picked, so that white looks white"));
  connect(m_fidelity, &QCheckBox::toggled, this, &PickColorFrame::colorFidelityChanged);
  auto* const line = new QHBoxLayout;
  line->setSpacing(kit::kWide);
  line->addWidget(m_pick);
  line->addWidget(m_fidelity);
  line->addStretch(1);
  layout.addLayout(line);
}

void PickColorFrame::AddButtons(QBoxLayout& layout) {
  m_apply = MakeButton("PickColorApply", tr("Apply"), &PickColorFrame::applyRequested);
  QPushButton* const cancel = MakeButton("PickColorCancel", tr("Cancel"), &PickColorFrame::cancelRequested);
  QPushButton* const ok = MakeButton("PickColorOK", tr("OK"), &PickColorFrame::okRequested);
  kit::Theme::MakePrimary(*ok);
  ok->setToolTip(tr("Keep these levels for the pulse"));
  cancel->setToolTip(tr("Close without keeping the levels"));
  auto* const line = new QHBoxLayout;
  line->setSpacing(kit::kGrid);
  line->addWidget(m_apply);
  line->addStretch(1);
  line->addWidget(cancel);
  line->addWidget(ok);
  layout.addLayout(line);
}

QPushButton* PickColorFrame::MakeButton(const char* name, const QString& text, void (PickColorFrame::*signal)()) {
  auto* const button = new QPushButton(text, this);
  button->setObjectName(QLatin1String(name));
  connect(button, &QPushButton::clicked, this, signal);
  return button;
}

void PickColorFrame::SetSubject(const QString& subject) {
  m_subject->setText(subject);
  setAccessibleDescription(subject);
}

void PickColorFrame::Open(QWidget& opener) {
  m_opener = &opener;
  adjustSize();
  const QRect seen = SeenOf(*parentWidget());
  if (m_wasDragged) {
    MoveInside(pos(), seen);
  } else {
    // Over the other half of the panel: the pulse that is edited stays in sight.
    const int middle = opener.mapTo(parentWidget(), opener.rect().center()).x();
    const bool isLeft = middle < parentWidget()->width() / 2;
    const int x = isLeft ? parentWidget()->width() - width() - kit::kWide : kit::kWide;
    MoveInside({x, seen.top() + seen.height() - height() - kit::kWide}, seen);
  }
  show();
  raise();
  const auto first = std::find_if(m_rows.begin(), m_rows.end(), [](const Row& row) { return row.slider->isVisible(); });
  if (first != m_rows.end()) first->slider->setFocus();
}

void PickColorFrame::Close() {
  const bool hadKeyboard = window()->focusWidget() != nullptr && isAncestorOf(window()->focusWidget());
  hide();
  if (hadKeyboard && m_opener != nullptr) m_opener->setFocus();
}

void PickColorFrame::ShowRows(const core::ledsetup::LedSetupState& state) {
  for (int channel = 1; channel <= core::led::LED_Driver::kChannels; ++channel) {
    const bool used = channel <= state.Channels();
    const Row& row = m_rows.at(static_cast<std::size_t>(channel) - 1);
    if (used) row.label->ShowColor(state.CurrentDriver.GetChannelColor(channel));
    row.label->setVisible(used);
    row.slider->setVisible(used);
    row.value->setVisible(used);
  }
  m_pick->setEnabled(state.CanPickColor());
  m_fidelity->setEnabled(state.CanPickColor());
  m_pick->setToolTip(state.CanPickColor() ? tr("Choose the color from a palette")
                                          : tr("Needs an LED type with a red, a green and a blue channel"));
  if (!isVisible()) return;
  adjustSize();
  MoveInside(pos());
}

void PickColorFrame::ShowLevels(const core::ledsetup::LedSetupState& state) {
  Levels levels{};
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const Row& row = m_rows[i];
    const QSignalBlocker slider(row.slider);
    const QSignalBlocker value(row.value);
    row.slider->setValue(state.picker.levels[i]);
    row.value->setValue(state.picker.levels[i]);
    levels.at(i) = state.picker.levels[i];
  }
  m_blade->Show(Mix(state.CurrentDriver, levels));
}

void PickColorFrame::EnableApply(const QString& whyNot) {
  m_apply->setEnabled(whyNot.isEmpty());
  m_apply->setToolTip(whyNot.isEmpty() ? tr("Show these levels on the blade") : whyNot);
}

bool PickColorFrame::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) MoveInside(pos());
  return Card::eventFilter(watched, event);
}

void PickColorFrame::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      emit cancelRequested();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // On a button, Enter means that button.
      if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
      else
        emit okRequested();
      break;
    default:
      Card::keyPressEvent(event);
  }
}

void PickColorFrame::mousePressEvent(QMouseEvent* event) {
  m_isDragged = event->button() == Qt::LeftButton;
  m_grip = event->pos();
}

void PickColorFrame::mouseMoveEvent(QMouseEvent* event) {
  if (!m_isDragged) return;
  m_wasDragged = true;
  MoveInside(mapToParent(event->pos()) - m_grip);
}

void PickColorFrame::mouseReleaseEvent(QMouseEvent* /*event*/) { m_isDragged = false; }

void PickColorFrame::MoveInside(const QPoint& place) { MoveInside(place, parentWidget()->rect()); }

void PickColorFrame::MoveInside(const QPoint& place, const QRect& room) {
  const int left = room.left();
  const int top = room.top();
  move(std::clamp(place.x(), left, std::max(left, left + room.width() - width())),
       std::clamp(place.y(), top, std::max(top, top + room.height() - height())));
}

}  // namespace kestrin::ui::led
