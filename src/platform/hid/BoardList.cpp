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
    const Access access = stack.Look(node);
    const bool inUse = access.refusal == Refusal::InUse;
    boards.push_back({node.path, node.manufacturer, node.product, node.serialNumber,
                      inUse || access.refusal == Refusal::None, inUse, AccessAdvice(node.path, access)});
  }
  return boards;
}

}  // namespace kestrin::platform::hid
