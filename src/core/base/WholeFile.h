// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "base/Result.h"

namespace kestrin::core::base {

class Disk;

/// Writes `content` as the whole file `path`, or leaves what was there, also when the power goes in the middle: it goes
/// into a new file beside `path`, is forced onto the disk, and then takes the name (and the old file's permissions). A
/// device or a pipe of that name is written to as it is. The text of a failure names the file and says what is wrong;
/// its kind is the disk's.
Result<> WriteWholeFile(const std::filesystem::path& path, std::string_view content, Disk& disk);

/// The same for a copy that can be made again: it is whole whenever the program ends, but a power cut may lose it.
Result<> WriteWholeFile(const std::filesystem::path& path, std::string_view content);

/// Appends bytes to the file that is being written; false when the disk refuses them, and all that follow.
using AppendBytes = std::function<bool(std::string_view)>;
/// Gives the content of a file piece by piece. Fails when it could not be given to its end; may
/// stop once a piece was refused, and may throw.
using ContentInPieces = std::function<Result<>(const AppendBytes&)>;

/// The same for contents too large for memory. Content that could not be given whole leaves what was there.
Result<> WriteWholeFile(const std::filesystem::path& path, const ContentInPieces& content, Disk& disk);
Result<> WriteWholeFile(const std::filesystem::path& path, const ContentInPieces& content);

}  // namespace kestrin::core::base
