// SPDX-License-Identifier: MIT
#include "ui/motion/ConfigFrame.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "core/motion/ThresholdAdvice.h"
#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/LinkButton.h"
#include "ui/kit/Theme.h"
#include "ui/kit/TopicOf.h"
#include "ui/motion/ParameterSlider.h"
#include "ui/motion/SensorColumn.h"
#include "ui/motion/Shelf.h"
#include "ui/motion/SuggestionBox.h"

namespace kestrin::ui::motion {

namespace {

using kit::kBroad;
using kit::kGrid;
using kit::kHalf;
using kit::kWide;
/// The part of the right margin in which the scroll bar of a low window stands.
constexpr int kScrollRoom = kWide;

struct ControlNames {
  const char* slider;
  const char* label;
  const char* state;
  /// The topic of the group that it stands in.
  kit::HelpContext help;
  /// Its ticks are longest at multiples of this.
  int round;
  const char* hint;
};

/// In the order of kDetectionParameters.
constexpr std::array<ControlNames, core::motion::kDetectionParameters.size()> kControls{{
    {"MotionThresholdSlider", "MotionThresholdLabel", "MotionThresholdState", kit::HelpContext::MotionDetection, 10,
     QT_TRANSLATE_NOOP("kestrin::ui::motion::ConfigFrame", "How hard a swing has to be before a motion sound plays.")},
    {"MotionDebouncingSlider", "MotionDebouncingLabel", "MotionDebouncingState", kit::HelpContext::MotionDetection, 10,
     QT_TRANSLATE_NOOP("kestrin::ui::motion::ConfigFrame", "How long it has to last. Higher ignores a short twitch.")},
    {"ImpactThresholdSlider", "ImpactThresholdLabel", "ImpactThresholdState", kit::HelpContext::ImpactDetection, 10,
     QT_TRANSLATE_NOOP("kestrin::ui::motion::ConfigFrame", "How hard a hit has to be before an impact sound plays.")},
    {"ImpactDebouncingslider", "ImpactDebouncingLabel", "ImpactDebouncingState", kit::HelpContext::ImpactDetection, 10,
     QT_TRANSLATE_NOOP("kestrin::ui::motion::ConfigFrame",
                       "How long the shaking after a hit is ignored. One hit sounds like two? Go higher.")},
    {"ImpactTimeSlider", "ImpactTimeLabel", "ImpactTimeState", kit::HelpContext::ImpactDetection, 10,
     QT_TRANSLATE_NOOP("kestrin::ui::motion::ConfigFrame", "How soon after a clash the next one may sound.")},
    {"FOCTimeSlider", "FOCTimeLabel", "FOCTimeState", kit::HelpContext::LockupFlash, 100,
     QT_TRANSLATE_NOOP("kestrin::ui::motion::ConfigFrame",
                       "How fast the blade flickers in lock-up. 52 is a crackle, 200 a flutter.")},
}};

constexpr std::size_t kFlashPeriod = core::motion::kDetectionParameters.size() - 1;

constexpr std::size_t kImpactThreshold = 2;

/// Beside a slider, longer captions take two lines.
constexpr int kWidestCaption = 220;

/// In windows of this width there is room for the picture beside the sliders.
constexpr int kWideWindow = 940;
/// And in those of this height for what each slider is for.
constexpr int kHighWindow = 700;

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
  setWindowTitle(tr(kCaption));
  setAccessibleName(tr(kCaption));
  MakeLayout();
  ShowFactoryDefaults();
  for (Row& row : m_rows) row.unmoved = row.slider->value();
  ShowKnown(m_known, m_revision);
  hide();
}

void ConfigFrame::MakeLayout() {
  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kBroad, kWide, kBroad - kScrollRoom, kWide);
  all->setSpacing(kGrid);
  all->addLayout(MakeHead());
  AddNotices(*all);
  m_columns = new QGridLayout;
  m_columns->setHorizontalSpacing(kBroad);
  m_columns->setVerticalSpacing(kGrid);
  MakeGroups();
  MakeSensor();
  all->addLayout(m_columns, 1);
  all->addLayout(MakeButtons());
  Arrange({});
}

