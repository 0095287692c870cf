#include "device/DeviceSession.h"

#include <algorithm>

namespace kestrin::device {

namespace {

constexpr const char* kNoConnection =
    "A connection with Kuskekpize could not be established.\r\n"
    " Press OK to work offline or Cancel to exit the application";
constexpr const char* kInvalidCatalogue =
    "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";

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
  m_id = board->GetID();
  const bool knowsId = board->HasAnswered();
  const BoardIdentity identity = Identify(m_id);
  if (identity.memoryCapacity) {
    m_memoryCapacity = *identity.memoryCapacity;
    m_view.SetMemoryCapacity(m_memoryCapacity);
  }
  m_deviceType = identity.type;
  m_deviceRevision = identity.revision;
  m_serialNumber = board->GetSN();
  m_identified = knowsId && m_serialNumber != TLS::kNoSerialNumber && m_serialNumber.size() == TLS::kSerialDigits;
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
    if (board != nullptr && board->GetSN() != TLS::kNoSerialNumber) GoOnline();
  } catch (const AgentError&) {
    // The next tick tries again.
  }
}

void DeviceSession::Exit() {
  // A board that is gone cannot hear the good-bye, and nobody waits for an answer.
  if (TLS* const board = Board()) static_cast<void>(board->Bye());
  m_agent.Stop();
  m_devices.clear();
}

void DeviceSession::InterfaceOpened(std::int32_t handle, std::int32_t, std::int32_t, const std::string&) {
  const auto waiting = std::find_if(m_devices.begin(), m_devices.end(), [&](const std::unique_ptr<TLS>& device) {
    return device->HasHandle(handle) && device->UnboundVarCount() > 0;
  });
  if (waiting != m_devices.end()) {
    static_cast<void>((*waiting)->BindVars(m_agent));
    return;
  }
  auto device = std::make_unique<TLS>();
  if (device->BindVars(m_agent) >= 0) m_devices.push_back(std::move(device));
}

void DeviceSession::InterfaceClosed(std::int32_t handle, const std::string&) {
  for (auto device = m_devices.rbegin(); device != m_devices.rend(); ++device) {
    if (!(*device)->HasHandle(handle)) continue;
    (*device)->HidClosed(handle);
    (*device)->Shutdown();
    device->reset();
  }
  m_devices.erase(std::remove(m_devices.begin(), m_devices.end(), nullptr), m_devices.end());

  for (std::size_t position = 0; position < m_devices.size(); ++position) {
    try {
      m_agent.SelectInterface(static_cast<std::int32_t>(position));
      m_devices[position]->ReBind(m_agent);
    } catch (const AgentError&) {
      // Its own interface is going too: its notice follows.
    }
  }
}

void DeviceSession::DeviceRemoved(std::int32_t, const std::string&) { GoOffline(); }

void DeviceSession::DeviceArrival(const std::string&) {
  // What the search opens is heard of through InterfaceOpened(); the timer then finds the board answering.
  if (!m_loading) static_cast<void>(m_agent.SearchAndOpen());
}

void DeviceSession::ReportArrived(std::int32_t handle, std::int32_t reportNumber) {
  for (const std::unique_ptr<TLS>& device : m_devices) device->HidRptArrived(handle, reportNumber);
}

}  // namespace kestrin::device
