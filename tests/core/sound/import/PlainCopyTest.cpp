// SPDX-License-Identifier: MIT
#include "core/sound/import/PlainCopy.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <vector>

#include "core/sound/LSU_SoundFile.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using testing::ElementsAre;

/// One sound, of any rate; a converter makes two samples of each one and has a last one of its own.
class OneSound final : public AudioTools {
 public:
  SoundShape shape{48000, 1, 16, "WAV", false, std::nullopt};
  std::vector<double> samples;
  base::Result<> end;
  /// Repeats the samples without an end.
  bool isEndless = false;

  base::Result<std::unique_ptr<SoundDecoder>> Open(const std::filesystem::path& path) override {
    if (path != "sound.wav") return base::Failure{base::FailureKind::NotFound, "There is no such sound."};
    return std::unique_ptr<SoundDecoder>(std::make_unique<Decoder>(*this));
  }
  std::unique_ptr<RateConverter> MakeConverter(int) override { return std::make_unique<Doubler>(); }
  std::unique_ptr<LoudnessMeter> MakeMeter() override { return nullptr; }

 private:
  class Decoder final : public SoundDecoder {
   public:
    explicit Decoder(OneSound& sound) : m_sound(sound) {}
    [[nodiscard]] const SoundShape& Shape() const override { return m_sound.shape; }
    [[nodiscard]] std::size_t Read(std::span<double> frames) override {
      std::size_t count = 0;
      for (; count < frames.size() && (m_sound.isEndless || m_at < m_sound.samples.size()); ++count, ++m_at)
        frames[count] = m_sound.samples[m_at % m_sound.samples.size()];
      return count / static_cast<std::size_t>(m_sound.shape.channels);
    }
    [[nodiscard]] base::Result<> Ended() const override { return m_sound.end; }
    [[nodiscard]] std::uint64_t Mended() const override { return 0; }

   private:
    OneSound& m_sound;
    std::size_t m_at = 0;
  };
  class Doubler final : public RateConverter {
   public:
    void Convert(std::span<const double> in, std::vector<double>& out) override {
      for (const double sample : in) out.insert(out.end(), 2, sample);
    }
    void Finish(std::vector<double>& out) override { out.push_back(-0.5); }
  };
};

class PlainCopyTest : public testing::Test {
 protected:
  base::Result<> Write(const SoundImport::GoOn& goOn = {}) {
    return PlainCopy::Write(m_tools, "sound.wav", m_copy, goOn);
  }
  /// The samples behind the four bytes of the header.
  std::vector<int> Samples() const {
    const std::string bytes = support::ReadBytes(m_copy);
    std::vector<int> samples;
    for (std::size_t i = 4; i + 1 < bytes.size(); i += 2)
      samples.push_back(static_cast<std::int16_t>(static_cast<unsigned char>(bytes[i]) |
                                                  static_cast<unsigned char>(bytes[i + 1]) << 8));
    return samples;
  }

  support::TemporaryFolder m_folder;
  std::filesystem::path m_copy = m_folder / "copy.lsu";
  OneSound m_tools;
};

TEST_F(PlainCopyTest, ASoundOfTheBoardsRateIsCopiedAsItIs) {
  // 0.25 of 32,767 is 8,191.75; beyond full scale it is cut off.
  m_tools.samples = {0, 0.25, -0.25, 1, -1, 1.5, -3};
  ASSERT_EQ(Write().Text(), "");
  EXPECT_THAT(Samples(), ElementsAre(0, 8192, -8192, 32767, -32767, 32767, -32767));
}

TEST_F(PlainCopyTest, ChannelsAreMixedIntoOne) {
  m_tools.shape.channels = 2;
  m_tools.samples = {1, 0, 0.5, 0.5, -1, 1};
  ASSERT_EQ(Write().Text(), "");
  EXPECT_THAT(Samples(), ElementsAre(16384, 16384, 0));
}

TEST_F(PlainCopyTest, AnotherRateIsConvertedToItsEnd) {
  m_tools.shape.rate = 24000;
  m_tools.samples = {1, 0};
  ASSERT_EQ(Write().Text(), "");
  EXPECT_THAT(Samples(), ElementsAre(32767, 32767, 0, 0, -16384));
}

TEST_F(PlainCopyTest, LongSoundsAreCopiedWholeAndEndlessOnesToTheirLimit) {
  m_tools.samples.assign(10'000, 0.5);
  ASSERT_EQ(Write().Text(), "");
  EXPECT_EQ(Samples().size(), 10'000U);
  std::filesystem::remove(m_copy);
  m_tools.isEndless = true;
  ASSERT_EQ(Write().Text(), "");
  // Ten minutes at 48,000 samples of two bytes a second.
  EXPECT_EQ(std::filesystem::file_size(m_copy), 4U + 600U * 48'000U * 2U);
}

TEST_F(PlainCopyTest, FailuresLeaveNoFile) {
  m_tools.samples = {0.5};
  m_tools.end = base::Failure{base::FailureKind::NotValid, "The file breaks off."};
  EXPECT_EQ(Write().Text(), "The file breaks off.");
  EXPECT_FALSE(std::filesystem::exists(m_copy));
  m_tools.end = {};
  const base::Result<> stopped = Write([] { return false; });
  ASSERT_FALSE(stopped);
  EXPECT_EQ(stopped.Why().kind, base::FailureKind::Cancelled);
  EXPECT_FALSE(std::filesystem::exists(m_copy));
  EXPECT_EQ(PlainCopy::Write(m_tools, "other.wav", m_copy).Text(), "There is no such sound.");
}

TEST_F(PlainCopyTest, NothingIsOverwritten) {
  support::WriteBytes(m_copy, "mine");
  m_tools.samples = {0.5};
  EXPECT_FALSE(Write());
  EXPECT_EQ(support::ReadBytes(m_copy), "mine");
}

}  // namespace
}  // namespace kestrin::core::sound
