#include "platform/hid/HidapiStack.h"

#include <utility>

#include "platform/hid/BoardLock.h"
#include "platform/hid/HidapiConnection.h"
#include "platform/hid/NodeIdentity.h"

namespace kestrin::platform::hid {

HidapiStack::HidapiStack() {
  // A failure shows as no device in every search.
  static_cast<void>(hid_init());
}

HidapiStack::~HidapiStack() { hid_exit(); }

std::vector<HidNode> HidapiStack::Enumerate(std::int32_t vendorId, std::int32_t productId) {
  return EnumerateNodes(vendorId, productId);
}

Access HidapiStack::Look(const HidNode& node) {
  if (IsBoardLocked(node.path)) return {Refusal::InUse, ""};
#ifdef __linux__
  return ProbeNode(node.path).access;
#else
  const HidapiConnection::Handle device(hid_open_path(node.path.c_str()));
  return device ? Access{} : Access{Refusal::Failed, Utf8(hid_error(nullptr))};
#endif
}

OpenOutcome HidapiStack::Open(const HidNode& node) {
  core::base::Disk::LockResult claim = LockBoard(node.path);
  if (claim.heldByAnother) return {nullptr, {Refusal::InUse, ""}};
  NodeIdentity identity;
#ifdef __linux__
  const NodeProbe probe = ProbeNode(node.path);
  if (probe.access.refusal != Refusal::None) return {nullptr, probe.access};
  identity = probe.identity;
#endif
  if (!claim.lock) return {nullptr, {Refusal::Failed, claim.error.message()}};
  HidapiConnection::Handle device(hid_open_path(node.path.c_str()));
  if (!device) return {nullptr, {Refusal::Failed, Utf8(hid_error(nullptr))}};
  return {std::make_unique<HidapiConnection>(std::move(device), node, identity, std::move(claim.lock)), {}};
}

}  // namespace kestrin::platform::hid
