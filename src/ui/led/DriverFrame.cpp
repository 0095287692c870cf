#include "ui/led/DriverFrame.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include "core/base/Numbers.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/Theme.h"
#include "ui/kit/TopicOf.h"
#include "ui/led/ChannelLabel.h"
#include "ui/led/Metrics.h"

namespace kestrin::ui::led {

namespace {

constexpr int kNominal = 100;
constexpr int kLeastOverdrive = 1;

enum Column { kType, kChannels, kOverdrive, kUpdate };

}  // namespace

DriverFrame::DriverFrame(const kit::Pictures& pictures, QWidget* parent) : Card(parent), m_grid(new QGridLayout(this)) {
  setObjectName(QStringLiteral("Frame1"));
  kit::SetHelpContext(*this, kit::HelpContext::LedConfiguration);
  auto* const title = new QLabel(tr("Driver configuration"), this);
  setAccessibleName(title->text());
  QFont bold = title->font();
  bold.setBold(true);
  title->setFont(bold);
  m_grid->setContentsMargins(12, kGrid, 12, 12);
  m_grid->setHorizontalSpacing(2 * kGrid);
  m_grid->setVerticalSpacing(kGrid / 2);
  m_grid->addWidget(title, 0, 0, 1, -1);
  m_grid->setColumnStretch(kType, 3);
  m_grid->setColumnStretch(kOverdrive, 2);
  AddType();
  AddChannels();
  AddOverdrive();
  AddUpdate(pictures);
}

QLabel* DriverFrame::AddCaption(const QString& text, int column) {
  auto* const caption = new QLabel(text, this);
  kit::Theme::MakeSoft(*caption);
  m_grid->addWidget(caption, 1, column);
  return caption;
}

void DriverFrame::AddType() {
  m_types = new QComboBox(this);
  m_types->setObjectName(QStringLiteral("LEDcombo"));
  m_types->setAccessibleName(tr("LED type"));
  // A screen reader takes what is chosen for the name.
  m_types->setAccessibleDescription(m_types->accessibleName());
  m_types->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  m_types->setMinimumContentsLength(10);
  AddCaption(tr("LED Type"), kType)->setBuddy(m_types);
  m_grid->addWidget(m_types, 2, kType);
  connect(m_types, &QComboBox::activated, this,
          [this](int index) { emit typeChosen(m_types->itemData(index).toByteArray()); });
}

void DriverFrame::AddChannels() {
  static_cast<void>(AddCaption(tr("Output Channels"), kChannels));
  auto* const row = new QHBoxLayout;
  row->setSpacing(kGrid);
  for (std::size_t i = 0; i < m_channels.size(); ++i) {
    m_channels[i] = new ChannelLabel(tr("LED %1").arg(i + 1), this);
    m_channels[i]->setObjectName(QStringLiteral("labelLED%1").arg(i + 1));
    row->addWidget(m_channels[i]);
  }
  m_grid->addLayout(row, 2, kChannels);
}

void DriverFrame::AddOverdrive() {
  m_overdrive = new QSlider(Qt::Horizontal, this);
  m_overdrive->setObjectName(QStringLiteral("OverdriveSlider"));
  m_overdrive->setAccessibleName(tr("Overdrive, in percent"));
  m_overdrive->setPageStep(10);
  m_overdrive->setMinimumWidth(88);
  m_percent = new QSpinBox(this);
  m_percent->setObjectName(QStringLiteral("OverdriveLabel"));
  m_percent->setAccessibleName(m_overdrive->accessibleName());
  // The number is read back from the box's text.
  m_percent->setLocale(QLocale::c());
  m_percent->setSuffix(QStringLiteral("%"));
  m_percent->setAlignment(Qt::AlignRight);
  const QString purpose = tr("How strongly the LED is driven; 100% is normal");
  m_overdrive->setToolTip(purpose);
  m_percent->setToolTip(purpose);
  SetOverdriveMaximum(kNominal);
  SetOverdrive(kNominal);
  m_percent->setValue(kNominal);
  AddCaption(tr("Overdrive:"), kOverdrive)->setBuddy(m_overdrive);
  auto* const row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addWidget(m_overdrive, 1);
  row->addWidget(m_percent);
  m_grid->addLayout(row, 2, kOverdrive);
  connect(m_overdrive, &QSlider::valueChanged, this, &DriverFrame::overdriveMoved);
  connect(m_percent, &QSpinBox::valueChanged, this, [this](int percent) {
    m_overdrive->setValue(percent);
    m_percent->setValue(m_overdrive->value());
  });
}

void DriverFrame::AddUpdate(const kit::Pictures& pictures) {
  m_update = new QPushButton(tr("Update LED"), this);
  m_update->setObjectName(QStringLiteral("btnUpdateLED"));
  m_update->setAccessibleName(tr("Update LED: write LED type and overdrive to the board"));
  m_update->setIcon(pictures.Icon(QStringLiteral("UpdLED.bmp"), QStringLiteral("UpdLED_off.bmp")));
  m_update->setIconSize({kPicture, kPicture});
  m_grid->addWidget(m_update, 2, kUpdate);
  connect(m_update, &QPushButton::clicked, this, &DriverFrame::updateRequested);
}

void DriverFrame::ClearTypes() { m_types->clear(); }

void DriverFrame::AppendType(const QByteArray& name) {
  // The first entry of a list would be chosen by itself.
  const int chosen = m_types->currentIndex();
  m_types->addItem(QString::fromUtf8(name), name);
  m_types->setCurrentIndex(chosen);
}

void DriverFrame::SelectType(int index) { m_types->setCurrentIndex(index); }

void DriverFrame::SetChannelColor(int channel, core::led::Color color) {
  m_channels.at(static_cast<std::size_t>(channel - 1))->ShowColor(color);
}

void DriverFrame::SetOverdriveMaximum(int percent) {
  const QSignalBlocker slider(m_overdrive);
  const QSignalBlocker box(m_percent);
  m_overdrive->setRange(kLeastOverdrive, percent);
  // A board may hold 0, which is shown though it cannot be set.
  m_percent->setRange(0, percent);
}

void DriverFrame::SetOverdrive(int percent) {
  const QSignalBlocker quiet(m_overdrive);
  m_overdrive->setValue(percent);
}

int DriverFrame::Overdrive() const { return m_overdrive->value(); }

void DriverFrame::SetOverdriveText(const QString& text) {
  const QSignalBlocker quiet(m_percent);
  m_percent->setValue(core::base::RoundTo<int>(core::base::LeadingNumber(text.toStdString())));
}

QString DriverFrame::OverdriveText() const { return m_percent->text(); }

void DriverFrame::EnableUpdate(const QString& whyNot) {
  m_update->setEnabled(whyNot.isEmpty());
  m_update->setToolTip(whyNot.isEmpty() ? tr("Write LED type and overdrive to the board") : whyNot);
}

}  // namespace kestrin::ui::led
