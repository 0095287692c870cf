// SPDX-License-Identifier: MIT
#include "platform/hid/BoardList.h"

#include <algorithm>

#include "core/device/BoardIdentity.h"
#include "core/device/Protocol.h"
#include "platform/hid/AccessAdvice.h"
#include "platform/hid/ReportDescriptor.h"

namespace kestrin::platform::hid {

bool ComesBefore(const HidNode& a, const HidNode& b) {
  return a.path.size() != b.path.size() ? a.path.size() < b.path.size() : a.path < b.path;
}

bool HasBoardVariables(std::span<const std::uint8_t> descriptor) {
  using namespace core::device;
  const core::base::Result<ReportDescriptor> read = ReportDescriptor::Read(descriptor);
  return read && read->Find(ReportType::Output, kCommandUsage, kVendorDefinedPage) >= 0 &&
         read->Find(ReportType::Input, kResponseUsage, kVendorDefinedPage) >= 0;
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
    // Where the system tells what it is without opening it.
    const std::vector<std::uint8_t> descriptor = stack.Descriptor(node);
    const bool isNone = !descriptor.empty() && !HasBoardVariables(descriptor);
    boards.push_back({node.path, node.manufacturer, node.product, node.serialNumber, access || inUse, inUse,
                      isNone   ? core::device::PassedOver(node.path)
                      : access ? ""
                               : AccessAdvice(node.path, access.Why())});
  }
  return boards;
}

}  // namespace kestrin::platform::hid
