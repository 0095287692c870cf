// SPDX-License-Identifier: MIT
#include "core/sound/import/ImportCrew.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "support/FakeAudioTools.h"
#include "support/TestFiles.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;

/// A disk that several threads may use.
class QuietDisk final : public base::Disk {
 public:
  std::error_code Flush(const fs::path&) override { return {}; }
  LockResult TryLock(const fs::path&) override { return {}; }
  std::error_code TakeFreeName(const fs::path& made, const fs::path& name) override {
    std::error_code error;
    if (fs::exists(name, error)) return std::make_error_code(std::errc::file_exists);
    fs::rename(made, name, error);
    return error;
  }
};

class ImportCrewTest : public ::testing::Test {
 protected:
  /// An order for a sound that only exists in memory.
  ImportCrew::Order Order(const std::string& file, const std::string& name, double height) {
    std::vector<double> frames(2000);
    for (std::size_t i = 0; i < frames.size(); ++i) frames[i] = height * std::sin(static_cast<double>(i) / 9);
    m_tools.Put(file, {.frames = std::move(frames)});
    return {{file, file, name}, {}};
  }
  std::vector<ImportedSound> Import(const std::vector<ImportCrew::Order>& orders, unsigned threads,
                                    const fs::path& folder) {
    fs::create_directory(folder);
    std::vector<ImportedSound> results;
    ImportCrew crew(m_tools, m_disk, threads);
    crew.Import(orders, folder, [&](std::size_t number, ImportedSound sound) {
      EXPECT_EQ(number, results.size());
      EXPECT_EQ(std::this_thread::get_id(), m_thread);
      results.push_back(std::move(sound));
    });
    return results;
  }

  support::TemporaryFolder m_folder;
  support::FakeAudioTools m_tools;
  QuietDisk m_disk;
  std::thread::id m_thread = std::this_thread::get_id();
};

TEST_F(ImportCrewTest, ManyThreadsGiveWhatOneGives) {
  std::vector<ImportCrew::Order> orders;
  for (int i = 0; i < 40; ++i)
    // Five names, and every seventh sound is not there.
    orders.push_back(i % 7 == 3 ? ImportCrew::Order{{"nowhere", "nowhere", "sound 0"}, {}}
                                : Order("file " + std::to_string(i), "sound " + std::to_string(i % 5), 0.01 * (i + 1)));
  const std::vector<ImportedSound> one = Import(orders, 1, m_folder / "one");
  const std::vector<ImportedSound> many = Import(orders, 8, m_folder / "many");
  ASSERT_EQ(one.size(), 40U);
  ASSERT_EQ(many.size(), 40U);
  std::set<fs::path> names;
  for (std::size_t i = 0; i < 40; ++i) {
    EXPECT_EQ(many[i].path.filename(), one[i].path.filename()) << i;
    EXPECT_EQ(many[i].source, orders[i].source.shownAs);
    EXPECT_EQ(many[i].reason, i % 7 == 3 ? "There is no such sound." : "") << i;
    EXPECT_EQ(many[i].changes, one[i].changes) << i;
    if (many[i].path.empty()) continue;
    EXPECT_TRUE(names.insert(many[i].path).second) << many[i].path;
    EXPECT_EQ(support::ReadBytes(many[i].path), support::ReadBytes(one[i].path)) << i;
  }
  // Sounds 3 and 8 of the same name: the former is not there and takes no number.
  EXPECT_EQ(many[8].path.filename(), "sound 3.lsu");
  EXPECT_EQ(many[13].path.filename(), "sound 3 2.lsu");
}

TEST_F(ImportCrewTest, NobodyToldMeansNothingDone) { EXPECT_TRUE(Import({}, 4, m_folder / "none").empty()); }

