// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrin::core::doctor {

/// A device on the USB bus that has the board's ids. Texts are UTF-8.
struct BusDevice {
  /// Where it is plugged in, in the system's words: "1-2.4".
  std::string place;
  std::string manufacturer;
  std::string product;
  /// The serial number text of the USB descriptor; the number that the board itself answers is another.
  std::string serialNumber;
  /// Whether the system has made a HID interface of it.
  bool hasHid = false;
  /// Since when it has been there; nothing where the system does not tell.
  std::optional<std::chrono::seconds> pluggedFor;
};

/// What stands between this person and a HID interface.
enum class Access {
  Open,          ///< it can be opened
  InUse,         ///< another program has it
  NotPermitted,  ///< the system does not let this person open it
  Failed,        ///< it cannot be opened for another reason
};

/// A HID interface that has the board's ids.
struct LinkNode {
  /// As `--board hid:PATH` takes it.
  std::string path;
  std::string product;
  Access access = Access::Failed;
  /// The system's words where the access failed.
  std::string why;
  /// The program that has it, "kestrin (1234)"; "" where that cannot be seen.
  std::string user;
  /// Whether this very program has it open: then it is what is talked to.
  bool isOurs = false;
  /// The report descriptor; empty where it cannot be had.
  std::vector<std::uint8_t> descriptor;
  /// Whether both of a board's variables are in it.
  bool hasVariables = false;
  /// Who may do what with it, in the system's words: "crw------- root root"; "" where the system has no such thing.
  std::string permissions;
};

/// How it stands with the rule that lets people open boards.
enum class RuleState {
  NotNeeded,  ///< this system has no such rules
  Missing,
  Installed,
  Different,  ///< there is one of this name that says something else
};

/// All that can be seen of the way to a board without talking to one.
struct LinkFacts {
  std::vector<BusDevice> bus;
  /// In the order in which a session opens them.
  std::vector<LinkNode> nodes;
  RuleState rule = RuleState::NotNeeded;
  /// The place of the rule that was found; "" without one.
  std::string rulePath;
  /// The system, its kernel and the HID library, a line each, for the report.
  std::vector<std::string> system;
  /// The only path that is asked about; "" for any. The nodes are then no others.
  std::string onlyPath;
  /// Whether the board is one in software, so that nothing stands between; its node tells whether somebody else has it.
  bool isSimulated = false;
};

}  // namespace kestrin::core::doctor
