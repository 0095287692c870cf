// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// What host and board have to agree on, in the one place from which both take it: TLS is the host's side, the
/// simulated board the other. The words behind the numbers are in docs/protocol.md.
///
/// One exchange is one output report, the command, and the input reports that the command's row names, the answers. Of
/// a command report element 0 is the code and the arguments follow, most significant byte first; what lies behind a
/// command's own elements is whatever an earlier one left there.
namespace kestrin::core::device {

// --- The device ---

/// Vendor and product id of every Kestrin board.
inline constexpr std::int32_t kBoardVendorId = 0x04D8;
inline constexpr std::int32_t kBoardProductId = 0xFA37;

/// The two fields of its report descriptor: `LS_Command` in an output report, `LS_Response` in an input report.
inline constexpr std::int32_t kVendorDefinedPage = 0xFF00;
inline constexpr std::int32_t kCommandUsage = 1;
inline constexpr std::int32_t kResponseUsage = 2;

// --- Reports ---

/// Bytes of a command report and of an answer report, without report ids.
inline constexpr std::size_t kCommandSize = 1028;
inline constexpr std::size_t kResponseSize = 2;

/// Both bytes of the answer "done and accepted", the acknowledgement.
inline constexpr std::uint8_t kAcknowledge = 10;

/// Element 0 of a command report. Behind each: its elements, then its answers. "16" and "24" are numbers of that many
/// bits; "ack" is one answer that acknowledges.
enum class Command : std::uint8_t {
  Reset = 0,          // - | none
  GetSN = 1,          // - | 2: the serial number, four bytes
  GetID = 3,          // - | 1: the identity, 16
  Bye = 7,            // - | none
  ClearFlash = 10,    // - | ack, once the erase is done
  Write1k = 20,       // 1-3 address, 24; 4-1027 data | 1: sum of the data bytes, 16
  WriteLess = 21,     // 1-3 address, 24; 4-6 count, 24; 7... data | 1: sum of the data bytes, 16
  CheckCRC = 30,      // 1-3 address, 24; 4-6 count, 24 | 1: sum of those bytes of the flash, 16
  GetACC = 40,        // - | 2: x, y; z, tilt
  GetAccParam = 41,   // - | 3: the detection parameters, two bytes in each
  SetAccParam = 42,   // 1-6 the detection parameters | ack
  GetLEDParam = 50,   // - | 9: one value in each, 16
  SetLEDParam = 51,   // 1-18 nine values, 16 | ack
  GetLEDPulses = 52,  // 1 pulse | 9: of each channel high level, low level; rise, on, fall, off, repetitions, 16
  SetLEDPulses = 53,  // 1 pulse; 2-41 four channels; 42-51 rise, on, fall, off, repetitions, 16 | ack
  StartPulse = 54,    // 1 pulse | ack
  GetLEDConfig = 60,  // - | 3: LED type code; supply voltage in tenths of a volt; overdrive in percent, 16
  SetLEDConfig = 61,  // 1-2, 3-4, 5-6 the same three, 16 | ack
};

// --- Layout: the first element of each argument ---

/// The first argument of every command that has any.
inline constexpr std::size_t kArguments = 1;

/// `Write1k`, `WriteLess`, `CheckCRC`.
inline constexpr std::size_t kAddressElement = kArguments;
inline constexpr std::size_t kCountElement = 4;
inline constexpr std::size_t kBlockElement = 4;
inline constexpr std::size_t kRestElement = 7;
/// The data bytes of a `Write1k`; the most that fit behind the other elements of a `WriteLess`.
inline constexpr std::size_t kBlockSize = kCommandSize - kBlockElement;
inline constexpr std::size_t kLargestRest = kCommandSize - kRestElement;

/// How many values `GetAccParam` and `GetLEDParam` answer and their counterparts take.
inline constexpr std::size_t kAccParameters = 6;
inline constexpr std::size_t kLedParameters = 9;

/// `GetLEDPulses`, `SetLEDPulses`, `StartPulse`. A channel is low level, high level (one byte each), then 16-bit
/// counts: on and off at the low level, on and off at the high level.
inline constexpr std::size_t kPulseElement = kArguments;
inline constexpr std::size_t kChannelsElement = 2;
inline constexpr std::size_t kChannelSize = 10;
inline constexpr std::size_t kPulseChannels = 4;
inline constexpr std::size_t kPulseTimesElement = kChannelsElement + kPulseChannels * kChannelSize;

/// `SetLEDConfig`.
inline constexpr std::size_t kLedCodeElement = kArguments;
inline constexpr std::size_t kVoltageElement = 3;
inline constexpr std::size_t kOverdriveElement = 5;

}  // namespace kestrin::core::device
