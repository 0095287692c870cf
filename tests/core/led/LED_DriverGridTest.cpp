// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "LedRecords.h"
#include "core/led/LED_Driver.h"

// The counts over a grid of periods, values, overdrives, channels and kinds, against the same rules in whole numbers:
// nothing is rounded before the end, so the expected count is exact.

namespace kestrin::core::led {
namespace {

/// What a channel of the grid has, in the text of the record and as whole numbers.
struct GridChannel {
  const char* color;
  std::int64_t maxLum;
  std::int64_t maxDC;
  const char* dutyCoef;
  /// The same cubic in 1e-9 percent, c3 first.
  std::int64_t nanoCubic[4];
};

const GridChannel kGridChannels[] = {
    {"red", 900, 80, "0_0.00002_0.07_2", {0, 20'000, 70'000'000, 2'000'000'000}},
    {"green", 1500, 100, "0.000000007_0.00001_0.03_1", {7, 10'000, 30'000'000, 1'000'000'000}},
    {"blue", 101, 2, "0_0_0.02_0", {0, 0, 20'000'000, 0}},
    {"white", 750, 55, "-0.00000012_0_0.21_-3", {-120, 0, 210'000'000, -3'000'000'000}},
};

constexpr std::int64_t kNano = 1'000'000'000;

/// The exact off-count; `ambiguous` says that the exact count is a tie, or so near one that the last bit of floating
/// point decides. Then the count above is right as well. `tenths` is the value in tenths.
struct Expected {
  std::int64_t toff;
  bool ambiguous = false;
};

Expected ExactToff(const GridChannel& ch, std::int64_t period, std::int64_t overDrive, int type, std::int64_t tenths) {
  if (tenths <= 0) return {1};
  std::int64_t nanoPercent = 0;
  if (type == 0) {
    if (tenths >= 1000) return {period + 1};
    nanoPercent = std::min(tenths * (kNano / 10), ch.maxDC * kNano);
  } else if (type == 1) {
    if (tenths >= ch.maxLum * 10) return {period + 1};
    const std::int64_t lum = tenths / 10;  // the grid has whole luminances only
    for (const std::int64_t c : ch.nanoCubic) nanoPercent = nanoPercent * lum + c;
  } else {
    nanoPercent = ch.maxDC * std::min<std::int64_t>(tenths, 1000) * (kNano / 1000);
  }
  // Now in 1e-11 percent, of which a whole period has 1e13.
  const std::int64_t whole = 100 * 100 * kNano;
  const std::int64_t scaled = std::clamp<std::int64_t>(nanoPercent * overDrive, 0, whole);
  if (scaled == 0) return {1};
  if (scaled == whole) return {period + 1};
  const std::int64_t product = period * scaled;  // at most 1e17
  const std::int64_t below = product / whole + 1;
  const std::int64_t rest = product % whole;
  const std::int64_t half = whole / 2;
  const auto bounded = [&](std::int64_t t) { return std::clamp<std::int64_t>(t, 2, period + 1); };
  if (std::abs(rest - half) <= 1000) return {bounded(below), true};
  return {bounded(rest > half ? below + 1 : below)};
}

struct Visits {
  int points = 0;
  int ambiguous = 0;
  std::set<std::int64_t> counts;
};

void VisitPoint(const LED_Driver& driver, int channel, std::int64_t overDrive, int type, std::int64_t tenths,
                Visits& visits) {
  const auto setType = static_cast<SetType>(type);
  const double value = static_cast<double>(tenths) / 10;
  const std::int64_t toff = driver.GetToff(setType, channel, value);
  const Expected expected = ExactToff(kGridChannels[channel - 1], driver.Period, overDrive, type, tenths);
  const std::int64_t above = std::min<std::int64_t>(expected.toff + 1, driver.Period + 1);
  EXPECT_TRUE(toff == expected.toff || (expected.ambiguous && toff == above))
      << "period " << driver.Period << ", channel " << channel << ", overdrive " << overDrive << ", kind " << type
      << ", value " << value << ": " << toff << ", expected " << expected.toff;
  EXPECT_EQ(driver.GetTon(setType, channel, value), tenths == 0 ? 0 : 1)
      << "channel " << channel << ", kind " << type << ", value " << value;
  ++visits.points;
  visits.ambiguous += expected.ambiguous ? 1 : 0;
  visits.counts.insert(toff);
}

TEST(LED_DriverGrid, CountsAgreeWithExactArithmetic) {
  RecordText record = RecordOfColors({"red", "green", "blue", "white"});
  for (std::size_t i = 0; i < 4; ++i) {
    record.channels[i].color = kGridChannels[i].color;
    record.channels[i].maxLum = std::to_string(kGridChannels[i].maxLum);
    record.channels[i].maxDC = std::to_string(kGridChannels[i].maxDC);
    record.channels[i].dutyCoef = kGridChannels[i].dutyCoef;
  }
  Visits visits;
  for (const std::int64_t period : {10, 11, 255, 997, 1000, 4096, 9999, 10000}) {
    record.period = std::to_string(period);
    LED_Driver driver = DriverOf(record);
    for (const std::int64_t overDrive : {0, 1, 37, 50, 99, 100, 101, 125, 181, 200, 5000}) {
      driver.OverDrive = static_cast<double>(overDrive);
      for (int channel = 1; channel <= 4; ++channel) {
        for (const int type : {0, 2})
          for (std::int64_t tenths = -20; tenths <= 1040; tenths += 13)
            VisitPoint(driver, channel, overDrive, type, tenths, visits);
        for (const int type : {0, 2})
          for (const std::int64_t tenths : {-1, 0, 1, 999, 1000, 1001})
            VisitPoint(driver, channel, overDrive, type, tenths, visits);
        const std::int64_t maxLum = kGridChannels[channel - 1].maxLum;
        for (std::int64_t lum = -3; lum <= maxLum + 3; lum += 1 + maxLum / 101)
          VisitPoint(driver, channel, overDrive, 1, lum * 10, visits);
        for (const std::int64_t lum :
             {std::int64_t{-1}, std::int64_t{0}, std::int64_t{1}, maxLum - 1, maxLum, maxLum + 1})
          VisitPoint(driver, channel, overDrive, 1, lum * 10, visits);
        if (HasFailure()) return;
      }
    }
  }
  EXPECT_GE(visits.points, 10'000);
  // Else the grid would have hit few different counts, or nearly nothing but points where two answers are taken.
  EXPECT_GE(visits.counts.size(), 1'000u);
  EXPECT_LE(visits.ambiguous * 20, visits.points);
  RecordProperty("points", visits.points);
  RecordProperty("ambiguous", visits.ambiguous);
  RecordProperty("counts", static_cast<int>(visits.counts.size()));
}

}  // namespace
}  // namespace kestrin::core::led
