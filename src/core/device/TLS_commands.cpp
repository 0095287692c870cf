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

/// Element 0 of a command report.
enum Code : std::uint8_t {
  kReset = 0,
  kGetSN = 1,
  kGetID = 3,
  kBye = 7,
  kClearFlash = 10,
  kWrite1k = 20,
  kWriteLess = 21,
  kCheckCRC = 30,
  kGetACC = 40,
  kGetAccParam = 41,
  kSetAccParam = 42,
  kGetLEDParam = 50,
  kSetLEDParam = 51,
  kGetLEDPulses = 52,
  kSetLEDPulses = 53,
  kStartPulse = 54,
  kGetLEDConfig = 60,
  kSetLEDConfig = 61,
};

/// Both bytes of an answer that means "done and accepted".
constexpr std::uint8_t kAcknowledge = 10;

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

void TLS::Put16(int element, std::int32_t value) {
  base::PutBig16(std::span(m_command).subspan(static_cast<std::size_t>(element)).first<2>(),
                 static_cast<std::uint32_t>(value));
}

void TLS::Put24(int element, std::int32_t value) {
  base::PutBig24(std::span(m_command).subspan(static_cast<std::size_t>(element)).first<3>(),
                 static_cast<std::uint32_t>(value));
}

std::int32_t TLS::Response16() const { return base::GetBig16(m_response); }

bool TLS::Acknowledged() { return ReadInputRptB() && m_response[0] == kAcknowledge && m_response[1] == kAcknowledge; }

bool TLS::Send(std::uint8_t code) {
  m_command[0] = code;
  return WriteOutputRptA();
}

bool TLS::Reset() { return Send(kReset); }

std::string TLS::GetSN() {
  std::string serial;
  if (!Send(kGetSN)) return kNoSerialNumber;
  for (int report = 0; report < 2 && ReadInputRptB(); ++report)
    for (const std::uint8_t byte : m_response) AppendHex(serial, byte);
  return serial.empty() ? kNoSerialNumber : serial;
}

std::int32_t TLS::GetMemorySize() { return Send(kGetID) && ReadInputRptB() ? m_response[0] : 0; }

std::int32_t TLS::GetID() { return Send(kGetID) && ReadInputRptB() ? Response16() : 0; }

bool TLS::Bye() { return Send(kBye); }

bool TLS::ClearFlash() { return Send(kClearFlash); }

bool TLS::CheckCompletion() { return Acknowledged(); }

bool TLS::Write1k(std::int32_t address, std::span<const std::uint8_t> data) {
  if (data.size() < kBlockSize) throw std::out_of_range("Write1k needs 1,024 bytes");
  Put24(1, address);
  return SendData(kWrite1k, 4, data.first(kBlockSize));
}

bool TLS::WriteLess(std::int32_t address, std::int32_t count, std::span<const std::uint8_t> data) {
  if (count < 0 || count > kLargestRest || static_cast<std::size_t>(count) > data.size())
    throw std::out_of_range("WriteLess takes 0 to 1,021 bytes");
  Put24(1, address);
  Put24(4, count);
  return SendData(kWriteLess, 7, data.first(static_cast<std::size_t>(count)));
}

bool TLS::SendData(std::uint8_t code, int firstElement, std::span<const std::uint8_t> data) {
  std::copy(data.begin(), data.end(), m_command.begin() + firstElement);
  return Send(code) && ReadInputRptB() && Response16() == base::ByteSum(data);
}

bool TLS::CheckCRC(std::int32_t address, std::int32_t count) {
  Put24(1, address);
  Put24(4, count);
  return Send(kCheckCRC) && ReadInputRptB();
}

bool TLS::GetACC(std::int32_t& x, std::int32_t& y, std::int32_t& z, std::int32_t& w) {
  if (!Send(kGetACC) || !ReadInputRptB()) return false;
  x = SixBitSigned(m_response[0]);
  y = SixBitSigned(m_response[1]);
  if (!ReadInputRptB()) return false;
  z = SixBitSigned(m_response[0]);
  w = m_response[1];
  return true;
}

bool TLS::GetAccParam(AccParam& parameters) {
  if (!Send(kGetAccParam)) return false;
  std::int32_t* const values[][kResponseSize] = {{&parameters.MotionTh, &parameters.MotionDeb},
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
  const std::int32_t values[] = {parameters.MotionTh,  parameters.MotionDeb, parameters.ImpactTh,
                                 parameters.ImpactDeb, parameters.ImpactTm,  parameters.FOCTime};
  std::size_t element = 1;
  for (const std::int32_t value : values) m_command[element++] = static_cast<std::uint8_t>(value);
  return Send(kSetAccParam) && Acknowledged();
}

bool TLS::GetLEDParam(std::span<std::int32_t, 9> values) {
  if (!Send(kGetLEDParam)) return false;
  for (std::int32_t& value : values) {
    if (!ReadInputRptB()) return false;
    value = Response16();
  }
  return true;
}

bool TLS::SetLEDParam(std::span<const std::int32_t, 9> values) {
  int element = 1;
  for (const std::int32_t value : values) {
    Put16(element, value);
    element += 2;
  }
  return Send(kSetLEDParam) && Acknowledged();
}

bool TLS::GetLEDPulses(std::int32_t set, led::LED_Pulse& pulse) {
  m_command[1] = static_cast<std::uint8_t>(set);
  if (!Send(kGetLEDPulses)) return false;
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
  m_command[1] = static_cast<std::uint8_t>(set);
  for (int channel = 1; channel <= led::LED_Pulse::kChannels; ++channel) {
    const int base = 10 * (channel - 1);
    m_command[static_cast<std::size_t>(base) + 2] = static_cast<std::uint8_t>(pulse.GetLow(channel));
    m_command[static_cast<std::size_t>(base) + 3] = static_cast<std::uint8_t>(pulse.GetHigh(channel));
    Put16(base + 4, pulse.GetTon_Low(channel));
    Put16(base + 6, pulse.GetToff_Low(channel));
    Put16(base + 8, pulse.GetTon_High(channel));
    Put16(base + 10, pulse.GetToff_High(channel));
  }
  int element = 42;
  for (const std::int32_t value :
       {Whole(pulse.Trise), Whole(pulse.Ton), Whole(pulse.Tfall), Whole(pulse.Toff), std::int32_t{pulse.NRep}}) {
    Put16(element, value);
    element += 2;
  }
  return Send(kSetLEDPulses) && Acknowledged();
}

bool TLS::StartPulse(std::int32_t number) {
  m_command[1] = static_cast<std::uint8_t>(number);
  return Send(kStartPulse) && Acknowledged();
}

bool TLS::GetLEDConfig(std::int32_t& code, double& voltage, std::int32_t& overdrive) {
  if (!Send(kGetLEDConfig) || !ReadInputRptB()) return false;
  code = Response16();
  if (!ReadInputRptB()) return false;
  voltage = Response16() / 10.0;
  if (!ReadInputRptB()) return false;
  overdrive = Response16();
  return true;
}

bool TLS::SetLEDConfig(std::int32_t code, double voltage, std::int32_t overdrive) {
  Put16(1, code);
  Put16(3, static_cast<std::int32_t>(std::floor(voltage * 10)));
  Put16(5, overdrive);
  return Send(kSetLEDConfig) && Acknowledged();
}

}  // namespace kestrin::core::device
