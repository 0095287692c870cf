// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "base/FileBeside.h"
#include "sound/import/ImportedSound.h"
#include "sound/import/SoundName.h"

namespace kestrin::core::sound {

/// A sound that is made but has no name yet. Its file goes with it unless it gets one.
struct PreparedSound {
  /// Without a path; with a reason when it could not be made.
  ImportedSound result;
  SoundName name;
  std::optional<base::FileBeside> file;
};

}  // namespace kestrin::core::sound
