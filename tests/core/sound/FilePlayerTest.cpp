// SPDX-License-Identifier: MIT
#include "core/sound/FilePlayer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/sound/WavStream.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

using Samples = std::vector<std::int16_t>;

/// Plays nothing by itself: the test takes the samples, and says how it ends.
class ScriptedOutput final : public SoundOutput {
 public:
  void Start(Source source) override {
    const std::lock_guard lock(m_mutex);
    m_source = std::move(source);
    m_status = {true, {}};
    ++m_starts;
  }
  void Stop() override {
    const std::lock_guard lock(m_mutex);
    m_source = nullptr;
    m_status.isPlaying = false;
  }
  [[nodiscard]] Status Look() override {
    const std::lock_guard lock(m_mutex);
    return m_status;
  }
  void End(base::Result<> how) {
    const std::lock_guard lock(m_mutex);
    m_status = {false, std::move(how)};
  }
  [[nodiscard]] int Starts() {
    const std::lock_guard lock(m_mutex);
    return m_starts;
  }
  /// All that the source gives, in parts of so many.
  [[nodiscard]] Samples Drink(std::size_t part) {
    const std::lock_guard lock(m_mutex);
    Samples all;
    for (;;) {
      Samples samples(part);
      const std::size_t count = m_source(samples);
      all.insert(all.end(), samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count));
      if (count < part) return all;
    }
  }

 private:
  std::mutex m_mutex;
  Source m_source;
  Status m_status;
  int m_starts = 0;
};

class FilePlayerTest : public testing::Test {
 protected:
  /// Looks until `condition` holds; the test runner ends one that never comes.
  static void Await(const std::function<bool()>& condition) {
    while (!condition()) std::this_thread::yield();
  }
  /// A preview file with these samples.
  std::filesystem::path Wav(const Samples& samples) {
    std::string bytes = WavStream::Header(static_cast<std::int64_t>(samples.size()));
    EXPECT_TRUE(WavStream::Append(samples, [&bytes](std::string_view part) {
      bytes += part;
      return true;
    }));
    support::WriteBytes(m_folder / "temp.wav", bytes);
    return m_folder / "temp.wav";
  }

  support::TemporaryFolder m_folder;
  std::unique_ptr<ScriptedOutput> m_made = std::make_unique<ScriptedOutput>();
  ScriptedOutput& m_output = *m_made;
  FilePlayer m_player{std::move(m_made)};
};

TEST_F(FilePlayerTest, HasNothingToSayBeforeAnything) {
  m_player.Stop();
  EXPECT_FALSE(m_player.Look().playing);
  EXPECT_EQ(m_player.Look().ended.Text(), "");
}

TEST_F(FilePlayerTest, GivesEverySampleAndItsEnd) {
  const Samples samples{1, -1, 32767, -32768, 256, -256, 255};
  for (const std::size_t part : {1U, 3U, 7U, 100U}) {
    m_player.Play(Wav(samples));
    // It can be replaced at once.
    support::WriteBytes(m_folder / "temp.wav.new", "something else");
    std::filesystem::rename(m_folder / "temp.wav.new", m_folder / "temp.wav");
    Await([&] { return m_output.Look().isPlaying; });
    EXPECT_TRUE(m_player.Look().playing);
    EXPECT_EQ(m_output.Drink(part), samples) << part;
    m_output.End({});
    EXPECT_FALSE(m_player.Look().playing);
    EXPECT_EQ(m_player.Look().ended.Text(), "");
  }
}

TEST_F(FilePlayerTest, TellsWhyItEnded) {
  m_player.Play(Wav({1, 2, 3}));
  Await([&] { return m_output.Starts() == 1; });
  m_output.End(base::Failure{base::FailureKind::Failed, "The cable is loose."});
  EXPECT_FALSE(m_player.Look().playing);
  EXPECT_EQ(m_player.Look().ended.Text(), "The cable is loose.");
}

TEST_F(FilePlayerTest, StopsAndSaysNothingOfIt) {
  m_player.Play(Wav({1, 2, 3}));
  m_player.Stop();
  EXPECT_FALSE(m_player.Look().playing);
  EXPECT_FALSE(m_output.Look().isPlaying);
  EXPECT_EQ(m_player.Look().ended.Text(), "");
}

TEST_F(FilePlayerTest, ThePlayerGoesWhileItReads) {
  for (int i = 0; i < 20; ++i) {
    FilePlayer player(std::make_unique<ScriptedOutput>());
    player.Play(Wav(Samples(5000, 1)));
  }
}

TEST_F(FilePlayerTest, TheNextSoundTakesThePlaceOfTheOneBefore) {
  const std::filesystem::path wav = Wav({1, 2, 3});
  for (int i = 0; i < 50; ++i) m_player.Play(wav);
  m_player.Play(Wav({7, 8}));
  // Of those before, none begins any more; the last one does.
  Await([&] { return m_output.Look().isPlaying; });
  EXPECT_EQ(m_output.Drink(10), (Samples{7, 8}));
}

TEST_F(FilePlayerTest, SaysThatTheFileCannotBeRead) {
  m_player.Play(m_folder / "temp.wav");
  EXPECT_FALSE(m_player.Look().playing);
  EXPECT_EQ(m_player.Look().ended.Text(), "The sound's copy \"temp.wav\" cannot be read. Play the sound again.");
  EXPECT_EQ(m_output.Starts(), 0);
}

TEST_F(FilePlayerTest, SaysThatTheFileIsNoSound) {
  using namespace std::string_literals;
  // Text; 44,100 samples a second; two channels.
  const std::string leading = "RIFF\0\0\0\0WAVEfmt \x10\0\0\0\x01\0"s;
  for (const std::string& bytes : {"Dear Sir"s, leading + "\x01\0\x44\xAC\0\0\0\0\0\0\x02\0\x10\0data\x02\0\0\0ab"s,
                                   leading + "\x02\0\x80\xBB\0\0\0\0\0\0\x04\0\x10\0data\x04\0\0\0abcd"s}) {
    m_player.Play(support::WriteBytes(m_folder / "temp.wav", bytes));
    Await([&] { return !m_player.Look().playing; });
    EXPECT_NE(m_player.Look().ended.Text().find("temp.wav"), std::string::npos);
  }
  EXPECT_EQ(m_output.Starts(), 0);
}

}  // namespace
}  // namespace kestrin::core::sound
