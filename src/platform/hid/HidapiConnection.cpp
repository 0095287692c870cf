// SPDX-License-Identifier: MIT
#include "platform/hid/HidapiConnection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <utility>

#ifdef __linux__
#include "platform/hid/NodeListing.h"
#include "platform/hid/ProcessWriter.h"
#else
#include "platform/hid/ThreadWriter.h"
#endif

namespace kestrin::platform::hid {

namespace {

constexpr std::size_t kLongestString = 256;

void AppendUtf8(std::uint32_t codePoint, std::string& text) {
  const auto put = [&](std::uint32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  const auto putRest = [&](int shift) { put(0x80 | ((codePoint >> shift) & 0x3F)); };
  if (codePoint < 0x80) {
    put(codePoint);
  } else if (codePoint < 0x800) {
    put(0xC0 | (codePoint >> 6));
    putRest(0);
  } else if (codePoint < 0x10000) {
    put(0xE0 | (codePoint >> 12));
    putRest(6);
    putRest(0);
  } else {
    put(0xF0 | (codePoint >> 18));
    putRest(12);
    putRest(6);
    putRest(0);
  }
}

bool IsSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

#ifdef __linux__

std::unique_ptr<ReportWriter> MakeWriter(const HidNode& node, const NodeIdentity& identity, const BoardClaim& claim,
                                         const std::shared_ptr<hid_device>&) {
  return std::make_unique<ProcessWriter>(node.path, identity, claim.File());
}

#else

std::unique_ptr<ReportWriter> MakeWriter(const HidNode&, const NodeIdentity&, const BoardClaim&,
                                         const std::shared_ptr<hid_device>& device) {
  return std::make_unique<ThreadWriter>(
      [device](std::span<const std::uint8_t> report) { return hid_write(device.get(), report.data(), report.size()); });
}

#endif

}  // namespace

std::string Utf8(const wchar_t* text) {
  constexpr std::uint32_t kReplacement = 0xFFFD;
  std::string result;
  if (text == nullptr) return result;
  // Wide characters are code points here and pairs of surrogates there; both are taken.
  for (; *text != L'\0'; ++text) {
    auto codePoint = static_cast<std::uint32_t>(*text);
    const auto next = static_cast<std::uint32_t>(text[1]);
    if (codePoint >= 0xD800 && codePoint <= 0xDBFF && next >= 0xDC00 && next <= 0xDFFF) {
      codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (next - 0xDC00);
      ++text;
    }
    AppendUtf8(IsSurrogate(codePoint) || codePoint > 0x10FFFF ? kReplacement : codePoint, result);
  }
  return result;
}

HidapiConnection::HidapiConnection(Handle device, const HidNode& node, NodeIdentity identity,
                                   std::unique_ptr<BoardClaim> claim)
    : m_claim(std::move(claim)),
      m_device(std::move(device)),
      m_node(node),
      m_identity(identity),
      m_writer(MakeWriter(m_node, m_identity, *m_claim, m_device)) {}

std::vector<std::uint8_t> HidapiConnection::ReportDescriptor() {
#ifdef __linux__
  return ReadNodeDescriptor(m_node.path);
#elif HID_API_VERSION >= HID_API_MAKE_VERSION(0, 14, 0)
  std::vector<std::uint8_t> bytes(HID_API_MAX_REPORT_DESCRIPTOR_SIZE);
  const int size = hid_get_report_descriptor(m_device.get(), bytes.data(), bytes.size());
  bytes.resize(static_cast<std::size_t>(std::max(size, 0)));
  return bytes;
#else
#error "hidapi 0.14 or later is needed: earlier ones do not give the report descriptor on this system"
#endif
}

std::string HidapiConnection::IndexedString(std::uint32_t index) {
  std::array<wchar_t, kLongestString> text{};
  if (index > 255 ||
      hid_get_indexed_string(m_device.get(), static_cast<int>(index), text.data(), text.size() - 1) < 0) {
    return "";
  }
  return Utf8(text.data());
}

bool HidapiConnection::StartWrite(std::span<const std::uint8_t> report) { return m_writer->Start(report); }

std::optional<int> HidapiConnection::WriteOutcome(std::chrono::milliseconds timeout) {
  return m_writer->Outcome(timeout);
}

int HidapiConnection::Read(std::span<std::uint8_t> report, std::chrono::milliseconds timeout) {
  // A negative timeout would wait for ever.
  const auto wait = std::clamp<std::chrono::milliseconds::rep>(timeout.count(), 0, std::numeric_limits<int>::max());
  errno = 0;
  int length = hid_read_timeout(m_device.get(), report.data(), report.size(), static_cast<int>(wait));
  // A signal, such as that of Ctrl-C, ends the wait early but is no failure of the board: what the signal is for, the
  // program does between two waits.
  while (length < 0 && errno == EINTR) {
    errno = 0;
    length = hid_read_timeout(m_device.get(), report.data(), report.size(), 0);
  }
  return length;
}

int HidapiConnection::WriteFeature(std::span<const std::uint8_t> report) {
  return hid_send_feature_report(m_device.get(), report.data(), report.size());
}

int HidapiConnection::ReadFeature(std::span<std::uint8_t> report) {
  return hid_get_feature_report(m_device.get(), report.data(), report.size());
}

bool HidapiConnection::IsGone() {
#ifdef __linux__
  return IsNodeGone(m_node.path, m_identity);
#else
  const auto nodes = EnumerateNodes(m_node.vendorId, m_node.productId);
  return std::none_of(nodes.begin(), nodes.end(), [&](const HidNode& node) { return node.path == m_node.path; });
#endif
}

#ifdef __linux__

// hidapi 0.13.1 crashes when a device goes while it makes its list.
std::vector<HidNode> EnumerateNodes(std::int32_t vendorId, std::int32_t productId) {
  return ListNodes(vendorId, productId);
}

#else

std::vector<HidNode> EnumerateNodes(std::int32_t vendorId, std::int32_t productId) {
  struct Freer {
    void operator()(hid_device_info* list) const { hid_free_enumeration(list); }
  };
  std::vector<HidNode> nodes;
  // To hidapi an id of 0 means any.
  if (vendorId <= 0 || vendorId > 0xFFFF || productId <= 0 || productId > 0xFFFF) return nodes;
  const std::unique_ptr<hid_device_info, Freer> list(
      hid_enumerate(static_cast<unsigned short>(vendorId), static_cast<unsigned short>(productId)));
  for (const hid_device_info* info = list.get(); info != nullptr; info = info->next) {
    // An interface with several top-level collections is listed once for each.
    const bool known = std::any_of(nodes.begin(), nodes.end(), [&](const HidNode& n) { return n.path == info->path; });
    if (known) continue;
    nodes.push_back({info->path, info->vendor_id, info->product_id, Utf8(info->manufacturer_string),
                     Utf8(info->product_string), Utf8(info->serial_number)});
  }
  return nodes;
}

#endif

}  // namespace kestrin::platform::hid
