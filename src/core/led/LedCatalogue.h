#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/TextLines.h"
#include "led/LED_Driver.h"

namespace kestrin::core::led {

/// The LED catalogue, "KestrinLEDS.ldcfg" in the program's folder: a header line, then one LED type a line. Empty lines
/// mean nothing. docs/led-catalogue.md has the format.
class LedCatalogue {
 public:
  static constexpr const char* kFileName = "KestrinLEDS.ldcfg";
  /// What the person is told when the catalogue cannot be used; Problem() has the details.
  static constexpr const char* kInvalid =
      "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";

  explicit LedCatalogue(const std::filesystem::path& programFolder) : m_file(programFolder / kFileName) {}

  /// Reads the file anew. False when it is missing or cannot be read; it has no lines then.
  [[nodiscard]] bool Read();
  /// Checks the header line of what was read.
  [[nodiscard]] bool CheckHeader();
  /// Reads the file anew and all its types, in its order. False when anything in it is wrong or it has no type;
  /// `types` holds those before then.
  [[nodiscard]] bool ReadTypes(std::vector<LED_Driver>& types);

  /// Lines are counted from 1, the header is line 1.
  [[nodiscard]] std::size_t LineCount() const { return m_lines.Count(); }
  [[nodiscard]] bool IsEmptyLine(std::size_t line) const { return m_lines.Line(line).empty(); }
  /// Whether the text before the line's first "@" is `LEDName`. The header has no "@" and so is never an LED type's.
  [[nodiscard]] bool IsOf(std::size_t line, std::string_view LEDName) const;
  /// `driver`.Init() with that line. A failure becomes Problem() with line and field.
  [[nodiscard]] bool Init(std::size_t line, LED_Driver& driver);

  /// What the last failure was about, for the person: file, line, field and what is allowed; "" after a Read() that
  /// succeeded.
  [[nodiscard]] const std::string& Problem() const { return m_problem; }
  /// Another text whenever the file has changed.
  [[nodiscard]] std::string Stamp() const;

 private:
  [[nodiscard]] bool Refuse(std::size_t line, const std::string& reason);

  std::filesystem::path m_file;
  base::TextLines m_lines;
  std::string m_problem;
};

}  // namespace kestrin::core::led
