#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "device/BoardIdentity.h"
#include "device/SessionView.h"
#include "device/THIDagent.h"
#include "device/TLS.h"

namespace kestrin::device {

/// Finds the board, recognises it, notices it going and coming back, says good-bye. Boards whose interfaces are open
/// stand in the device list; item 1 is the one that everything talks to.
class DeviceSession final : public HidAgentEvents {
 public:
  static constexpr std::int32_t kReconnectMilliseconds = 1000;

  /// How the start-up search ended.
  enum class StartUp { Online, Offline, Quit };

  /// Both must outlive the session.
  DeviceSession(THIDagent& agent, SessionView& view);
  ~DeviceSession() override;
  DeviceSession(const DeviceSession&) = delete;
  DeviceSession& operator=(const DeviceSession&) = delete;

  /// The start-up search: goes online with the first board, or offline, and then asks whether to go on without one.
  [[nodiscard]] StartUp SearchAtStartUp();
  /// While the program starts up, boards that arrive do not start a search.
  void SetLoading(bool loading) { m_loading = loading; }

  /// Identifies item 1 of the device list and shows it. Goes offline instead when the list is empty, or with a message
  /// when an LED driver's catalogue is not valid.
  void GoOnline();
  /// Shows that there is no board and starts the reconnection timer.
  void GoOffline();
  /// Once a second while offline: goes online when item 1 answers with a serial number.
  void GoOnlineTimerTick();
  /// Says good-bye to the board, whatever the state, and stops the agent.
  void Exit();

  /// Item 1 of the device list, nullptr when it is empty.
  [[nodiscard]] TLS* Board() { return m_devices.empty() ? nullptr : m_devices.front().get(); }
  [[nodiscard]] std::size_t NumberOfBoards() const { return m_devices.size(); }
  /// True from a GoOnline() until the next GoOffline().
  [[nodiscard]] bool IsOnline() const { return m_online; }
  [[nodiscard]] device::DeviceType DeviceType() const { return m_deviceType; }
  [[nodiscard]] std::uint16_t DeviceRevision() const { return m_deviceRevision; }
  /// Samples that the board holds; that of the last sound board, or the smaller model's at first.
  [[nodiscard]] std::int32_t MemoryCapacity() const { return m_memoryCapacity; }
  /// Whether that board said what it is and which one: its identity and its whole serial number came. Nothing
  /// irreversible may be done to a board that did not.
  [[nodiscard]] bool IsIdentified() const { return m_identified; }
  /// The identity number of the last board that came online.
  [[nodiscard]] std::int32_t Id() const { return m_id; }
  /// Its serial number as GetSN gave it; "" before any.
  [[nodiscard]] const std::string& SerialNumber() const { return m_serialNumber; }

  void InterfaceOpened(std::int32_t handle, std::int32_t reportLengthIn, std::int32_t reportLengthOut,
                       const std::string& path) override;
  void InterfaceClosed(std::int32_t handle, const std::string& path) override;
  void DeviceRemoved(std::int32_t handle, const std::string& path) override;
  void DeviceArrival(const std::string& path) override;
  void ReportArrived(std::int32_t handle, std::int32_t reportNumber) override;
  /// Has no effect: the command that waited says what failed.
  void ReportTimedOut(std::int32_t, std::int32_t) override {}

 private:
  THIDagent& m_agent;
  SessionView& m_view;
  std::vector<std::unique_ptr<TLS>> m_devices;
  bool m_online = false;
  bool m_loading = false;
  device::DeviceType m_deviceType = device::DeviceType::SoundBoard;
  std::uint16_t m_deviceRevision = 0;
  std::int32_t m_memoryCapacity = kDefaultMemoryCapacity;
  bool m_identified = false;
  std::int32_t m_id = 0;
  std::string m_serialNumber;
};

}  // namespace kestrin::device
