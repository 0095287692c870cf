// SPDX-License-Identifier: MIT
#pragma once

#include <hidapi.h>

#include <memory>

#include "platform/hid/BoardLock.h"
#include "platform/hid/HidStack.h"
#include "platform/hid/NodeIdentity.h"
#include "platform/hid/ReportWriter.h"

namespace kestrin::platform::hid {

/// Text of hidapi as UTF-8; "" for a null pointer.
[[nodiscard]] std::string Utf8(const wchar_t* text);

/// The interfaces with exactly these ids, each path once; none for an id that is not in 1 .. 65535.
[[nodiscard]] std::vector<HidNode> EnumerateNodes(std::int32_t vendorId, std::int32_t productId);

/// An interface opened with hidapi. Private to the adapter: its header needs the library's.
class HidapiConnection final : public HidConnection {
 public:
  struct Closer {
    void operator()(hid_device* device) const { hid_close(device); }
  };
  using Handle = std::unique_ptr<hid_device, Closer>;

  /// `claim` keeps other programs off the board.
  HidapiConnection(Handle device, const HidNode& node, NodeIdentity identity, std::unique_ptr<BoardClaim> claim);

  [[nodiscard]] std::vector<std::uint8_t> ReportDescriptor() override;
  [[nodiscard]] std::string IndexedString(std::uint32_t index) override;
  [[nodiscard]] bool StartWrite(std::span<const std::uint8_t> report) override;
  [[nodiscard]] std::optional<int> WriteOutcome(std::chrono::milliseconds timeout) override;
  [[nodiscard]] int Read(std::span<std::uint8_t> report, std::chrono::milliseconds timeout) override;
  [[nodiscard]] int WriteFeature(std::span<const std::uint8_t> report) override;
  [[nodiscard]] int ReadFeature(std::span<std::uint8_t> report) override;
  [[nodiscard]] bool IsGone() override;

 private:
  /// Before the device, so that it is closed when others may have it.
  std::unique_ptr<BoardClaim> m_claim;
  /// A writer that a write holds up may still need it.
  std::shared_ptr<hid_device> m_device;
  HidNode m_node;
  NodeIdentity m_identity;
  /// Behind what it is made of.
  std::unique_ptr<ReportWriter> m_writer;
};

}  // namespace kestrin::platform::hid
