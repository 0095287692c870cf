#include <QElapsedTimer>
#include <algorithm>
#include <atomic>
#include <future>
#include <thread>

#include "ui/app/MainFixture.h"

namespace kestrin::support {
namespace {

/// Measures the longest time in which the event loop handled nothing.
class Heartbeat {
 public:
  Heartbeat() {
    QObject::connect(&m_timer, &QTimer::timeout, [this] { Beat(); });
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.start(1);
    m_time.start();
  }
  /// In milliseconds, up to now.
  [[nodiscard]] qint64 Longest() {
    Beat();
    return m_longest;
  }

 private:
  void Beat() { m_longest = std::max(m_longest, m_time.restart()); }

  QTimer m_timer;
  QElapsedTimer m_time;
  qint64 m_longest = 0;
};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
/// Code that a sanitizer watches is many times slower.
constexpr qint64 kAllowed = 1000;
#else
constexpr qint64 kAllowed = 50;
#endif

/// With real time, since it is what a person waits.
class LongestPause : public MainFixture {
 protected:
  LongestPause() { realTime = true; }

  /// A pause that belongs to the program comes every time; one that another program's work has caused does not.
  static void ExpectShort(const std::function<void()>& work) {
    qint64 longest = 0;
    for (int attempt = 0; attempt < 3; ++attempt) {
      QApplication::processEvents();
      Heartbeat heart;
      work();
      longest = heart.Longest();
      if (longest <= kAllowed) return;
    }
    FAIL() << "paused for " << longest << " ms";
  }

  /// A set of 40 files, which fills the board nearly.
  std::filesystem::path LargeSet() {
    constexpr std::size_t kSamples = 69000;
    std::string text;
    unsigned seed = 1;
    const auto add = [&] {
      const std::string name = "s" + std::to_string(seed) + ".lsu";
      text += sound::TextOf(Sound(name, kSamples, seed)) + "\r\n 100\r\n";
      ++seed;
    };
    for (const char* const keyword : {"BOOT", "PWRON", "PWROFF", "IDLE"}) {
      text += std::string(keyword) + "\r\n";
      add();
    }
    for (const char* const keyword : {"MOTION-12", "IMPACT-12", "LOCKUP-12"}) {
      text += std::string(keyword) + "\r\n";
      for (int i = 0; i < 12; ++i) add();
    }
    return support::WriteBytes(folder / "large.lscfg", text);
  }
};

TEST_F(LongestPause, IsShortWhileFortyFilesAreLoadedCodedAndDownloaded) {
  const auto set = LargeSet();
  Start("erase=1");
  ExpectShort([&] { window->OpenSet(set); });
  ASSERT_EQ(dialogs.errors, std::vector<QString>());
  ExpectShort([&] {
    Button("SendBtn").click();
    ASSERT_EQ(LabelText("InformationLabel"), "SUCCESS !");
    Find<QPushButton>("CancelBtn").click();
  });
}

TEST_F(LongestPause, IsShortWhileAReadWaitsItsWholeTimeForAnAnswer) {
  // The first poll of the erase waits 3,000 ms in vain.
  Start("erase=4");
  window->OpenSet(CompleteSet());
  ExpectShort([this] {
    QElapsedTimer time;
    time.start();
    Button("SendBtn").click();
    EXPECT_GE(time.elapsed(), 4000);
    ASSERT_EQ(LabelText("InformationLabel"), "SUCCESS !");
    Find<QPushButton>("CancelBtn").click();
  });
}

TEST_F(LongestPause, CancelAnswersAtOnceAlsoWhileAReadWaits) {
  Start("erase=30");
  window->OpenSet(CompleteSet());
  dialogs.okAnswers = {false};
  using Time = std::chrono::steady_clock;
  Time::duration untilAsked{-1};
  std::atomic<Time::time_point> pressed;
  dialogs.whileAsking = [&] { untilAsked = Time::now() - pressed.load(); };
  auto& button = Find<QPushButton>("CancelBtn");
  std::promise<void> erasing;
  // Before the first read the window has its turn a few times, all the others are turns of its wait of three seconds.
  int turns = 0;
  When([&] { return LabelText("InformationLabel") == "Erasing flash memory ..." && ++turns == 20; },
       [&erasing] { erasing.set_value(); });
  // The press comes from outside, as a person's does, at a moment that the window has not chosen.
  std::thread person([&] {
    erasing.get_future().wait();
    pressed = Time::now();
    QMetaObject::invokeMethod(&button, "click", Qt::QueuedConnection);
  });
  Button("SendBtn").click();
  person.join();
  EXPECT_GE(untilAsked, Time::duration::zero());
  EXPECT_LE(untilAsked, std::chrono::milliseconds(2 * kAllowed));
  EXPECT_EQ(LabelText("InformationLabel"), "Canceled");
}

}  // namespace
}  // namespace kestrin::support
