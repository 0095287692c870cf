// SPDX-License-Identifier: MIT
#include "sound/import/PlainCopy.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "base/NewFile.h"
#include "base/PathText.h"
#include "sound/LSU_SoundFile.h"

namespace kestrin::core::sound {

namespace {

constexpr std::size_t kFramesOfABlock = 4096;
constexpr double kFullScale = 32767;

/// Appends the samples as they stand in a ".lsu" file.
void AppendSamples(std::string& bytes, const std::vector<double>& samples) {
  for (const double sample : samples) {
    const auto value = static_cast<std::uint16_t>(std::lround(std::clamp(sample, -1.0, 1.0) * kFullScale));
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>(value >> 8);
  }
}

/// The sound of a decoder as one channel at the board's rate, block by block.
class OneChannel {
 public:
  OneChannel(AudioTools& tools, SoundDecoder& decoder)
      : m_decoder(decoder), m_frames(kFramesOfABlock * static_cast<std::size_t>(decoder.Shape().channels)) {
    if (decoder.Shape().rate != LSU_SoundFile::kSamplesPerSecond)
      m_converter = tools.MakeConverter(decoder.Shape().rate);
  }

  /// The next block in `out`, which may be empty on the way; false behind the last one.
  [[nodiscard]] bool Next(std::vector<double>& out) {
    out.clear();
    if (m_hasEnded) return false;
    const std::size_t count = m_decoder.Read(m_frames);
    const auto channels = static_cast<std::size_t>(m_decoder.Shape().channels);
    m_mono.assign(count, 0);
    for (std::size_t frame = 0; frame < count; ++frame) {
      for (std::size_t channel = 0; channel < channels; ++channel)
        m_mono[frame] += m_frames[frame * channels + channel];
      m_mono[frame] /= static_cast<double>(channels);
    }
    m_hasEnded = count == 0;
    if (m_converter == nullptr)
      out = m_mono;
    else if (m_hasEnded)
      m_converter->Finish(out);
    else
      m_converter->Convert(m_mono, out);
    return true;
  }

 private:
  SoundDecoder& m_decoder;
  std::unique_ptr<RateConverter> m_converter;
  std::vector<double> m_frames;
  std::vector<double> m_mono;
  bool m_hasEnded = false;
};

base::Result<> Fill(base::NewFile& file, AudioTools& tools, SoundDecoder& decoder, const SoundImport::GoOn& goOn) {
  OneChannel sound(tools, decoder);
  auto left = static_cast<std::size_t>(LSU_SoundFile::kSamplesPerSecond) * PlainCopy::kMostSeconds;
  std::string bytes(LSU_SoundFile::kHeaderBytes, '\0');
  std::vector<double> samples;
  while (left > 0 && sound.Next(samples)) {
    if (goOn && !goOn()) return base::Failure{base::FailureKind::Cancelled, "Stopped."};
    samples.resize(std::min(samples.size(), left));
    left -= samples.size();
    AppendSamples(bytes, samples);
    if (!file.Write(bytes)) return file.Why();
    bytes.clear();
  }
  return left == 0 ? base::Result<>() : decoder.Ended();
}

}  // namespace

base::Result<> PlainCopy::Write(AudioTools& tools, const std::filesystem::path& sound,
                                const std::filesystem::path& copy, const SoundImport::GoOn& goOn) {
  base::Result<std::unique_ptr<SoundDecoder>> decoder = tools.Open(sound);
  if (!decoder) return decoder.Why();
  base::NewFile file(copy);
  if (!file.IsOpen())
    return base::Failure{file.Why().kind, base::Quoted(copy) + " cannot be written: " + file.Why().text + "."};
  base::Result<> filled = Fill(file, tools, **decoder, goOn);
  if (!file.Close() && filled) filled = file.Why();
  if (!filled) {
    std::error_code ignored;
    std::filesystem::remove(copy, ignored);
  }
  return filled;
}

}  // namespace kestrin::core::sound
