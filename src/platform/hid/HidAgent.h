// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/base/Clock.h"
#include "core/base/EventPump.h"
#include "core/device/THIDagent.h"

namespace kestrin::platform::hid {

/// What an agent for real boards is made with.
struct HidAgentOptions {
  /// Gets its turn at least every 20 ms while a read waits.
  core::base::EventPump pump;
  /// The only board to open, a path as ListBoards() gives it; "" for any.
  std::string onlyPath;
};

/// The agent for boards on this computer's USB, over the system's HID stack. One at a time; `clock` must outlive it.
[[nodiscard]] std::unique_ptr<core::device::THIDagent> CreateHidAgent(const core::base::Clock& clock,
                                                                      HidAgentOptions options = {});

/// A board found on USB. Texts are UTF-8.
struct BoardListing {
  std::string path;
  std::string manufacturer;
  std::string product;
  /// The serial number text of the USB descriptor; the number that the board itself answers is another.
  std::string serialNumber;
  /// Whether this user may open it.
  bool accessible = false;
  /// Whether another program uses it just now; the user may open it all the same.
  bool inUse = false;
  /// When it cannot be opened, or is no board for all its ids: why, and what to do about it. "" otherwise.
  std::string advice;
};

/// The boards that are plugged in, in the order in which an agent numbers them. Asks for the boards' ids alone, and
/// disturbs no program that uses one.
/// Not to be called while an agent made by CreateHidAgent() lives.
[[nodiscard]] std::vector<BoardListing> ListBoards();

}  // namespace kestrin::platform::hid
