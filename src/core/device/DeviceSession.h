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

namespace kestrin::core::device {

/// Finds the board, recognises it, notices it going and coming back, says good-bye. Boards whose interfaces are open
/// stand in the device list; item 1 is the one that everything talks to.
///
/// A board that erases its flash answers nothing for up to half a minute, whoever asks. Done, it first answers the
/// erase (10, 10) and then, in order, everything that it was asked meanwhile, also by a program that is gone. Identity
/// and serial number are believed only when they can be neither of these: what is doubtful is asked for again once the
/// board has nothing left to say.
class DeviceSession final : public HidAgentEvents {
 public:
  static constexpr std::int32_t kReconnectMilliseconds = 1000;
  /// How many reads in vain, of up to three seconds each, an erase may take behind the one of the question.
  static constexpr int kPatience = 10;

  /// How the start-up search ended.
  enum class StartUp { Online, Offline, Quit };

  /// Both must outlive the session.
  DeviceSession(THIDagent& agent, SessionView& view);
  ~DeviceSession() override;
  DeviceSession(const DeviceSession&) = delete;
  DeviceSession& operator=(const DeviceSession&) = delete;

  /// The start-up search: goes online with the first board, or offline, and then asks whether to go on without one. A
  /// board that is there but busy is no reason to ask: the timer brings it online.
  [[nodiscard]] StartUp SearchAtStartUp();
  /// While the program starts up, boards that arrive do not start a search.
  void SetLoading(bool loading) { m_loading = loading; }

  /// Identifies item 1 of the device list and shows it. Goes offline instead when the list is empty, when the board is
  /// busy and the view does not want to wait, or with a message when an LED driver's catalogue is not valid.
  void GoOnline();
  /// Shows that there is no board and starts the reconnection timer.
  void GoOffline();
  /// Once a second while offline: goes online when item 1 answers with a serial number.
  void GoOnlineTimerTick();
  /// A run has left item 1 in the middle of an erase: goes offline until it has finished.
  void LetBoardFinish();
  /// From a LetBoardFinish() until the next GoOnline() of that board.
  [[nodiscard]] bool IsFinishing() const { return Board() != nullptr && Board()->ClassDebugID() == m_finishingBoard; }
  /// Asks for the serial number again when that is all that is missing. Whether the board is identified then.
  [[nodiscard]] bool EnsureIdentified();
  /// Why the board is not identified, and the next step; "" for one that is.
  [[nodiscard]] std::string WhyNotIdentified() const;
  /// Says good-bye to the board, whatever the state, and stops the agent.
  void Exit();

  /// Item 1 of the device list, nullptr when it is empty.
  [[nodiscard]] TLS* Board() const { return m_devices.empty() ? nullptr : m_devices.front().board.get(); }
  [[nodiscard]] std::size_t NumberOfBoards() const { return m_devices.size(); }
  /// True from a GoOnline() until the next GoOffline().
  [[nodiscard]] bool IsOnline() const { return m_online; }
  [[nodiscard]] device::DeviceType DeviceType() const { return m_deviceType; }
  [[nodiscard]] std::uint16_t DeviceRevision() const { return m_deviceRevision; }
  /// Samples that the board holds; that of the last sound board, or the smaller model's at first.
  [[nodiscard]] std::int32_t MemoryCapacity() const { return m_memoryCapacity; }
  /// Whether that board said what it is.
  [[nodiscard]] bool KnowsId() const { return m_knowsId; }
  /// Whether it also said which one it is: its whole serial number came. Nothing may be written to a sound board that
  /// did not.
  [[nodiscard]] bool IsIdentified() const { return m_knowsId && m_serialNumber.size() == TLS::kSerialDigits; }
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
  struct Device {
    std::unique_ptr<TLS> board;
    /// Its interface, also when none of its variables was found there.
    std::int32_t handle;

    /// Whether an interface is this board's.
    [[nodiscard]] bool Has(std::int32_t other) const { return handle == other || board->HasHandle(other); }
    /// Whether an interface that opens can be this board's: it lacks variables, and has none of another interface.
    [[nodiscard]] bool CanTake(std::int32_t opened) const;
  };

  /// Asks what the board is. False when it does not answer yet and is not waited for.
  [[nodiscard]] bool AskIdentity(TLS& board);
  [[nodiscard]] std::string AskSerialNumber(TLS& board) const;
  /// Reads what the board still has to say, until a read finds nothing; `heard` when something has come before, else
  /// kPatience reads may be in vain. False when nothing has come at all, or when it does not come to an end.
  [[nodiscard]] static bool LetLateAnswersPass(TLS& board, bool heard);
  /// Whether the board has been asked something that it did not answer in time, so that the answer may still come.
  [[nodiscard]] bool IsUnsettled(const TLS& board) const { return m_unsettledBoard == board.ClassDebugID(); }
  /// Selects the interface of that handle. Throws AgentError when it is not open.
  void SelectInterfaceOf(std::int32_t handle);

  THIDagent& m_agent;
  SessionView& m_view;
  std::vector<Device> m_devices;
  bool m_online = false;
  bool m_loading = false;
  /// The numbers of the boards that IsUnsettled() and that IsFinishing() mean; 0 for none.
  std::int32_t m_unsettledBoard = 0;
  std::int32_t m_finishingBoard = 0;
  device::DeviceType m_deviceType = device::DeviceType::SoundBoard;
  std::uint16_t m_deviceRevision = 0;
  std::int32_t m_memoryCapacity = kDefaultMemoryCapacity;
  bool m_knowsId = false;
  std::int32_t m_id = 0;
  std::string m_serialNumber;
};

}  // namespace kestrin::core::device
