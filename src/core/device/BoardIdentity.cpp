// SPDX-License-Identifier: MIT
#include "device/BoardIdentity.h"

namespace kestrin::core::device {

namespace {

constexpr std::int32_t kUsb64Capacity = 5589300;

/// The revision of USB2 boards whose identity was never programmed.
constexpr std::uint16_t kUnprogrammedRevision = 293;

/// Sound models by ranges of identity numbers, in the order in which they are tried.
struct ModelRow {
  std::int32_t first;
  std::int32_t last;
  std::string_view model;
  std::int32_t memoryCapacity;
  std::string_view caption;
  /// The identity number of revision 0; negative: every number has the fixed revision behind it.
  std::int32_t revisionBase;
  std::uint16_t fixedRevision;
};

constexpr std::string_view kUsb = "Kestrin USB Serial Number: ";
constexpr std::string_view kUsb64 = "Kestrin USB 64 Serial Number: ";
constexpr std::string_view kUsb2 = "Kestrin USB2 Serial Number: ";

constexpr ModelRow kModels[] = {
    {0, 0, "USB", kDefaultMemoryCapacity, kUsb, -1, 0},
    {32, 32, "USB", kDefaultMemoryCapacity, kUsb, -1, 0},
    {64, 64, "USB 64", kUsb64Capacity, kUsb64, -1, 0},
    {65535, 65535, "USB2", kDefaultMemoryCapacity, kUsb2, -1, kUnprogrammedRevision},
    {4096, 8191, "USB2", kDefaultMemoryCapacity, kUsb2, 4096, 0},
};

}  // namespace

BoardIdentity Identify(std::int32_t id) {
  for (const ModelRow& row : kModels) {
    if (id < row.first || id > row.last) continue;
    const auto revision = row.revisionBase < 0 ? row.fixedRevision : static_cast<std::uint16_t>(id - row.revisionBase);
    return {row.model, DeviceType::SoundBoard, row.memoryCapacity, row.caption, revision};
  }
  return {"LED Driver", DeviceType::LedDriver, std::nullopt, "Kestrin LED Driver Serial Number: ", 0};
}

std::int32_t FlashSize(std::int32_t memoryCapacity) {
  constexpr std::int32_t kMiB = 1024 * 1024;
  return memoryCapacity > kDefaultMemoryCapacity ? 8 * kMiB : 4 * kMiB;
}

std::string PassedOver(const std::string& path) {
  return "The device at " + path +
         " has the numbers of a Kestrin board but not its reports, so it is left alone. If it should be a board, plug "
         "it in again or ask its maker.";
}

}  // namespace kestrin::core::device
