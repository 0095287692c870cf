// SPDX-License-Identifier: MIT
#include "platform/hid/NodeListing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/TestFiles.h"

namespace kestrin::platform::hid {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

/// A tree like the kernel's, with one board on USB as hidraw3.
class NodeListing : public testing::Test {
 protected:
  static constexpr const char* kUsb = "sys/devices/pci0000:00/usb1/1-2";
  static constexpr const char* kHid = "sys/devices/pci0000:00/usb1/1-2/1-2:1.0/0003:04D8:FA37.0007";

  NodeListing() {
    AddDevice(kHid, "hidraw3", "HID_ID=0003:000004D8:0000FA37\nHID_NAME=Corvent Kestrin\nHID_UNIQ=0815\n");
    Write(std::string(kUsb) + "/idVendor", "04d8\n");
    Write(std::string(kUsb) + "/manufacturer", "Corvent\n");
    Write(std::string(kUsb) + "/product", "Kestrin\n");
    Write(std::string(kHid) + "/report_descriptor", "\x06\x01");
  }

  void Write(const fs::path& file, const std::string& content) {
    fs::create_directories(root / file.parent_path());
    support::WriteBytes(root / file, content);
  }
  void AddDevice(const fs::path& device, const std::string& node, const std::string& properties) {
    Write(device / "uevent", properties);
    fs::create_directories(root / device / "hidraw" / node);
    fs::create_directory_symlink(root / device, root / device / "hidraw" / node / "device");
    fs::create_directories(root / "sys/class/hidraw");
    fs::create_directory_symlink(root / device / "hidraw" / node, root / "sys/class/hidraw" / node);
  }
  /// Puts something that opens but cannot be read in the place of a file.
  void MakeUnreadable(const fs::path& file) {
    fs::remove(root / file);
    fs::create_directory(root / file);
  }
  [[nodiscard]] std::vector<HidNode> List() { return ListNodes(0x04D8, 0xFA37, root.Path()); }
  [[nodiscard]] std::vector<std::uint8_t> Descriptor() { return ReadNodeDescriptor("/dev/hidraw3", root.Path()); }

