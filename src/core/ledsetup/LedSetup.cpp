// SPDX-License-Identifier: MIT
#include "ledsetup/LedSetup.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "base/Numbers.h"
#include "led/ColorLevels.h"
#include "led/LedSettingsFile.h"
#include "led/LevelCounts.h"

namespace kestrin::core::ledsetup {

using base::Failure;
using base::FailureKind;
using Part = LedSetupPart;

LedSetup::LedSetup(const std::filesystem::path& programFolder, BoardLookup board, LedSetupView& view)
    : m_catalogue(programFolder), m_board(std::move(board)), m_view(view) {}

// --- Reading the LED settings ---

base::Result<> LedSetup::InitLedDrivers() {
  ReadAndShow(Unsaved::SetAside);
  return m_state.reading;
}

void LedSetup::ReadAndShow(Unsaved unsaved) {
  m_state.reading = ReadSettings(unsaved);
  Show(Part::Pulses);
}

base::Result<> LedSetup::ReadSettings(Unsaved unsaved) {
  std::int32_t code = 0;
  double voltage = 0;
  std::int32_t overDrive = 0;
  base::Result<> read = AskBoard([&](device::TLS& board) { return board.GetLEDConfig(code, voltage, overDrive); });
  if (read) read = FillTypes(code);
  if (!read) return read;
  // The record was valid a moment ago; what can still go wrong, SelectLED tells itself.
  static_cast<void>(SelectLED(m_state.types.at(m_state.type.value()), voltage, overDrive));

  if (unsaved == Unsaved::SetAside && HasUnsaved()) m_setAside = m_state.Shown();
  read = ReadPulses();
  // Also after a failure: nothing of the person's is left in them.
  m_known.Told(m_state.Shown());
  return read;
}

base::Result<> LedSetup::ReadPulses() {
  m_state.IdlePulse = {};
  base::Result<> read =
      AskBoard([&](device::TLS& board) { return board.GetLEDPulses(led::kIdlePulse, m_state.IdlePulse); });
  if (!read) return read;
  m_state.FillIdleBoxes();
  Show(Part::IdleTimes);
  m_state.FocPulse = {};
  read = AskBoard([&](device::TLS& board) { return board.GetLEDPulses(led::kFocPulse, m_state.FocPulse); });
  if (!read) return read;
  m_state.FillFocBoxes();
  Show(Part::FocTimes);
  return read;
}

base::Result<> LedSetup::AskBoard(const std::function<bool(device::TLS&)>& question) {
  device::TLS* const board = m_board();
  if (board != nullptr && question(*board)) return {};
  return Failure{FailureKind::NoAnswer, "The LED driver did not answer. Unplug it and plug it in again."};
}

base::Result<> LedSetup::FillTypes(std::int32_t boardCode) {
  base::Result<> usable = m_catalogue.Read();
  if (usable) usable = m_catalogue.CheckHeader();
  // Whatever is wrong with its file.
  if (!usable) return Failure{FailureKind::NotValid, usable.Text()};
  m_state.types.clear();
  m_state.type.reset();
  // A negative code comes back as the 16 bits that went out.
  const auto wanted = static_cast<std::uint16_t>(boardCode);
  for (const led::LedCatalogue::Record& record : m_catalogue.Records()) {
    if (!record.type) {
      m_state.types.clear();
      m_state.type.reset();
      Show(Part::Types);
      return record.type.Why();
    }
    if (static_cast<std::uint16_t>(record.type->LedCode) == wanted) m_state.type = m_state.types.size();
    m_state.types.push_back(record.type->LEDName);
  }
  Show(Part::Types);
  if (m_state.type) return {};
  const std::string file = led::LedCatalogue::kFileName;
  return Failure{FailureKind::NotValid, m_state.types.empty()
                                            ? file + " has no LED type."
                                            : "The LED driver is set to the LED type with code " +
                                                  std::to_string(boardCode) + ", which " + file + " does not have."};
}

bool LedSetup::SelectLED(const std::string& LEDName, double voltage, std::int32_t overDrive) {
  m_state.channelColors.fill(0);
  base::Result<> valid = m_catalogue.Read();
  for (const led::LedCatalogue::Record& record : m_catalogue.Lines()) {
    if (!record.IsOf(LEDName)) continue;
    if (!record.type) {
      // As far as it can be read it is the current one.
      static_cast<void>(m_state.CurrentDriver.Init(record.text));
      valid = record.type.Why();
      break;
    }
    UseDriver(*record.type, voltage, overDrive);
  }
  Show(Part::Channels);
  if (!valid) m_view.ShowCritical(led::LedCatalogue::kInvalid, valid.Text());
  return static_cast<bool>(valid);
}

void LedSetup::UseDriver(const led::LED_Driver& type, double voltage, std::int32_t& overDrive) {
  m_state.CurrentDriver = type;
  for (int channel = 1; channel <= m_state.Channels(); ++channel)
    m_state.channelColors[static_cast<std::size_t>(channel) - 1] = type.GetChannelColor(channel);
  m_state.CurrentDriver.Voltage = voltage;
  m_state.overdriveMaximum = type.MostOverdrive();
  overDrive = std::min(overDrive, m_state.overdriveMaximum);
  m_state.CurrentDriver.OverDrive = overDrive;
  m_state.overdrive = overDrive;
  Show(Part::Overdrive);
}

// --- Driver configuration ---

void LedSetup::ChooseType(const std::string& LEDName) {
  const auto place = std::find(m_state.types.begin(), m_state.types.end(), LEDName);
  if (place != m_state.types.end()) m_state.type = static_cast<std::size_t>(place - m_state.types.begin());
  Show(Part::Types);
  static_cast<void>(SelectLED(LEDName, kVoltage, m_state.overdrive));
  // A picker that stands open is for the channels of the new type.
  if (m_state.picker.isShown) Show(Part::PickerRows);
  Show(Part::Pulses);
}

void LedSetup::OverdriveMoved(std::int32_t percent) {
  m_state.overdrive = std::clamp(percent, LedSetupState::kLeastOverdrive, m_state.overdriveMaximum);
  Show(Part::Overdrive);
}

bool LedSetup::UpdateLED() {
  const bool unsent = !IsSent(led::kIdlePulse) || !IsSent(led::kFocPulse);
  if (!m_view.Confirm(kWarning, unsent ? kUnsentPulses : "")) return false;
  ClosePicker();
  led::LED_Driver& driver = m_state.CurrentDriver;
  driver.Voltage = kVoltage;
  const std::int32_t overdrive = std::max(m_state.overdrive, LedSetupState::kLeastOverdrive);
  driver.OverDrive = overdrive;
  const bool accepted =
      Command([&](device::TLS& board) { return board.SetLEDConfig(driver.LedCode, driver.Voltage, overdrive); });
  if (accepted) ReadAndShow(Unsaved::Drop);
  return accepted;
}

bool LedSetup::Command(const std::function<bool(device::TLS&)>& command) {
  device::TLS* const board = m_board();
  const bool accepted = board != nullptr && command(*board);
  if (!accepted) m_view.GoOffline();
  return accepted;
}

// --- Colour picker ---

void LedSetup::OpenPicker(std::int32_t pulseId, bool high) {
  m_state.picker.EditedPulse = pulseId;
  m_state.picker.EditHigh = high;
  const led::LED_Pulse& pulse = pulseId == led::kIdlePulse ? m_state.IdlePulse : m_state.FocPulse;
  // Also the hidden ones, so that they hold nothing of another pulse should another LED type bring them to light.
  for (int channel = 1; channel <= led::LED_Driver::kChannels; ++channel)
    SetLevel(channel, high ? pulse.GetHigh(channel) : pulse.GetLow(channel));
  m_state.picker.isShown = true;
  Show(Part::Picker);
}

void LedSetup::ClosePicker() {
  m_state.picker.isShown = false;
  Show(Part::Picker);
}

void LedSetup::SetLevel(int channel, std::int32_t level) {
  m_state.picker.levels.at(static_cast<std::size_t>(channel) - 1) =
      static_cast<std::int16_t>(std::clamp<std::int32_t>(level, 0, led::kFullLevel));
}

void LedSetup::LevelMoved(int channel, std::int32_t level) {
  SetLevel(channel, level);
  Show(Part::Levels);
}

void LedSetup::PickColor() {
  const std::optional<led::Color> picked = m_view.AskColor(m_pickedColor);
  if (!picked) return;
  m_pickedColor = *picked;
  led::PulseContent::Levels& levels = m_state.picker.levels;
  levels = led::LevelsOfColor(*picked, m_state.CurrentDriver, m_state.picker.ColorFidelity, levels);
  Show(Part::Levels);
}

void LedSetup::PickColorApply() {
  const led::LED_Driver& driver = m_state.CurrentDriver;
  std::array<std::int32_t, 1 + 2 * led::LED_Driver::kChannels> values{driver.Period};
  for (int channel = 1; channel <= m_state.Channels(); ++channel) {
    const auto place = static_cast<std::size_t>(channel);
    const led::LevelCounts counts = led::CountsOf(driver, channel, m_state.picker.levels[place - 1]);
    values[2 * place - 1] = counts.on;
    values[2 * place] = counts.off;
  }
  Command([&](device::TLS& board) { return board.SetLEDParam(values); });
}

void LedSetup::PickColorOK() {
  const LedSetupState::Picker& picker = m_state.picker;
  led::LED_Pulse& pulse = picker.EditedPulse == led::kFocPulse ? m_state.FocPulse : m_state.IdlePulse;
  const auto store = picker.EditHigh ? &led::LED_Pulse::SetHigh : &led::LED_Pulse::SetLow;
  for (int channel = 1; picker.EditedPulse && channel <= m_state.Channels(); ++channel)
    (pulse.*store)(channel, picker.levels[static_cast<std::size_t>(channel) - 1]);
  ClosePicker();
  Show(Part::Pulses);
}

// --- Pulses ---

void LedSetup::TimeTyped(led::TimeBox box, double seconds) {
  m_state.Time(box) = seconds;
  Show(Part::Pulses);
}

void LedSetup::TimeStepped(led::TimeBox box, int steps) {
  SetTime(box, led::SteppedTime(box, m_state.Time(box).value_or(0), steps));
}

void LedSetup::TimeBoxLeft(led::TimeBox box) { SetTime(box, led::NormalisedTime(box, m_state.Time(box).value_or(0))); }

void LedSetup::SetTime(led::TimeBox box, double seconds) {
  m_state.Time(box) = seconds;
  Show(box < led::TimeBox::FocTON ? Part::IdleTimes : Part::FocTimes);
  Show(Part::Pulses);
}

void LedSetup::RepeatTyped(double number) {
  m_state.repetitions = number;
  Show(Part::Pulses);
}

void LedSetup::RepeatStepped(int steps) { SetRepetitions(led::RepetitionsOf(m_state.repetitions.value_or(0)) + steps); }

void LedSetup::RepeatBoxLeft() { SetRepetitions(m_state.repetitions.value_or(0)); }

void LedSetup::SetRepetitions(double number) {
  m_state.repetitions = led::NormalisedRepetitions(number);
  Show(Part::FocTimes);
  Show(Part::Pulses);
}

bool LedSetup::SendPulse() {
  m_state.BuildIdlePulse();
  return Send(led::kIdlePulse, m_state.IdlePulse);
}

bool LedSetup::SendFoc() {
  m_state.BuildFocPulse();
  return Send(led::kFocPulse, m_state.FocPulse);
}

bool LedSetup::Send(std::int32_t pulseId, const led::LED_Pulse& pulse) {
  const bool sent = Command([&](device::TLS& board) { return board.SetLEDPulses(pulseId, pulse); });
  // Also after a pulse that did not get there: the board then plays the one that it has.
  const bool started = Command([&](device::TLS& board) { return board.StartPulse(pulseId); });
  if (sent) m_known.Sent(pulseId, m_state.Shown().at(static_cast<std::size_t>(pulseId)), !pulse.IsTooLongForBoard());
  Show(Part::Pulses);
  return sent && started;
}

// --- Settings files ---

bool LedSetup::LoadSettings(const std::filesystem::path& file) {
  ClosePicker();
  led::LedSettingsFile settings;
  base::Result<> valid = settings.Open(file);
  if (valid) valid = settings.ReadIdle(m_state.IdlePulse);
  if (valid) {
    m_state.FillIdleBoxes();
    Show(Part::IdleTimes);
    valid = settings.ReadFoc(m_state.FocPulse);
  }
  if (valid) {
    m_state.FillFocBoxes();
    Show(Part::FocTimes);
    m_known.InFile(m_state.Shown());
  }
  Show(Part::Pulses);
  if (!valid) m_view.ShowInformation(led::LedSettingsFile::kCorrupted, valid.Text());
  return static_cast<bool>(valid);
}

bool LedSetup::SaveSettings(const std::filesystem::path& file, base::Disk& disk) {
  m_state.BuildIdlePulse();
  m_state.BuildFocPulse();
  const base::Result<> saved = led::LedSettingsFile::Save(file, m_state.IdlePulse, m_state.FocPulse, disk);
  if (saved)
    m_known.InFile(m_state.Shown());
  else
    m_view.ShowInformation(saved.Text(), "");
  return static_cast<bool>(saved);
}

// --- What would be lost ---

bool LedSetup::IsSent(std::int32_t pulseId) const {
  return m_known.IsSent(pulseId, m_state.Shown().at(static_cast<std::size_t>(pulseId)));
}

void LedSetup::BringBack() {
  if (!m_setAside) return;
  ClosePicker();
  const led::Pulses back = *m_setAside;
  m_setAside = HasUnsaved() ? std::optional(m_state.Shown()) : std::nullopt;
  m_state.Take(back);
  Show(Part::IdleTimes);
  Show(Part::FocTimes);
  Show(Part::Pulses);
}

}  // namespace kestrin::core::ledsetup
