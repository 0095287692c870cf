// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "base/WholeFile.h"
#include "sound/import/AudioTools.h"

namespace kestrin::core::sound {

/// Gives the bytes of a ".lsu" file, and measures what is in it.
class SoundWriter {
 public:
  /// Writes the header word. Both must outlive the object.
  SoundWriter(AudioTools& tools, const base::AppendBytes& append, std::uint32_t headerWord = 0);

  /// The next samples. False when the disk refuses them.
  [[nodiscard]] bool Add(std::span<const std::int16_t> samples);

  [[nodiscard]] std::uint64_t Count() const { return m_count; }
  /// Whether all samples so far are 0.
  [[nodiscard]] bool IsSilent() const { return m_isSilent; }
  /// The sound has ended: how loud it is. Nothing may follow.
  [[nodiscard]] Loudness Finish() { return m_meter->Finish(); }

 private:
  const base::AppendBytes& m_append;
  std::unique_ptr<LoudnessMeter> m_meter;
  std::string m_bytes;
  std::vector<double> m_values;
  std::uint64_t m_count = 0;
  bool m_isSilent = true;
  bool m_isWritten;
};

}  // namespace kestrin::core::sound
