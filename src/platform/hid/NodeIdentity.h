// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "core/base/Result.h"

namespace kestrin::platform::hid {

/// Which device file stands at a path: the same path means another device after an unplug and a plug.
struct NodeIdentity {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;

  friend bool operator==(const NodeIdentity&, const NodeIdentity&) = default;
};

/// Opens the device file at `path`, asks for its descriptor's size and closes it again; fails when it cannot be opened,
/// as HidStack says. hidapi 0.13.1 crashes when a
/// node can be opened but not asked, as it happens when the board is unplugged in that moment; so it is tried here
/// first.
core::base::Result<NodeIdentity> ProbeNode(const std::string& path);
/// Whether an open file is that device's. A handler of signals may ask.
[[nodiscard]] bool IsOf(int file, const NodeIdentity& identity);
/// Whether `identity` no longer stands at `path`.
[[nodiscard]] bool IsNodeGone(const std::string& path, const NodeIdentity& identity);

}  // namespace kestrin::platform::hid
