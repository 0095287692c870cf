#include "ledsetup/LedSetup.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "base/Numbers.h"
#include "led/LedSettingsFile.h"
#include "led/LevelCounts.h"

namespace kestrin::core::ledsetup {

LedSetup::LedSetup(const std::filesystem::path& programFolder, BoardLookup board, LedSetupView& view)
    : m_catalogue(programFolder), m_board(std::move(board)), m_view(view) {}

bool LedSetup::InitLedDrivers() { return ReadAndShow(Unsaved::SetAside); }

bool LedSetup::ReadAndShow(Unsaved unsaved) {
  const bool valid = ReadSettings(unsaved);
  m_view.ShowPulses();
  return valid;
}

bool LedSetup::ReadSettings(Unsaved unsaved) {
  m_failure = Failure::None;
  m_problem.clear();
  std::int32_t code = 0;
  double voltage = 0;
  std::int32_t overDrive = 0;
  if (!AskBoard([&](device::TLS& board) { return board.GetLEDConfig(code, voltage, overDrive); })) return false;

  std::string selected;
  if (!FillTypes(code, selected)) return false;
  // The record was valid a moment ago; what can still go wrong, SelectLED tells itself.
  static_cast<void>(SelectLED(selected, voltage, overDrive));

  if (unsaved == Unsaved::SetAside && HasUnsaved()) m_setAside = Shown();
  const bool valid = ReadPulses();
  // Also after a failure: nothing of the person's is left in them.
  m_sent = Shown();
  m_onBoard = {m_sent[kIdlePulse], m_sent[kFocPulse]};
  return valid;
}

bool LedSetup::ReadPulses() {
  m_idlePulse = {};
  if (!AskBoard([&](device::TLS& board) { return board.GetLEDPulses(kIdlePulse, m_idlePulse); })) return false;
  ShowIdlePulse();
  m_focPulse = {};
  if (!AskBoard([&](device::TLS& board) { return board.GetLEDPulses(kFocPulse, m_focPulse); })) return false;
  ShowFocPulse();
  return true;
}

bool LedSetup::AskBoard(const std::function<bool(device::TLS&)>& question) {
  device::TLS* const board = m_board();
  return (board != nullptr && question(*board)) ||
         FailInit(Failure::Board, "The LED driver did not answer. Unplug it and plug it in again.");
}

bool LedSetup::FailInit(Failure failure, const std::string& problem) {
  m_failure = failure;
  m_problem = problem;
  return false;
}

bool LedSetup::FillTypes(std::int32_t boardCode, std::string& selected) {
  if (!m_catalogue.Read() || !m_catalogue.CheckHeader()) return FailInit(Failure::Catalogue, m_catalogue.Problem());
  m_view.ClearTypes();
  std::size_t count = 0;
  bool found = false;
  // A negative code comes back as the 16 bits that went out.
  const auto wanted = static_cast<std::uint16_t>(boardCode);
  led::LED_Driver scratch;
  for (std::size_t line = 2; line <= m_catalogue.LineCount(); ++line) {
    if (m_catalogue.IsEmptyLine(line)) continue;
    if (!m_catalogue.Init(line, scratch)) {
      m_view.ClearTypes();
      return FailInit(Failure::Catalogue, m_catalogue.Problem());
    }
    ++count;
    m_view.AppendType(scratch.LEDName);
    if (static_cast<std::uint16_t>(scratch.LedCode) != wanted) continue;
    m_view.SelectType(count - 1);
    selected = scratch.LEDName;
    found = true;
  }
  if (found) return true;
  const std::string file = led::LedCatalogue::kFileName;
  return FailInit(Failure::Catalogue, count == 0
                                          ? file + " has no LED type."
                                          : "The LED driver is set to the LED type with code " +
                                                std::to_string(boardCode) + ", which " + file + " does not have.");
}

bool LedSetup::SelectLED(const std::string& LEDName, double voltage, std::int32_t overDrive) {
  for (int channel = 1; channel <= led::LED_Driver::kChannels; ++channel) m_view.SetChannelLabelColor(channel, 0);
  bool valid = m_catalogue.Read();
  for (std::size_t line = 1; valid && line <= m_catalogue.LineCount(); ++line) {
    if (!m_catalogue.IsOf(line, LEDName)) continue;
    valid = m_catalogue.Init(line, m_currentDriver);
    if (valid) UseDriver(voltage, overDrive);
  }
  if (!valid) m_view.ShowCritical(led::LedCatalogue::kInvalid, m_catalogue.Problem());
  return valid;
}

void LedSetup::UseDriver(double voltage, std::int32_t& overDrive) {
  std::int32_t maxDC = 0;
  for (int channel = 1; channel <= Channels(); ++channel) {
    m_view.SetChannelLabelColor(channel, m_currentDriver.GetChannelColor(channel));
    maxDC = std::max(maxDC, m_currentDriver.GetMaxDC(channel));
  }
  m_currentDriver.Voltage = voltage;
  // With the most overdrive the strongest channel reaches a duty cycle of 100 %.
  const auto maximum = base::RoundTo<std::int32_t>(10000.0 / maxDC);
  m_view.SetOverdriveMaximum(maximum);
  overDrive = std::min(overDrive, maximum);
  m_currentDriver.OverDrive = overDrive;
  m_view.SetOverdrive(overDrive);
  m_view.SetOverdriveLabel(std::to_string(overDrive) + "%");
}

void LedSetup::ChooseType(const std::string& LEDName) {
  static_cast<void>(
      SelectLED(LEDName, kVoltage, base::RoundTo<std::int32_t>(base::LeadingNumber(m_view.OverdriveLabel()))));
  // A picker that stands open is for the channels of the new type.
  if (m_view.IsPickerShown()) ShowPickerRows();
  m_view.ShowPulses();
}

void LedSetup::OverdriveMoved() { m_view.SetOverdriveLabel(std::to_string(m_view.Overdrive()) + "%"); }

bool LedSetup::UpdateLED() {
  const bool unsent = !IsSent(kIdlePulse) || !IsSent(kFocPulse);
  if (!m_view.Confirm(kWarning, unsent ? kUnsentPulses : "")) return false;
  m_view.ShowPicker(false);
  m_currentDriver.Voltage = kVoltage;
  m_currentDriver.OverDrive = m_view.Overdrive();
  const bool accepted = Command([&](device::TLS& board) {
    return board.SetLEDConfig(m_currentDriver.LedCode, m_currentDriver.Voltage,
                              base::RoundTo<std::int32_t>(m_currentDriver.OverDrive));
  });
  if (accepted) static_cast<void>(ReadAndShow(Unsaved::Drop));
  return accepted;
}

bool LedSetup::Command(const std::function<bool(device::TLS&)>& command) {
  device::TLS* const board = m_board();
  const bool accepted = board != nullptr && command(*board);
  if (!accepted) m_view.GoOffline();
  return accepted;
}

int LedSetup::Channels() const { return std::clamp<int>(m_currentDriver.NrOfChannels, 0, led::LED_Driver::kChannels); }

void LedSetup::OpenPicker(led::LED_Pulse* pulse, bool high) {
  m_editedPulse = pulse;
  m_editHigh = high;
  // Also the hidden ones, so that they hold nothing of another pulse should another LED type bring them to light.
  for (int channel = 1; channel <= led::LED_Driver::kChannels; ++channel)
    m_view.SetLevel(channel, high ? pulse->GetHigh(channel) : pulse->GetLow(channel));
  ShowPickerRows();
  m_view.ShowPicker(true);
}

void LedSetup::ShowPickerRows() {
  for (int channel = 1; channel <= led::LED_Driver::kChannels; ++channel) {
    const bool used = channel <= Channels();
    if (used) m_view.SetLevelLabelColor(channel, m_currentDriver.GetChannelColor(channel));
    m_view.ShowLevelRow(channel, used);
  }
  const auto has = [this](led::Color color) { return m_currentDriver.FindColor(color) != 0; };
  m_view.EnablePickColor(has(led::kRed) && has(led::kGreen) && has(led::kBlue));
}

void LedSetup::PickColor() {
  const std::optional<led::Color> picked = m_view.AskColor(m_pickedColor);
  if (!picked) return;
  m_pickedColor = *picked;
  auto [R, G, B] = led::SysToRGB(*picked, [this](std::int32_t number) { return m_view.GetSysColor(number); });
  const bool exceptR = R == 0;
  const bool exceptG = G == 0;
  const bool exceptB = B == 0;
  for (auto [color, component] : {std::pair{led::kRed, &R}, std::pair{led::kGreen, &G}, std::pair{led::kBlue, &B}}) {
    const int channel = m_currentDriver.FindColor(color);
    if (channel == 0) continue;
    if (m_view.ColorFidelity())
      *component = m_currentDriver.ConvertLuminanceToRGB(
          color, m_currentDriver.ConvertRGBtoLuminance(led::kRed, *component, exceptR, exceptG, exceptB));
    m_view.SetLevel(channel, *component);
  }
}

void LedSetup::PickColorApply() {
  std::array<std::int32_t, 1 + 2 * led::LED_Driver::kChannels> values{m_currentDriver.Period};
  for (int channel = 1; channel <= Channels(); ++channel) {
    const led::LevelCounts counts = led::CountsOf(m_currentDriver, channel, m_view.Level(channel));
    const std::size_t place = 2 * static_cast<std::size_t>(channel);
    values[place - 1] = counts.on;
    values[place] = counts.off;
  }
  Command([&](device::TLS& board) { return board.SetLEDParam(values); });
}

void LedSetup::PickColorOK() {
  const auto store = m_editHigh ? &led::LED_Pulse::SetHigh : &led::LED_Pulse::SetLow;
  for (int channel = 1; m_editedPulse != nullptr && channel <= Channels(); ++channel)
    (m_editedPulse->*store)(channel, m_view.Level(channel));
  m_view.ShowPicker(false);
  m_view.ShowPulses();
}

void LedSetup::PickColorCancel() { m_view.ShowPicker(false); }

void LedSetup::TimeBoxLeft(led::TimeBox box) {
  m_view.SetTimeText(box, led::NormalisedTime(box, m_view.TimeText(box)));
}

void LedSetup::RepeatBoxLeft() { m_view.SetRepeatText(led::NormalisedRepetitions(m_view.RepeatText())); }

bool LedSetup::SendPulse() {
  BuildIdlePulse();
  return Send(kIdlePulse, m_idlePulse);
}

bool LedSetup::SendFoc() {
  BuildFocPulse();
  return Send(kFocPulse, m_focPulse);
}

bool LedSetup::Send(std::int32_t pulseId, const led::LED_Pulse& pulse) {
  const bool sent = Command([&](device::TLS& board) { return board.SetLEDPulses(pulseId, pulse); });
  // Also after a pulse that did not get there: the board then plays the one that it has.
  const bool started = Command([&](device::TLS& board) { return board.StartPulse(pulseId); });
  if (sent) {
    const auto place = static_cast<std::size_t>(pulseId);
    m_sent[place] = Shown()[place];
    m_onBoard[place] = pulse.IsTooLongForBoard() ? std::nullopt : std::optional(m_sent[place]);
  }
  return sent && started;
}

bool LedSetup::LoadSettings(const std::filesystem::path& file) {
  m_view.ShowPicker(false);
  led::LedSettingsFile settings;
  bool valid = settings.Open(file) && settings.ReadIdle(m_idlePulse);
  if (valid) {
    ShowIdlePulse();
    valid = settings.ReadFoc(m_focPulse);
    if (valid) ShowFocPulse();
  }
  if (valid) m_inFile = Shown();
  m_view.ShowPulses();
  if (!valid) m_view.ShowInformation(led::LedSettingsFile::kCorrupted, settings.Problem());
  return valid;
}

bool LedSetup::SaveSettings(const std::filesystem::path& file, base::Disk& disk) {
  BuildIdlePulse();
  BuildFocPulse();
  const std::string problem = led::LedSettingsFile::Save(file, m_idlePulse, m_focPulse, disk);
  if (problem.empty())
    m_inFile = Shown();
  else
    m_view.ShowInformation(problem, "");
  return problem.empty();
}

bool LedSetup::IsSent(std::int32_t pulseId) const {
  const auto place = static_cast<std::size_t>(pulseId);
  return Shown().at(place) == m_sent.at(place);
}

bool LedSetup::HasUnsaved() const {
  const Pulses shown = Shown();
  for (std::size_t i = 0; i < shown.size(); ++i)
    if (shown[i] != m_onBoard[i] && !(m_inFile && shown[i] == (*m_inFile)[i])) return true;
  return false;
}

void LedSetup::BringBack() {
  if (!m_setAside) return;
  m_view.ShowPicker(false);
  const std::optional<Pulses> instead = HasUnsaved() ? std::optional(Shown()) : std::nullopt;
  Show(*m_setAside);
  m_setAside = instead;
  m_view.ShowPulses();
}

LedSetup::Pulses LedSetup::Shown() const {
  const auto time = [this](led::TimeBox box) { return led::MillisecondsOf(m_view.TimeText(box)); };
  Pulses pulses;
  led::PulseContent& idle = pulses[kIdlePulse];
  led::PulseContent& foc = pulses[kFocPulse];
  for (std::size_t i = 0; i < idle.low.size(); ++i) {
    const int channel = static_cast<int>(i) + 1;
    idle.low[i] = m_idlePulse.GetLow(channel);
    idle.high[i] = m_idlePulse.GetHigh(channel);
    foc.high[i] = m_focPulse.GetHigh(channel);
  }
  idle.Ton = time(led::TimeBox::IdleTON);
  idle.Toff = time(led::TimeBox::IdleTOFF);
  idle.Trise = time(led::TimeBox::IdleTRISE);
  idle.Tfall = time(led::TimeBox::IdleTFALL);
  foc.Ton = time(led::TimeBox::FocTON);
  foc.Toff = time(led::TimeBox::FocTOFF);
  foc.NRep = led::RepetitionsOf(m_view.RepeatText());
  return pulses;
}

void LedSetup::Show(const Pulses& pulses) {
  const auto fill = [](const led::PulseContent& content, led::LED_Pulse& pulse) {
    for (std::size_t i = 0; i < content.high.size(); ++i) {
      const int channel = static_cast<int>(i) + 1;
      pulse.SetLow(channel, content.low[i]);
      pulse.SetHigh(channel, content.high[i]);
    }
    pulse.Ton = content.Ton;
    pulse.Toff = content.Toff;
    pulse.Trise = content.Trise;
    pulse.Tfall = content.Tfall;
    pulse.NRep = content.NRep;
  };
  fill(pulses[kIdlePulse], m_idlePulse);
  fill(pulses[kFocPulse], m_focPulse);
  ShowIdlePulse();
  ShowFocPulse();
}

void LedSetup::ShowIdlePulse() {
  m_view.SetTimeText(led::TimeBox::IdleTON, led::SecondsText(m_idlePulse.Ton));
  m_view.SetTimeText(led::TimeBox::IdleTOFF, led::SecondsText(m_idlePulse.Toff));
  m_view.SetTimeText(led::TimeBox::IdleTRISE, led::SecondsText(m_idlePulse.Trise));
  m_view.SetTimeText(led::TimeBox::IdleTFALL, led::SecondsText(m_idlePulse.Tfall));
}

void LedSetup::ShowFocPulse() {
  m_view.SetTimeText(led::TimeBox::FocTON, led::SecondsText(m_focPulse.Ton));
  m_view.SetTimeText(led::TimeBox::FocTOFF, led::SecondsText(m_focPulse.Toff));
  m_view.SetRepeatText(std::to_string(m_focPulse.NRep));
}

void LedSetup::BuildIdlePulse() {
  m_idlePulse.Ton = led::MillisecondsOf(m_view.TimeText(led::TimeBox::IdleTON));
  m_idlePulse.Toff = led::MillisecondsOf(m_view.TimeText(led::TimeBox::IdleTOFF));
  m_idlePulse.Trise = led::MillisecondsOf(m_view.TimeText(led::TimeBox::IdleTRISE));
  m_idlePulse.Tfall = led::MillisecondsOf(m_view.TimeText(led::TimeBox::IdleTFALL));
  m_idlePulse.NRep = 0;
  m_idlePulse.CalculateTimes(m_currentDriver);
}

void LedSetup::BuildFocPulse() {
  m_focPulse.Ton = led::MillisecondsOf(m_view.TimeText(led::TimeBox::FocTON));
  m_focPulse.Toff = led::MillisecondsOf(m_view.TimeText(led::TimeBox::FocTOFF));
  m_focPulse.Trise = 0;
  m_focPulse.Tfall = 0;
  m_focPulse.NRep = led::RepetitionsOf(m_view.RepeatText());
  // The flash starts from the idle colour.
  for (int channel = 1; channel <= led::LED_Pulse::kChannels; ++channel)
    m_focPulse.SetLow(channel, m_idlePulse.GetHigh(channel));
  m_focPulse.CalculateTimes(m_currentDriver);
}

}  // namespace kestrin::core::ledsetup
