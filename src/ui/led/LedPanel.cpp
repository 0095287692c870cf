#include "ui/led/LedPanel.h"

#include <QColor>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/led/LedSettingsFile.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/TopicOf.h"
#include "ui/led/DriverFrame.h"
#include "ui/led/Metrics.h"
#include "ui/led/PickColorFrame.h"
#include "ui/led/PulseFacts.h"
#include "ui/led/PulseShape.h"
#include "ui/led/SystemColor.h"

namespace kestrin::ui::led {

namespace {

constexpr const char* kSuffix = "ldset";
/// The flash is shown again and again, with so many milliseconds of the idle pulse's colour in between.
constexpr int kFlashRest = 1200;

QString Text(const std::string& text) { return QString::fromStdString(text); }
QString Text(const std::filesystem::path& path) { return QString::fromStdU16String(path.generic_u16string()); }

Levels LevelsOf(const core::led::LED_Pulse& pulse, std::int16_t (core::led::LED_Pulse::*get)(int) const) {
  Levels levels{};
  for (int channel = 1; channel <= core::led::LED_Pulse::kChannels; ++channel)
    levels.at(static_cast<std::size_t>(channel - 1)) = (pulse.*get)(channel);
  return levels;
}

}  // namespace

LedPanel::LedPanel(const Surroundings& surroundings, QWidget* parent)
    : QWidget(parent), m_around(surroundings), m_setup(surroundings.programFolder, surroundings.board, *this) {
  setObjectName(QStringLiteral("frmLED"));
  setAccessibleName(QLatin1String(kCaption));
  kit::SetHelpContext(*this, kit::HelpContext::LedFrame);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(2 * kGrid, kGrid, 2 * kGrid, 2 * kGrid);
  column->setSpacing(kGrid);
  AddHead(*column);
  m_driver = new DriverFrame(m_around.pictures, this);
  column->addWidget(m_driver);
  AddPulses(*column);
  m_picker = new PickColorFrame(this);
  Connect();
  SetTabOrder();
  SetOnline(false);
  ShowPulses();
}

void LedPanel::AddHead(QBoxLayout& layout) {
  auto* const caption = new QLabel(QLatin1String(kCaption), this);
  caption->setObjectName(QStringLiteral("LEDCaption"));
  QFont bold = caption->font();
  bold.setBold(true);
  caption->setFont(bold);
  m_notice = new QLabel(this);
  m_notice->setObjectName(QStringLiteral("LEDNotice"));
  m_notice->setWordWrap(true);
  // The name of a file, however long, must not widen the window.
  m_notice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  m_notice->setTextFormat(Qt::PlainText);
  // The theme's colour for what went wrong.
  m_notice->setForegroundRole(QPalette::BrightText);
  m_bringBack = new QPushButton(tr("Bring back unsent pulses"), this);
  m_bringBack->setObjectName(QStringLiteral("btnBringBackLED"));
  m_bringBack->setToolTip(tr("Show the pulses that were on this page before the board came online"));
  kit::SetHelpContext(*m_bringBack, kit::HelpContext::LedSettings);
  m_bringBack->hide();
  m_open = MakeFileButton("btnOpenLED", tr("Open settings"), tr("Open LED settings"), "open");
  m_save = MakeFileButton("btnSaveLED", tr("Save settings"), tr("Save the LED settings"), "save");
  auto* const head = new QHBoxLayout;
  head->setSpacing(kGrid);
  head->addWidget(caption);
  head->addSpacing(kGrid);
  head->addWidget(m_notice, 1);
  head->addWidget(m_bringBack);
  head->addWidget(m_open);
  head->addWidget(m_save);
  layout.addLayout(head);
}

QPushButton* LedPanel::MakeFileButton(const char* name, const QString& text, const QString& purpose,
                                      const char* picture) {
  auto* const button = new QPushButton(text, this);
  button->setObjectName(QLatin1String(name));
  button->setAccessibleName(purpose);
  button->setToolTip(purpose);
  const QString file = QLatin1String(picture);
  button->setIcon(m_around.pictures.Icon(file + QStringLiteral(".bmp"), file + QStringLiteral("_off.bmp")));
  button->setIconSize({kPicture, kPicture});
  kit::SetHelpContext(*button, kit::HelpContext::LedSettings);
  return button;
}

void LedPanel::AddPulses(QBoxLayout& layout) {
  m_idle = new PulseFrame(IdleFacts(), m_around.pictures, this);
  m_foc = new PulseFrame(FocFacts(), m_around.pictures, this);
  auto* const row = new QHBoxLayout;
  row->setSpacing(2 * kGrid);
  row->addWidget(m_idle, 1);
  row->addWidget(m_foc, 1);
  layout.addLayout(row, 1);
}

void LedPanel::Connect() {
  connect(m_bringBack, &QPushButton::clicked, this, [this] { m_around.run([this] { m_setup.BringBack(); }); });
  connect(m_open, &QPushButton::clicked, this, [this] { m_around.run([this] { OpenFile(); }); });
  connect(m_save, &QPushButton::clicked, this, [this] { m_around.run([this] { SaveFile(); }); });

  connect(m_driver, &DriverFrame::typeChosen, this,
          [this](const QByteArray& name) { m_around.run([this, name] { m_setup.ChooseType(name.toStdString()); }); });
  connect(m_driver, &DriverFrame::overdriveMoved, this, [this] { m_setup.OverdriveMoved(); });
  connect(m_driver, &DriverFrame::updateRequested, this, [this] { m_around.run([this] { UpdateLED(); }); });

  connect(m_idle, &PulseFrame::levelRequested, this, [this](std::size_t button) {
    m_opener = &m_idle->LevelButton(button);
    m_picker->SetSubject(button == kHighButton ? tr("Idle Pulse, high level") : tr("Idle Pulse, low level"));
    if (button == kHighButton)
      m_setup.EditPulseHigh();
    else
      m_setup.EditPulseLow();
  });
  connect(m_foc, &PulseFrame::levelRequested, this, [this](std::size_t button) {
    m_opener = &m_foc->LevelButton(button);
    m_picker->SetSubject(tr("Flash on Clash"));
    m_setup.EditFocHigh();
  });
  connect(m_idle, &PulseFrame::boxLeft, this, [this](std::size_t box) { m_setup.TimeBoxLeft(kIdleBoxes.at(box)); });
  connect(m_foc, &PulseFrame::boxLeft, this, [this](std::size_t box) {
    if (box == kRepeatBox)
      m_setup.RepeatBoxLeft();
    else
      m_setup.TimeBoxLeft(kFocBoxes.at(box));
  });
  connect(m_idle, &PulseFrame::boxStepped, this,
          [this](std::size_t box, int steps) { StepTime(kIdleBoxes.at(box), steps); });
  connect(m_foc, &PulseFrame::boxStepped, this, [this](std::size_t box, int steps) {
    if (box == kRepeatBox)
      StepRepeat(steps);
    else
      StepTime(kFocBoxes.at(box), steps);
  });
  for (PulseFrame* const frame : {m_idle, m_foc}) connect(frame, &PulseFrame::textChanged, this, &LedPanel::ShowShapes);
  connect(m_idle, &PulseFrame::sendRequested, this, [this] { m_around.run([this] { SendPulse(); }); });
  connect(m_foc, &PulseFrame::sendRequested, this, [this] { m_around.run([this] { SendFoc(); }); });

  connect(m_picker, &PickColorFrame::levelsChanged, this, &LedPanel::ShowPickerLight);
  connect(m_picker, &PickColorFrame::pickColorRequested, this,
          [this] { m_around.run([this] { m_setup.PickColor(); }); });
  connect(m_picker, &PickColorFrame::applyRequested, this,
          [this] { m_around.run([this] { m_setup.PickColorApply(); }); });
  connect(m_picker, &PickColorFrame::okRequested, this, [this] { m_setup.PickColorOK(); });
  connect(m_picker, &PickColorFrame::cancelRequested, this, [this] { m_setup.PickColorCancel(); });
}

void LedPanel::SetTabOrder() {
  // As the eye goes: what is fitted, the pulses, their files.
  QWidget* last = nullptr;
  for (QWidget* const group :
       {static_cast<QWidget*>(m_driver), static_cast<QWidget*>(m_idle), static_cast<QWidget*>(m_foc)}) {
    for (QWidget* const control : group->findChildren<QWidget*>()) {
      if ((control->focusPolicy() & Qt::TabFocus) == 0 || control->window() != window()) continue;
      if (last != nullptr) setTabOrder(last, control);
      last = control;
    }
  }
  setTabOrder(last, m_bringBack);
  setTabOrder(m_bringBack, m_open);
  setTabOrder(m_open, m_save);
}

bool LedPanel::InitLedDrivers() {
  // It shows a pulse that is about to be replaced.
  ShowPicker(false);
  const bool unsaved = m_setup.HasUnsaved();
  const bool valid = m_setup.InitLedDrivers();
  ShowNotice(Text(m_setup.Problem()));
  if (valid && unsaved)
    emit news(tr("The page shows the board's pulses. Yours were not sent: \"Bring back unsent pulses\" shows them."));
  return valid;
}

bool LedPanel::MayClose() {
  if (!m_setup.HasUnsaved() && !m_setup.HasSetAside()) return true;
  return MayLose(tr("Light pulses of the LED driver were neither sent nor saved.\nClose the window and lose them?"),
                 m_setup.HasSetAside()
                     ? tr("Cancel goes back to the window. \"Bring back unsent pulses\" shows those of before.")
                     : tr("Cancel goes back to the window. \"Save settings\" keeps them in a file."));
}

bool LedPanel::MayLose(const QString& question, const QString& advice) {
  return m_around.dialogs.AskOkCancel(question, advice, kit::Dialogs::Harmless::Cancel, kit::HelpContext::LedSettings);
}

void LedPanel::ShowUnsent() {
  m_idle->ShowSent(m_setup.IsSent(core::ledsetup::LedSetup::kIdlePulse));
  m_foc->ShowSent(m_setup.IsSent(core::ledsetup::LedSetup::kFocPulse));
  m_bringBack->setVisible(m_setup.HasSetAside());
}

void LedPanel::SetOnline(bool online) {
  const QString whyNot = online ? QString() : tr("No LED driver is connected.");
  m_driver->EnableUpdate(whyNot);
  m_idle->EnableSend(whyNot);
  m_foc->EnableSend(whyNot);
  m_picker->EnableApply(whyNot);
}

void LedPanel::ShowNotice(const QString& text) {
  // The file stands where it always does; what is wrong in it must be in sight.
  QString shown = text;
  m_notice->setText(shown.remove(Text(m_around.programFolder) + QLatin1Char('/')));
  m_notice->setToolTip(text);
}

void LedPanel::OpenFile() {
  const QString path =
      m_around.dialogs.OpenFile(tr("Open LED settings"), Text(m_around.programFolder),
                                kit::QtFileFilter(core::led::LedSettingsFile::kFilter), kit::HelpContext::LedSettings);
  if (path.isEmpty()) return;
  if (m_setup.HasUnsaved() &&
      !MayLose(tr("The light pulses on this page were neither sent nor saved.\nOpen the file and lose them?"),
               tr("Cancel keeps them. \"Save settings\" writes them to a file.")))
    return;
  if (m_setup.LoadSettings(path.toStdU16String()))
    emit news(tr("The LED settings are open. Send the pulses to put them on the board."));
}

void LedPanel::SaveFile() {
  const QString path = m_around.dialogs.SaveFile(tr("Save the LED settings"), Text(m_around.programFolder),
                                                 kit::QtFileFilter(core::led::LedSettingsFile::kFilter), kSuffix,
                                                 kit::HelpContext::LedSettings);
  if (!path.isEmpty() && m_setup.SaveSettings(path.toStdU16String(), m_around.disk))
    emit news(tr("The LED settings are saved."));
}

void LedPanel::UpdateLED() {
  if (!m_setup.UpdateLED()) return;
  ShowNotice(Text(m_setup.Problem()));
  emit news(m_setup.LastFailure() == core::ledsetup::LedSetup::Failure::None
                ? tr("The board has taken LED type and overdrive.")
                : tr("The board has taken LED type and overdrive, but then could not be read."));
}

void LedPanel::SendPulse() {
  if (!m_setup.SendPulse()) return;
  m_idle->Restart();
  ShowSent(m_setup.IdlePulse(), tr("The board has the idle pulse and plays it."));
}

void LedPanel::SendFoc() {
  if (!m_setup.SendFoc()) return;
  m_foc->Restart();
  ShowSent(m_setup.FocPulse(), tr("The board has the flash and plays it."));
}

void LedPanel::ShowSent(const core::led::LED_Pulse& pulse, const QString& text) {
  ShowUnsent();
  emit news(pulse.IsTooLongForBoard() ? tr(core::led::LED_Pulse::kTooLong) : text);
}

void LedPanel::StepTime(core::led::TimeBox box, int steps) {
  SetTimeText(box, core::led::SteppedTime(box, TimeText(box), steps));
}

void LedPanel::StepRepeat(int steps) {
  SetRepeatText(std::to_string(core::led::RepetitionsOf(RepeatText()) + steps));
  m_setup.RepeatBoxLeft();
}

void LedPanel::ShowShapes() {
  const auto time = [this](core::led::TimeBox box) { return core::led::MillisecondsOf(TimeText(box)); };
  core::led::LED_Pulse idle;
  idle.Ton = time(core::led::TimeBox::IdleTON);
  idle.Toff = time(core::led::TimeBox::IdleTOFF);
  idle.Trise = time(core::led::TimeBox::IdleTRISE);
  idle.Tfall = time(core::led::TimeBox::IdleTFALL);
  m_idle->ShowShape(PulseShape::Idle(idle), 0);
  core::led::LED_Pulse foc;
  foc.Ton = time(core::led::TimeBox::FocTON);
  foc.Toff = time(core::led::TimeBox::FocTOFF);
  foc.NRep = core::led::RepetitionsOf(RepeatText());
  m_foc->ShowShape(PulseShape::FlashOnClash(foc), kFlashRest);
  ShowUnsent();
}

void LedPanel::ShowPickerLight() { m_picker->ShowLight(Mix(m_setup.CurrentDriver(), m_picker->AllLevels())); }

void LedPanel::ClearTypes() { m_driver->ClearTypes(); }
void LedPanel::AppendType(const std::string& name) { m_driver->AppendType(QByteArray::fromStdString(name)); }
void LedPanel::SelectType(std::size_t index) { m_driver->SelectType(static_cast<int>(index)); }
void LedPanel::SetChannelLabelColor(int channel, core::led::Color color) { m_driver->SetChannelColor(channel, color); }
void LedPanel::SetOverdriveMaximum(std::int32_t percent) { m_driver->SetOverdriveMaximum(percent); }
void LedPanel::SetOverdrive(std::int32_t percent) { m_driver->SetOverdrive(percent); }
std::int32_t LedPanel::Overdrive() const { return m_driver->Overdrive(); }
void LedPanel::SetOverdriveLabel(const std::string& text) { m_driver->SetOverdriveText(Text(text)); }
std::string LedPanel::OverdriveLabel() const { return m_driver->OverdriveText().toStdString(); }

void LedPanel::SetTimeText(core::led::TimeBox box, const std::string& text) {
  const auto set = [&](PulseFrame& frame, const auto& boxes) {
    const auto* const place = std::find(boxes.begin(), boxes.end(), box);
    if (place != boxes.end()) frame.SetText(static_cast<std::size_t>(place - boxes.begin()), Text(text));
  };
  set(*m_idle, kIdleBoxes);
  set(*m_foc, kFocBoxes);
}

std::string LedPanel::TimeText(core::led::TimeBox box) const {
  const auto* const idle = std::find(kIdleBoxes.begin(), kIdleBoxes.end(), box);
  if (idle != kIdleBoxes.end()) return m_idle->Text(static_cast<std::size_t>(idle - kIdleBoxes.begin())).toStdString();
  const auto* const foc = std::find(kFocBoxes.begin(), kFocBoxes.end(), box);
  return m_foc->Text(static_cast<std::size_t>(foc - kFocBoxes.begin())).toStdString();
}

void LedPanel::SetRepeatText(const std::string& text) { m_foc->SetText(kRepeatBox, Text(text)); }
std::string LedPanel::RepeatText() const { return m_foc->Text(kRepeatBox).toStdString(); }

void LedPanel::ShowPulses() {
  const core::led::LED_Driver& driver = m_setup.CurrentDriver();
  const Levels idleLow = LevelsOf(m_setup.IdlePulse(), &core::led::LED_Pulse::GetLow);
  const Levels idleHigh = LevelsOf(m_setup.IdlePulse(), &core::led::LED_Pulse::GetHigh);
  const Levels flash = LevelsOf(m_setup.FocPulse(), &core::led::LED_Pulse::GetHigh);
  m_idle->ShowLevel(kHighButton, Mix(driver, idleHigh));
  m_idle->ShowLevel(kLowButton, Mix(driver, idleLow));
  m_idle->ShowLevels(driver, idleLow, idleHigh);
  m_foc->ShowLevel(0, Mix(driver, flash));
  m_foc->ShowLevels(driver, idleHigh, flash);
  ShowShapes();
  ShowPickerLight();
  // Without an LED type there is nothing to set.
  const bool hasChannels = driver.NrOfChannels > 0;
  m_idle->EnableLevels(hasChannels);
  m_foc->EnableLevels(hasChannels);
}

void LedPanel::ShowPicker(bool visible) {
  if (visible && m_opener != nullptr)
    m_picker->Open(*m_opener);
  else
    m_picker->Close();
}

bool LedPanel::IsPickerShown() const { return !m_picker->isHidden(); }
void LedPanel::ShowLevelRow(int channel, bool visible) { m_picker->ShowRow(channel, visible); }
void LedPanel::SetLevelLabelColor(int channel, core::led::Color color) { m_picker->SetLabelColor(channel, color); }
void LedPanel::SetLevel(int channel, std::int16_t level) { m_picker->SetLevel(channel, level); }
std::int16_t LedPanel::Level(int channel) const { return static_cast<std::int16_t>(m_picker->Level(channel)); }
void LedPanel::EnablePickColor(bool enabled) { m_picker->EnablePickColor(enabled); }
bool LedPanel::ColorFidelity() const { return m_picker->ColorFidelity(); }

std::optional<core::led::Color> LedPanel::AskColor(core::led::Color preset) {
  const std::optional<QColor> color = m_around.dialogs.AskColor(ToQColor(preset));
  if (!color) return std::nullopt;
  return core::led::RGBToSys(static_cast<std::int16_t>(color->red()), static_cast<std::int16_t>(color->green()),
                             static_cast<std::int16_t>(color->blue()));
}

core::led::Color LedPanel::GetSysColor(std::int32_t number) const { return SystemColor(number, palette()); }

bool LedPanel::Confirm(const std::string& question, const std::string& detail) {
  return m_around.dialogs.AskOkCancel(Text(question), Text(detail), kit::Dialogs::Harmless::Cancel,
                                      kit::HelpContext::LedConfiguration);
}

void LedPanel::ShowCritical(const std::string& text, const std::string& detail) {
  m_around.dialogs.ShowError(Text(text), Text(detail));
}

void LedPanel::ShowInformation(const std::string& text, const std::string& detail) {
  m_around.dialogs.ShowMessage(Text(text), Text(detail));
}

void LedPanel::GoOffline() { emit boardFailed(); }

}  // namespace kestrin::ui::led
