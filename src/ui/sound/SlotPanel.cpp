// SPDX-License-Identifier: MIT
#include "ui/sound/SlotPanel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/TopicOf.h"
#include "ui/sound/SlotList.h"
#include "ui/sound/SlotListModel.h"
#include "ui/sound/SoundActions.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace {

/// The names by which the controls of a slot are known.
struct ControlNames {
  core::sound::SlotKind kind;
  const char* option;
  const char* list;
};

constexpr std::array<ControlNames, 7> kControls{{
    {core::sound::SlotKind::Boot, "BootOption", "BootFileList"},
    {core::sound::SlotKind::PwrOn, "PwrOnOption", "PwrOnFileList"},
    {core::sound::SlotKind::PwrOff, "PwrOffOption", "PwrOffFileList"},
    {core::sound::SlotKind::Idle, "IdleOption", "IdleFileList"},
    {core::sound::SlotKind::Motion, "MtOption", "MtFileList"},
    {core::sound::SlotKind::Impact, "ImpOption", "ImpFileList"},
    {core::sound::SlotKind::Lockup, "LkOption", "LkfileList"},
}};

}  // namespace

SlotPanel::SlotPanel(SoundActions& actions, core::sound::SlotKind kind, QWidget* parent)
    : Card(parent),
      m_kind(kind),
      m_sounds(new SlotListModel(actions.Set(), kind, this)),
      m_option(new QRadioButton(SlotMnemonic(kind), this)),
      m_count(kit::MakeLabel("", kit::TextStyle::Soft, "", this)),
      m_list(new SlotList(actions, *m_sounds, this)) {
  for (const ControlNames& names : kControls) {
    if (names.kind != kind) continue;
    m_option->setObjectName(QLatin1String(names.option));
    m_list->setObjectName(QLatin1String(names.list));
  }
  SetSlot(kind);
  kit::SetHelpContext(*this, kit::HelpContextOfSlot(static_cast<int>(kind)));
  const bool isList = core::sound::SlotOf(kind).isList;
  m_option->setAccessibleName(tr("Add sounds to %1").arg(SlotTitle(kind)));
  m_option->setToolTip(tr("Double-clicked files go into %1").arg(SlotTitle(kind)));
  m_list->setAccessibleName((isList ? tr("%1 sounds") : tr("%1 sound")).arg(SlotTitle(kind)));
  kit::SetTextStyle(*m_option, kit::TextStyle::Title);

  auto* head = new QHBoxLayout;
  head->setSpacing(kit::kGrid);
  head->addWidget(m_option);
  head->addStretch();
  head->addWidget(m_count);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kGrid, kit::kGrid, kit::kGrid, kit::kGrid);
  column->setSpacing(kit::kHalf);
  column->addLayout(head);
  column->addWidget(m_list);
  head->setContentsMargins(kit::kHalf, 0, kit::kHalf, 0);

  m_list->setAccessibleDescription(PurposeOf(kind).text);
  SetShort(false);
  m_option->installEventFilter(this);
  connect(m_option, &QRadioButton::toggled, this, &SlotPanel::ShowSelected);
  ShowSelected(false);
  Refresh();
}

void SlotPanel::Refresh() {
  m_sounds->Refresh();
  if (core::sound::SlotOf(m_kind).isList) {
    // A row whose sound is missing is none that the board gets.
    const int missing = m_sounds->MissingCount();
    const QString sounds = tr("%1 of %2").arg(m_sounds->rowCount() - missing).arg(core::sound::kListCapacity);
    m_count->setText(missing == 0 ? sounds : tr("%1 missing").arg(missing));
    m_count->setToolTip(missing == 0 ? QString() : tr("%1, %2 missing").arg(sounds).arg(missing));
    return;
  }
  // The one line of a single slot is short: what is usual is not said, and the volume stands above.
  const QModelIndex only = m_sounds->index(0);
  m_count->setText(only.isValid() ? only.data(SlotListModel::kUnusualRole).toString() : QString());
}

void SlotPanel::ShowSelected(bool selected) {
  SetChosen(selected);
  ShowEmptyText();
}

void SlotPanel::ShowEmptyText() {
  const SlotPurpose purpose = PurposeOf(m_kind);
  // A list has room for more lines.
  const bool asks = core::sound::SlotOf(m_kind).isList && !m_isShort && m_option->isChecked();
  m_list->SetEmptyText(asks ? purpose.text + '\n' + tr("Double-click a sound to add it") : purpose.text,
                       purpose.shorter);
}

void SlotPanel::SetShort(bool isShort) {
  m_isShort = isShort;
  const bool grows = core::sound::SlotOf(m_kind).isList && !isShort;
  setSizePolicy(QSizePolicy::Expanding, grows ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  m_list->SetShort(isShort);
  ShowEmptyText();
}

bool SlotPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_option && event->type() == QEvent::Shortcut) {
    m_option->setChecked(true);
    m_list->setFocus(Qt::ShortcutFocusReason);
    return true;
  }
  return Card::eventFilter(watched, event);
}

void SlotPanel::mousePressEvent(QMouseEvent* event) {
  m_option->setChecked(true);
  Card::mousePressEvent(event);
}

}  // namespace kestrin::ui::sound
