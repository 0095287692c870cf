// SPDX-License-Identifier: MIT
#include "ui/led/LedPanel.h"

#include <QColor>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/led/LedSettingsFile.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/Translated.h"
#include "ui/led/DriverFrame.h"
#include "ui/led/FlowRow.h"
#include "ui/led/LedHead.h"
#include "ui/led/PickColorFrame.h"
#include "ui/led/PulseFacts.h"
#include "ui/led/PulseShape.h"

namespace kestrin::ui::led {

using Part = core::ledsetup::LedSetupPart;
using core::ledsetup::LedSetupState;

namespace {

constexpr const char* kSuffix = "ldset";
/// The flash is shown again and again, with so many milliseconds of the idle pulse's colour in between.
constexpr int kFlashRest = 1200;

Levels LevelsOf(const core::led::PulseContent::Levels& levels) {
  Levels light{};
  std::copy(levels.begin(), levels.end(), light.begin());
  return light;
}

}  // namespace

LedPanel::LedPanel(const Surroundings& surroundings, QWidget* parent)
    : QWidget(parent), m_around(surroundings), m_setup(surroundings.programFolder, surroundings.board, *this) {
  setObjectName(QStringLiteral("frmLED"));
  setAccessibleName(LedHead::tr(LedHead::kCaption));
  kit::SetHelpOfGround(*this, kit::HelpContext::LedFrame);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kit::kWide, kit::kGrid, kit::kWide, kit::kWide);
  column->setSpacing(kit::kGrid);
  m_head = new LedHead(m_around.pictures, kit::TextOf(m_around.programFolder), this);
  column->addWidget(m_head);
  m_driver = new DriverFrame(m_around.pictures, this);
  column->addWidget(m_driver);
  AddPulses(*column);
  m_picker = new PickColorFrame(this);
  Connect();
  SetTabOrder();
  SetOnline(false);
  Show(Part::Pulses, m_setup.State());
}

void LedPanel::AddPulses(QBoxLayout& layout) {
  m_idle = new PulseFrame(PulseFacts::Idle(), m_around.pictures, this);
  m_foc = new PulseFrame(PulseFacts::Foc(), m_around.pictures, this);
  kit::SetHelpOfGround(*m_foc);
  auto* const row = new FlowRow(kit::kWide, kit::kGrid);
  row->Add(m_idle, 1);
  row->Add(m_foc, 1);
  layout.addLayout(row, 1);
}

void LedPanel::Connect() {
  connect(m_head, &LedHead::bringBackRequested, this, [this] { m_around.run([this] { m_setup.BringBack(); }); });
  connect(m_head, &LedHead::openRequested, this, [this] { m_around.run([this] { OpenFile(); }); });
  connect(m_head, &LedHead::saveRequested, this, [this] { m_around.run([this] { SaveFile(); }); });

  connect(m_driver, &DriverFrame::typeChosen, this, [this](int index) {
    const std::string name = m_setup.State().types.at(static_cast<std::size_t>(index));
    m_around.run([this, name] { m_setup.ChooseType(name); });
  });
  connect(m_driver, &DriverFrame::overdriveMoved, this, [this](int percent) { m_setup.OverdriveMoved(percent); });
  connect(m_driver, &DriverFrame::updateRequested, this, [this] { m_around.run([this] { UpdateLED(); }); });
  ConnectPulses();

  connect(m_picker, &PickColorFrame::levelMoved, this,
          [this](int channel, int level) { m_setup.LevelMoved(channel, level); });
  connect(m_picker, &PickColorFrame::colorFidelityChanged, this,
          [this](bool checked) { m_setup.ColorFidelity(checked); });
  connect(m_picker, &PickColorFrame::pickColorRequested, this,
          [this] { m_around.run([this] { m_setup.PickColor(); }); });
  connect(m_picker, &PickColorFrame::applyRequested, this,
          [this] { m_around.run([this] { m_setup.PickColorApply(); }); });
  connect(m_picker, &PickColorFrame::okRequested, this, [this] { m_setup.PickColorOK(); });
  connect(m_picker, &PickColorFrame::cancelRequested, this, [this] { m_setup.PickColorCancel(); });
}

