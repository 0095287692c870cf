// SPDX-License-Identifier: MIT
#include "platform/hid/HidapiStack.h"

#include <utility>

#include "platform/hid/BoardLock.h"
#include "platform/hid/HidapiConnection.h"
#include "platform/hid/NodeIdentity.h"
#ifdef __linux__
#include "platform/hid/NodeListing.h"
#elif defined(_WIN32)
#include "platform/hid/WindowsListing.h"
#endif

namespace kestrin::platform::hid {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

Failure InUse() { return {FailureKind::InUse, "another program uses it"}; }

Failure Gone() { return {FailureKind::NotFound, "it was unplugged"}; }

/// Whether the path of a board is its own still. Another device that is opened by mistake may take it amiss.
bool IsStill([[maybe_unused]] const HidNode& node) {
#ifdef __linux__
  return IsNodeOf(node.path, node.vendorId, node.productId);
#else
  return true;
#endif
}

/// Why the library could not open a device, in its words. It says "Success" of one that went while it was opened.
Failure LibrarysFailure([[maybe_unused]] const HidNode& node) {
#ifdef _WIN32
  // The system tells more kinds of reasons than the library.
  if (const Result<> tried = TryInterface(node.path); !tried) return tried.Why();
#endif
  std::string reason = Utf8(hid_error(nullptr));
  if (reason.empty() || reason == "Success") reason = "it was gone again";
  return {FailureKind::Failed, reason};
}

}  // namespace

HidapiStack::HidapiStack() {
  // A failure shows as no device in every search.
  static_cast<void>(hid_init());
}

HidapiStack::~HidapiStack() { hid_exit(); }

std::vector<HidNode> HidapiStack::Enumerate(std::int32_t vendorId, std::int32_t productId) {
  return EnumerateNodes(vendorId, productId);
}

std::vector<std::uint8_t> HidapiStack::Descriptor([[maybe_unused]] const HidNode& node) {
#ifdef __linux__
  return ReadNodeDescriptor(node.path);
#elif defined(_WIN32)
  return InterfaceDescriptor(node.path);
#else
  return {};
#endif
}

Result<> HidapiStack::Look(const HidNode& node) {
  if (IsBoardLocked(node.path, [&node] { return IsStill(node); })) return InUse();
  if (!IsStill(node)) return Gone();
#ifdef __linux__
  const Result<NodeIdentity> probed = ProbeNode(node.path);
  return probed ? Result<>() : probed.Why();
#elif defined(_WIN32)
  return TryInterface(node.path);
#else
  const HidapiConnection::Handle device(hid_open_path(node.path.c_str()));
  return device ? Result<>() : LibrarysFailure(node);
#endif
}

Result<std::unique_ptr<HidConnection>> HidapiStack::Open(const HidNode& node) {
  // From here on nobody else gets its path: a system gives it on when the last who has the device open lets go of it.
  BoardLock claim = LockBoard(node.path, [&node] { return IsStill(node); });
  if (claim.heldByAnother) return InUse();
  if (!claim.lock) return core::base::FailureOf(claim.error);
  if (!IsStill(node)) return Gone();
  NodeIdentity identity;
#ifdef __linux__
  const Result<NodeIdentity> probed = ProbeNode(node.path);
  if (!probed) return probed.Why();
  identity = *probed;
  // What is claimed is what is opened, although its path may have gone from one device to the next before.
  if (!IsOf(claim.lock->File(), identity)) return Gone();
#endif
  HidapiConnection::Handle device(hid_open_path(node.path.c_str()));
  if (!device) return LibrarysFailure(node);
  std::unique_ptr<HidConnection> connection =
      std::make_unique<HidapiConnection>(std::move(device), node, identity, std::move(claim.lock));
  return connection;
}

}  // namespace kestrin::platform::hid
