// SPDX-License-Identifier: MIT
#include "led/LedCatalogue.h"

#include <chrono>
#include <system_error>
#include <utility>

#include "base/Numbers.h"
#include "base/Text.h"

namespace kestrin::core::led {

namespace fs = std::filesystem;

bool LedCatalogue::Record::IsOf(std::string_view LEDName) const {
  const std::size_t end = text.find('@');
  return end != text.npos && std::string_view(text).substr(0, end) == LEDName;
}

base::Result<> LedCatalogue::Read() {
  std::string stamp = Stamp();
  if (stamp == m_stamp) return {};
  m_stamp.clear();
  m_lines.clear();
  m_linesInFront = 0;
  base::Result<> read = m_text.Read(m_file);
  if (!read) return read;
  for (std::size_t line = 1; line <= m_text.Count(); ++line) {
    if (m_text.Line(line).empty()) continue;
    if (line == 1) m_linesInFront = 1;
    m_lines.push_back(RecordOf(line));
  }
  if (IsSettled()) m_stamp = std::move(stamp);
  return {};
}

base::Result<> LedCatalogue::CheckHeader() const {
  constexpr std::string_view kWord = "KestrinLEDConfigurator";
  constexpr double kVersion = 2;
  if (m_linesInFront > 0) {
    const auto fields = base::Split(m_lines.front().text, "#");
    if (fields.size() == 2 && fields[0] == kWord && base::LeadingNumber(fields[1]) == kVersion) return {};
  }
  return FailureAt(1, ": \"KestrinLEDConfigurator#2\" is expected");
}

base::Result<std::vector<LED_Driver>> LedCatalogue::Types() {
  base::Result<> usable = Read();
  if (usable) usable = CheckHeader();
  if (!usable) return usable.Why();
  std::vector<LED_Driver> types;
  for (const Record& record : Records()) {
    if (!record.type) return record.type.Why();
    types.push_back(*record.type);
  }
  if (types.empty()) return FailureAt(2, ": an LED type is expected");
  return types;
}

std::string LedCatalogue::Stamp() const {
  std::error_code noSize;
  std::error_code noTime;
  const auto size = fs::file_size(m_file, noSize);
  const auto time = fs::last_write_time(m_file, noTime);
  if (noSize || noTime) return "none";
  return std::to_string(size) + " bytes at " + std::to_string(time.time_since_epoch().count());
}

bool LedCatalogue::IsSettled() const {
  // Disks tell the time of writing in steps of up to two seconds: what was written within the same step may be written
  // once more without another stamp.
  constexpr std::chrono::seconds kCoarsest{2};
  std::error_code noTime;
  const auto written = fs::last_write_time(m_file, noTime);
  return !noTime && written + kCoarsest < fs::file_time_type::clock::now();
}

base::Failure LedCatalogue::FailureAt(std::size_t line, const std::string& reason) const {
  return {base::FailureKind::NotValid, m_text.Place(line) + reason};
}

LedCatalogue::Record LedCatalogue::RecordOf(std::size_t line) const {
  const std::string& text = m_text.Line(line);
  LED_Driver type;
  const base::Result<> valid = type.Init(text);
  if (!valid) return {text, FailureAt(line, ", " + valid.Why().text)};
  return {text, std::move(type)};
}

}  // namespace kestrin::core::led