QBoxLayout* ConfigFrame::MakeHead() {
  m_turn = new kit::LinkButton("SensorTurnBtn", "", this);
  kit::SetHelpContext(*m_turn, kit::HelpContext::Sensor);
  connect(m_turn, &QPushButton::clicked, this, [this] { Turn(!m_isTurned); });
  auto* const head = new QHBoxLayout;
  head->setContentsMargins(0, 0, kScrollRoom, 0);
  auto* const caption = kit::MakeLabel("ConfigCaption", kit::TextStyle::Caption, tr(kCaption), this);
  // It takes no more room than the caption has anyway.
  m_turn->setMaximumHeight(caption->sizeHint().height());
  head->addWidget(caption);
  head->addStretch(1);
  head->addWidget(m_turn);
  return head;
}

void ConfigFrame::MakeSensor() {
  m_sensor = new SensorColumn;
  m_sensorShelf = new Shelf("SensorShelf", *m_sensor, this);
  kit::SetHelpContext(*m_sensor, kit::HelpContext::Sensor);
  m_foot = new QWidget(this);
  m_suggestion = new SuggestionBox(m_foot);
  auto* const foot = new QVBoxLayout(m_foot);
  foot->setContentsMargins(0, 0, kScrollRoom, 0);
  foot->addWidget(m_suggestion);
  m_foot->hide();
  kit::SetHelpContext(*m_suggestion, kit::HelpContext::Sensor);
  QSlider& slider = *m_rows[kImpactThreshold].slider;
  connect(m_sensor, &SensorColumn::thresholdDragged, &slider, &QSlider::setValue);
  connect(m_suggestion, &SuggestionBox::useRequested, &slider, &QSlider::setValue);
  connect(&slider, &QSlider::valueChanged, m_sensor, &SensorColumn::SetThreshold);
  connect(m_sensor, &SensorColumn::startAgainRequested, this, &ConfigFrame::startAgainRequested);
  connect(m_sensor, &SensorColumn::askAgainRequested, this, &ConfigFrame::askAgainRequested);
}

void ConfigFrame::AddNotices(QBoxLayout& layout) {
  m_summary = kit::MakeLabel("ConfigSummary", kit::TextStyle::Soft, "", this);
  m_summary->setWordWrap(true);
  m_read = MakeButton("ReadCmdBtn", tr("Read again"), *this);
  connect(m_read, &QPushButton::clicked, this, &ConfigFrame::readRequested);
  auto* const state = new QHBoxLayout;
  state->setContentsMargins(0, 0, kScrollRoom, 0);
  state->setSpacing(kGrid);
  state->addWidget(m_summary, 1);
  state->addWidget(m_read);
  layout.addLayout(state);

  m_keptNotice = new QWidget(this);
  m_keptNotice->setObjectName("KeptNotice");
  auto* const text =
      kit::MakeLabel("KeptText", kit::TextStyle::Plain,
                     tr("A download was interrupted; this board's own settings are kept."), m_keptNotice);
  text->setWordWrap(true);
  // The theme's colour for what went wrong.
  text->setForegroundRole(QPalette::BrightText);
  auto* const putBack = MakeButton("PutBackBtn", tr("Put back the settings from before the download"), *m_keptNotice);
  connect(putBack, &QPushButton::clicked, this, &ConfigFrame::putBackRequested);
  auto* const row = new QHBoxLayout(m_keptNotice);
  row->setContentsMargins(0, 0, kScrollRoom, 0);
  row->setSpacing(kGrid);
  row->addWidget(text, 1);
  row->addWidget(putBack);
  layout.addWidget(m_keptNotice);
}

void ConfigFrame::MakeGroups() {
  auto* const groups = new QWidget;
  auto* const column = new QVBoxLayout(groups);
  column->setContentsMargins(0, 0, kScrollRoom, 0);
  column->setSpacing(kGrid);
  for (std::size_t first = 0; first < core::motion::kDetectionParameters.size();) {
    std::size_t last = first;
    while (last < core::motion::kDetectionParameters.size() &&
           core::motion::kDetectionParameters[last].group == core::motion::kDetectionParameters[first].group)
      ++last;
    column->addWidget(MakeGroup(first, last));
    first = last;
  }
  column->addStretch(1);
  m_shelf = new Shelf("ConfigShelf", *groups, this);
}

