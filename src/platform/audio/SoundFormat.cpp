// SPDX-License-Identifier: MIT
#include "platform/audio/SoundFormat.h"

#include <sndfile.h>

#include <algorithm>
#include <array>

namespace kestrin::platform::audio {

namespace {

struct Container {
  int number;
  std::string_view name;
};
constexpr std::array kContainers{
    Container{SF_FORMAT_WAV, "WAV"},   Container{SF_FORMAT_WAVEX, "WAV"}, Container{SF_FORMAT_RF64, "WAV"},
    Container{SF_FORMAT_AIFF, "AIFF"}, Container{SF_FORMAT_FLAC, "FLAC"}, Container{SF_FORMAT_OGG, "Ogg"},
    Container{SF_FORMAT_CAF, "CAF"},   Container{SF_FORMAT_AU, "AU"},     Container{SF_FORMAT_W64, "W64"},
    Container{SF_FORMAT_SVX, "8SVX"},  Container{SF_FORMAT_VOC, "VOC"},   Container{SF_FORMAT_MPEG, "MPEG"},
};

/// How samples are written. Without a name it is the container's that people know.
struct Coding {
  int number;
  std::string_view name;
  int bits;
  bool isLossy;
};
constexpr std::array kCodings{
    Coding{SF_FORMAT_PCM_S8, "", 8, false},           Coding{SF_FORMAT_PCM_U8, "", 8, false},
    Coding{SF_FORMAT_PCM_16, "", 16, false},          Coding{SF_FORMAT_PCM_24, "", 24, false},
    Coding{SF_FORMAT_PCM_32, "", 32, false},          Coding{SF_FORMAT_FLOAT, "", 0, false},
    Coding{SF_FORMAT_DOUBLE, "", 0, false},           Coding{SF_FORMAT_ALAC_16, "ALAC", 16, false},
    Coding{SF_FORMAT_ALAC_20, "ALAC", 20, false},     Coding{SF_FORMAT_ALAC_24, "ALAC", 24, false},
    Coding{SF_FORMAT_ALAC_32, "ALAC", 32, false},     Coding{SF_FORMAT_DPCM_8, "", 8, false},
    Coding{SF_FORMAT_DPCM_16, "", 16, false},         Coding{SF_FORMAT_DWVW_12, "", 12, false},
    Coding{SF_FORMAT_DWVW_16, "", 16, false},         Coding{SF_FORMAT_DWVW_24, "", 24, false},
    Coding{SF_FORMAT_VORBIS, "Ogg Vorbis", 0, true},  Coding{SF_FORMAT_OPUS, "Opus", 0, true},
    Coding{SF_FORMAT_MPEG_LAYER_I, "MP1", 0, true},   Coding{SF_FORMAT_MPEG_LAYER_II, "MP2", 0, true},
    Coding{SF_FORMAT_MPEG_LAYER_III, "MP3", 0, true}, Coding{SF_FORMAT_IMA_ADPCM, "ADPCM", 0, true},
    Coding{SF_FORMAT_MS_ADPCM, "ADPCM", 0, true},
};

template <class Row, std::size_t Count>
const Row* Find(const std::array<Row, Count>& table, int number) {
  const auto* const found =
      std::find_if(table.begin(), table.end(), [&](const Row& row) { return row.number == number; });
  return found == table.end() ? nullptr : found;
}

}  // namespace

SoundFormat FormatOf(int format) {
  const Container* const container = Find(kContainers, format & SF_FORMAT_TYPEMASK);
  const std::string_view outside = container == nullptr ? "sound" : container->name;
  // What is not in the table gives samples for fewer bits: telephone's codings and the like.
  const Coding* const coding = Find(kCodings, format & SF_FORMAT_SUBMASK);
  if (coding == nullptr) return {outside, 0, true};
  return {coding->name.empty() ? outside : coding->name, coding->bits, coding->isLossy};
}

}  // namespace kestrin::platform::audio
