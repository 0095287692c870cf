#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace kestrin::core::base {

class Disk;

/// Writes `content` as the whole file `path`, or leaves what was there, also when the power goes in the middle: it goes
/// into a new file beside `path`, is forced onto the disk, and then takes the name (and the old file's permissions). A
/// device or a pipe of that name is written to as it is. Returns "" on success, else a text for the person that names
/// the file and says what is wrong.
[[nodiscard]] std::string WriteWholeFile(const std::filesystem::path& path, std::string_view content, Disk& disk);

/// The same for a copy that can be made again: it is whole whenever the program ends, but a power cut may lose it.
[[nodiscard]] std::string WriteWholeFile(const std::filesystem::path& path, std::string_view content);

/// Appends bytes to the file that is being written; false when the disk refuses them, and all that follow.
using AppendBytes = std::function<bool(std::string_view)>;
/// Gives the content of a file piece by piece. Returns "" when that was all of it, else why it could not be given; may
/// stop once a piece was refused, and may throw.
using ContentInPieces = std::function<std::string(const AppendBytes&)>;

/// The same for contents too large for memory. Content that could not be given whole leaves what was there.
[[nodiscard]] std::string WriteWholeFile(const std::filesystem::path& path, const ContentInPieces& content, Disk& disk);
[[nodiscard]] std::string WriteWholeFile(const std::filesystem::path& path, const ContentInPieces& content);

}  // namespace kestrin::core::base
