// SPDX-License-Identifier: MIT
// The board commands of TLS; binding and report transfer are in TLS.cpp.

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "base/Bytes.h"
#include "base/Numbers.h"
#include "device/TLS.h"

namespace kestrin::core::device {

namespace {

static_assert(led::LED_Pulse::kChannels == kPulseChannels);

std::int32_t SixBitSigned(std::uint8_t byte) { return byte > 31 ? 32 - byte : byte; }

/// The whole number that goes out for a pulse time in milliseconds: 0.29 s is 290 ms, also where the product is a hair
/// less.
std::int32_t Whole(double milliseconds) {
  constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(base::RoundHalfEven(milliseconds), 0.0, kLargest));
}

void AppendHex(std::string& text, std::uint8_t byte) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  text += kDigits[byte >> 4];
  text += kDigits[byte & 15];
}

}  // namespace

void TLS::Put16(std::size_t element, std::int32_t value) {
  base::PutBig16(std::span(m_command).subspan(element).first<2>(), static_cast<std::uint32_t>(value));
}

void TLS::Put24(std::size_t element, std::int32_t value) {
  base::PutBig24(std::span(m_command).subspan(element).first<3>(), static_cast<std::uint32_t>(value));
}

std::int32_t TLS::Response16() const { return base::GetBig16(m_response); }

bool TLS::Acknowledged() { return ReadInputRptB() && m_response[0] == kAcknowledge && m_response[1] == kAcknowledge; }

bool TLS::Send(Command command) {
  m_command[0] = static_cast<std::uint8_t>(command);
  return WriteOutputRptA();
}

bool TLS::Reset() { return Send(Command::Reset); }

std::string TLS::GetSN() {
  std::string serial;
  if (!Send(Command::GetSN)) return kNoSerialNumber;
  for (int report = 0; report < 2 && ReadInputRptB(); ++report)
    for (const std::uint8_t byte : m_response) AppendHex(serial, byte);
  return serial.empty() ? kNoSerialNumber : serial;
}

std::int32_t TLS::GetMemorySize() { return Send(Command::GetID) && ReadInputRptB() ? m_response[0] : 0; }

std::int32_t TLS::GetID() { return Send(Command::GetID) && ReadInputRptB() ? Response16() : 0; }

bool TLS::Bye() { return Send(Command::Bye); }

bool TLS::ClearFlash() { return Send(Command::ClearFlash); }

bool TLS::CheckCompletion() { return Acknowledged(); }

bool TLS::Write1k(std::int32_t address, std::span<const std::uint8_t> data) {
  if (data.size() < kBlockSize) throw std::out_of_range("Write1k needs 1,024 bytes");
  Put24(kAddressElement, address);
  return SendData(Command::Write1k, kBlockElement, data.first(kBlockSize));
}

bool TLS::WriteLess(std::int32_t address, std::int32_t count, std::span<const std::uint8_t> data) {
  const auto size = static_cast<std::size_t>(count);
  if (count < 0 || size > kLargestRest || size > data.size())
    throw std::out_of_range("WriteLess takes 0 to 1,021 bytes");
  Put24(kAddressElement, address);
  Put24(kCountElement, count);
  return SendData(Command::WriteLess, kRestElement, data.first(size));
}

bool TLS::SendData(Command command, std::size_t firstElement, std::span<const std::uint8_t> data) {
  std::copy(data.begin(), data.end(), m_command.begin() + static_cast<std::ptrdiff_t>(firstElement));
  return Send(command) && ReadInputRptB() && Response16() == base::ByteSum(data);
}

bool TLS::CheckCRC(std::int32_t address, std::int32_t count) {
  Put24(kAddressElement, address);
  Put24(kCountElement, count);
  return Send(Command::CheckCRC) && ReadInputRptB();
}

bool TLS::GetACC(std::int32_t& x, std::int32_t& y, std::int32_t& z, std::int32_t& w) {
  if (!Send(Command::GetACC) || !ReadInputRptB()) return false;
  x = SixBitSigned(m_response[0]);
  y = SixBitSigned(m_response[1]);
  if (!ReadInputRptB()) return false;
  z = SixBitSigned(m_response[0]);
  w = m_response[1];
  return true;
}

