// SPDX-License-Identifier: MIT
#include "platform/audio/AudioLibraries.h"

#include <ebur128.h>
#include <sndfile.h>
#include <soxr.h>

namespace kestrin::platform::audio {

namespace {

/// "libsoxr-0.1.3" as people write it.
std::string WithBlank(std::string name) {
  if (const std::size_t dash = name.find('-'); dash != name.npos) name[dash] = ' ';
  return name;
}

}  // namespace

std::vector<std::string> AudioLibraries() {
  int major = 0;
  int minor = 0;
  int patch = 0;
  ebur128_get_version(&major, &minor, &patch);
  return {WithBlank(sf_version_string()), WithBlank(soxr_version()),
          "libebur128 " + std::to_string(major) + '.' + std::to_string(minor) + '.' + std::to_string(patch)};
}

}  // namespace kestrin::platform::audio
