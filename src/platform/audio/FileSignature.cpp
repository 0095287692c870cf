// SPDX-License-Identifier: MIT
#include "platform/audio/FileSignature.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace kestrin::platform::audio {

namespace {

using namespace std::string_view_literals;

/// Files that begin so, behind that many bytes that say something else.
struct Signature {
  std::size_t offset;
  std::string_view bytes;
  /// With its article.
  std::string_view kind;
};

/// What nobody here reads, though it may well be a sound.
constexpr std::array kForeign{
    Signature{4, "ftyp"sv, "an M4A or MP4 file (AAC)"},
    Signature{0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv, "a WMA file"},
    Signature{0, "MThd"sv, "a MIDI file, which holds notes and no sound"},
    Signature{0, "\x1A\x45\xDF\xA3"sv, "a Matroska or WebM file"},
    Signature{0, "MAC "sv, "a Monkey's Audio file"},
    Signature{0, "wvpk"sv, "a WavPack file"},
    Signature{0, "MPCK"sv, "a Musepack file"},
    Signature{0, "MP+"sv, "a Musepack file"},
    Signature{0, "DSD "sv, "a DSD file"},
    Signature{0, "FRM8"sv, "a DSD file"},
    Signature{0, "#!AMR"sv, "an AMR file"},
    Signature{0, ".ra\xFD"sv, "a RealAudio file"},
    Signature{0, ".RMF"sv, "a RealAudio file"},
    Signature{0, "\xFF\xF1"sv, "an AAC file"},
    Signature{0, "\xFF\xF9"sv, "an AAC file"},
    Signature{8, "AVI "sv, "a video"},
    Signature{0, "PK\x03\x04"sv, "a ZIP file or a document"},
};

/// What is read here, unless something is wrong with it.
constexpr std::array kKnown{
    Signature{8, "WAVE"sv, "WAV"},     Signature{0, "fLaC"sv, "FLAC"},    Signature{0, "OggS"sv, "Ogg"},
    Signature{0, "ID3"sv, "MP3"},      Signature{0, "FORM"sv, "AIFF"},    Signature{0, "caff"sv, "CAF"},
    Signature{0, ".snd"sv, "AU"},      Signature{0, "dns."sv, "AU"},      Signature{0, "riff\x2E\x91\xCF\x11"sv, "W64"},
    Signature{0, "\xFF\xFB"sv, "MP3"}, Signature{0, "\xFF\xF3"sv, "MP3"}, Signature{0, "\xFF\xFA"sv, "MP3"},
};

template <std::size_t Count>
std::string_view KindOf(std::string_view start, const std::array<Signature, Count>& table) {
  const auto* const found = std::find_if(table.begin(), table.end(), [start](const Signature& one) {
    return start.size() >= one.offset && start.substr(one.offset).starts_with(one.bytes);
  });
  return found == table.end() ? std::string_view() : found->kind;
}

}  // namespace

std::string WhyNoSound(std::string_view start) {
  if (start.empty()) return "The file is empty. Copy it again from where it came.";
  if (const std::string_view kind = KindOf(start, kForeign); !kind.empty())
    return "This is " + std::string(kind) + " and cannot be read here. Save the sound as WAV, FLAC, Ogg or MP3 and " +
           "import that.";
  if (const std::string_view kind = KindOf(start, kKnown); !kind.empty())
    return "The " + std::string(kind) +
           " file is damaged, or packed in a way that cannot be read here. Copy it again " +
           "from where it came, or save the sound as an ordinary WAV file and import that.";
  return "This is no sound that can be read here. Save it as WAV, FLAC, Ogg or MP3 and import that.";
}

}  // namespace kestrin::platform::audio