void LedPanel::ConnectPulses() {
  connect(m_idle, &PulseFrame::levelRequested, this, [this](std::size_t button) {
    if (button == kHighButton)
      m_setup.EditPulseHigh();
    else
      m_setup.EditPulseLow();
  });
  connect(m_foc, &PulseFrame::levelRequested, this, [this](std::size_t) { m_setup.EditFocHigh(); });
  connect(m_idle, &PulseFrame::typed, this,
          [this](std::size_t box, double number) { m_setup.TimeTyped(kIdleBoxes.at(box), number); });
  connect(m_idle, &PulseFrame::boxLeft, this, [this](std::size_t box) { m_setup.TimeBoxLeft(kIdleBoxes.at(box)); });
  connect(m_idle, &PulseFrame::boxStepped, this,
          [this](std::size_t box, int steps) { m_setup.TimeStepped(kIdleBoxes.at(box), steps); });
  connect(m_foc, &PulseFrame::typed, this, [this](std::size_t box, double number) {
    if (box == kRepeatBox)
      m_setup.RepeatTyped(number);
    else
      m_setup.TimeTyped(kFocBoxes.at(box), number);
  });
  connect(m_foc, &PulseFrame::boxLeft, this, [this](std::size_t box) {
    if (box == kRepeatBox)
      m_setup.RepeatBoxLeft();
    else
      m_setup.TimeBoxLeft(kFocBoxes.at(box));
  });
  connect(m_foc, &PulseFrame::boxStepped, this, [this](std::size_t box, int steps) {
    if (box == kRepeatBox)
      m_setup.RepeatStepped(steps);
    else
      m_setup.TimeStepped(kFocBoxes.at(box), steps);
  });
  connect(m_idle, &PulseFrame::sendRequested, this, [this] { m_around.run([this] { SendPulse(); }); });
  connect(m_foc, &PulseFrame::sendRequested, this, [this] { m_around.run([this] { SendFoc(); }); });
}

void LedPanel::SetTabOrder() {
  // As the eye goes: what is fitted, the pulses, their files.
  QWidget* last = nullptr;
  for (QWidget* const group : {static_cast<QWidget*>(m_driver), static_cast<QWidget*>(m_idle),
                               static_cast<QWidget*>(m_foc), static_cast<QWidget*>(m_head)}) {
    for (QWidget* const control : group->findChildren<QWidget*>()) {
      if ((control->focusPolicy() & Qt::TabFocus) == 0 || control->window() != window()) continue;
      if (last != nullptr) setTabOrder(last, control);
      last = control;
    }
  }
}

