#include "led/LED_RecordReader.h"

#include <array>
#include <charconv>

#include "base/Text.h"

namespace kestrin::led {
namespace {

/// The shortest text of `number` with "." as the decimal point, whatever the locale.
std::string NumberText(double number) {
  std::array<char, 32> buffer{};
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), written.ptr};
}

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
  return passed || Refuse(std::string(range.name) + " is " + NumberText(number) + ", allowed is " +
                          NumberText(range.minimum) + " to " + NumberText(range.maximum));
}

bool LED_RecordReader::Refuse(std::string_view what) {
  m_problem = m_place + ": " + std::string(what);
  return false;
}

}  // namespace kestrin::led
