// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kestrin::core::sound {

/// What is done to sounds beyond what the board needs.
struct ImportOptions {
  /// Silence at both ends goes.
  bool trim = false;
  /// The end is joined to the beginning, so that the sound repeats without a click.
  bool loop = false;
  /// The loudness in LUFS that the sound gets, as far as its peaks allow; nothing leaves it as loud as it is.
  std::optional<double> level = {};

  friend bool operator==(const ImportOptions&, const ImportOptions&) = default;
};

/// A sound to import.
struct ImportSource {
  /// The file to read.
  std::filesystem::path file;
  /// What the person knows it as: the file itself, or the archive and the name in it.
  std::string shownAs;
  /// The name that the result gets, without an ending.
  std::string name;
  /// Why there is nothing to read, a text for the person; "" when there is.
  std::string reason = {};
};

/// What became of one sound.
struct ImportedSound {
  /// What the person knows the source as.
  std::string source;
  /// The ".lsu" file that was made; empty when none was.
  std::filesystem::path path;
  /// Why none was made, whole sentences for the person with the next step; "" when one was.
  std::string reason;
  /// Of the source.
  int rate = 0;
  int channels = 0;
  /// How long the source plays.
  double sourceSeconds = 0;
  /// Of the result.
  double seconds = 0;
  std::int64_t samples = 0;
  /// Of the result, in dB and LUFS; nothing when it cannot be told.
  std::optional<double> truePeak;
  std::optional<double> loudness;
  /// What was done to the sound, each in a few words: "stereo to mono", "44.1 to 48 kHz", "3 dB quieter".
  std::vector<std::string> changes;
};

}  // namespace kestrin::core::sound
