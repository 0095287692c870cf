// SPDX-License-Identifier: MIT
#include "doctor/Interview.h"

#include <array>

#include "base/Bytes.h"
#include "device/BoardIdentity.h"
#include "device/Protocol.h"
#include "doctor/HexText.h"

namespace kestrin::core::doctor {

namespace {

using device::Command;

/// Which boards a question is for: what the others do with it is not known.
enum class For { Every, SoundBoards, LedDrivers };

/// A command that changes nothing.
struct Harmless {
  const char* name;
  Command command;
  std::array<std::uint8_t, 6> arguments;
  std::size_t answers;
  For boards;
};

constexpr Harmless kIdentity{"GetID", Command::GetID, {}, 1, For::Every};

/// Of the flash the place of the file table is asked for, of the pulses the first.
constexpr Harmless kOthers[] = {
    {"GetSN", Command::GetSN, {}, 2, For::Every},
    {"CheckCRC", Command::CheckCRC, {0, 0, 12, 0, 0, 46}, 1, For::SoundBoards},
    {"GetACC", Command::GetACC, {}, 2, For::SoundBoards},
    {"GetAccParam", Command::GetAccParam, {}, 3, For::SoundBoards},
    {"GetLEDParam", Command::GetLEDParam, {}, 9, For::LedDrivers},
    {"GetLEDPulses", Command::GetLEDPulses, {}, 9, For::LedDrivers},
    {"GetLEDConfig", Command::GetLEDConfig, {}, 3, For::LedDrivers},
};

bool IsFor(const Harmless& question, device::DeviceType type) {
  if (question.boards == For::Every) return true;
  return (question.boards == For::LedDrivers) == (type == device::DeviceType::LedDriver);
}

/// The number that an answer begins with.
std::int32_t FrontOf(const std::vector<std::uint8_t>& answer) { return base::GetBig16(std::span(answer).first<2>()); }

class Interviewer {
 public:
  Interviewer(device::TLS& board, const base::Clock& clock) : m_board(board), m_clock(clock) {}

  [[nodiscard]] Exchange Ask(const Harmless& question) {
    const base::Clock::Duration begin = m_clock.Now();
    m_board.Set_LS_Command(0, static_cast<std::uint8_t>(question.command));
    int element = static_cast<int>(device::kArguments);
    for (const std::uint8_t argument : question.arguments) m_board.Set_LS_Command(element++, argument);

    Exchange exchange{question.name, {}, question.answers * device::kResponseSize, {}};
    m_written = m_board.WriteOutputRptA();
    for (std::size_t report = 0; m_written && report < question.answers && m_board.ReadInputRptB(); ++report)
      for (int byte = 0; byte < static_cast<int>(device::kResponseSize); ++byte)
        exchange.answer.push_back(m_board.Get_LS_Response(byte));
    exchange.took = std::chrono::duration_cast<std::chrono::microseconds>(m_clock.Now() - begin);
    return exchange;
  }
  /// Whether the last question got through to the board.
  [[nodiscard]] bool WasWritten() const { return m_written; }

  /// The serial number of that answer. One that may be the answer to an earlier question is believed only when it comes
  /// twice; "" for none.
  [[nodiscard]] std::string SerialNumberOf(const Exchange& exchange, std::int32_t id, const Harmless& question) {
    constexpr std::int32_t kErased = device::kAcknowledge << 8 | device::kAcknowledge;
    if (!exchange.IsAsExpected()) return "";
    const std::int32_t front = FrontOf(exchange.answer);
    const bool isDoubtful = front == kErased || front == id;
    if (isDoubtful && Ask(question).answer != exchange.answer) return "";
    return HexText(exchange.answer, "");
  }

 private:
  device::TLS& m_board;
  const base::Clock& m_clock;
  bool m_written = false;
};

}  // namespace

Answers Interview(device::TLS& board, const base::Clock& clock, const std::function<bool()>& goOn) {
  Answers answers;
  if (!goOn()) return answers;
  Interviewer interviewer(board, clock);
  Exchange exchange = interviewer.Ask(kIdentity);
  answers.written = interviewer.WasWritten();
  answers.answered = !exchange.answer.empty();
  answers.exchanges.push_back(exchange);

  // What comes late from before is over after these, so the last one counts.
  for (int number = 0; number < Answers::kRoundTrips && !exchange.answer.empty(); ++number) {
    if (!goOn()) return answers;
    exchange = interviewer.Ask(kIdentity);
    if (!exchange.answer.empty()) answers.roundTrips.push_back(exchange.took);
  }
  if (exchange.answer.empty()) return answers;
  answers.id = FrontOf(exchange.answer);

  for (const Harmless& question : kOthers) {
    if (!IsFor(question, device::Identify(*answers.id).type)) continue;
    if (!goOn()) return answers;
    exchange = interviewer.Ask(question);
    answers.exchanges.push_back(exchange);
    if (exchange.answer.empty()) return answers;
    if (question.command == Command::GetSN)
      answers.serialNumber = interviewer.SerialNumberOf(exchange, *answers.id, question);
  }
  return answers;
}

}  // namespace kestrin::core::doctor
