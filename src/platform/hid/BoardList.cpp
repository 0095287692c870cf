// SPDX-License-Identifier: MIT
#include "platform/hid/BoardList.h"

#include <algorithm>

#include "core/device/Protocol.h"
#include "platform/hid/AccessAdvice.h"

namespace kestrin::platform::hid {

bool ComesBefore(const HidNode& a, const HidNode& b) {
  return a.path.size() != b.path.size() ? a.path.size() < b.path.size() : a.path < b.path;
}

std::vector<BoardListing> ListBoards(HidStack& stack) {
  std::vector<HidNode> nodes = stack.Enumerate(core::device::kBoardVendorId, core::device::kBoardProductId);
  std::sort(nodes.begin(), nodes.end(), ComesBefore);
  std::vector<BoardListing> boards;
  for (const HidNode& node : nodes) {
    const core::base::Result<> access = stack.Look(node);
    // Unplugged while the list was made.
    if (!access && access.Why().kind == core::base::FailureKind::NotFound) continue;
    const bool inUse = !access && access.Why().kind == core::base::FailureKind::InUse;
    boards.push_back({node.path, node.manufacturer, node.product, node.serialNumber, access || inUse, inUse,
                      access ? "" : AccessAdvice(node.path, access.Why())});
  }
  return boards;
}

}  // namespace kestrin::platform::hid
