// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <filesystem>

#include "core/sound/SoundSet.h"

namespace kestrin::ui::sound {

/// The bare file name of a path.
[[nodiscard]] QString FileName(const std::filesystem::path& path);
/// How long so many samples play: "1.8 s".
[[nodiscard]] QString Duration(std::int64_t samples);
/// How large a file is: "141 kB".
[[nodiscard]] QString FileSize(std::uintmax_t bytes);
/// What people call the slot: "Power On".
[[nodiscard]] QString SlotTitle(core::sound::SlotKind kind);
/// The same with the letter that leads there together with Alt: "Power &On".
[[nodiscard]] QString SlotMnemonic(core::sound::SlotKind kind);
/// When the board plays the slot's sounds: "plays when the blade comes out", or in fewer words "blade comes out".
struct SlotPurpose {
  QString text;
  QString shorter;
};
[[nodiscard]] SlotPurpose PurposeOf(core::sound::SlotKind kind);
/// Slot and position: "Motion 3", "Idle".
[[nodiscard]] QString PlaceTitle(const core::sound::SoundPlace& place);

/// Why the set takes the file for no sound, with the next step; "" when it is one by now. The file is read for it.
[[nodiscard]] QString WhyNotValid(const std::filesystem::path& path);

}  // namespace kestrin::ui::sound
