// SPDX-License-Identifier: MIT
#include "core/saber/FileSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/TestFiles.h"

namespace kestrin::core::saber {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Samples = std::vector<std::int16_t>;

/// A sound of fifty samples that begins with these.
Samples Beginning(Samples first) {
  first.resize(50, 7);
  return first;
}

class FileSamplesTest : public testing::Test {
 protected:
  sound::LSU_SoundFile Sound(const Samples& samples, std::int16_t volume) const {
    sound::LSU_SoundFile file;
    EXPECT_TRUE(file.ReadFile(support::WriteSoundFile(folder / "a.lsu", samples)));
    file.SetVolume(volume);
    return file;
  }

  support::TemporaryFolder folder;
};

TEST_F(FileSamplesTest, AreThoseOfTheFileInItsVolume) {
  const auto whole = FileSamples(Sound(Beginning({1000, -2000, 32767, -32767}), 100));
  ASSERT_TRUE(whole);
  EXPECT_EQ(**whole, Beginning({1000, -2000, 32767, -32767}));
  const auto half = FileSamples(Sound(Beginning({1000, -2000, 5001}), 50));
  ASSERT_TRUE(half);
  // 2500.5 and 3.5 lie in the middle: to the even one.
  EXPECT_THAT(Samples((*half)->begin(), (*half)->begin() + 4), ElementsAre(500, -1000, 2500, 4));
}

TEST_F(FileSamplesTest, AreCutOffAtFullScale) {
  const auto loud = FileSamples(Sound(Beginning({20000, -20000}), 200));
  ASSERT_TRUE(loud);
  EXPECT_THAT(Samples((*loud)->begin(), (*loud)->begin() + 3), ElementsAre(32767, -32767, 14));
}

TEST_F(FileSamplesTest, FailWithTheFile) {
  const sound::LSU_SoundFile file = Sound(Beginning({1}), 100);
  std::filesystem::remove(folder / "a.lsu");
  const auto gone = FileSamples(file);
  ASSERT_FALSE(gone);
  EXPECT_EQ(gone.Why().kind, base::FailureKind::NotFound);
  EXPECT_THAT(gone.Text(), HasSubstr("a.lsu"));
}

}  // namespace
}  // namespace kestrin::core::saber
