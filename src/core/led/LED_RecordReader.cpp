// SPDX-License-Identifier: MIT
#include "led/LED_RecordReader.h"

#include <cmath>

#include "base/PlainNumber.h"
#include "base/Text.h"

namespace kestrin::core::led {
namespace {

/// Numbers from here on are not written out: nobody means them, and they have up to 309 digits.
constexpr double kTooLarge = 1e15;

}  // namespace

bool LED_RecordReader::Cut(std::string_view text, std::string_view separator, std::size_t count,
                           std::vector<std::string_view>& pieces) {
  pieces = base::Split(text, separator);
  if (pieces.size() == count) return true;
  return Refuse("expected " + std::to_string(count - 1) + " of \"" + std::string(separator) + "\", found " +
                std::to_string(pieces.size() - 1));
}

bool LED_RecordReader::Number(std::string_view text, const FieldRange& range, double& field) {
  field = base::LeadingNumber(text);
  return Check(field >= range.minimum && field <= range.maximum, field, range);
}

bool LED_RecordReader::Check(bool passed, double number, const FieldRange& range) {
  const std::string found = std::abs(number) < kTooLarge ? base::PlainNumber(number) : "too large a number";
  return passed || Refuse(std::string(range.name) + " is " + found + ", allowed is " +
                          base::PlainNumber(range.minimum) + " to " + base::PlainNumber(range.maximum));
}

bool LED_RecordReader::Refuse(std::string_view what) {
  m_problem = m_place + ": " + std::string(what);
  return false;
}

}  // namespace kestrin::core::led
