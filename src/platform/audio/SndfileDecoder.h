// SPDX-License-Identifier: MIT
#pragma once

#include <sndfile.h>

#include <memory>

#include "core/sound/import/SoundDecoder.h"
#include "platform/audio/BrokenOff.h"
#include "platform/audio/SourceFile.h"
#include "platform/audio/VirtualFile.h"

namespace kestrin::platform::audio {

/// Decodes by libsndfile.
class SndfileDecoder final : public core::sound::SoundDecoder {
 public:
  [[nodiscard]] static core::base::Result<std::unique_ptr<SoundDecoder>> Open(const std::filesystem::path& path);

  /// Takes over a file that is open. `handle` reads it through `calls`.
  struct Opened {
    std::unique_ptr<SourceFile> file;
    std::unique_ptr<VirtualFile> calls;
    SNDFILE* handle;
    SF_INFO info;
    FileEnd end;
  };
  explicit SndfileDecoder(Opened opened);
  ~SndfileDecoder() override;
  SndfileDecoder(const SndfileDecoder&) = delete;
  SndfileDecoder& operator=(const SndfileDecoder&) = delete;

  [[nodiscard]] const core::sound::SoundShape& Shape() const override { return m_shape; }
  [[nodiscard]] std::size_t Read(std::span<double> frames) override;
  [[nodiscard]] core::base::Result<> Ended() const override;
  [[nodiscard]] std::uint64_t Mended() const override { return m_mended; }

 private:
  [[nodiscard]] std::string BrokenOffText() const;

  Opened m_opened;
  core::sound::SoundShape m_shape;
  std::uint64_t m_most;
  std::uint64_t m_read = 0;
  std::uint64_t m_mended = 0;
  bool m_isTooLong = false;
};

}  // namespace kestrin::platform::audio
