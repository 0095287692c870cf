// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "saber/Saber.h"

namespace kestrin::core::saber {

/// What happens to a saber, one thing after another: "on; wait 1.5; swing; swing; hit; lockup 1.2; off".
///
/// `boot`, `on`, `swing`, `hit` and `off` each last until their sound has ended; the next step comes then. `wait
/// SECONDS` behind one of them says instead how long after its beginning the next step comes, so that a hit can come
/// into the middle of a swing. `lockup SECONDS` is held for so long. Steps are separated by ";".
class SaberScript {
 public:
  /// The longest wait or lock-up, in seconds.
  static constexpr double kLongest = 600;
  /// Takes the samples that were rendered, in order; may throw. False stops.
  using Take = std::function<bool(std::span<const std::int16_t>)>;

  /// The script of a text. The text of a failure names the step that is none, and those that there are.
  [[nodiscard]] static base::Result<SaberScript> Read(std::string_view text);

  /// How many samples its waits and lock-ups last together: it is no shorter.
  [[nodiscard]] std::int64_t LeastSamples() const;

  /// Lets all of it happen to the saber, and what sounds then come to its end.
  void Perform(Saber& saber, const Take& take) const;

 private:
  struct Step {
    std::optional<Event> event;
    /// What ends it, if it is not over by itself.
    std::optional<Event> end;
    /// How long it lasts, in samples; nothing: until its sound has ended.
    std::optional<std::int64_t> samples;
  };
  std::vector<Step> m_steps;
};

}  // namespace kestrin::core::saber