QWidget* ConfigFrame::MakeGroup(std::size_t first, std::size_t last) {
  auto* const group = new QGroupBox(Text(core::motion::kDetectionParameters[first].group), this);
  kit::SetHelpContext(*group, kControls[first].help);
  auto* const grid = new QGridLayout(group);
  grid->setContentsMargins(kWide, kHalf, kWide, kHalf);
  grid->setHorizontalSpacing(kGrid);
  grid->setVerticalSpacing(0);
  for (std::size_t index = first; index < last; ++index) {
    m_rows[index].line = 2 * static_cast<int>(index - first);
    MakeRow(*group, index);
  }
  return group;
}

void ConfigFrame::MakeRow(QWidget& group, std::size_t index) {
  const core::motion::DetectionParameter& parameter = core::motion::kDetectionParameters[index];
  const ControlNames& names = kControls[index];
  Row& row = m_rows[index];
  row.slider = new ParameterSlider(parameter.minimum, parameter.maximum, parameter.step, names.round, &group);
  row.slider->setObjectName(names.slider);
  row.slider->setAccessibleName(tr("%1, %2").arg(Text(parameter.caption), Text(parameter.group)));
  row.slider->setPageStep(kLargeStep);
  row.caption = kit::MakeLabel("", kit::TextStyle::Plain, Text(parameter.caption), &group);
  row.caption->setBuddy(row.slider);
  row.hint = kit::MakeLabel("", kit::TextStyle::Soft, tr(names.hint), &group);
  row.hint->setWordWrap(true);
  row.caption->setToolTip(row.hint->text());
  row.state = kit::MakeLabel(names.state, kit::TextStyle::Plain, "", &group);
  row.state->setForegroundRole(QPalette::Link);
  row.label = kit::MakeLabel(names.label, kit::TextStyle::Plain, "", &group);
  row.label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  row.label->setMinimumWidth(row.label->fontMetrics().horizontalAdvance("0000"));
  connect(row.slider, &QSlider::valueChanged, this, [this, index](int value) { SetValue(index, value); });
}

void ConfigFrame::PlaceRow(std::size_t index) {
  Row& row = m_rows[index];
  auto& grid = *static_cast<QGridLayout*>(row.slider->parentWidget()->layout());
  const bool isWide = *m_isWide;
  grid.setRowMinimumHeight(row.line, row.caption->sizeHint().height() + kHalf);
  grid.addWidget(row.caption, row.line, 0);
  grid.addWidget(row.label, row.line, 2);
  if (isWide) {
    delete std::exchange(row.foot, nullptr);
    grid.addWidget(row.slider, row.line, 1);
    auto* const foot = new QHBoxLayout;
    // As high with a text in it as without one.
    foot->addStrut(row.state->fontMetrics().height());
    foot->addWidget(row.hint, 1);
    foot->addStretch();
    foot->addWidget(row.state);
    grid.addLayout(foot, row.line + 1, 0, 1, 3);
    row.foot = foot;
  } else {
    grid.addWidget(row.state, row.line, 1);
    grid.addWidget(row.slider, row.line + 1, 0, 1, 3);
    delete std::exchange(row.foot, nullptr);
  }
  // All sliders begin at the same place.
  grid.setColumnMinimumWidth(0, isWide ? WidestCaption() : 0);
  grid.setColumnStretch(0, isWide ? 0 : 1);
  grid.setColumnStretch(1, isWide ? 1 : 0);
  row.caption->setWordWrap(isWide);
  row.slider->SetNarrow(isWide);
  row.hint->setVisible(isWide && m_isHigh);
}

int ConfigFrame::WidestCaption() const {
  int widest = 0;
  for (const Row& row : m_rows)
    widest = std::max(widest, row.caption->fontMetrics().horizontalAdvance(row.caption->text()));
  return std::min(widest + kHalf, kWidestCaption);
}

void ConfigFrame::Arrange(const QSize& size) {
  const bool isWide = size.width() >= kWideWindow;
  const bool isHigh = size.height() >= kHighWindow;
  if (m_isWide == isWide && m_isHigh == isHigh) return;
  m_isWide = isWide;
  m_isHigh = isHigh;
  m_columns->addWidget(m_sensorShelf, 0, 0, isWide ? 2 : 1, 1);
  m_columns->addWidget(m_shelf, 0, isWide ? 1 : 0);
  m_columns->addWidget(m_foot, 1, isWide ? 1 : 0);
  // Alone it ends where everything else does.
  m_sensor->layout()->setContentsMargins(0, 0, isWide ? 0 : kScrollRoom, 0);
  m_columns->setColumnStretch(0, isWide ? 6 : 1);
  m_columns->setColumnStretch(1, isWide ? 5 : 0);
  for (std::size_t index = 0; index < m_rows.size(); ++index) PlaceRow(index);
  m_turn->setVisible(!isWide);
  Turn(m_isTurned);
}

