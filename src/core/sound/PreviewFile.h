#pragma once

#include <filesystem>
#include <span>
#include <string>

namespace kestrin::core::sound {

/// The WAV copy of a sound that is played to the person: "temp.wav", which every preview writes anew.
class PreviewFile {
 public:
  static constexpr const char* kName = "temp.wav";

  /// Where the copy lies, or why there is none.
  struct Written {
    std::filesystem::path path;
    /// A text for the person; "" when the copy was written.
    std::string problem;
  };

  /// Writes the copy of `sound` into the first of the folders that takes it; missing folders are made.
  [[nodiscard]] static Written Write(const std::filesystem::path& sound,
                                     std::span<const std::filesystem::path> folders);
};

}  // namespace kestrin::core::sound
