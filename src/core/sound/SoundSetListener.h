// SPDX-License-Identifier: MIT
#pragma once

#include "sound/SlotKind.h"

namespace kestrin::core::sound {

/// Hears what changes about a set of sounds. It must not change the set while it is told.
class SoundSetListener {
 public:
  virtual ~SoundSetListener() = default;
  /// The files of the slot, their order or their volumes.
  virtual void SlotChanged(SlotKind /*kind*/) {}
  /// The samples in use, or how many the board holds.
  virtual void MemoryChanged() {}
  /// The name, whether it differs from its file, what can be undone and redone.
  virtual void ModifiedChanged() {}
};

}  // namespace kestrin::core::sound
