#include "motion/ui/ConfigFrame.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "app/help/TopicOf.h"
#include "app/theme/Theme.h"

namespace kestrin::motion::ui {

namespace {

constexpr int kGrid = 8;
constexpr int kSliderWidth = 240;
/// Ticks of more units would run into one another: nobody could tell one from the next.
constexpr int kMostTicks = kSliderWidth / 6;

struct ControlNames {
  const char* slider;
  const char* label;
  /// The topic of the group that it stands in.
  app::HelpContext help;
};

/// In the order of kDetectionParameters.
constexpr std::array<ControlNames, kDetectionParameters.size()> kControls{{
    {"MotionThresholdSlider", "MotionThresholdLabel", app::HelpContext::MotionDetection},
    {"MotionDebouncingSlider", "MotionDebouncingLabel", app::HelpContext::MotionDetection},
    {"ImpactThresholdSlider", "ImpactThresholdLabel", app::HelpContext::ImpactDetection},
    {"ImpactDebouncingslider", "ImpactDebouncingLabel", app::HelpContext::ImpactDetection},
    {"ImpactTimeSlider", "ImpactTimeLabel", app::HelpContext::ImpactDetection},
    {"FOCTimeSlider", "FOCTimeLabel", app::HelpContext::LockupFlash},
}};

constexpr std::size_t kFlashPeriod = kDetectionParameters.size() - 1;

/// Page up and page down move a slider by so much.
constexpr int kLargeStep = 5;

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QPushButton* MakeButton(const char* name, const QString& text, QWidget& parent) {
  auto* const button = new QPushButton(text, &parent);
  button->setObjectName(name);
  return button;
}

}  // namespace

ConfigFrame::ConfigFrame(QWidget* parent) : Card(parent) {
  setObjectName("ConfigFrame");
  setWindowTitle(kCaption);
  setAccessibleName(kCaption);
  MakeLayout();
  ShowFactoryDefaults();
  hide();
}

void ConfigFrame::MakeLayout() {
  auto* const caption = new QLabel(kCaption, this);
  caption->setObjectName("ConfigCaption");
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.2);
  large.setBold(true);
  caption->setFont(large);

  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(3 * kGrid, 2 * kGrid, 3 * kGrid, 2 * kGrid);
  all->setSpacing(kGrid);
  all->addWidget(caption);
  for (std::size_t first = 0; first < kDetectionParameters.size();) {
    std::size_t last = first;
    while (last < kDetectionParameters.size() && kDetectionParameters[last].group == kDetectionParameters[first].group)
      ++last;
    all->addWidget(MakeGroup(first, last));
    first = last;
  }

  auto* const send = MakeButton("SendCmdBtn", "SEND Configuration", *this);
  app::Theme::MakePrimary(*send);
  auto* const defaults = MakeButton("DefaultBtn", "Factory Default", *this);
  auto* const close = MakeButton("CloseCfgBtn", "CLOSE Window", *this);
  auto* const buttons = new QHBoxLayout;
  buttons->setSpacing(kGrid);
  buttons->addWidget(defaults);
  buttons->addStretch(1);
  buttons->addWidget(close);
  buttons->addWidget(send);
  all->addSpacing(kGrid);
  all->addLayout(buttons);

  connect(send, &QPushButton::clicked, this, &ConfigFrame::sendRequested);
  connect(defaults, &QPushButton::clicked, this, &ConfigFrame::ShowFactoryDefaults);
  connect(close, &QPushButton::clicked, this, &ConfigFrame::hide);
}

QWidget* ConfigFrame::MakeGroup(std::size_t first, std::size_t last) {
  auto* const group = new QGroupBox(Text(kDetectionParameters[first].group), this);
  app::SetHelpContext(*group, kControls[first].help);
  auto* const grid = new QGridLayout(group);
  grid->setHorizontalSpacing(2 * kGrid);
  grid->setColumnStretch(0, 1);
  for (std::size_t index = first; index < last; ++index) {
    const DetectionParameter& parameter = kDetectionParameters[index];
    const int line = static_cast<int>(index - first);
    const Row row = MakeRow(parameter, index);
    m_rows[index] = row;
    auto* const caption = new QLabel(Text(parameter.caption), group);
    caption->setBuddy(row.slider);
    grid->addWidget(caption, line, 0);
    grid->addWidget(row.slider, line, 1);
    grid->addWidget(row.label, line, 2);
  }
  return group;
}

ConfigFrame::Row ConfigFrame::MakeRow(const DetectionParameter& parameter, std::size_t index) {
  auto* const slider = new QSlider(Qt::Horizontal, this);
  slider->setObjectName(kControls[index].slider);
  slider->setAccessibleName(Text(parameter.caption) + ", " + Text(parameter.group));
  slider->setRange(parameter.minimum, parameter.maximum);
  slider->setSingleStep(parameter.step);
  slider->setPageStep(kLargeStep);
  slider->setTickInterval(1);
  slider->setTickPosition(parameter.maximum - parameter.minimum <= kMostTicks ? QSlider::TicksBelow : QSlider::NoTicks);
  slider->setFixedWidth(kSliderWidth);
  auto* const label = new QLabel(this);
  label->setObjectName(kControls[index].label);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance("0000"));
  connect(slider, &QSlider::valueChanged, this, [this, index](int value) { SetValue(index, value); });
  return {slider, label};
}

void ConfigFrame::SetValue(std::size_t index, std::int32_t value) {
  const Row& row = m_rows[index];
  // The board counts the flash period in steps of its own.
  row.slider->setValue(index == kFlashPeriod ? FlashPeriodMilliseconds(FlashPeriodUnits(value)) : value);
  row.label->setText(QString::number(row.slider->value()));
}

void ConfigFrame::ShowFactoryDefaults() {
  for (std::size_t index = 0; index < m_rows.size(); ++index)
    SetValue(index, kDetectionParameters[index].factoryDefault);
}

void ConfigFrame::ShowValues(const device::AccParam& board, std::uint16_t revision) {
  for (std::size_t index = 0; index < m_rows.size(); ++index) {
    const DetectionParameter& parameter = kDetectionParameters[index];
    const bool known = index != kFlashPeriod || HasFlashPeriod(revision);
    SetValue(index, known ? ShownValue(parameter, board) : parameter.factoryDefault);
  }
}

void ConfigFrame::Open(std::uint16_t revision) {
  const bool flashes = HasFlashPeriod(revision);
  const Row& period = m_rows[kFlashPeriod];
  period.slider->setEnabled(flashes);
  period.label->setEnabled(flashes);
  period.slider->setToolTip(flashes ? QString() : tr("This board has no adjustable flash period."));
  show();
  m_rows.front().slider->setFocus();
}

std::map<const DetectionParameter*, std::int32_t> ConfigFrame::Values() const {
  std::map<const DetectionParameter*, std::int32_t> values;
  for (std::size_t index = 0; index < m_rows.size(); ++index)
    values[&kDetectionParameters[index]] = m_rows[index].slider->value();
  return values;
}

void ConfigFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    hide();
  else
    Card::keyPressEvent(event);
}

}  // namespace kestrin::motion::ui
