// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "device/TLS.h"

namespace kestrin::core::motion {

/// What is known of the detection parameters that the board at hand holds, and what must be asked before others are
/// sent over them.
///
/// A download can change them behind this: it wipes them and puts them back, and what it leaves kept on this computer
/// tells how far it came.
class KnownValues {
 public:
  using Values = std::optional<device::AccParam>;

  enum class Source {
    Unread,    ///< nothing is known: the board did not answer, or an interrupted download has wiped them
    Accepted,  ///< the board has taken these values and has not been read since
    Told,      ///< the board was asked
  };
  /// What is lost by sending: see BeforeSending().
  enum class Question { None, OverKept, OverUnread };

  [[nodiscard]] Source From() const { return m_source; }
  /// What the board holds; empty when that is not known.
  [[nodiscard]] const Values& Held() const { return m_held; }

  /// What is kept on this computer for the board, from before an interrupted download.
  [[nodiscard]] const Values& Kept() const { return m_kept; }

  /// The board did not tell. `kept` is what is kept for it then, here and below.
  void SetUnread(const Values& kept);
  void SetAccepted(const device::AccParam& values, const Values& kept);
  void SetTold(const device::AccParam& values, const Values& kept);

  /// What is kept for the board is `kept` now. Kept values that are gone are on the board again; ones that are new were
  /// wiped there. True when Held() has changed by that.
  bool Follow(const Values& kept);

  /// What the person must be asked before `wanted` goes to a board of that `DeviceRevision`: other values than the kept
  /// ones would be forgotten with them, and values that nobody has read would be gone.
  [[nodiscard]] Question BeforeSending(const device::AccParam& wanted, std::uint16_t revision) const;

 private:
  void Set(Source source, const Values& held, const Values& kept);

  Source m_source = Source::Unread;
  Values m_held;
  Values m_kept;
};

}  // namespace kestrin::core::motion
