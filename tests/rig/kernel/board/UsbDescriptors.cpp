// SPDX-License-Identifier: MIT
#include "rig/kernel/board/UsbDescriptors.h"

#include <linux/usb/ch9.h>
#include <linux/usb/functionfs.h>

#include <string>

namespace kestrin::rig {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kHidClass = 3;
constexpr std::uint16_t kFullSpeedPacket = 64;
constexpr std::uint16_t kHighSpeedPacket = 1024;

/// Numbers of USB are sent least significant byte first.
void Add16(Bytes& to, std::size_t number) {
  to.push_back(static_cast<std::uint8_t>(number & 0xFF));
  to.push_back(static_cast<std::uint8_t>(number >> 8 & 0xFF));
}

void Add32(Bytes& to, std::size_t number) {
  Add16(to, number & 0xFFFF);
  Add16(to, number >> 16 & 0xFFFF);
}

void AddEndpoint(Bytes& to, std::uint8_t address, std::uint16_t packet) {
  to.insert(to.end(), {USB_DT_ENDPOINT_SIZE, USB_DT_ENDPOINT, address, USB_ENDPOINT_XFER_INT});
  Add16(to, packet);
  to.push_back(1);  // Asked at every opportunity: each millisecond at full speed.
}

/// Returns how many descriptors it added.
std::size_t AddInterface(Bytes& to, bool outEndpoint, std::size_t reportDescriptor, std::uint16_t outPacket) {
  const std::uint8_t endpoints = outEndpoint ? 2 : 1;
  to.insert(to.end(), {USB_DT_INTERFACE_SIZE, USB_DT_INTERFACE, 0, 0, endpoints, kHidClass, 0, 0, 1});
  // The HID descriptor: version 1.11, no country, one report descriptor.
  to.insert(to.end(), {9, 0x21, 0x11, 0x01, 0, 1, 0x22});
  Add16(to, reportDescriptor);
  AddEndpoint(to, 1 | USB_DIR_IN, kFullSpeedPacket);
  if (outEndpoint) AddEndpoint(to, 2, outPacket);
  return 2U + endpoints;
}

}  // namespace

Bytes FunctionDescriptors(bool outEndpoint, std::size_t reportDescriptor) {
  Bytes interfaces;
  const std::size_t count = AddInterface(interfaces, outEndpoint, reportDescriptor, kFullSpeedPacket);
  AddInterface(interfaces, outEndpoint, reportDescriptor, kHighSpeedPacket);
  Bytes all;
  Add32(all, FUNCTIONFS_DESCRIPTORS_MAGIC_V2);
  Add32(all, 5 * sizeof(std::uint32_t) + interfaces.size());
  Add32(all, FUNCTIONFS_HAS_FS_DESC | FUNCTIONFS_HAS_HS_DESC);
  Add32(all, count);
  Add32(all, count);
  all.insert(all.end(), interfaces.begin(), interfaces.end());
  return all;
}

Bytes FunctionStrings() {
  const std::string name = "Board control";
  Bytes all;
  Add32(all, FUNCTIONFS_STRINGS_MAGIC);
  Add32(all, 4 * sizeof(std::uint32_t) + sizeof(std::uint16_t) + name.size() + 1);
  Add32(all, 1);  // one string,
  Add32(all, 1);  // in one language:
  Add16(all, 0x0409);
  all.insert(all.end(), name.begin(), name.end());
  all.push_back(0);
  return all;
}

}  // namespace kestrin::rig
