// SPDX-License-Identifier: MIT
#include "motion/KnownValues.h"

#include "motion/DetectionParameter.h"

namespace kestrin::core::motion {

void KnownValues::SetUnread(const Values& kept) { Set(Source::Unread, std::nullopt, kept); }

void KnownValues::SetAccepted(const device::AccParam& values, const Values& kept) {
  Set(Source::Accepted, values, kept);
}

void KnownValues::SetTold(const device::AccParam& values, const Values& kept) { Set(Source::Told, values, kept); }

void KnownValues::Set(Source source, const Values& held, const Values& kept) {
  m_source = source;
  m_held = held;
  m_kept = kept;
}

bool KnownValues::Follow(const Values& kept) {
  if (kept == m_kept) return false;
  if (kept)
    SetUnread(kept);
  else
    Set(Source::Accepted, m_kept, kept);
  return true;
}

KnownValues::Question KnownValues::BeforeSending(const device::AccParam& wanted, std::uint16_t revision) const {
  if (m_kept) return IsFormOf(wanted, *m_kept, revision) ? Question::None : Question::OverKept;
  return m_source == Source::Unread ? Question::OverUnread : Question::None;
}

}  // namespace kestrin::core::motion
