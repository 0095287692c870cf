// SPDX-License-Identifier: MIT
#include "core/device/BoardIdentity.h"

#include <gtest/gtest.h>

namespace kestrin::core::device {
namespace {

struct IdentityCase {
  std::int32_t id;
  const char* model;
  DeviceType type;
  std::optional<std::int32_t> capacity;
  const char* caption;
  int revision;
};

TEST(Identify, RecognisesEveryBoardByItsNumber) {
  constexpr const char* kLed = "Kestrin LED Driver Serial Number: ";
  const IdentityCase cases[] = {
      {0, "USB", DeviceType::SoundBoard, 2793120, "Kestrin USB Serial Number: ", 0},
      {32, "USB", DeviceType::SoundBoard, 2793120, "Kestrin USB Serial Number: ", 0},
      {64, "USB 64", DeviceType::SoundBoard, 5589300, "Kestrin USB 64 Serial Number: ", 0},
      {65535, "USB2", DeviceType::SoundBoard, 2793120, "Kestrin USB2 Serial Number: ", 293},
      {4096, "USB2", DeviceType::SoundBoard, 2793120, "Kestrin USB2 Serial Number: ", 0},
      {4388, "USB2", DeviceType::SoundBoard, 2793120, "Kestrin USB2 Serial Number: ", 292},
      {8191, "USB2", DeviceType::SoundBoard, 2793120, "Kestrin USB2 Serial Number: ", 4095},
      {1, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
      {31, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
      {33, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
      {63, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
      {65, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
      {4095, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
      {8192, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
      {65534, "LED Driver", DeviceType::LedDriver, std::nullopt, kLed, 0},
  };
  for (const IdentityCase& c : cases) {
    const BoardIdentity identity = Identify(c.id);
    EXPECT_EQ(identity.model, c.model) << c.id;
    EXPECT_EQ(identity.type, c.type) << c.id;
    EXPECT_EQ(identity.memoryCapacity, c.capacity) << c.id;
    EXPECT_EQ(identity.caption, c.caption) << c.id;
    EXPECT_EQ(identity.revision, c.revision) << c.id;
  }
}

TEST(FlashSize, HoldsTheCodedStreamsOfAFullBoard) {
  EXPECT_EQ(FlashSize(2793120), 4194304);
  EXPECT_EQ(FlashSize(5589300), 8388608);
  // Two samples take three bytes; forty files may each waste three bytes on an odd last sample and one on the gap.
  EXPECT_LE(512 + 2793120 / 2 * 3 + 40 * 4, FlashSize(2793120));
  EXPECT_LE(512 + 5589300 / 2 * 3 + 40 * 4, FlashSize(5589300));
}

}  // namespace
}  // namespace kestrin::core::device
