// SPDX-License-Identifier: MIT
#include "device/DeviceSession.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "led/LedCatalogue.h"

namespace kestrin::core::device {

namespace {

using Stage = SessionState::Stage;

constexpr const char* kNoConnection =
    "A connection with Kuskekpize could not be established.\r\n"
    " Press OK to work offline or Cancel to exit the application";
constexpr const char* kStillBusy = "The board is still busy, please wait ...";
constexpr const char* kTakesNothing = "The board takes nothing.";

/// What the answer of an erase looks like to who has asked for the identity; its digits to who has asked for the serial
/// number.
constexpr std::int32_t kLateAcknowledgement = kAcknowledge << 8 | kAcknowledge;

/// More answers than any system queues for one reader. A board that never stops talking must not keep anybody waiting.
constexpr int kMostLateAnswers = 256;

/// An answer as the serial number shows it.
std::string DigitsOf(std::int32_t answer) {
  char text[5];
  std::snprintf(text, sizeof text, "%04X", static_cast<unsigned>(answer & 0xFFFF));
  return text;
}

/// What the serial label says of a board.
std::string CaptionOf(const SessionState& state) {
  return std::string(Identify(state.id).caption) + state.serialNumber;
}

}  // namespace

DeviceSession::DeviceSession(THIDagent& agent, SessionView& view, BoardReader* reader)
    : m_agent(agent), m_view(view), m_reader(reader) {
  m_agent.SetEvents(this);
}

DeviceSession::~DeviceSession() { m_agent.SetEvents(nullptr); }

DeviceSession::StartUp DeviceSession::SearchAtStartUp() {
  m_agent.Start();
  HidMatch match;
  match.VID_To_Match = kBoardVendorId;
  match.PID_To_Match = kBoardProductId;
  match.SearchOnVID = true;
  match.SearchOnPID = true;
  m_agent.SetMatch(match);
  if (m_agent.SearchAndOpen() && Board() != nullptr) {
    GoOnline();
    return m_state.IsOnline() ? StartUp::Online : StartUp::Offline;
  }
  GoOffline();
  const std::string& advice = m_state.accessProblem.empty() ? m_state.passedOver : m_state.accessProblem;
  return m_view.AskWorkOffline(kNoConnection, advice) ? StartUp::Offline : StartUp::Quit;
}

void DeviceSession::GoOnline() {
  TLS* const board = Board();
  if (board == nullptr) {
    GoOffline();
    return;
  }
  m_view.StopGoOnlineTimer();
  m_state.stage = Stage::Identifying;
  m_state.deviceType = DeviceType::Unknown;
  m_state.deviceRevision = 0;
  m_state.serialNumber = TLS::kNoSerialNumber;
  Tell();
  if (!AskIdentity(*board)) {
    m_state.deviceType = DeviceType::SoundBoard;
    GoOffline();
    return;
  }
  // A handler that ran while the board was asked may have gone offline.
  if (!m_state.IsOnline()) return;
  m_finishingBoard = 0;
  const BoardIdentity identity = Identify(m_state.id);
  m_state.memoryCapacity = identity.memoryCapacity.value_or(m_state.memoryCapacity);
  m_state.deviceType = identity.type;
  m_state.deviceRevision = identity.revision;
  if (m_state.knowsId) m_state.serialNumber = AskSerialNumber(*board);
  m_state.serialLabel = CaptionOf(m_state);
  m_state.stage = Stage::Reading;
  Tell();
  if (!ReadBoard()) {
    GoOffline();
    return;
  }
  if (!m_state.IsOnline()) return;
  m_state.stage = Stage::Ready;
  Tell();
}

bool DeviceSession::ReadBoard() {
  if (m_reader == nullptr) return true;
  if (m_state.deviceType == DeviceType::LedDriver) return ReadLedDriver();
  m_reader->ReadAccData();
  return true;
}

bool DeviceSession::ReadLedDriver() {
  // Of the catalogue that is about to be read: one that is mended meanwhile is another.
  const std::string stamp = m_reader->CatalogueStamp();
  const base::Result<> read = m_reader->InitLedDrivers();
  if (read) {
    m_ledFailure.reset();
    return true;
  }
  const bool ofCatalogue = read.Why().kind != base::FailureKind::NoAnswer;
  const LedFailure failure{m_state.board, ofCatalogue, stamp};
  if (std::exchange(m_ledFailure, failure) != failure) m_view.ShowMessage(led::LedCatalogue::kInvalid, read.Text());
  return false;
}

bool DeviceSession::WouldFailAgain() const {
  return m_ledFailure && m_ledFailure->ofCatalogue && m_ledFailure->board == m_state.board &&
         m_ledFailure->stamp == m_reader->CatalogueStamp();
}

void DeviceSession::Tell() {
  CountBoards();
  m_state.isFinishing = m_state.board != 0 && m_state.board == m_finishingBoard;
  m_state.accessProblem = m_state.boards == 0 ? m_agent.AccessProblem() : "";
  // Boards stand before it.
  m_state.passedOver = m_devices.empty() || m_devices.back().IsBoard() ? "" : PassedOver(m_devices.back().path);
  if (m_told == m_state) return;
  m_told = m_state;
  m_view.ShowState(m_state);
}

void DeviceSession::CountBoards() {
  m_state.boards = static_cast<std::size_t>(
      std::count_if(m_devices.begin(), m_devices.end(), [](const Device& device) { return device.IsBoard(); }));
  m_state.board = Board() != nullptr ? Board()->ClassDebugID() : 0;
}

bool DeviceSession::AskIdentity(TLS& board) {
  m_state.id = board.GetID();
  m_state.knowsId = board.HasAnswered();
  const bool owes = board.OwesAnswer();
  if (!m_state.knowsId && !m_view.WaitForBoard(owes ? kStillBusy : kTakesNothing)) {
    m_unsettledBoard = board.ClassDebugID();
    return false;
  }
  if (owes || (m_state.knowsId && m_state.id == kLateAcknowledgement)) {
    // While it keeps silent the next answer would be as doubtful as the first: it is not asked again then.
    const bool settled = LetLateAnswersPass(board, m_state.knowsId);
    m_state.id = settled ? board.GetID() : 0;
    m_state.knowsId = settled && board.HasAnswered();
  }
  return true;
}

std::string DeviceSession::AskSerialNumber(TLS& board) const {
  std::string serial = board.GetSN();
  // One that begins like the answer to another question may be that answer, with its own moved up by one.
  if (!serial.starts_with(DigitsOf(kLateAcknowledgement)) && !serial.starts_with(DigitsOf(m_state.id))) return serial;
  if (board.GetSN() == serial) return serial;
  static_cast<void>(LetLateAnswersPass(board, true));
  return board.GetSN();
}

bool DeviceSession::LetLateAnswersPass(TLS& board, bool heard) {
  int answers = 0;
  for (int vain = heard ? 1 : kPatience; vain > 0;) {
    if (!board.ReadInputRptB()) {
      --vain;
    } else if (++answers < kMostLateAnswers) {
      vain = 1;
    } else {
      return false;
    }
  }
  return heard || answers > 0;
}

base::Result<> DeviceSession::EnsureIdentified() {
  TLS* const board = Board();
  if (board == nullptr || !m_state.IsOnline())
    return base::Failure{base::FailureKind::NoAnswer, "No board is connected. Plug one in and repeat this."};
  // An answer that is late would be taken for the one to what is asked next.
  if (IsUnsettled(*board)) {
    if (!LetLateAnswersPass(*board, true))
      return base::Failure{base::FailureKind::NoAnswer,
                           "The board answers what nobody has asked. Unplug it, plug it in and repeat this."};
    m_unsettledBoard = 0;
  }
  if (m_state.knowsId && !m_state.IsIdentified()) {
    m_state.serialNumber = AskSerialNumber(*board);
    if (m_state.IsIdentified()) m_state.serialLabel = CaptionOf(m_state);
    Tell();
  }
  return m_state.Identified();
}

void DeviceSession::GoOffline() {
  m_state.stage = Stage::Offline;
  m_state.serialLabel.clear();
  m_view.StartGoOnlineTimer(kReconnectMilliseconds);
  Tell();
}

void DeviceSession::GoOnlineTimerTick() {
  try {
    m_agent.Refresh();
    GoOnlineIfItAnswers();
  } catch (const AgentError&) {
    // The next tick tries again.
  }
  Tell();
}

void DeviceSession::LookForNotices() {
  m_agent.Refresh();
  Tell();
}

void DeviceSession::GoOnlineIfItAnswers() {
  TLS* const board = Board();
  if (board == nullptr || WouldFailAgain()) return;
  const std::string serial = board->GetSN();
  if (serial == TLS::kNoSerialNumber) {
    ExpectLateAnswer();
    return;
  }
  // The first answer behind a silence is the one of an erase, and those to all earlier ticks follow.
  if (IsUnsettled(*board) || serial.starts_with(DigitsOf(kLateAcknowledgement))) {
    if (!LetLateAnswersPass(*board, true)) return;
    m_unsettledBoard = 0;
  }
  GoOnline();
}

void DeviceSession::ExpectLateAnswer() {
  const TLS* const board = Board();
  if (board != nullptr && board->OwesAnswer()) m_unsettledBoard = board->ClassDebugID();
}

void DeviceSession::LetBoardFinish() {
  if (const TLS* const board = Board()) m_finishingBoard = board->ClassDebugID();
  GoOffline();
}

void DeviceSession::Exit() {
  // A board that is gone cannot hear the good-bye, one that takes nothing will not, and nobody waits for an answer.
  if (TLS* const board = Board(); board != nullptr && !board->HasRefused()) static_cast<void>(board->Bye());
  m_agent.Stop();
  m_devices.clear();
  CountBoards();
}

void DeviceSession::InterfaceOpened(std::int32_t handle, std::int32_t, std::int32_t, const std::string& path) {
  const auto waiting = std::find_if(m_devices.begin(), m_devices.end(),
                                    [&](const Device& device) { return device.Has(handle) && !device.IsBoard(); });
  if (waiting != m_devices.end()) {
    static_cast<void>(waiting->board->BindVars(m_agent));
  } else {
    Device device{std::make_unique<TLS>(), handle, path};
    if (device.board->BindVars(m_agent) >= 0) m_devices.push_back(std::move(device));
  }
  SortDevices();
  CountBoards();
}

TLS* DeviceSession::Board() const {
  return m_devices.empty() || !m_devices.front().IsBoard() ? nullptr : m_devices.front().board.get();
}

void DeviceSession::SortDevices() {
  std::stable_partition(m_devices.begin(), m_devices.end(), [](const Device& device) { return device.IsBoard(); });
}

void DeviceSession::InterfaceClosed(std::int32_t handle, const std::string&) {
  for (auto device = m_devices.rbegin(); device != m_devices.rend(); ++device) {
    if (!device->Has(handle)) continue;
    device->board->HidClosed(handle);
    device->board->Shutdown();
    device->board.reset();
  }
  m_devices.erase(
      std::remove_if(m_devices.begin(), m_devices.end(), [](const Device& device) { return device.board == nullptr; }),
      m_devices.end());

  for (const Device& device : m_devices) {
    try {
      SelectInterfaceOf(device.handle);
      device.board->ReBind(m_agent);
    } catch (const AgentError&) {
      // Its own interface is going too: its notice follows.
    }
  }
  SortDevices();
  CountBoards();
}

void DeviceSession::SelectInterfaceOf(std::int32_t handle) {
  // Not by the place in the list: an interface without any board's variables has none.
  for (std::int32_t number = 0; number < m_agent.NumberOfInterfaces(); ++number) {
    m_agent.SelectInterface(number);
    if (m_agent.InterfaceHandle() == handle) return;
  }
  throw AgentError("the board's interface is closed");
}

void DeviceSession::DeviceRemoved(std::int32_t, const std::string&) { GoOffline(); }

void DeviceSession::DeviceArrival(const std::string&) {
  // What the search opens is heard of through InterfaceOpened(); the timer then finds the board answering.
  if (!m_loading) static_cast<void>(m_agent.SearchAndOpen());
}

void DeviceSession::ReportArrived(std::int32_t handle, std::int32_t reportNumber) {
  for (const Device& device : m_devices) device.board->HidRptArrived(handle, reportNumber);
}

}  // namespace kestrin::core::device
