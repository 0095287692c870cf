// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "base/TextLines.h"
#include "led/LED_Driver.h"

namespace kestrin::core::led {

/// The LED catalogue, "KestrinLEDS.ldcfg" in the program's folder: a header line, then one LED type a line. Empty lines
/// mean nothing. docs/led-catalogue.md has the format. The texts of failures name file, line, field and what is
/// allowed.
class LedCatalogue {
 public:
  static constexpr const char* kFileName = "KestrinLEDS.ldcfg";
  /// What the person is told when the catalogue cannot be used; a failure's text has the details.
  static constexpr const char* kInvalid =
      "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !";

  /// A line that is not empty.
  struct Record {
    std::string text;
    /// What LED_Driver::Init() makes of it.
    base::Result<LED_Driver> type;

    /// Whether the text before the first "@" is `LEDName`. The header has no "@" and so is never an LED type's.
    [[nodiscard]] bool IsOf(std::string_view LEDName) const;
  };

  explicit LedCatalogue(const std::filesystem::path& programFolder) : m_file(programFolder / kFileName) {}

  /// Reads the file unless what was read of it before is still what it holds. Fails when it is missing or cannot be
  /// read; there are no lines then.
  base::Result<> Read();
  /// Checks the header line of what was read.
  [[nodiscard]] base::Result<> CheckHeader() const;
  /// Everything that was read, the header too.
  [[nodiscard]] std::span<const Record> Lines() const { return m_lines; }
  /// What was read behind the first line.
  [[nodiscard]] std::span<const Record> Records() const { return Lines().subspan(m_linesInFront); }
  /// Reads all types of the file, in their order. Fails when anything in it is wrong or it has no type.
  base::Result<std::vector<LED_Driver>> Types();

  /// Another text whenever the file has changed.
  [[nodiscard]] std::string Stamp() const;

 private:
  [[nodiscard]] bool IsSettled() const;
  [[nodiscard]] base::Failure FailureAt(std::size_t line, const std::string& reason) const;
  [[nodiscard]] Record RecordOf(std::size_t line) const;

  std::filesystem::path m_file;
  base::TextLines m_text;
  std::vector<Record> m_lines;
  /// How many of the lines stand in front of the records: one, or none when line 1 is empty.
  std::size_t m_linesInFront = 0;
  /// That of the file that was read; "" when it has to be read anew in any case.
  std::string m_stamp;
};

}  // namespace kestrin::core::led
