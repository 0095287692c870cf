// SPDX-License-Identifier: MIT
#include "saber/FileSamples.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "base/PathText.h"
#include "sound/SampleReader.h"

namespace kestrin::core::saber {

base::Result<SharedSamples> FileSamples(const sound::LSU_SoundFile& file) {
  constexpr double kMost = std::numeric_limits<std::int16_t>::max();
  const auto wanted = static_cast<std::size_t>(file.NrOfSamples());
  std::vector<std::int16_t> samples;
  samples.reserve(wanted);
  sound::SampleReader reader(file.FileNameAndPath());
  while (samples.size() < wanted) {
    const auto block = reader.Next(wanted - samples.size());
    if (block.empty()) break;
    for (const std::int16_t sample : block)
      samples.push_back(
          static_cast<std::int16_t>(std::clamp(std::nearbyint(sample * (file.Volume() / 100.0)), -kMost, kMost)));
  }
  if (samples.size() == wanted && reader.GetState() == sound::SampleReader::State::Good)
    return std::make_shared<const std::vector<std::int16_t>>(std::move(samples));
  if (base::Result<> why = file.CheckCodable(); !why) return why.Why();
  return base::Failure{base::FailureKind::Failed,
                       base::Quoted(file.FileNameAndPath()) + " could not be read. Try again."};
}

}  // namespace kestrin::core::saber
