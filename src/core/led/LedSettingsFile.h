// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "base/TextLines.h"
#include "led/LED_Pulse.h"

namespace kestrin::core::base {
class Disk;
}

namespace kestrin::core::led {

/// An LED settings file (".ldset"): levels and times of the idle and the flash-on-clash pulse in three lines of text.
/// docs/file-formats.md has the format.
///
/// Reading goes line by line into pulses that exist: Open(), ReadIdle(), ReadFoc(). Each fails at the first thing that
/// is wrong, with a text that says what and where; what was read until then stays in the pulse.
class LedSettingsFile {
 public:
  static constexpr const char* kFilter = "LED Driver Setting (*.LDSET)|*.ldset|All files (*.*)|*.*";
  /// What the person is told about a file that cannot be read; a failure's text has the details.
  static constexpr const char* kCorrupted = "File is corrupted, could not read !";

  /// Reads the file and checks its first line.
  base::Result<> Open(const std::filesystem::path& file);
  /// Line 2: levels low and high, `Ton`, `Toff`, `Trise`, `Tfall` of the idle pulse. Values are taken as they stand.
  base::Result<> ReadIdle(LED_Pulse& pulse);
  /// Line 3: levels high, `Ton`, `Toff`, `NRep` of the flash-on-clash pulse. Values are taken as they stand.
  base::Result<> ReadFoc(LED_Pulse& pulse);

  /// Writes both pulses as `file`, whole or not at all.
  static base::Result<> Save(const std::filesystem::path& file, const LED_Pulse& idle, const LED_Pulse& foc,
                             base::Disk& disk);

 private:
  using SetLevel = void (LED_Pulse::*)(int, std::int16_t);

  [[nodiscard]] bool ParseIdle(LED_Pulse& pulse);
  [[nodiscard]] bool ParseFoc(LED_Pulse& pulse);
  /// What Open(), ReadIdle() and ReadFoc() return.
  [[nodiscard]] base::Result<> Checked(bool valid) const;
  /// Takes line `number` as the one that is being read.
  [[nodiscard]] bool StartLine(std::size_t number, std::string_view& text);
  /// Cuts `text` into `piece` and `rest` around the one `key` that it must have.
  [[nodiscard]] bool Cut(std::string_view text, std::string_view key, std::string_view& piece, std::string_view& rest);
  [[nodiscard]] bool ReadLevels(std::string_view text, LED_Pulse& pulse, SetLevel set);
  /// The `count` numbers of `text`.
  [[nodiscard]] bool Fields(std::string_view text, std::size_t count, std::vector<double>& numbers);
  [[nodiscard]] bool ReadWhole(double number, std::int16_t& field);
  [[nodiscard]] bool Refuse(const std::string& reason);

  base::TextLines m_lines;
  /// The line that is being read.
  std::size_t m_number = 0;
  /// What the last check found that failed.
  std::string m_problem;
};

}  // namespace kestrin::core::led
