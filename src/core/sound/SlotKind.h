// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

namespace kestrin::core::sound {

/// The slots of a configuration by their numbers (the `FileType` and `VolumeType` of LSU_Configuration).
enum class SlotKind : int { Boot = 1, PwrOn = 2, PwrOff = 3, Motion = 4, Impact = 5, Lockup = 6, Idle = 7 };

/// What is fixed about a slot.
struct Slot {
  SlotKind kind;
  /// One of up to 12 files in a list, or the slot's only file.
  bool isList;
  /// The keyword of its line in a configuration file.
  std::string_view keyword;
  /// Its name on the command line and in JSON.
  std::string_view name;
  /// What people call it.
  std::string_view title;
};

/// All slots in the order in which the flash and the configuration file hold them.
inline constexpr std::array<Slot, 7> kSlots{{
    {SlotKind::Boot, false, "BOOT", "boot", "Boot"},
    {SlotKind::PwrOn, false, "PWRON", "pwron", "Power On"},
    {SlotKind::PwrOff, false, "PWROFF", "pwroff", "Power Off"},
    {SlotKind::Idle, false, "IDLE", "idle", "Idle"},
    {SlotKind::Motion, true, "MOTION", "motion", "Motion"},
    {SlotKind::Impact, true, "IMPACT", "impact", "Impact"},
    {SlotKind::Lockup, true, "LOCKUP", "lockup", "Lock-up"},
}};

/// The files that a list slot holds at most.
inline constexpr int kListCapacity = 12;

/// The slot of that kind. Throws std::out_of_range for a number that is no slot.
[[nodiscard]] const Slot& SlotOf(SlotKind kind);

}  // namespace kestrin::core::sound
