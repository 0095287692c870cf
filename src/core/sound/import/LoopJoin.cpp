// SPDX-License-Identifier: MIT
#include "sound/import/LoopJoin.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace kestrin::core::sound {

namespace {

constexpr std::uint64_t kFewestToJoin = 960;
/// 100 ms: a hum has several of its waves in it.
constexpr std::uint64_t kLongestFade = 4800;
/// 25 ms: a whole wave of 40 Hz.
constexpr std::uint64_t kLongestSearch = 1200;

double Product(std::span<const double> a, std::span<const double> b) {
  return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

}  // namespace

std::optional<LoopNeed> NeedOfLoop(std::uint64_t samples) {
  if (samples < kFewestToJoin) return std::nullopt;
  return LoopNeed{static_cast<std::size_t>(std::min(kLongestFade, samples / 4)),
                  static_cast<std::size_t>(std::min(kLongestSearch, samples / 8))};
}

LoopJoin JoinLoop(std::span<const double> head, std::span<const double> tail) {
  const std::size_t fade = head.size();
  const std::size_t search = tail.size() - fade;
  const double headPower = Product(head, head);
  std::size_t best = 0;
  double likeness = -2;
  for (std::size_t skipped = 0; skipped <= search; ++skipped) {
    const std::span<const double> end = tail.subspan(search - skipped, fade);
    const double powers = std::sqrt(headPower * Product(end, end));
    const double alike = powers > 0 ? Product(head, end) / powers : 0;
    if (alike <= likeness) continue;
    likeness = alike;
    best = skipped;
  }
  LoopJoin join{std::vector<double>(fade), fade + best};
  const std::span<const double> end = tail.subspan(search - best, fade);
  const double shared = std::clamp(likeness, 0.0, 1.0);
  for (std::size_t i = 0; i < fade; ++i) {
    const double in = (static_cast<double>(i) + 0.5) / static_cast<double>(fade);
    const double out = 1 - in;
    const double power = in * in + out * out + 2 * in * out * shared;
    join.beginning[i] = (in * head[i] + out * end[i]) / std::sqrt(power);
  }
  return join;
}

}  // namespace kestrin::core::sound
