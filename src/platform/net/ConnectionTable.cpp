// SPDX-License-Identifier: MIT
#include "platform/net/ConnectionTable.h"

#include <algorithm>

namespace kestrin::platform::net {

std::optional<ConnectionTable::Id> ConnectionTable::Add(Id id, const std::string& address,
                                                        core::base::Clock::Duration now) {
  m_entries.push_back({id, address, now + m_limits.asking});
  // One at most is too many: before, there were not.
  if (Count(&address) > m_limits.ofOneAddress) return SendAway(&address);
  if (Count(nullptr) > m_limits.inAll) return SendAway(nullptr);
  return std::nullopt;
}

void ConnectionTable::NoteProgress(Id id, core::base::Clock::Duration now) {
  for (Entry& entry : m_entries) {
    if (entry.id != id) continue;
    entry.asking = false;
    entry.deadline = now + m_limits.taking;
  }
}

void ConnectionTable::Remove(Id id) {
  std::erase_if(m_entries, [id](const Entry& entry) { return entry.id == id; });
}

std::vector<ConnectionTable::Id> ConnectionTable::Overdue(core::base::Clock::Duration now) {
  std::vector<Id> overdue;
  for (Entry& entry : m_entries) {
    if (entry.ending || now < entry.deadline) continue;
    entry.ending = true;
    overdue.push_back(entry.id);
  }
  return overdue;
}

std::size_t ConnectionTable::Count(const std::string* address) const {
  return static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
    return !entry.ending && (address == nullptr || entry.address == *address);
  }));
}

ConnectionTable::Id ConnectionTable::SendAway(const std::string* address) {
  const auto last = std::prev(m_entries.end());
  const auto leaving = std::find_if(m_entries.begin(), last, [&](const Entry& entry) {
    return entry.asking && !entry.ending && (address == nullptr || entry.address == *address);
  });
  leaving->ending = true;
  return leaving->id;
}

}  // namespace kestrin::platform::net
