// SPDX-License-Identifier: MIT
#include "simulator/VirtualBoard.h"

#include <algorithm>
#include <utility>

#include "core/base/Bytes.h"
#include "core/device/BoardIdentity.h"

namespace kestrin::simulator {

namespace device = core::device;
using device::Command;

namespace {

/// What is left of a detection parameter after an erase.
constexpr std::uint8_t kWipedParameter = 255;

/// An axis as it is sent: sign and magnitude in six bits.
std::uint8_t SixBits(std::int32_t value) {
  const std::int32_t told = std::clamp(value, -kStrongest, kStrongest);
  return static_cast<std::uint8_t>(told < 0 ? kStrongest + 1 - told : told);
}

/// The 16-bit / 24-bit number at `element` of a report.
std::uint16_t Get16(std::span<const std::uint8_t> report, std::size_t element) {
  return core::base::GetBig16(report.subspan(element).first<2>());
}
std::uint32_t Get24(std::span<const std::uint8_t> report, std::size_t element) {
  return core::base::GetBig24(report.subspan(element).first<3>());
}

}  // namespace

std::size_t VirtualBoard::FlashSize(std::uint16_t id) {
  const std::int32_t capacity = device::Identify(id).memoryCapacity.value_or(device::kDefaultMemoryCapacity);
  return static_cast<std::size_t>(device::FlashSize(capacity));
}

VirtualBoard::VirtualBoard(const BoardState& state, Time eraseTime) : VirtualBoard(state, eraseTime, {}, nullptr) {}

VirtualBoard::VirtualBoard(const BoardState& state, Time eraseTime, std::vector<std::uint8_t> flash,
                           std::unique_ptr<BoardKeeper> keeper)
    : m_state(state), m_flash(std::move(flash)), m_keeper(std::move(keeper)), m_eraseTime(eraseTime) {}

std::span<const std::uint8_t> VirtualBoard::FlashData(ReportView report) {
  switch (Command{report[0]}) {
    case Command::Write1k:
      return report.subspan<device::kBlockElement>();
    case Command::WriteLess:
      return report.subspan(device::kRestElement,
                            std::min<std::size_t>(Get24(report, device::kCountElement), device::kLargestRest));
    default:
      return {};
  }
}

void VirtualBoard::Receive(std::span<const std::uint8_t> report, Time now) {
  if (report.size() == device::kCommandSize + 1 && report[0] == 0) report = report.subspan(1);
  if (report.size() != device::kCommandSize) return;
  Advance(now);
  if (m_eraseEnd) {
    std::copy(report.begin(), report.end(), m_waiting.emplace_back().begin());
  } else {
    Execute(report.first<device::kCommandSize>(), now);
  }
}

std::span<const std::uint8_t> VirtualBoard::Flash() const {
  if (m_flash.empty()) m_flash.assign(FlashSize(m_state.id), kErased);
  return m_flash;
}

std::optional<VirtualBoard::Answer> VirtualBoard::NextAnswer(Time now) {
  Advance(now);
  if (m_nextAnswer == m_answers.size()) return std::nullopt;
  const Answer answer = m_answers[m_nextAnswer++];
  if (m_nextAnswer == m_answers.size()) {
    m_answers.clear();
    m_nextAnswer = 0;
  }
  return answer;
}

void VirtualBoard::LosePower() {
  m_eraseEnd.reset();
  m_waiting.clear();
  m_answers.clear();
  m_nextAnswer = 0;
}

void VirtualBoard::Advance(Time now) {
  while (m_eraseEnd && *m_eraseEnd <= now) {
    const Time end = *m_eraseEnd;
    m_eraseEnd.reset();
    Acknowledge();
    while (!m_waiting.empty() && !m_eraseEnd) {
      Execute(m_waiting.front(), end);
      m_waiting.pop_front();
    }
  }
}

void VirtualBoard::Execute(ReportView report, Time now) {
  const std::uint8_t pulse = report[device::kPulseElement];
  switch (Command{report[0]}) {
    case Command::Reset:
      ++m_state.resets;
      KeepState();
      break;
    case Command::GetSN:
      Put16(static_cast<std::uint16_t>(m_state.serial >> 16));
      Put16(static_cast<std::uint16_t>(m_state.serial));
      break;
    case Command::GetID:
      Put16(m_state.id);
      break;
    case Command::Bye:
      ++m_state.byes;
      KeepState();
      break;
    case Command::ClearFlash:
      Erase(now);
      break;
    case Command::Write1k:
    case Command::WriteLess:
      Write(Get24(report, device::kAddressElement), FlashData(report));
      break;
    case Command::CheckCRC:
      Put16(FlashSum(Get24(report, device::kAddressElement), Get24(report, device::kCountElement)));
      break;
    case Command::GetACC:
      AnswerSensor();
      break;
    case Command::GetAccParam:
      for (std::size_t i = 0; i < m_state.accelerometer.size(); i += 2)
        Put(m_state.accelerometer[i], m_state.accelerometer[i + 1]);
      break;
    case Command::SetAccParam:
      std::copy_n(report.begin() + device::kArguments, m_state.accelerometer.size(), m_state.accelerometer.begin());
      Accept();
      break;
    case Command::GetLEDParam:
      for (const std::uint16_t value : m_state.ledParam) Put16(value);
      break;
    case Command::SetLEDParam:
      for (std::size_t i = 0; i < m_state.ledParam.size(); ++i)
        m_state.ledParam[i] = Get16(report, device::kArguments + 2 * i);
      Accept();
      break;
    // The board has no other pulses; a command for one is as unknown to it as an unknown code.
    case Command::GetLEDPulses:
      if (pulse < m_state.ledPulses.size()) AnswerPulse(pulse);
      break;
    case Command::SetLEDPulses:
      if (pulse < m_state.ledPulses.size()) TakePulse(report, pulse);
      break;
    case Command::StartPulse:
      m_state.pulseStarted = pulse;
      Accept();
      break;
    case Command::GetLEDConfig:
      Put16(m_state.ledConfig.code);
      Put16(m_state.ledConfig.voltageTenths);
      Put16(m_state.ledConfig.overdrive);
      break;
    case Command::SetLEDConfig:
      m_state.ledConfig = {Get16(report, device::kLedCodeElement), Get16(report, device::kVoltageElement),
                           Get16(report, device::kOverdriveElement)};
      Accept();
      break;
    default:
      break;
  }
}

void VirtualBoard::Put16(std::uint16_t value) {
  Answer answer;
  core::base::PutBig16(answer, value);
  m_answers.push_back(answer);
}

void VirtualBoard::Acknowledge() { Put(device::kAcknowledge, device::kAcknowledge); }

void VirtualBoard::Accept() {
  KeepState();
  Acknowledge();
}

void VirtualBoard::KeepState() {
  if (m_keeper) m_keeper->KeepState(m_state);
}

void VirtualBoard::Erase(Time now) {
  m_flash.clear();
  m_state.accelerometer.fill(kWipedParameter);
  if (m_keeper) m_keeper->KeepErased();
  KeepState();
  m_eraseEnd = now + m_eraseTime;
}

void VirtualBoard::Write(std::uint32_t address, std::span<const std::uint8_t> data) {
  Put16(core::base::ByteSum(data));
  const std::size_t size = Flash().size();
  if (address >= size) return;
  const std::size_t count = std::min(data.size(), size - address);
  std::uint8_t* const cells = m_flash.data() + address;
  const std::uint8_t* const bytes = data.data();
  for (std::size_t i = 0; i < count; ++i) cells[i] &= bytes[i];
  if (m_keeper) m_keeper->KeepFlash(m_flash, address, count);
}

std::uint16_t VirtualBoard::FlashSum(std::uint32_t address, std::uint32_t count) const {
  const std::span<const std::uint8_t> flash = Flash();
  if (address >= flash.size()) return 0;
  return core::base::ByteSum(flash.subspan(address, std::min<std::size_t>(count, flash.size() - address)));
}

void VirtualBoard::AnswerSensor() {
  const SensorValues felt = m_sensor ? m_sensor() : kLyingStill;
  Put(SixBits(felt.x), SixBits(felt.y));
  Put(SixBits(felt.z), static_cast<std::uint8_t>(std::clamp(felt.tilt, 0, 255)));
}

void VirtualBoard::AnswerPulse(std::size_t set) {
  const PulseState& pulse = m_state.ledPulses[set];
  // High before low, although they are sent low before high.
  for (std::size_t channel = 0; channel < PulseState::kChannels; ++channel)
    Put(pulse.high[channel], pulse.low[channel]);
  for (const std::uint16_t value : {pulse.Trise, pulse.Ton, pulse.Tfall, pulse.Toff, pulse.NRep}) Put16(value);
}

void VirtualBoard::TakePulse(ReportView report, std::size_t set) {
  PulseState& pulse = m_state.ledPulses[set];
  std::size_t element = device::kChannelsElement;
  const auto next16 = [&] { return Get16(report, std::exchange(element, element + 2)); };
  for (std::size_t channel = 0; channel < PulseState::kChannels; ++channel) {
    pulse.low[channel] = report[element++];
    pulse.high[channel] = report[element++];
    // The braces keep the order: on low, off low, on high, off high.
    pulse.counts[channel] = ChannelCounts{next16(), next16(), next16(), next16()};
  }
  for (std::uint16_t* const value : {&pulse.Trise, &pulse.Ton, &pulse.Tfall, &pulse.Toff, &pulse.NRep})
    *value = next16();
  Accept();
}

}  // namespace kestrin::simulator