core::base::Result<> LedPanel::InitLedDrivers() {
  // It shows a pulse that is about to be replaced.
  m_setup.PickColorCancel();
  const bool unsaved = m_setup.HasUnsaved();
  core::base::Result<> read = m_setup.InitLedDrivers();
  m_head->ShowNotice(kit::Translated(read.Text()));
  if (read && unsaved)
    emit news(tr("The page shows the board's pulses. Yours were not sent: \"Bring back unsent pulses\" shows them."));
  return read;
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

void LedPanel::SetOnline(bool online) {
  const QString whyNot = online ? QString() : tr("No LED driver is connected.");
  m_driver->EnableUpdate(whyNot);
  m_idle->EnableSend(whyNot);
  m_foc->EnableSend(whyNot);
  m_picker->EnableApply(whyNot);
  m_head->SetOnline(online);
}

void LedPanel::OpenFile() {
  const QString path =
      m_around.dialogs.OpenFile(tr("Open LED settings"), kit::TextOf(m_around.programFolder),
                                kit::QtFileFilter(core::led::LedSettingsFile::kFilter), kit::HelpContext::LedSettings);
  if (!path.isEmpty()) Load(kit::PathOf(path));
}

void LedPanel::OpenPath(const std::filesystem::path& path) {
  m_around.run([this, path] { Load(path); });
}

void LedPanel::Load(const std::filesystem::path& path) {
  if (m_setup.HasUnsaved() &&
      !MayLose(tr("The light pulses on this page were neither sent nor saved.\nOpen the file and lose them?"),
               tr("Cancel keeps them. \"Save settings\" writes them to a file.")))
    return;
  if (m_setup.LoadSettings(path)) emit news(tr("The LED settings are open. Send the pulses to put them on the board."));
}

void LedPanel::SaveFile() {
  const QString path = m_around.dialogs.SaveFile(tr("Save the LED settings"), kit::TextOf(m_around.programFolder),
                                                 kit::QtFileFilter(core::led::LedSettingsFile::kFilter), kSuffix,
                                                 kit::HelpContext::LedSettings);
  if (!path.isEmpty() && m_setup.SaveSettings(kit::PathOf(path), m_around.disk))
    emit news(tr("The LED settings are saved."));
}

void LedPanel::UpdateLED() {
  if (!m_setup.UpdateLED()) return;
  const core::base::Result<>& reading = m_setup.State().reading;
  m_head->ShowNotice(kit::Translated(reading.Text()));
  emit news(reading ? tr("The board has taken LED type and overdrive.")
                    : tr("The board has taken LED type and overdrive, but then could not be read."));
}

void LedPanel::SendPulse() {
  if (!m_setup.SendPulse()) return;
  m_idle->Restart();
  TellSent(m_setup.State().IdlePulse, tr("The board has the idle pulse and plays it."));
}

void LedPanel::SendFoc() {
  if (!m_setup.SendFoc()) return;
  m_foc->Restart();
  TellSent(m_setup.State().FocPulse, tr("The board has the flash and plays it."));
}

void LedPanel::TellSent(const core::led::LED_Pulse& pulse, const QString& text) {
  emit news(pulse.IsTooLongForBoard() ? kit::Translated(core::led::LED_Pulse::kTooLong) : text);
}

void LedPanel::Show(Part part, const LedSetupState& state) {
  switch (part) {
    case Part::Types:
      m_driver->ShowTypes(state);
      break;
    case Part::Channels:
      m_driver->ShowChannels(state);
      break;
    case Part::Overdrive:
      m_driver->ShowOverdrive(state);
      break;
    case Part::IdleTimes:
      for (std::size_t i = 0; i < kIdleBoxes.size(); ++i) m_idle->ShowNumber(i, state.Time(kIdleBoxes[i]));
      break;
    case Part::FocTimes:
      for (std::size_t i = 0; i < kFocBoxes.size(); ++i) m_foc->ShowNumber(i, state.Time(kFocBoxes[i]));
      m_foc->ShowNumber(kRepeatBox, state.repetitions);
      break;
    case Part::Pulses:
      ShowPulses(state);
      break;
    case Part::Picker:
      ShowPicker(state);
      break;
    case Part::PickerRows:
      m_picker->ShowRows(state);
      break;
    case Part::Levels:
      m_picker->ShowLevels(state);
      break;
  }
}

void LedPanel::ShowPulses(const LedSetupState& state) {
  const core::led::LED_Driver& driver = state.CurrentDriver;
  const core::led::Pulses shown = state.Shown();
  const core::led::PulseContent& idle = shown[core::led::kIdlePulse];
  const core::led::PulseContent& foc = shown[core::led::kFocPulse];
  m_idle->ShowLevel(kHighButton, Mix(driver, LevelsOf(idle.high)));
  m_idle->ShowLevel(kLowButton, Mix(driver, LevelsOf(idle.low)));
  m_idle->ShowLevels(driver, LevelsOf(idle.low), LevelsOf(idle.high));
  m_idle->ShowShape(PulseShape::Idle(idle), 0);
  m_foc->ShowLevel(kHighButton, Mix(driver, LevelsOf(foc.high)));
  m_foc->ShowLevels(driver, LevelsOf(idle.high), LevelsOf(foc.high));
  m_foc->ShowShape(PulseShape::FlashOnClash(foc), kFlashRest);
  // The LED type may be another one, and without one there is nothing to set.
  m_picker->ShowLevels(state);
  m_idle->EnableLevels(state.Channels() > 0);
  m_foc->EnableLevels(state.Channels() > 0);

  m_idle->ShowSent(m_setup.IsSent(core::led::kIdlePulse));
  m_foc->ShowSent(m_setup.IsSent(core::led::kFocPulse));
  m_head->OfferBringBack(m_setup.HasSetAside());
  emit pulsesShown();
}

void LedPanel::ShowPicker(const LedSetupState& state) {
  const LedSetupState::Picker& picker = state.picker;
  if (!picker.isShown) {
    m_picker->Close();
    return;
  }
  const bool isFoc = picker.EditedPulse == core::led::kFocPulse;
  PulseFrame& frame = isFoc ? *m_foc : *m_idle;
  m_picker->SetSubject(isFoc             ? tr("Flash on Clash")
                       : picker.EditHigh ? tr("Idle Pulse, high level")
                                         : tr("Idle Pulse, low level"));
  m_picker->ShowLevels(state);
  m_picker->ShowRows(state);
  m_picker->Open(frame.LevelButton(picker.EditHigh ? kHighButton : kLowButton));
}

std::optional<core::led::Color> LedPanel::AskColor(core::led::Color preset) {
  const std::optional<QColor> color = m_around.dialogs.AskColor(ToQColor(preset));
  if (!color) return std::nullopt;
  return core::led::RGBToSys(static_cast<std::int16_t>(color->red()), static_cast<std::int16_t>(color->green()),
                             static_cast<std::int16_t>(color->blue()));
}

bool LedPanel::Confirm(const std::string& question, const std::string& detail) {
  return m_around.dialogs.AskOkCancel(kit::Translated(question), kit::Translated(detail),
                                      kit::Dialogs::Harmless::Cancel, kit::HelpContext::LedConfiguration);
}

void LedPanel::ShowCritical(const std::string& text, const std::string& detail) {
  m_around.dialogs.ShowError(kit::Translated(text), kit::Translated(detail));
}

void LedPanel::ShowInformation(const std::string& text, const std::string& detail) {
  m_around.dialogs.ShowMessage(kit::Translated(text), kit::Translated(detail));
}

void LedPanel::GoOffline() { emit boardFailed(); }

}  // namespace kestrin::ui::led
