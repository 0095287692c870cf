// SPDX-License-Identifier: MIT
// Any reports as a board's answers: of any length, number and id, on time, too late or not at all. Every command comes
// to an end in time and says no more than it was told.
//
// Input: byte 0 chooses a board with or without report ids, then reports, each its length (1 .. 68, from a byte) and as
// many bytes as are left.

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "MemoryFolder.h"
#include "core/device/TLS.h"
#include "platform/hid/StackAgent.h"
#include "support/BoardDescriptors.h"
#include "support/FakeHidStack.h"

using kestrin::fuzz::Require;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMostReportBytes = 68;
constexpr std::uint8_t kAnswerId = 2;
/// What a turn of the event pump takes.
constexpr std::chrono::milliseconds kTurn{1};

std::vector<Bytes> Reports(const std::uint8_t* data, std::size_t size) {
  std::vector<Bytes> reports;
  for (std::size_t at = 0; at + 1 < size;) {
    const std::size_t length = std::min<std::size_t>(data[at] % kMostReportBytes + 1, size - at - 1);
    reports.emplace_back(data + at + 1, data + at + 1 + length);
    at += 1 + length;
  }
  return reports;
}

/// The two bytes that a command must take as its only answer; -1 for none.
std::int32_t FirstAnswer(const std::vector<Bytes>& reports, bool numbered) {
  const std::size_t idBytes = numbered ? 1 : 0;
  for (const Bytes& report : reports) {
    if (numbered && report[0] != kAnswerId) continue;
    return report.size() == 2 + idBytes ? report[idBytes] * 256 + report[idBytes + 1] : -1;
  }
  return -1;
}

class Board {
 public:
  Board(std::vector<Bytes> answers, bool numbered) : m_answers(std::move(answers)) {
    auto& device = m_bus.Plug(
        "board", numbered ? kestrin::support::NumberedBoardDescriptor() : kestrin::support::BoardDescriptor());
    device.onWrite = [&](const Bytes&) { device.input.assign(m_answers.begin(), m_answers.end()); };
    m_agent.SetMatch({kestrin::core::device::kBoardVendorId, kestrin::core::device::kBoardProductId, true, true});
    Require(m_agent.SearchAndOpen());
    Require(tls.BindVars(m_agent) == 0);
  }

  /// Checks that what happened since the last call took no longer than so many reads may wait, each with a last turn of
  /// the event pump behind it.
  void RequireTime(int reads) {
    const auto most = (std::chrono::milliseconds(kestrin::core::device::THIDagent::kTimeOut) + kTurn) * reads;
    Require(m_bus.clock.Now() - m_last <= most);
    m_last = m_bus.clock.Now();
  }

 private:
  std::vector<Bytes> m_answers;
  kestrin::support::FakeHidBus m_bus;
  kestrin::core::base::Clock::Duration m_last{};
  kestrin::platform::hid::StackAgent m_agent{
      std::make_unique<kestrin::support::FakeHidStack>(m_bus),
      [this] { return std::make_unique<kestrin::support::FakeDeviceMonitor>(m_bus); },
      // Reports that are passed over take time as well.
      m_bus.clock, [this] { m_bus.clock.Advance(kTurn); }};

 public:
  kestrin::core::device::TLS tls;
};

bool IsSerialNumber(const std::string& text) {
  if (text == kestrin::core::device::TLS::kNoSerialNumber) return true;
  return (text.size() == 4 || text.size() == 8) && std::all_of(text.begin(), text.end(), [](unsigned char c) {
           return std::isdigit(c) || (c >= 'A' && c <= 'F');
         });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const bool numbered = (data[0] & 1) != 0;
  const std::vector<Bytes> answers = Reports(data + 1, size - 1);
  const std::int32_t first = FirstAnswer(answers, numbered);
  Board board(answers, numbered);
  kestrin::core::device::TLS& tls = board.tls;

  // Twice, as what the first left unread must not answer the second.
  for (int i = 0; i < 2; ++i) {
    Require(tls.GetID() == std::max(first, 0));
    board.RequireTime(1);
  }
  Require(tls.GetMemorySize() == std::max(first, 0) / 256);
  Require(IsSerialNumber(tls.GetSN()));
  Require((tls.GetSN() == kestrin::core::device::TLS::kNoSerialNumber) == (first < 0));

  const bool accepted = first == 10 * 256 + 10;
  Require(tls.SetAccParam({}) == accepted);
  Require(tls.StartPulse(1) == accepted);
  Require(tls.SetLEDConfig(1, 3.7, 100) == accepted);
  const Bytes block(1024, 0x80);  // Their sum, 131,072, is 0 in 16 bits.
  Require(tls.Write1k(0, block) == (first == 0));
  Require(tls.WriteLess(0, 3, block) == (first == 3 * 0x80));
  Require(tls.CheckCRC(0, 1) == (first >= 0));

  kestrin::core::device::AccParam parameters;
  std::array<std::int32_t, 9> values{};
  kestrin::core::led::LED_Pulse pulse;
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t z = 0;
  std::int32_t w = 0;
  double voltage = 0;
  for (const bool whole : {tls.GetAccParam(parameters), tls.GetLEDParam(values), tls.GetLEDPulses(0, pulse),
                           tls.GetACC(x, y, z, w), tls.GetLEDConfig(x, voltage, z)}) {
    Require(!whole || first >= 0);
  }
  for (const std::int32_t value : values) Require(value >= 0 && value <= 65535);
  Require(tls.ClearFlash());
  Require(tls.CheckCompletion() == accepted);
  return 0;
}
