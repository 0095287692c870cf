// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/base/Result.h"
#include "core/base/TextLines.h"
#include "simulator/SensorSource.h"

namespace kestrin::simulator {

/// How a simulated board is moved, out of a text file with one movement a line:
///
///     at X Y Z [TILT]   how it is held from here on: what each axis feels at rest, -31 to 31, and the tilt, 0 to 255.
///                       It begins as "at 0 0 21 0", lying still
///     rest SECONDS      it is held still, for up to 3,600 s
///     swing FORCE       it is swung through the air: the strongest axis goes up to FORCE (1 to 31) from where it rests
///                       and back, then less far the other way
///     tap FORCE         it hits something: the strongest axis is at FORCE at once and shakes off
///     repeat            all from the beginning; the last line if at all
///
/// All of it is a day at most. Empty lines and what follows a "#" count for nothing. The script's time goes on by 40 ms
/// whenever the board is asked, so that what is felt does not hang on how fast the computer is. After the last line the
/// board is held still.
class MotionScript {
 public:
  /// Between two times that the board is asked, in milliseconds of the script.
  static constexpr int kStepMilliseconds = 40;

  /// A failure names the file, and the line where one is wrong.
  static core::base::Result<MotionScript> Read(const std::filesystem::path& file);
  /// The same of a text; `name` is what it is called in texts for the person.
  static core::base::Result<MotionScript> Parse(std::string_view text, std::string name);

  /// What is felt next.
  [[nodiscard]] SensorValues Next();
  /// Whether it is held still from now on.
  [[nodiscard]] bool IsOver() const { return m_next == m_values.size() && !m_repeats; }

 private:
  static core::base::Result<MotionScript> Parse(const core::base::TextLines& lines);
  /// Takes one line into the script; what is wrong with it, "" when nothing is.
  [[nodiscard]] std::string Take(const std::vector<std::string_view>& words);
  [[nodiscard]] std::string Hold(const std::vector<std::string_view>& words);
  [[nodiscard]] std::string Rest(const std::vector<std::string_view>& words);
  [[nodiscard]] std::string Swing(const std::vector<std::string_view>& words);
  [[nodiscard]] std::string Tap(const std::vector<std::string_view>& words);
  [[nodiscard]] std::string Repeat(const std::vector<std::string_view>& words);
  /// Appends what is felt with these forces on top of how the board is held.
  void Feel(double x, double y, double z);

  std::vector<SensorValues> m_values;
  SensorValues m_held = kLyingStill;
  std::size_t m_next = 0;
  bool m_repeats = false;
};

}  // namespace kestrin::simulator
