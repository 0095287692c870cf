// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/EventPump.h"
#include "sound/LSU_Configuration.h"
#include "sound/SoundPlace.h"
#include "sound/board/KnownSounds.h"
#include "sound/board/SetImage.h"

namespace kestrin::core::sound {

/// A sound of a set, as the set has a board hold it.
struct SetSound {
  SoundPlace place;
  std::filesystem::path path;
  /// In percent.
  std::int16_t volume = 100;
  /// Of the coded stream, in bytes.
  std::int32_t length = 0;
  /// The stream's sum modulo 65536; nothing when the sound cannot be coded like this.
  std::optional<std::uint16_t> checksum;

  friend bool operator==(const SetSound&, const SetSound&) = default;
};

/// A set that this computer knows: one that is open, that lies on a disk or that a board has got from here once.
struct KnownSet {
  /// The set's file; empty when it has none.
  std::filesystem::path path;
  /// What people call it.
  std::string name;
  /// In flash order.
  std::vector<SetSound> sounds;

  /// The sounds of a configuration; those that are missing are left out.
  [[nodiscard]] static KnownSet Of(const LSU_Configuration& configuration, const std::filesystem::path& path,
                                   KnownSounds& known, const base::EventPump& pump = {});
  /// A set from its file; nothing when it is none, or when sounds of it are missing.
  [[nodiscard]] static std::optional<KnownSet> Load(const std::filesystem::path& path, KnownSounds& known,
                                                    const base::EventPump& pump = {});

  /// How it would lie in a board's flash; nothing for a set that no download would take: a slot is empty, or a sound
  /// cannot be coded.
  [[nodiscard]] std::optional<SetImage> Image() const;
  /// The sound of that place; nullptr when there is none.
  [[nodiscard]] const SetSound* At(const SoundPlace& place) const;
};

}  // namespace kestrin::core::sound
