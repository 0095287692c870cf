#include "platform/hid/HidapiStack.h"

#include <utility>

#include "platform/hid/HidapiConnection.h"
#include "platform/hid/NodeIdentity.h"

namespace kestrin::hid {

HidapiStack::HidapiStack() {
  // A failure shows as no device in every search.
  static_cast<void>(hid_init());
}

HidapiStack::~HidapiStack() { hid_exit(); }

std::vector<HidNode> HidapiStack::Enumerate(std::int32_t vendorId, std::int32_t productId) {
  return EnumerateNodes(vendorId, productId);
}

OpenOutcome HidapiStack::Open(const HidNode& node) {
  OpenOutcome outcome;
  NodeIdentity identity;
#ifdef __linux__
  const NodeProbe probe = ProbeNode(node.path);
  if (!probe.usable) {
    outcome.notPermitted = probe.notPermitted;
    outcome.reason = probe.reason;
    return outcome;
  }
  identity = probe.identity;
#endif
  HidapiConnection::Handle device(hid_open_path(node.path.c_str()));
  if (!device) {
    outcome.reason = Utf8(hid_error(nullptr));
    return outcome;
  }
  outcome.connection = std::make_unique<HidapiConnection>(std::move(device), node, identity);
  return outcome;
}

}  // namespace kestrin::hid
