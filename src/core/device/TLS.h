// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "device/Protocol.h"
#include "device/THIDagent.h"
#include "device/TOneHidVar.h"
#include "led/LED_Pulse.h"

namespace kestrin::core::device {

/// The six detection parameters of a sound board as the board holds them, in command order.
struct AccParam {
  std::int32_t MotionTh = 0;
  std::int32_t MotionDeb = 0;
  std::int32_t ImpactTh = 0;
  std::int32_t ImpactDeb = 0;
  std::int32_t ImpactTm = 0;
  /// In units of 4 ms.
  std::int32_t FOCTime = 0;

  friend bool operator==(const AccParam&, const AccParam&) = default;
};

/// One attached Kestrin board ("TLS": the light saber; nothing to do with transport security): its two report variables
/// and one method per board command.
///
/// A command is one output report followed by the answer reports that it expects; Protocol.h has their layout. Nothing
/// is retried. Elements that a command does not set keep what an earlier command left there; boards ignore them.
/// A failed write or read makes the command fail; what earlier answers already filled stays filled.
class TLS {
 public:
  static constexpr const char* kNoSerialNumber = "NoSerialNumber";
  /// Digits of a serial number that came whole.
  static constexpr std::size_t kSerialDigits = 8;

  TLS();

  // --- Binding ---

  /// Binds both variables to the agent's last opened interface. Returns how many stay unbound (0: all bound), or -1
  /// when the interface is not a Kestrin board's; nothing is bound then.
  [[nodiscard]] int BindVars(THIDagent& agent);
  /// Unbinds both variables and binds them to the agent's current interface. Returns how many stay unbound.
  int ReBind(THIDagent& agent);
  /// Has no effect; a place for boards that report on their own.
  void BindEvents() {}
  /// Marks the board as no longer usable by the session.
  void Shutdown() { m_bound = false; }
  /// Whether either variable was found on that interface.
  [[nodiscard]] bool HasHandle(std::int32_t handle) const;
  /// Unbinds the variables of an interface that was closed.
  void HidClosed(std::int32_t handle);
  /// Has no effect: every answer is read by the command that expects it.
  void HidRptArrived(std::int32_t, std::int32_t) {}
  /// Forgets the report index that the variable's report has, so that nothing is sent or read through it any more.
  void UnBindRpt(const TOneHidVar& variable);
  /// Unbound variables that carry this board's identity: starts at 2, less one for every other variable.
  [[nodiscard]] int UnboundVarCount() const;
  /// Unique within the process.
  [[nodiscard]] std::int32_t ClassDebugID() const { return m_objectId; }
  [[nodiscard]] const TOneHidVar& CommandVariable() const { return m_variables[kCommand]; }
  [[nodiscard]] const TOneHidVar& ResponseVariable() const { return m_variables[kResponse]; }

  // --- Reports ---

  /// Element 0 .. 1027 of the command buffer; throws std::out_of_range beyond.
  void Set_LS_Command(int index, std::uint8_t value);
  /// Writes the command buffer, all 1,028 elements, as one output report. False when there is no output report index
  /// (nothing is sent then) or the write failed.
  [[nodiscard]] bool WriteOutputRptA();
  /// Reads one input report into the response buffer, whatever the read said. False when there is no input report index
  /// (the buffer is left alone then) or the read failed.
  [[nodiscard]] bool ReadInputRptB();
  /// Element 0 .. 1 of the last answer; throws std::out_of_range beyond.
  [[nodiscard]] std::uint8_t Get_LS_Response(int index) const;

  // --- Commands; see docs/protocol.md for their bytes ---

