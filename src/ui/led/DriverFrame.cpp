// SPDX-License-Identifier: MIT
#include "ui/led/DriverFrame.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Pictures.h"
#include "ui/led/ChannelLabel.h"
#include "ui/led/FlowRow.h"
#include "ui/led/Metrics.h"

namespace kestrin::ui::led {

using core::ledsetup::LedSetupState;

DriverFrame::DriverFrame(const kit::Pictures& pictures, QWidget* parent) : Card(parent) {
  setObjectName(QStringLiteral("Frame1"));
  kit::SetHelpOfGround(*this, kit::HelpContext::LedConfiguration);
  auto* const title = kit::MakeLabel(QString(), kit::TextStyle::Title, tr("Driver configuration"), this);
  setAccessibleName(title->text());
  auto* const fields = new FlowRow(kit::kWide, kit::kGrid);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kInset, kit::kGrid, kit::kInset, kit::kInset);
  column->setSpacing(kit::kHalf);
  column->addWidget(title);
  column->addLayout(fields);
  AddType(*fields);
  AddChannels(*fields);
  AddUpdate(pictures, AddOverdrive(*fields));
  ShowOverdrive({});
}

QHBoxLayout* DriverFrame::AddField(const QString& caption, QWidget* buddy, FlowRow& fields, int stretch) {
  auto* const label = kit::MakeLabel(QString(), kit::TextStyle::Soft, caption, this);
  label->setBuddy(buddy);
  // Captions of one row stand on one line, however tall what is below.
  label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  auto* const row = new QHBoxLayout;
  row->setSpacing(kit::kGrid);
  auto* const field = new QVBoxLayout;
  field->setSpacing(kit::kHalf);
  field->addWidget(label);
  field->addLayout(row, 1);
  fields.Add(field, stretch);
  return row;
}

void DriverFrame::AddType(FlowRow& fields) {
  m_types = new QComboBox(this);
  m_types->setObjectName(QStringLiteral("LEDcombo"));
  m_types->setAccessibleName(tr("LED type"));
  // A screen reader takes what is chosen for the name.
  m_types->setAccessibleDescription(m_types->accessibleName());
  m_types->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_types->setMinimumContentsLength(10);
  AddField(tr("LED Type"), m_types, fields, 1)->addWidget(m_types);
  connect(m_types, &QComboBox::activated, this, &DriverFrame::typeChosen);
}

void DriverFrame::AddChannels(FlowRow& fields) {
  QHBoxLayout* const row = AddField(tr("Output Channels"), nullptr, fields, 0);
  for (std::size_t i = 0; i < m_channels.size(); ++i) {
    m_channels[i] = new ChannelLabel(tr("LED %1").arg(i + 1), this);
    m_channels[i]->setObjectName(QStringLiteral("labelLED%1").arg(i + 1));
    row->addWidget(m_channels[i]);
  }
  kit::SetHelpOfGround(*m_channels[0]);
}

QHBoxLayout& DriverFrame::AddOverdrive(FlowRow& fields) {
  m_overdrive = new QSlider(Qt::Horizontal, this);
  m_overdrive->setObjectName(QStringLiteral("OverdriveSlider"));
  m_overdrive->setAccessibleName(tr("Overdrive, in percent"));
  m_overdrive->setPageStep(10);
  m_overdrive->setMinimumWidth(88);
  m_percent = new QSpinBox(this);
  m_percent->setObjectName(QStringLiteral("OverdriveLabel"));
  m_percent->setAccessibleName(m_overdrive->accessibleName());
  // Digits as everywhere else on the panel.
  m_percent->setLocale(QLocale::c());
  m_percent->setSuffix(QStringLiteral("%"));
  m_percent->setAlignment(Qt::AlignRight);
  const QString purpose = tr("How strongly the LED is driven; 100% is normal");
  m_overdrive->setToolTip(purpose);
  m_percent->setToolTip(purpose);
  QHBoxLayout* const row = AddField(tr("Overdrive:"), m_overdrive, fields, 1);
  row->addWidget(m_overdrive, 1);
  row->addWidget(m_percent);
  connect(m_overdrive, &QSlider::valueChanged, this, &DriverFrame::overdriveMoved);
  connect(m_percent, &QSpinBox::valueChanged, this, &DriverFrame::overdriveMoved);
  return *row;
}

void DriverFrame::AddUpdate(const kit::Pictures& pictures, QHBoxLayout& row) {
  m_update = new QPushButton(tr("Update LED"), this);
  m_update->setObjectName(QStringLiteral("btnUpdateLED"));
  m_update->setAccessibleName(tr("Update LED: write LED type and overdrive to the board"));
  m_update->setIcon(pictures.Icon(QStringLiteral("UpdLED.bmp"), QStringLiteral("UpdLED_off.bmp")));
  m_update->setIconSize({kPicture, kPicture});
  kit::SetHelp(*m_update, tr("Update LED Configuration"));
  row.addSpacing(kit::kGrid);
  row.addWidget(m_update);
  connect(m_update, &QPushButton::clicked, this, &DriverFrame::updateRequested);
}

void DriverFrame::ShowTypes(const LedSetupState& state) {
  if (m_names != state.types) {
    m_names = state.types;
    m_types->clear();
    for (const std::string& name : m_names) m_types->addItem(QString::fromStdString(name));
  }
  m_types->setCurrentIndex(state.type ? static_cast<int>(*state.type) : -1);
}

void DriverFrame::ShowChannels(const LedSetupState& state) {
  for (std::size_t i = 0; i < m_channels.size(); ++i) m_channels[i]->ShowColor(state.channelColors[i]);
}

void DriverFrame::ShowOverdrive(const LedSetupState& state) {
  const QSignalBlocker slider(m_overdrive);
  const QSignalBlocker box(m_percent);
  m_overdrive->setRange(LedSetupState::kLeastOverdrive, state.overdriveMaximum);
  // A board may hold 0, which is shown though it cannot be set.
  m_percent->setRange(0, state.overdriveMaximum);
  m_overdrive->setValue(state.overdrive);
  m_percent->setValue(state.overdrive);
}

void DriverFrame::EnableUpdate(const QString& whyNot) {
  m_update->setEnabled(whyNot.isEmpty());
  m_update->setToolTip(whyNot.isEmpty() ? tr("Write LED type and overdrive to the board") : whyNot);
}

}  // namespace kestrin::ui::led
