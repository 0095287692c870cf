// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "sound/import/SoundImport.h"

namespace kestrin::core::sound {

/// Imports many sounds on as many threads as keep the computer's cores busy, and yet names and results are those of one
/// after another.
class ImportCrew {
 public:
  /// One sound to make, with what is to be done to it.
  struct Order {
    ImportSource source;
    ImportOptions options;
  };
  /// A result, with the number of its order from 0. Called on the thread that called Import(), in the order of the
  /// orders.
  using Done = std::function<void(std::size_t, ImportedSound)>;

  /// Threads that keep so many cores busy: one more, since each waits for the disk at times.
  [[nodiscard]] static constexpr unsigned ThreadsFor(unsigned cores) { return cores + 1; }

  /// Both must outlive the crew and bear several threads. `threads` 0: as many as keep all cores busy.
  ImportCrew(AudioTools& tools, base::Disk& disk, unsigned threads = 0);

  /// Imports them all into the folder. `goOn` is asked on the calling thread, about every 20 ms; when it says false or
  /// throws, what is under way is given up, and what was not done has "Stopped." for its reason.
  void Import(const std::vector<Order>& orders, const std::filesystem::path& folder, const Done& done,
              const SoundImport::GoOn& goOn = {});

 private:
  AudioTools& m_tools;
  base::Disk& m_disk;
  unsigned m_threads;
};

}  // namespace kestrin::core::sound
