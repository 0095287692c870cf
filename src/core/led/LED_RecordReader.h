// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Numbers.h"

namespace kestrin::core::led {

/// A numeric field of a catalogue record: its name as people see it, and the values it may have, bounds included.
struct FieldRange {
  std::string_view name;
  double minimum;
  double maximum;
};

/// The checks that a catalogue record is read with. Each check returns whether the record passed it; the one that it
/// did not pass leaves a text for the person in Problem().
class LED_RecordReader {
 public:
  /// Names what the following checks look at, for example "channel 2".
  void SetPlace(std::string place) { m_place = std::move(place); }

  /// Splits `text` at `separator` into `pieces`, which must be exactly `count`.
  [[nodiscard]] bool Cut(std::string_view text, std::string_view separator, std::size_t count,
                         std::vector<std::string_view>& pieces);

  /// Reads the number of `text` into the whole-number `field`, rounded to the nearest (ties to even), and checks it. A
  /// number that `field` cannot hold leaves it as it was; one that is only out of range is stored all the same.
  template <typename Integer>
  [[nodiscard]] bool Number(std::string_view text, const FieldRange& range, Integer& field) {
    const double number = base::LeadingNumber(text);
    const double rounded = base::RoundHalfEven(number);
    if (Fits<Integer>(rounded)) field = static_cast<Integer>(rounded);
    return Check(rounded >= range.minimum && rounded <= range.maximum && Fits<Integer>(rounded), number, range);
  }

  /// The same for a field with decimals, which is not rounded.
  [[nodiscard]] bool Number(std::string_view text, const FieldRange& range, double& field);

  /// Refuses the record with a text that says what is wrong at the current place. Always false.
  bool Refuse(std::string_view what);

  /// What the first check that failed found, with the place, the field and what is allowed; "" when none did.
  [[nodiscard]] const std::string& Problem() const { return m_problem; }

 private:
  template <typename Integer>
  [[nodiscard]] static bool Fits(double number) {
    return number >= std::numeric_limits<Integer>::min() && number <= std::numeric_limits<Integer>::max();
  }
  bool Check(bool passed, double number, const FieldRange& range);

  std::string m_place = "record";
  std::string m_problem;
};

}  // namespace kestrin::core::led