bool TLS::GetAccParam(AccParam& parameters) {
  if (!Send(Command::GetAccParam)) return false;
  std::int32_t* const values[kAccParameters / kResponseSize][kResponseSize] = {
      {&parameters.MotionTh, &parameters.MotionDeb},
      {&parameters.ImpactTh, &parameters.ImpactDeb},
      {&parameters.ImpactTm, &parameters.FOCTime}};
  for (const auto& [first, second] : values) {
    if (!ReadInputRptB()) return false;
    *first = m_response[0];
    *second = m_response[1];
  }
  return true;
}

bool TLS::SetAccParam(const AccParam& parameters) {
  const std::int32_t values[kAccParameters] = {parameters.MotionTh,  parameters.MotionDeb, parameters.ImpactTh,
                                               parameters.ImpactDeb, parameters.ImpactTm,  parameters.FOCTime};
  std::size_t element = kArguments;
  for (const std::int32_t value : values) m_command[element++] = static_cast<std::uint8_t>(value);
  return Send(Command::SetAccParam) && Acknowledged();
}

bool TLS::GetLEDParam(std::span<std::int32_t, kLedParameters> values) {
  if (!Send(Command::GetLEDParam)) return false;
  for (std::int32_t& value : values) {
    if (!ReadInputRptB()) return false;
    value = Response16();
  }
  return true;
}

bool TLS::SetLEDParam(std::span<const std::int32_t, kLedParameters> values) {
  std::size_t element = kArguments;
  for (const std::int32_t value : values) {
    Put16(element, value);
    element += 2;
  }
  return Send(Command::SetLEDParam) && Acknowledged();
}

bool TLS::GetLEDPulses(std::int32_t set, led::LED_Pulse& pulse) {
  m_command[kPulseElement] = static_cast<std::uint8_t>(set);
  if (!Send(Command::GetLEDPulses)) return false;
  for (int channel = 1; channel <= led::LED_Pulse::kChannels; ++channel) {
    if (!ReadInputRptB()) return false;
    // The board answers high before low, although it is sent low before high.
    pulse.SetHigh(channel, m_response[0]);
    pulse.SetLow(channel, m_response[1]);
  }
  for (double* time : {&pulse.Trise, &pulse.Ton, &pulse.Tfall, &pulse.Toff}) {
    if (!ReadInputRptB()) return false;
    *time = Response16();
  }
  if (!ReadInputRptB()) return false;
  pulse.NRep = static_cast<std::int16_t>(Response16());
  return true;
}

bool TLS::SetLEDPulses(std::int32_t set, const led::LED_Pulse& pulse) {
  m_command[kPulseElement] = static_cast<std::uint8_t>(set);
  for (int channel = 1; channel <= led::LED_Pulse::kChannels; ++channel) {
    const std::size_t at = kChannelsElement + kChannelSize * static_cast<std::size_t>(channel - 1);
    m_command[at] = static_cast<std::uint8_t>(pulse.GetLow(channel));
    m_command[at + 1] = static_cast<std::uint8_t>(pulse.GetHigh(channel));
    Put16(at + 2, pulse.GetTon_Low(channel));
    Put16(at + 4, pulse.GetToff_Low(channel));
    Put16(at + 6, pulse.GetTon_High(channel));
    Put16(at + 8, pulse.GetToff_High(channel));
  }
  std::size_t element = kPulseTimesElement;
  for (const std::int32_t value :
       {Whole(pulse.Trise), Whole(pulse.Ton), Whole(pulse.Tfall), Whole(pulse.Toff), std::int32_t{pulse.NRep}}) {
    Put16(element, value);
    element += 2;
  }
  return Send(Command::SetLEDPulses) && Acknowledged();
}

bool TLS::StartPulse(std::int32_t number) {
  m_command[kPulseElement] = static_cast<std::uint8_t>(number);
  return Send(Command::StartPulse) && Acknowledged();
}

bool TLS::GetLEDConfig(std::int32_t& code, double& voltage, std::int32_t& overdrive) {
  if (!Send(Command::GetLEDConfig) || !ReadInputRptB()) return false;
  code = Response16();
  if (!ReadInputRptB()) return false;
  voltage = Response16() / 10.0;
  if (!ReadInputRptB()) return false;
  overdrive = Response16();
  return true;
}

bool TLS::SetLEDConfig(std::int32_t code, double voltage, std::int32_t overdrive) {
  Put16(kLedCodeElement, code);
  Put16(kVoltageElement, static_cast<std::int32_t>(std::floor(voltage * 10)));
  Put16(kOverdriveElement, overdrive);
  return Send(Command::SetLEDConfig) && Acknowledged();
}

}  // namespace kestrin::core::device
