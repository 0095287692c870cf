#include "simulator/VirtualBoard.h"

#include <algorithm>
#include <utility>

#include "core/base/Bytes.h"

namespace kestrin::simulator {

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

/// What is left of a detection parameter after an erase.
constexpr std::uint8_t kWipedParameter = 255;
/// Both bytes of the answer that means "done and accepted".
constexpr std::uint8_t kDone = 10;
/// x, y, z and w at rest: gravity pulls along z, where one g is about 21.
constexpr VirtualBoard::Answer kAccelerationXY{0, 0};
constexpr VirtualBoard::Answer kAccelerationZW{21, 0};

/// The 16-bit / 24-bit number at `element` of a report.
std::uint16_t Get16(std::span<const std::uint8_t> report, std::size_t element) {
  return core::base::GetBig16(report.subspan(element).first<2>());
}
std::uint32_t Get24(std::span<const std::uint8_t> report, std::size_t element) {
  return core::base::GetBig24(report.subspan(element).first<3>());
}

BoardStore::Opened InMemory(const BoardState& state) { return {nullptr, state, {}, false, ""}; }

}  // namespace

VirtualBoard::Created VirtualBoard::Create(const BoardOptions& options, core::base::Disk* disk) {
  BoardStore::Opened opened;
  if (options.dir.empty()) {
    BoardState state;
    state.id = options.id.value_or(state.id);
    state.serial = options.serial.value_or(state.serial);
    opened = InMemory(state);
  } else {
    opened = BoardStore::Open(options, disk);
    if (!opened.problem.empty()) return {nullptr, opened.inUse, std::move(opened.problem)};
  }
  return {std::unique_ptr<VirtualBoard>(new VirtualBoard(options.erase, std::move(opened))), false, ""};
}

VirtualBoard::VirtualBoard(const BoardState& state, Time eraseTime) : VirtualBoard(eraseTime, InMemory(state)) {}

VirtualBoard::VirtualBoard(Time eraseTime, BoardStore::Opened opened)
    : m_state(opened.state),
      m_flash(std::move(opened.flash)),
      m_store(std::move(opened.store)),
      m_eraseTime(eraseTime) {}

std::span<const std::uint8_t> VirtualBoard::FlashData(ReportView report) {
  constexpr std::size_t kBlockData = 4;
  constexpr std::size_t kCount = 4;
  constexpr std::size_t kRestData = 7;
  if (report[0] == kWrite1k) return report.subspan<kBlockData>();
  if (report[0] != kWriteLess) return {};
  return report.subspan(kRestData, std::min<std::size_t>(Get24(report, kCount), kReportSize - kRestData));
}

void VirtualBoard::Receive(std::span<const std::uint8_t> report, Time now) {
  if (report.size() == kReportSize + 1 && report[0] == 0) report = report.subspan(1);
  if (report.size() != kReportSize) return;
  Advance(now);
  if (m_eraseEnd) {
    std::copy(report.begin(), report.end(), m_waiting.emplace_back().begin());
  } else {
    Execute(report.first<kReportSize>(), now);
  }
}

std::span<const std::uint8_t> VirtualBoard::Flash() const {
  if (m_flash.empty()) m_flash.assign(FlashSizeOf(m_state.id), kErased);
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
  switch (report[0]) {
    case kReset:
      ++m_state.resets;
      KeepState();
      break;
    case kGetSN:
      Put16(static_cast<std::uint16_t>(m_state.serial >> 16));
      Put16(static_cast<std::uint16_t>(m_state.serial));
      break;
    case kGetID:
      Put16(m_state.id);
      break;
    case kBye:
      ++m_state.byes;
      KeepState();
      break;
    case kClearFlash:
      Erase(now);
      break;
    case kWrite1k:
    case kWriteLess:
      Write(Get24(report, 1), FlashData(report));
      break;
    case kCheckCRC:
      Put16(FlashSum(Get24(report, 1), Get24(report, 4)));
      break;
    case kGetACC:
      m_answers.insert(m_answers.end(), {kAccelerationXY, kAccelerationZW});
      break;
    case kGetAccParam:
      for (std::size_t i = 0; i < m_state.accelerometer.size(); i += 2)
        Put(m_state.accelerometer[i], m_state.accelerometer[i + 1]);
      break;
    case kSetAccParam:
      std::copy_n(report.begin() + 1, m_state.accelerometer.size(), m_state.accelerometer.begin());
      Accept();
      break;
    case kGetLEDParam:
      for (const std::uint16_t value : m_state.ledParam) Put16(value);
      break;
    case kSetLEDParam:
      for (std::size_t i = 0; i < m_state.ledParam.size(); ++i) m_state.ledParam[i] = Get16(report, 1 + 2 * i);
      Accept();
      break;
    // The board has no other pulses; a command for one is as unknown to it as an unknown code.
    case kGetLEDPulses:
      if (report[1] < m_state.ledPulses.size()) AnswerPulse(report[1]);
      break;
    case kSetLEDPulses:
      if (report[1] < m_state.ledPulses.size()) TakePulse(report, report[1]);
      break;
    case kStartPulse:
      m_state.pulseStarted = report[1];
      Accept();
      break;
    case kGetLEDConfig:
      Put16(m_state.ledConfig.code);
      Put16(m_state.ledConfig.voltageTenths);
      Put16(m_state.ledConfig.overdrive);
      break;
    case kSetLEDConfig:
      m_state.ledConfig = {Get16(report, 1), Get16(report, 3), Get16(report, 5)};
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

void VirtualBoard::Acknowledge() { Put(kDone, kDone); }

void VirtualBoard::Accept() {
  KeepState();
  Acknowledge();
}

void VirtualBoard::KeepState() {
  if (m_store) m_store->WriteState(m_state);
}

void VirtualBoard::Erase(Time now) {
  m_flash.clear();
  m_state.accelerometer.fill(kWipedParameter);
  if (m_store) m_store->EraseFlash();
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
  if (m_store) m_store->WriteFlash(m_flash, address, count);
}

std::uint16_t VirtualBoard::FlashSum(std::uint32_t address, std::uint32_t count) const {
  const std::span<const std::uint8_t> flash = Flash();
  if (address >= flash.size()) return 0;
  return core::base::ByteSum(flash.subspan(address, std::min<std::size_t>(count, flash.size() - address)));
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
  std::size_t element = 2;
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