  support::TemporaryFolder root;
};

TEST_F(NodeListing, NamesABoardAndItsTexts) {
  const std::vector<HidNode> nodes = List();
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(nodes[0].path, "/dev/hidraw3");
  EXPECT_EQ(nodes[0].vendorId, 0x04D8);
  EXPECT_EQ(nodes[0].productId, 0xFA37);
  EXPECT_EQ(nodes[0].manufacturer, "Corvent");
  EXPECT_EQ(nodes[0].product, "Kestrin");
  EXPECT_EQ(nodes[0].serialNumber, "0815");
  EXPECT_THAT(Descriptor(), ElementsAre(6, 1));
}

TEST_F(NodeListing, LeavesOutOtherIds) {
  AddDevice("sys/devices/virtual/a", "hidraw0", "HID_ID=0003:000004D8:0000FA38\n");
  AddDevice("sys/devices/virtual/b", "hidraw1", "HID_ID=0003:00001209:0000FA37\n");
  AddDevice("sys/devices/virtual/c", "hidraw2", "HID_ID=0003:0001FA37:000004D8\n");
  const std::vector<HidNode> nodes = List();
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(nodes[0].path, "/dev/hidraw3");
}

TEST_F(NodeListing, WithoutHidDevicesThereIsNone) {
  fs::remove_all(root / "sys/class/hidraw");
  EXPECT_THAT(List(), IsEmpty());
}

// The device is listed, and gone before its files are read.
TEST_F(NodeListing, ADeviceWhoseFolderIsGoneIsLeftOut) {
  AddDevice("sys/devices/virtual/a", "hidraw9", "HID_ID=0003:000004D8:0000FA37\n");
  fs::remove_all(root / "sys/devices/virtual/a");
  EXPECT_EQ(List().size(), 1U);
  fs::remove_all(root / kUsb);
  EXPECT_THAT(List(), IsEmpty());
  EXPECT_THAT(Descriptor(), IsEmpty());
}

TEST_F(NodeListing, ADeviceWhoseIdsAreGoneIsLeftOut) {
  fs::remove(root / kHid / "uevent");
  EXPECT_THAT(List(), IsEmpty());
  MakeUnreadable(fs::path(kHid) / "uevent");
  EXPECT_THAT(List(), IsEmpty());
}

TEST_F(NodeListing, ADeviceWhoseIdsAreCutIsLeftOut) {
  const std::string whole = "HID_ID=0003:000004D8:0000FA37\n";
  for (std::size_t length = 0; length < whole.size(); ++length) {
    Write(fs::path(kHid) / "uevent", whole.substr(0, length));
    EXPECT_THAT(List(), IsEmpty()) << whole.substr(0, length);
  }
  Write(fs::path(kHid) / "uevent", whole);
  EXPECT_EQ(List().size(), 1U);
}

TEST_F(NodeListing, ABoardWhoseTextsAreGoneIsListedWithoutThem) {
  fs::remove(root / kUsb / "manufacturer");
  MakeUnreadable(fs::path(kUsb) / "product");
  const std::vector<HidNode> nodes = List();
  ASSERT_EQ(nodes.size(), 1U);
  EXPECT_EQ(nodes[0].manufacturer, "");
  EXPECT_EQ(nodes[0].product, "");
}

TEST_F(NodeListing, ABoardWithoutDescriptorHasNone) {
  MakeUnreadable(fs::path(kHid) / "report_descriptor");
  EXPECT_THAT(Descriptor(), IsEmpty());
  fs::remove(root / kHid / "report_descriptor");
  EXPECT_THAT(Descriptor(), IsEmpty());
}

// A device that a program offers has no USB device above it.
TEST_F(NodeListing, ADeviceOfAProgramTellsItsOwnName) {
  AddDevice("sys/devices/virtual/misc/uhid/0003:04D8:FA37.0001", "hidraw4",
            "HID_ID=0003:000004D8:0000FA37\nHID_NAME=Kestrin in software\nHID_UNIQ=\n");
  std::vector<HidNode> nodes = List();
  std::sort(nodes.begin(), nodes.end(), [](const HidNode& a, const HidNode& b) { return a.path < b.path; });
  ASSERT_EQ(nodes.size(), 2U);
  EXPECT_EQ(nodes[1].product, "Kestrin in software");
  EXPECT_EQ(nodes[1].manufacturer, "");
  EXPECT_EQ(nodes[1].serialNumber, "");
}

TEST_F(NodeListing, ADeviceOnBluetoothDoesNotTellTheNameOfTheRadio) {
  AddDevice(std::string(kUsb) + "/bluetooth/hci0/0005:04D8:FA37.0002", "hidraw5",
            "HID_ID=0005:000004D8:0000FA37\nHID_NAME=Kestrin of the air\n");
  std::vector<HidNode> nodes = List();
  std::sort(nodes.begin(), nodes.end(), [](const HidNode& a, const HidNode& b) { return a.path < b.path; });
  ASSERT_EQ(nodes.size(), 2U);
  EXPECT_EQ(nodes[1].product, "Kestrin of the air");
  EXPECT_EQ(nodes[1].manufacturer, "");
}

struct NameRow {
  const char* written;
  const char* shown;
};
constexpr NameRow kNames[] = {
    {"plain", "plain"},
    {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F"},
    {"\xE2\x9A\x94 \xF0\x9F\x97\xA1", "\xE2\x9A\x94 \xF0\x9F\x97\xA1"},
    // Latin-1, an end without a beginning, a beginning without an end
    {"gr\xFC n", "gr\xEF\xBF\xBD n"},
    {"\x80", "\xEF\xBF\xBD"},
    {"\xE2\x9A", "\xEF\xBF\xBD\xEF\xBF\xBD"},
    // "/" in two bytes, half a pair, beyond the last character
    {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},
    {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
    {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
};

TEST_F(NodeListing, TextsAreUtf8WhateverADeviceCallsItself) {
  for (const NameRow& row : kNames) {
    Write(std::string(kUsb) + "/product", std::string(row.written) + "\n");
    Write(fs::path(kHid) / "uevent", "HID_ID=0003:000004D8:0000FA37\nHID_UNIQ=" + std::string(row.written) + "\n");
    const std::vector<HidNode> nodes = List();
    ASSERT_EQ(nodes.size(), 1U);
    EXPECT_EQ(nodes[0].product, row.shown);
    EXPECT_EQ(nodes[0].serialNumber, row.shown);
  }
}

TEST_F(NodeListing, APathMayHaveGoneToAnotherDevice) {
  const auto isBoard = [this](const char* path) { return IsNodeOf(path, 0x04D8, 0xFA37, root.Path()); };
  EXPECT_TRUE(isBoard("/dev/hidraw3"));
  EXPECT_FALSE(isBoard("/dev/hidraw4"));
  Write(fs::path(kHid) / "uevent", "HID_ID=0003:0000046D:0000C077\n");
  EXPECT_FALSE(isBoard("/dev/hidraw3"));
  MakeUnreadable(fs::path(kHid) / "uevent");
  EXPECT_FALSE(isBoard("/dev/hidraw3"));
}

TEST(ReadHidIds, TakesNothingElse) {
  const std::optional<HidIds> ids = ReadHidIds("0005:000004D8:0000FA37");
  ASSERT_TRUE(ids);
  EXPECT_EQ(ids->bus, 5U);
  EXPECT_EQ(ids->vendor, 0x04D8U);
  EXPECT_EQ(ids->product, 0xFA37U);
  for (const char* text : {"", "0003", "0003:000004D8", "0003:000004D8:", "0003:000004D8:0000FA37x", "::", "x"})
    EXPECT_FALSE(ReadHidIds(text)) << text;
}

}  // namespace
}  // namespace kestrin::platform::hid