void ConfigFrame::Turn(bool toSensor) {
  m_isTurned = toSensor;
  m_turn->setText(toSensor ? tr("Back to the sliders") : tr("See what the sensor sees"));
  m_shelf->setVisible(*m_isWide || !toSensor);
  m_sensorShelf->setVisible(*m_isWide || toSensor);
}

QBoxLayout* ConfigFrame::MakeButtons() {
  auto* const send = MakeButton("SendCmdBtn", tr("SEND Configuration"), *this);
  kit::Theme::MakePrimary(*send);
  auto* const defaults = MakeButton("DefaultBtn", tr("Factory Default"), *this);
  auto* const close = MakeButton("CloseCfgBtn", tr("CLOSE Window"), *this);
  auto* const buttons = new QHBoxLayout;
  buttons->setContentsMargins(0, 0, kScrollRoom, 0);
  buttons->setSpacing(kGrid);
  buttons->addWidget(defaults);
  buttons->addStretch(1);
  buttons->addWidget(close);
  buttons->addWidget(send);
  connect(send, &QPushButton::clicked, this, &ConfigFrame::sendRequested);
  connect(defaults, &QPushButton::clicked, this, &ConfigFrame::ShowFactoryDefaults);
  connect(close, &QPushButton::clicked, this, &ConfigFrame::hide);
  return buttons;
}

void ConfigFrame::SetValue(std::size_t index, std::int32_t value) {
  const Row& row = m_rows[index];
  // The board counts the flash period in steps of its own.
  row.slider->setValue(
      index == kFlashPeriod ? core::motion::FlashPeriodMilliseconds(core::motion::FlashPeriodUnits(value)) : value);
  row.label->setText(QString::number(row.slider->value()));
  ShowState(index);
  ShowSummary();
}

void ConfigFrame::ShowFactoryDefaults() {
  for (std::size_t index = 0; index < m_rows.size(); ++index)
    SetValue(index, core::motion::kDetectionParameters[index].factoryDefault);
}

void ConfigFrame::ShowValues(const core::device::AccParam& board, std::uint16_t revision, Moved moved) {
  for (std::size_t index = 0; index < m_rows.size(); ++index) {
    Row& row = m_rows[index];
    const core::motion::DetectionParameter& parameter = core::motion::kDetectionParameters[index];
    const bool known = index != kFlashPeriod || core::motion::HasFlashPeriod(revision);
    if (moved == Moved::Replace || row.unmoved == row.slider->value())
      SetValue(index, known ? core::motion::ShownValue(parameter, board) : parameter.factoryDefault);
    row.unmoved = row.slider->value();
  }
}

void ConfigFrame::Offer(const core::device::AccParam& values, std::uint16_t revision) {
  for (std::size_t index = 0; index < m_rows.size(); ++index)
    if (index != kFlashPeriod || core::motion::HasFlashPeriod(revision))
      SetValue(index, core::motion::ShownValue(core::motion::kDetectionParameters[index], values));
}

void ConfigFrame::ShowKnown(const core::motion::KnownValues& known, std::uint16_t revision) {
  m_known = known;
  m_revision = revision;
  if (!core::motion::HasFlashPeriod(revision))
    SetValue(kFlashPeriod, core::motion::kDetectionParameters[kFlashPeriod].factoryDefault);
  for (std::size_t index = 0; index < m_rows.size(); ++index) {
    m_rows[index].slider->SetMark(HeldBy(index));
    ShowState(index);
  }
  m_read->setVisible(known.From() != core::motion::KnownValues::Source::Told);
  m_keptNotice->setVisible(known.Kept().has_value());
  ShowSummary();
}

std::optional<std::int32_t> ConfigFrame::HeldBy(std::size_t index) const {
  if (!m_known.Held() || (index == kFlashPeriod && !core::motion::HasFlashPeriod(m_revision))) return std::nullopt;
  return core::motion::ShownValue(core::motion::kDetectionParameters[index], *m_known.Held());
}

bool ConfigFrame::IsUnsent(std::size_t index) const {
  if (index == kFlashPeriod && !core::motion::HasFlashPeriod(m_revision)) return false;
  return HeldBy(index) != m_rows[index].slider->value();
}