  /// Restarts the board. True when the report was written.
  [[nodiscard]] bool Reset();
  /// Eight upper-case hexadecimal digits; four when only the first answer came; "NoSerialNumber" when none came.
  [[nodiscard]] std::string GetSN();
  /// The identity, 0 .. 65535; 0 on failure.
  [[nodiscard]] std::int32_t GetID();
  /// Whether the last read of an answer succeeded: tells an identity of 0 from none.
  [[nodiscard]] bool HasAnswered() const { return m_answered; }
  /// Whether the last command was written and no answer to it was read since: it may still come.
  [[nodiscard]] bool OwesAnswer() const { return m_written && !m_answered; }
  /// Whether the last report that was sent did not get through.
  [[nodiscard]] bool HasRefused() const { return m_refused; }
  /// Good-bye: the program lets go of the board. True when the report was written.
  [[nodiscard]] bool Bye();
  /// Starts erasing the flash; the board answers when it is done, see CheckCompletion(). True when the report was
  /// written.
  [[nodiscard]] bool ClearFlash();
  /// Reads one pending answer without sending anything. True when it is 10, 10.
  [[nodiscard]] bool CheckCompletion();
  /// Writes 1,024 bytes at a 24-bit flash address. True when the board's answer equals their sum modulo 65536.
  /// Throws std::out_of_range when `data` has fewer than 1,024 bytes.
  [[nodiscard]] bool Write1k(std::int32_t address, std::span<const std::uint8_t> data);
  /// Writes the first `count` bytes (0 .. 1,021) of `data` at a 24-bit flash address. True when the board's answer
  /// equals their sum modulo 65536. Throws std::out_of_range for a larger count or less data.
  [[nodiscard]] bool WriteLess(std::int32_t address, std::int32_t count, std::span<const std::uint8_t> data);
  /// Asks for the sum of `count` flash bytes from `address` on; the answer is left in the response buffer, high byte
  /// first. True when write and read succeeded.
  [[nodiscard]] bool CheckCRC(std::int32_t address, std::int32_t count);
  /// What the sensor feels: x, y, z from -31 to 31; w, its tilt, as the board sends it. Not all boards answer it.
  [[nodiscard]] bool GetACC(std::int32_t& x, std::int32_t& y, std::int32_t& z, std::int32_t& w);
  [[nodiscard]] bool GetAccParam(AccParam& parameters);
  /// Sends each parameter's low byte. True when the board accepted them.
  [[nodiscard]] bool SetAccParam(const AccParam& parameters);
  /// Nine 16-bit values.
  [[nodiscard]] bool SetLEDParam(std::span<const std::int32_t, kLedParameters> values);
  /// Reads levels and times of pulse `set` (0 idle, 1 flash on clash); the counts stay as they are.
  [[nodiscard]] bool GetLEDPulses(std::int32_t set, led::LED_Pulse& pulse);
  /// Sends levels, counts and times of a pulse.
  [[nodiscard]] bool SetLEDPulses(std::int32_t set, const led::LED_Pulse& pulse);
  /// Plays pulse `number`.
  [[nodiscard]] bool StartPulse(std::int32_t number);
  /// The LED type's code, its supply voltage, the overdrive in percent.
  [[nodiscard]] bool GetLEDConfig(std::int32_t& code, double& voltage, std::int32_t& overdrive);
  /// The voltage goes out in whole tenths, cut off.
  [[nodiscard]] bool SetLEDConfig(std::int32_t code, double voltage, std::int32_t overdrive);

  // --- The rest of a board's documented interface: only tests call it ---

  /// Variables that carry this board's identity.
  [[nodiscard]] int VariableCount() const;
  [[nodiscard]] bool IsAllUnbound() const { return VariableCount() == UnboundVarCount(); }
  /// The VarIdentity of the first variable bound; 0 when none was yet.
  [[nodiscard]] std::int32_t DeviceIdentity() const { return m_deviceIdentity; }
  /// Set from BindVars() until Shutdown().
  [[nodiscard]] bool IsBoundFlag() const { return m_bound; }
  [[nodiscard]] bool WriteAllReports() { return WriteOutputRptA(); }
  [[nodiscard]] bool ReadAllReports() { return ReadInputRptB(); }

  /// Element 0 .. 1027 of the command buffer; throws std::out_of_range beyond.
  [[nodiscard]] std::uint8_t Get_LS_Command(int index) const;
  /// Element 0 .. 1 of the response buffer; throws std::out_of_range beyond.
  void Set_LS_Response(int index, std::uint8_t value);
  /// The first byte of the identity answer; 0 on failure.
  [[nodiscard]] std::int32_t GetMemorySize();
  /// Nine 16-bit values, as SetLEDParam() sends them.
  [[nodiscard]] bool GetLEDParam(std::span<std::int32_t, kLedParameters> values);

 private:
  enum VariableNumber : std::size_t { kCommand = 0, kResponse = 1 };

  int BindUnbound();
  void RefreshReportIndices();
  /// Element 0 becomes the command's code, then the whole report is written.
  [[nodiscard]] bool Send(Command command);
  void Put16(std::size_t element, std::int32_t value);
  void Put24(std::size_t element, std::int32_t value);
  [[nodiscard]] std::int32_t Response16() const;
  [[nodiscard]] bool Acknowledged();
  /// Puts flash data into the command from `firstElement` on and sends it; true when the board got the same sum.
  [[nodiscard]] bool SendData(Command command, std::size_t firstElement, std::span<const std::uint8_t> data);

  std::array<TOneHidVar, 2> m_variables;
  THIDagent* m_agent = nullptr;
  std::int32_t m_deviceIdentity = 0;
  std::int32_t m_commandVariable = 0;
  std::int32_t m_responseVariable = 0;
  bool m_bound = false;
  std::int32_t m_outputReport = -1;
  std::int32_t m_inputReport = -1;
  std::array<std::uint8_t, kCommandSize> m_command{};
  std::array<std::uint8_t, kResponseSize> m_response{};
  bool m_written = false;
  bool m_refused = false;
  bool m_answered = false;
  std::int32_t m_objectId = 0;
};

}  // namespace kestrin::core::device
