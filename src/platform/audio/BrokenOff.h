// SPDX-License-Identifier: MIT
#pragma once

#include "platform/audio/SourceFile.h"

namespace kestrin::platform::audio {

/// How a sound file ends, by what stands in it. The sound library takes many files that were cut off as if they were
/// meant to be so short.
enum class FileEnd {
  /// As it should, or nothing in the file says where.
  Whole,
  /// The file says that it is longer.
  BrokenOff,
  /// Another sound follows in the same file, which the library leaves out without a word.
  OneOfSeveral,
};

/// Looks at a file of any kind; reads little of it, whatever its size.
[[nodiscard]] FileEnd EndOf(SourceFile& file);

}  // namespace kestrin::platform::audio
