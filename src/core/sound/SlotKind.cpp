// SPDX-License-Identifier: MIT
#include "sound/SlotKind.h"

#include <stdexcept>
#include <string>

namespace kestrin::core::sound {

const Slot& SlotOf(SlotKind kind) {
  for (const Slot& slot : kSlots)
    if (slot.kind == kind) return slot;
  throw std::out_of_range("there is no slot " + std::to_string(static_cast<int>(kind)));
}

}  // namespace kestrin::core::sound
