// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

#include "base/Archives.h"
#include "base/EventPump.h"
#include "base/Result.h"
#include "sound/LSU_Configuration.h"

namespace kestrin::core::sound {

/// Packs a set with its sounds as one ZIP file, to take it along: its configuration file, in which the sounds have
/// plain names, and each sound once.
class SetPacker {
 public:
  /// What the ending of a packed set's name is.
  static constexpr std::string_view kEnding = ".zip";

  /// What was packed.
  struct Packed {
    /// The sounds and the configuration file.
    int files = 0;
    /// Of the ZIP file.
    std::uintmax_t bytes = 0;
  };

  /// Must outlive the object.
  explicit SetPacker(base::Archives& archives) : m_archives(archives) {}

  /// Writes the new file `file`, whole or not at all; `name` is what the configuration file in it is called. `pump`
  /// gets its turn on the way; when it throws, nothing is written. Fails with NotFound when sounds are missing or
  /// cannot be read any more, before anything is written, with InTheWay when there is such a file, with NotValid when
  /// the set is empty. The text is for the person.
  [[nodiscard]] base::Result<Packed> Pack(const LSU_Configuration& configuration,
                                          const std::vector<std::filesystem::path>& missing, std::string_view name,
                                          const std::filesystem::path& file, const base::EventPump& pump = {});

 private:
  base::Archives& m_archives;
};

}  // namespace kestrin::core::sound