TEST_F(ImportCrewTest, SeveralSoundsAreMadeAtOnce) {
  // Each waits for the other.
  std::mutex mutex;
  std::condition_variable both;
  int here = 0;
  for (const std::string name : {"a", "b"})
    m_tools.sounds[name] = [&] {
      std::unique_lock lock(mutex);
      ++here;
      both.notify_all();
      both.wait(lock, [&] { return here == 2; });
      return support::FakeAudioTools::Sound{.frames = std::vector<double>(100, 0.5)};
    };
  const std::vector<ImportedSound> made = Import({{{"a", "a", "a"}, {}}, {{"b", "b", "b"}, {}}}, 2, m_folder / "out");
  ASSERT_EQ(made.size(), 2U);
  EXPECT_EQ(made[0].reason + made[1].reason, "");
}

/// How an import is stopped: by saying so or by throwing.
class ImportCrewStopTest : public ImportCrewTest, public ::testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(Ways, ImportCrewStopTest, ::testing::Bool());

TEST_P(ImportCrewStopTest, WhatIsUnderWayIsGivenUpAndTold) {
  std::vector<ImportCrew::Order> orders;
  for (int i = 0; i < 10; ++i) orders.push_back(Order("file " + std::to_string(i), "sound " + std::to_string(i), 0.5));
  // The third goes on without end until somebody stops it.
  std::atomic<bool> isStopped = false;
  m_tools.sounds["file 2"] = [&] {
    while (!isStopped) std::this_thread::yield();
    return support::FakeAudioTools::Sound{.frames = std::vector<double>(100'000, 0.5)};
  };
  fs::create_directory(m_folder / "out");
  std::vector<ImportedSound> results;
  ImportCrew crew(m_tools, m_disk, 3);
  const auto run = [&] {
    crew.Import(
        orders, m_folder / "out", [&](std::size_t, ImportedSound sound) { results.push_back(std::move(sound)); },
        [&]() -> bool {
          if (results.size() < 2) return true;
          isStopped = true;
          if (GetParam()) throw std::runtime_error("enough");
          return false;
        });
  };
  if (GetParam()) {
    EXPECT_THROW(run(), std::runtime_error);
  } else {
    run();
  }
  ASSERT_EQ(results.size(), 10U);
  for (std::size_t i = 0; i < 10; ++i) {
    EXPECT_EQ(results[i].reason, i < 2 ? "" : "Stopped.") << i;
    EXPECT_EQ(results[i].source, orders[i].source.shownAs) << i;
    EXPECT_EQ(results[i].path.empty(), i >= 2) << i;
  }
  // Also what was ready and had no name yet is gone.
  EXPECT_EQ(std::distance(fs::directory_iterator(m_folder / "out"), fs::directory_iterator()), 2);
}

TEST_F(ImportCrewTest, WhatGoesWrongWithOneSoundStopsNoOther) {
  std::vector<ImportCrew::Order> orders{Order("a", "a", 0.5), Order("b", "b", 0.5), Order("c", "c", 0.5)};
  m_tools.sounds["b"] = []() -> support::FakeAudioTools::Sound { throw std::runtime_error("no memory"); };
  const std::vector<ImportedSound> made = Import(orders, 2, m_folder / "out");
  ASSERT_EQ(made.size(), 3U);
  EXPECT_EQ(made[0].reason, "");
  EXPECT_EQ(made[1].reason, "The sound could not be imported: no memory. Close other programs and import it again.");
  EXPECT_EQ(made[1].source, "b");
  EXPECT_EQ(made[2].reason, "");
}

TEST_F(ImportCrewTest, WhoeverIsToldMayThrow) {
  const std::vector<ImportCrew::Order> orders{Order("a", "a", 0.5), Order("b", "b", 0.5)};
  fs::create_directory(m_folder / "out");
  ImportCrew crew(m_tools, m_disk, 2);
  EXPECT_THROW(crew.Import(orders, m_folder / "out",
                           [](std::size_t, const ImportedSound&) { throw std::runtime_error("enough"); }),
               std::runtime_error);
}

}  // namespace
}  // namespace kestrin::core::sound
