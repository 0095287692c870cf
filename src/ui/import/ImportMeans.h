// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "core/base/Archives.h"
#include "core/base/Disk.h"
#include "core/base/Result.h"
#include "core/sound/import/ImportCrew.h"
#include "core/sound/level/Levelling.h"

namespace kestrin::ui::imports {

/// Sounds that a person has named to import.
struct ListedSounds {
  std::vector<core::sound::ImportSource> sources;
  /// Keeps what was unpacked for them, as long as anybody has it.
  std::shared_ptr<const void> keeper;
};

/// What the import sheet needs to work with files. All of it is called on other threads than the window's, one call of
/// each at a time.
struct ImportMeans {
  using GoOn = core::sound::SoundImport::GoOn;

  /// The sounds that files, folders and archives stand for.
  std::function<ListedSounds(const std::vector<std::filesystem::path>& named, const GoOn&)> list;
  /// Makes sounds ready, see ImportCrew::Import().
  std::function<void(const std::vector<core::sound::ImportCrew::Order>&, const std::filesystem::path& folder,
                     const core::sound::ImportCrew::Done&, const GoOn&)>
      convert;
  /// Makes a copy of a sound as it is, see PlainCopy::Write().
  std::function<core::base::Result<>(const std::filesystem::path& sound, const std::filesystem::path& copy,
                                     const GoOn&)>
      copy;
  /// Puts a copy of a file that was made ready into a folder, see KeepSound().
  std::function<core::base::Result<std::filesystem::path>(const std::filesystem::path& made,
                                                          const std::filesystem::path& folder)>
      keep;
  /// Measures how loud a board plays sounds, see Levelling::Measure(); nothing where that is not possible.
  std::function<core::base::Result<std::vector<core::sound::MeasuredSound>>(
      const std::vector<core::sound::Levelling::Sound>&, const GoOn&)>
      measure;
};

/// The means over audio libraries, archives and disk, which must outlive them. Sounds of the board's own format need
/// nothing: they are taken where they lie.
[[nodiscard]] ImportMeans MeansOver(core::sound::AudioTools& tools, core::base::Archives& archives,
                                    core::base::Disk& disk);

}  // namespace kestrin::ui::imports