bool ConfigFrame::HasUnsent() const {
  for (std::size_t index = 0; index < m_rows.size(); ++index)
    if (IsUnsent(index)) return true;
  return false;
}

QStringList ConfigFrame::Unsaved() const {
  QStringList unsaved;
  for (std::size_t index = 0; index < m_rows.size(); ++index) {
    const ParameterSlider& slider = *m_rows[index].slider;
    const auto& kept = m_known.Kept();
    const bool isKept =
        kept && core::motion::ShownValue(core::motion::kDetectionParameters[index], *kept) == slider.value();
    if (slider.value() != m_rows[index].unmoved && IsUnsent(index) && !isKept)
      unsaved.append(tr("%1: %2").arg(slider.accessibleName()).arg(slider.value()));
  }
  return unsaved;
}

void ConfigFrame::ShowState(std::size_t index) {
  const Row& row = m_rows[index];
  const bool unsent = IsUnsent(index);
  row.state->setText(unsent ? tr("not sent") : QString());
  // An empty one would be read out as well.
  row.state->setVisible(unsent);
  const auto held = HeldBy(index);
  const QString fact = held ? tr("The board holds %1.").arg(*held) : QString();
  row.state->setToolTip(unsent ? fact : QString());
  row.slider->setAccessibleDescription(unsent ? (tr("Not sent.") + ' ' + fact).trimmed() : fact);
}

void ConfigFrame::ShowSummary() {
  using Source = core::motion::KnownValues::Source;
  const bool unsent = HasUnsent();
  QString text;
  switch (m_known.From()) {
    case Source::Unread:
      text = m_known.Kept() ? tr("What the board holds now is not known.")
                            : tr("The board's values could not be read: the sliders do not show what it holds.");
      break;
    case Source::Accepted:
      text = tr("The board has taken the values that ▲ marks, but has not told since what it holds.");
      break;
    case Source::Told:
      text = unsent ? tr("▲ marks what the board holds. Values that are \"not sent\" are on the sliders only.")
                    : tr("The board holds these values.");
      break;
  }
  m_summary->setText(text);
  m_summary->setForegroundRole(m_known.From() == Source::Told ? QPalette::PlaceholderText : QPalette::BrightText);
}

void ConfigFrame::ShowSensor(const core::motion::SensorRecord& record) {
  const core::motion::ThresholdAdvice advice = core::motion::ThresholdAdvice::Of(record.Trial());
  m_sensor->Show(record);
  m_sensor->SetSuggestion(advice.threshold);
  m_rows[kImpactThreshold].slider->SetSuggestion(advice.threshold);
  m_suggestion->Show(advice);
  m_foot->setVisible(!m_suggestion->isHidden());
}

void ConfigFrame::SaySensor(const QString& text, bool canAskAgain) { m_sensor->Say(text, canAskAgain); }

bool ConfigFrame::IsSensorSeen() const { return m_sensor->isVisible() && !window()->isMinimized(); }

void ConfigFrame::Open(std::uint16_t revision) {
  const bool flashes = core::motion::HasFlashPeriod(revision);
  const Row& period = m_rows[kFlashPeriod];
  period.slider->setEnabled(flashes);
  period.label->setEnabled(flashes);
  period.slider->setToolTip(flashes ? QString() : tr("This board has no adjustable flash period."));
  if (parentWidget() != m_ground) {
    m_ground = parentWidget();
    m_ground->installEventFilter(this);
  }
  Arrange(window()->size());
  // The sheet asks at once how large the panel is, and what has changed while it was hidden is told to nobody.
  for (const Row& row : m_rows) row.slider->parentWidget()->layout()->activate();
  for (Shelf* const shelf : {m_shelf, m_sensorShelf}) shelf->Measure();
  m_columns->invalidate();
  show();
  m_rows.front().slider->setFocus();
}

core::device::AccParam ConfigFrame::Values() const {
  core::device::AccParam values;
  for (std::size_t index = 0; index < m_rows.size(); ++index)
    core::motion::SetShownValue(core::motion::kDetectionParameters[index], values, m_rows[index].slider->value());
  return values;
}

void ConfigFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    hide();
  else
    Card::keyPressEvent(event);
}

bool ConfigFrame::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_ground && event->type() == QEvent::Resize) Arrange(window()->size());
  return Card::eventFilter(watched, event);
}

}  // namespace kestrin::ui::motion
