// SPDX-License-Identifier: MIT
#include "saber/SoundDice.h"

namespace kestrin::core::saber {

int SoundDice::Throw(sound::SlotKind kind, int count) {
  int& last = m_last[kind];
  if (count <= 1) return last = 1;
  // One of those that did not sound last: whoever stands behind it moves up.
  const bool isLastThere = last >= 1 && last <= count;
  const auto choices = static_cast<std::uint32_t>(isLastThere ? count - 1 : count);
  int position = static_cast<int>(m_random() % choices) + 1;
  if (isLastThere && position >= last) ++position;
  return last = position;
}

}  // namespace kestrin::core::saber
