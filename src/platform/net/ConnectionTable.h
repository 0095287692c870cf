// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/base/Clock.h"

namespace kestrin::platform::net {

/// Who is connected to the font server, and whose connection has to end: because it takes too long, or because there
/// are too many. Who still asks makes room for who comes, the longest one first; who is answered stays.
class ConnectionTable {
 public:
  struct Limits {
    /// For the whole request, from the connection on.
    std::chrono::milliseconds asking{10000};
    /// For every piece of the answer.
    std::chrono::milliseconds taking{60000};
    /// The most connections in all and of one address.
    std::size_t inAll = 128;
    std::size_t ofOneAddress = 32;
  };
  /// The number by which a connection is known; no two that are open have the same.
  using Id = std::intptr_t;

  explicit ConnectionTable(const Limits& limits) : m_limits(limits) {}

  /// Somebody has connected. Returns the connection that has to end for it: the new one itself when nobody else may be
  /// sent away; nothing while there is room.
  [[nodiscard]] std::optional<Id> Add(Id id, const std::string& address, core::base::Clock::Duration now);
  /// Its request is here, or it has taken a piece of the answer.
  void NoteProgress(Id id, core::base::Clock::Duration now);
  /// The connection has ended.
  void Remove(Id id);
  /// The connections whose time is over, each told of once.
  [[nodiscard]] std::vector<Id> Overdue(core::base::Clock::Duration now);

 private:
  struct Entry {
    Id id;
    std::string address;
    core::base::Clock::Duration deadline;
    bool asking = true;
    /// It was told to end and counts no more.
    bool ending = false;
  };

  /// How many are open, of one address or (nullptr) in all.
  [[nodiscard]] std::size_t Count(const std::string* address) const;
  /// Who leaves of those who came before the last one, or that one.
  [[nodiscard]] Id SendAway(const std::string* address);

  Limits m_limits;
  /// In the order in which they came.
  std::vector<Entry> m_entries;
};

}  // namespace kestrin::platform::net
