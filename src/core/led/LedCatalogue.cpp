#include "led/LedCatalogue.h"

#include <system_error>

#include "base/Numbers.h"
#include "base/Text.h"

namespace kestrin::core::led {

namespace fs = std::filesystem;

bool LedCatalogue::Read() {
  const base::Result<> read = m_lines.Read(m_file);
  m_problem = read.Text();
  return static_cast<bool>(read);
}

bool LedCatalogue::CheckHeader() {
  constexpr std::string_view kWord = "KestrinLEDConfigurator";
  constexpr double kVersion = 2;
  if (LineCount() > 0) {
    const auto fields = base::Split(m_lines.Line(1), "#");
    if (fields.size() == 2 && fields[0] == kWord && base::LeadingNumber(fields[1]) == kVersion) return true;
  }
  return Refuse(1, ": \"KestrinLEDConfigurator#2\" is expected");
}

bool LedCatalogue::ReadTypes(std::vector<LED_Driver>& types) {
  types.clear();
  if (!Read() || !CheckHeader()) return false;
  for (std::size_t line = 2; line <= LineCount(); ++line) {
    if (IsEmptyLine(line)) continue;
    LED_Driver type;
    if (!Init(line, type)) return false;
    types.push_back(std::move(type));
  }
  return !types.empty() || Refuse(2, ": an LED type is expected");
}

bool LedCatalogue::IsOf(std::size_t line, std::string_view LEDName) const {
  const std::string_view text = m_lines.Line(line);
  const std::size_t end = text.find('@');
  return end != text.npos && text.substr(0, end) == LEDName;
}

bool LedCatalogue::Init(std::size_t line, LED_Driver& driver) {
  return driver.Init(m_lines.Line(line)) || Refuse(line, ", " + driver.InitProblem());
}

std::string LedCatalogue::Stamp() const {
  std::error_code noSize;
  std::error_code noTime;
  const auto size = fs::file_size(m_file, noSize);
  const auto time = fs::last_write_time(m_file, noTime);
  if (noSize || noTime) return "none";
  return std::to_string(size) + " bytes at " + std::to_string(time.time_since_epoch().count());
}

bool LedCatalogue::Refuse(std::size_t line, const std::string& reason) {
  m_problem = m_lines.Place(line) + reason;
  return false;
}

}  // namespace kestrin::core::led
