#include "device/DeviceSession.h"

#include <algorithm>
#include <cstdio>

namespace kestrin::core::device {

namespace {

constexpr const char* kNoConnection =
    "A connection with Kuskekpize could not be established.\r\n"
    " Press OK to work offline or Cancel to exit the application";
constexpr const char* kInvalidCatalogue =
    "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";
constexpr const char* kStillBusy = "The board is still busy, please wait ...";

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

}  // namespace

DeviceSession::DeviceSession(THIDagent& agent, SessionView& view) : m_agent(agent), m_view(view) {
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
    return m_online ? StartUp::Online : StartUp::Offline;
  }
  GoOffline();
  m_view.EnableBoardButtons(false);
  return m_view.AskWorkOffline(kNoConnection, m_agent.AccessProblem()) ? StartUp::Offline : StartUp::Quit;
}

void DeviceSession::GoOnline() {
  TLS* const board = Board();
  if (board == nullptr) {
    GoOffline();
    return;
  }
  m_view.StopGoOnlineTimer();
  m_online = true;
  m_view.ShowOnline(true);

  m_deviceType = device::DeviceType::Unknown;
  m_deviceRevision = 0;
  m_serialNumber = TLS::kNoSerialNumber;
  if (!AskIdentity(*board)) {
    m_deviceType = device::DeviceType::SoundBoard;
    GoOffline();
    return;
  }
  m_finishingBoard = 0;
  const BoardIdentity identity = Identify(m_id);
  if (identity.memoryCapacity) {
    m_memoryCapacity = *identity.memoryCapacity;
    m_view.SetMemoryCapacity(m_memoryCapacity);
  }
  m_deviceType = identity.type;
  m_deviceRevision = identity.revision;
  if (m_knowsId) m_serialNumber = AskSerialNumber(*board);
  m_view.ShowSerialLabel(std::string(identity.caption) + m_serialNumber);

  if (m_deviceType == device::DeviceType::SoundBoard) {
    m_view.ReadAccData();
    m_view.EnableFileButtons();
    m_view.EnableBoardButtons(true);
    m_view.ShowLedFrame(false);
    return;
  }
  m_view.ShowLedFrame(true);
  if (!m_view.InitLedDrivers()) {
    m_view.ShowMessage(kInvalidCatalogue);
    GoOffline();
    return;
  }
  m_view.EnableBoardButtons(false);
}

bool DeviceSession::AskIdentity(TLS& board) {
  m_id = board.GetID();
  // A question that did not get through can be asked again at once.
  if (!board.HasAnswered() && !board.OwesAnswer()) m_id = board.GetID();
  m_knowsId = board.HasAnswered();
  const bool owes = board.OwesAnswer();
  if (!m_knowsId && !m_view.WaitForBoard(kStillBusy)) {
    m_unsettledBoard = board.ClassDebugID();
    return false;
  }
  if (owes || (m_knowsId && m_id == kLateAcknowledgement)) {
    // While it keeps silent the next answer would be as doubtful as the first: it is not asked again then.
    const bool settled = LetLateAnswersPass(board, m_knowsId);
    m_id = settled ? board.GetID() : 0;
    m_knowsId = settled && board.HasAnswered();
  }
  return true;
}

std::string DeviceSession::AskSerialNumber(TLS& board) const {
  std::string serial = board.GetSN();
  // One that begins like the answer to another question may be that answer, with its own moved up by one.
  if (!serial.starts_with(DigitsOf(kLateAcknowledgement)) && !serial.starts_with(DigitsOf(m_id))) return serial;
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

bool DeviceSession::EnsureIdentified() {
  TLS* const board = Board();
  if (board == nullptr || !m_online) return false;
  if (!m_knowsId || IsIdentified()) return IsIdentified();
  m_serialNumber = AskSerialNumber(*board);
  if (IsIdentified()) m_view.ShowSerialLabel(std::string(Identify(m_id).caption) + m_serialNumber);
  return IsIdentified();
}

std::string DeviceSession::WhyNotIdentified() const {
  if (!m_knowsId) return "The board did not say what it is. Unplug it, plug it in again and repeat this.";
  if (!IsIdentified())
    return "The board did not tell its whole serial number. Unplug it, plug it in again and repeat this.";
  return "";
}

void DeviceSession::GoOffline() {
  m_online = false;
  m_view.StartGoOnlineTimer(kReconnectMilliseconds);
  m_view.ShowOnline(false);
  m_view.ShowSerialLabel("");
  if (m_deviceType == device::DeviceType::SoundBoard) m_view.EnableFileButtons();
  m_view.EnableBoardButtons(false);
}

void DeviceSession::GoOnlineTimerTick() {
  try {
    m_agent.Refresh();
    TLS* const board = Board();
    if (board == nullptr) return;
    const std::string serial = board->GetSN();
    if (serial == TLS::kNoSerialNumber) {
      if (board->OwesAnswer()) m_unsettledBoard = board->ClassDebugID();
      return;
    }
    // The first answer behind a silence is the one of an erase, and those to all earlier ticks follow.
    if (IsUnsettled(*board) || serial.starts_with(DigitsOf(kLateAcknowledgement))) {
      if (!LetLateAnswersPass(*board, true)) return;
      m_unsettledBoard = 0;
    }
    GoOnline();
  } catch (const AgentError&) {
    // The next tick tries again.
  }
}

void DeviceSession::LetBoardFinish() {
  if (const TLS* const board = Board()) m_finishingBoard = board->ClassDebugID();
  GoOffline();
}

void DeviceSession::Exit() {
  // A board that is gone cannot hear the good-bye, and nobody waits for an answer.
  if (TLS* const board = Board()) static_cast<void>(board->Bye());
  m_agent.Stop();
  m_devices.clear();
}

bool DeviceSession::Device::CanTake(std::int32_t opened) const {
  const bool unused = !board->CommandVariable().IsBound() && !board->ResponseVariable().IsBound();
  return (board->HasHandle(opened) || unused) && board->UnboundVarCount() > 0;
}

void DeviceSession::InterfaceOpened(std::int32_t handle, std::int32_t, std::int32_t, const std::string&) {
  const auto waiting =
      std::find_if(m_devices.begin(), m_devices.end(), [&](const Device& device) { return device.CanTake(handle); });
  if (waiting != m_devices.end()) {
    if (waiting->board->BindVars(m_agent) >= 0) waiting->handle = handle;
    return;
  }
  Device device{std::make_unique<TLS>(), handle};
  if (device.board->BindVars(m_agent) >= 0) m_devices.push_back(std::move(device));
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
