#include <QElapsedTimer>
#include <algorithm>

#include "ui/app/MainFixture.h"

namespace kestrin::test {
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

/// With real time, since it is what a person waits.
class LongestPause : public MainFixture {
 protected:
  static constexpr qint64 kAllowed = 50;

  LongestPause() { realTime = true; }

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
  QApplication::processEvents();
  Heartbeat heart;
  window->OpenSet(set);
  EXPECT_LE(heart.Longest(), kAllowed) << "while loading";
  ASSERT_EQ(dialogs.errors, std::vector<QString>());
  Button("SendBtn").click();
  EXPECT_LE(heart.Longest(), kAllowed) << "while downloading";
  EXPECT_EQ(LabelText("InformationLabel"), "SUCCESS !");
}

TEST_F(LongestPause, IsShortWhileAReadWaitsItsWholeTimeForAnAnswer) {
  // The first poll of the erase waits 3,000 ms in vain.
  Start("erase=4");
  window->OpenSet(CompleteSet());
  QApplication::processEvents();
  Heartbeat heart;
  QElapsedTimer time;
  time.start();
  Button("SendBtn").click();
  EXPECT_GE(time.elapsed(), 4000);
  EXPECT_LE(heart.Longest(), kAllowed);
  EXPECT_EQ(LabelText("InformationLabel"), "SUCCESS !");
}

TEST_F(LongestPause, CancelAnswersAtOnceAlsoWhileAReadWaits) {
  Start("erase=30");
  window->OpenSet(CompleteSet());
  dialogs.okAnswers = {false};
  QElapsedTimer sincePress;
  qint64 untilAsked = -1;
  dialogs.whileAsking = [&] { untilAsked = sincePress.elapsed(); };
  QElapsedTimer run;
  When([&] { return Shown("DownloadFrame") && run.isValid() && run.elapsed() > 500; },
       [&] {
         sincePress.start();
         Find<QPushButton>("CancelBtn").click();
         EXPECT_EQ(LabelText("InformationLabel"), "Canceled");
       });
  run.start();
  Button("SendBtn").click();
  EXPECT_GE(untilAsked, 0);
  EXPECT_LE(untilAsked, 100);
  EXPECT_EQ(LabelText("InformationLabel"), "Canceled");
}

}  // namespace
}  // namespace kestrin::test
