// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/BoardReader.h"
#include "device/SessionState.h"
#include "device/SessionView.h"
#include "device/THIDagent.h"
#include "device/TLS.h"

namespace kestrin::core::device {

/// Finds the board, recognises it, notices it going and coming back, says good-bye. Boards whose interfaces are open
/// stand in the device list, and behind them devices that have a board's ids but not its two variables; item 1, when it
/// is a board, is the one that everything talks to.
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

  /// All must outlive the session. Without a `reader` nobody wants to know what a board holds.
  DeviceSession(THIDagent& agent, SessionView& view, BoardReader* reader = nullptr);
  ~DeviceSession() override;
  DeviceSession(const DeviceSession&) = delete;
  DeviceSession& operator=(const DeviceSession&) = delete;

  /// The start-up search: goes online with the first board, or offline, and then asks whether to go on without one. A
  /// board that is there but busy is no reason to ask: the timer brings it online.
  [[nodiscard]] StartUp SearchAtStartUp();
  /// While the program starts up, boards that arrive do not start a search.
  void SetLoading(bool loading) { m_loading = loading; }

  /// Identifies item 1 of the device list and has it read. Goes offline instead when the list is empty, when the board
  /// is busy and the view does not want to wait, or with a message when an LED driver could not be read. A board that
  /// keeps failing for the same reason is told of once.
  void GoOnline();
  /// Tells that there is no board and starts the reconnection timer.
  void GoOffline();
  /// Once a second while offline: goes online when item 1 answers with a serial number. An LED driver that the
  /// catalogue is not good for is left alone until the catalogue has changed.
  void GoOnlineTimerTick();
  /// Tells what has been plugged in and out since the last look.
  void LookForNotices();
  /// A run has left item 1 in the middle of an erase: goes offline until it has finished.
  void LetBoardFinish();
  /// Asks for the serial number again when that is all that is missing. Whether the board is identified then; a failure
  /// says why not, and the next step. To be called before something is sent: an answer that item 1 owes passes first.
  base::Result<> EnsureIdentified();
  /// Somebody else has asked item 1 something. If it still owes the answer, that may come late: the next ones are not
  /// believed before the board has nothing left to say.
  void ExpectLateAnswer();
  /// The program is about to end, or means to: a board that takes nothing holds up no command any longer.
  void Hurry() { m_agent.Hurry(); }
  /// Says good-bye to the board, whatever the state, unless it took nothing just now, and stops the agent.
  void Exit();

  /// Item 1 of the device list, nullptr when no board is there.
  [[nodiscard]] TLS* Board() const;
  [[nodiscard]] const SessionState& State() const { return m_state; }

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
    /// The interface's.
    std::string path;

    /// Whether an interface is this board's.
    [[nodiscard]] bool Has(std::int32_t other) const { return handle == other || board->HasHandle(other); }
    /// Whether both of a board's variables were found.
    [[nodiscard]] bool IsBoard() const { return board->UnboundVarCount() == 0; }
  };

  /// What reading an LED driver failed at.
  struct LedFailure {
    /// The board's number.
    std::int32_t board = 0;
    /// The catalogue's fault, not the board's.
    bool ofCatalogue = false;
    /// The catalogue's.
    std::string stamp;

    friend bool operator==(const LedFailure&, const LedFailure&) = default;
  };

  /// Has what the board holds read. False when that failed, with a message unless the same was told already.
  [[nodiscard]] bool ReadBoard();
  [[nodiscard]] bool ReadLedDriver();
  /// A board with a catalogue that is not good for it would only fail again; one that did not answer may do so now.
  [[nodiscard]] bool WouldFailAgain() const;
  /// Takes into the state what is there, and tells the view when it differs from what it was told.
  void Tell();
  void CountBoards();
  /// Boards first, each kind in the order in which they came.
  void SortDevices();
  void GoOnlineIfItAnswers();
  /// Asks what the board is, once when it takes nothing. False when it does not answer yet and is not waited for.
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
  BoardReader* m_reader;
  std::vector<Device> m_devices;
  SessionState m_state;
  /// What the view was told last.
  std::optional<SessionState> m_told;
  bool m_loading = false;
  /// The numbers of the boards that IsUnsettled() and `isFinishing` mean; 0 for none.
  std::int32_t m_unsettledBoard = 0;
  std::int32_t m_finishingBoard = 0;
  /// How the last LED driver ended that was read; empty for well.
  std::optional<LedFailure> m_ledFailure;
};

}  // namespace kestrin::core::device
